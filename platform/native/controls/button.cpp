// BUTTON: push buttons, check boxes, radio buttons and the boxes around groups. A click is a press
// and a release, by the mouse or by Space, and is told to the parent at the release; a button that
// loses the focus in between isn't clicked. The automatic kinds change their mark before they tell.
#include <iterator>

#include "controls/control_classes.h"
#include "controls/dialog.h"

struct ButtonData {
    bool isPressed;  // by mouse or Space, and not released yet
    WPARAM check;    // BST_…; of a kind without a mark always BST_UNCHECKED
};

struct ButtonKind {
    LRESULT code;      // what a dialog asks of each control
    bool hasMark;      // a check or radio mark
    bool isAutomatic;  // a click changes the mark
};

static constexpr ButtonKind kOtherKind = {DLGC_BUTTON, false, false};
// clang-format off
static constexpr ButtonKind kKinds[] = {
    {DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON, false, false},  // BS_PUSHBUTTON
    {DLGC_BUTTON | DLGC_DEFPUSHBUTTON, false, false},    // BS_DEFPUSHBUTTON
    {DLGC_BUTTON, true, false},                          // BS_CHECKBOX
    {DLGC_BUTTON, true, true},                           // BS_AUTOCHECKBOX
    {DLGC_BUTTON | DLGC_RADIOBUTTON, true, false},       // BS_RADIOBUTTON
    kOtherKind,
    kOtherKind,
    {DLGC_STATIC, false, false},                         // BS_GROUPBOX
    kOtherKind,
    {DLGC_BUTTON | DLGC_RADIOBUTTON, true, true},        // BS_AUTORADIOBUTTON
};
// clang-format on
static_assert(std::size(kKinds) == BS_AUTORADIOBUTTON + 1);

static LRESULT CALLBACK ButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

static const ButtonKind &KindOf(const WindowRecord *button)
{
    DWORD kind = button->style & BS_TYPEMASK;
    return kind < std::size(kKinds) ? kKinds[kind] : kOtherKind;
}

static bool IsRadio(const WindowRecord *button)
{
    return (KindOf(button).code & DLGC_RADIOBUTTON) != 0;
}

// The mark of a radio button takes the Tab stop of its group along.
static void SetMark(WindowRecord *button, ButtonData *data, WPARAM check)
{
    if (!KindOf(button).hasMark)
        return;
    data->check = check ? BST_CHECKED : BST_UNCHECKED;
    button->needsPaint = true;
    if (!IsRadio(button))
        return;
    button->style &= ~DWORD(WS_TABSTOP);
    if (check)
        button->style |= WS_TABSTOP;
}

// All other radio buttons of the group lose their mark.
static void ClearGroup(HWND window, HWND first)
{
    for (HWND at = first; at; at = GetWindow(at, GW_HWNDNEXT)) {
        if (at != first && (GetWindowLongA(at, GWL_STYLE) & WS_GROUP))
            return;
        if (at != window && (SendMessageA(at, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON))
            SendMessageA(at, BM_SETCHECK, BST_UNCHECKED, 0);
    }
}

// Pressing takes the focus, whose messages may have done anything to the window.
static void PressButton(HWND window)
{
    SetFocus(window);
    WindowRecord *button = FindWindowRecord(window);
    if (button)
        static_cast<ButtonData *>(ClassData(button, ButtonProc))->isPressed = true;
}

// The group and the parent hear of it, and either may destroy the button.
static void ReleaseButton(WindowRecord *button, ButtonData *data)
{
    if (!data->isPressed)
        return;
    HWND window = button->handle;
    data->isPressed = false;
    if (KindOf(button).isAutomatic) {
        SetMark(button, data, IsRadio(button) || data->check == BST_UNCHECKED);
        if (IsRadio(button))
            ClearGroup(window, FirstOfGroup(button)->handle);
    }
    button = FindWindowRecord(window);
    if (button)
        SendMessageA(GetParent(window), WM_COMMAND, MAKEWPARAM(button->id, BN_CLICKED),
                     reinterpret_cast<LPARAM>(window));
}

static void ClickButton(HWND window)
{
    SendMessageA(window, WM_LBUTTONDOWN, 0, 0);
    SendMessageA(window, WM_LBUTTONUP, 0, 0);
}

// Mouse and keys; a box around a group takes neither.
static void HandleInput(WindowRecord *button, ButtonData *data, UINT message, WPARAM key)
{
    if (KindOf(button).code == DLGC_STATIC)
        return;
    switch (message) {
    case WM_LBUTTONDOWN: PressButton(button->handle); break;
    case WM_LBUTTONUP: ReleaseButton(button, data); break;
    case WM_KEYDOWN:
        if (key == VK_SPACE)
            data->isPressed = true;
        break;
    case WM_KEYUP:
        if (key == VK_SPACE)
            ReleaseButton(button, data);
        break;
    }
}

static LRESULT CALLBACK ButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    WindowRecord *button = FindWindowRecord(window);
    ButtonData *data = button ? static_cast<ButtonData *>(ClassData(button, ButtonProc)) : nullptr;
    if (!data)
        return 0;
    switch (message) {
    case WM_GETDLGCODE: return KindOf(button).code;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_KEYDOWN:
    case WM_KEYUP: HandleInput(button, data, message, wParam); return 0;
    case WM_KILLFOCUS: data->isPressed = false; return 0;
    case BM_CLICK: ClickButton(window); return 0;
    case BM_GETCHECK: return LRESULT(data->check);
    case BM_SETCHECK: SetMark(button, data, wParam); return 0;
    case BM_SETSTYLE:
        button->style = (button->style & ~DWORD(BS_TYPEMASK)) | (wParam & BS_TYPEMASK);
        return 0;
    }
    return DefControlProc(window, message, wParam, lParam);
}

const ControlClass kButtonControl = {"BUTTON", ButtonProc, sizeof(ButtonData)};

// BUTTON: push buttons. A click is a press and a release, by the mouse or by Space, and is told to
// the parent at the release; a button that loses the focus in between isn't clicked.
#include "controls/control_classes.h"
#include "windows/window_table.h"

constexpr DWORD kButtonKind = 0xf;  // the bits of the style that tell plain from default

struct ButtonData {
    bool isPressed;  // by mouse or Space, and not released yet
};

static LRESULT CALLBACK ButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// What a dialog asks of each control to find its default button.
static LRESULT ButtonCode(const WindowRecord *button)
{
    bool isDefault = (button->style & kButtonKind) == BS_DEFPUSHBUTTON;
    return DLGC_BUTTON | (isDefault ? DLGC_DEFPUSHBUTTON : DLGC_UNDEFPUSHBUTTON);
}

// Pressing takes the focus, whose messages may have done anything to the window.
static void PressButton(HWND window)
{
    SetFocus(window);
    WindowRecord *button = FindWindowRecord(window);
    if (button)
        static_cast<ButtonData *>(ClassData(button, ButtonProc))->isPressed = true;
}

// Tells the parent, which may destroy the button: it isn't touched after that.
static void ReleaseButton(const WindowRecord *button, ButtonData *data)
{
    if (!data->isPressed)
        return;
    data->isPressed = false;
    SendMessageA(GetParent(button->handle), WM_COMMAND, MAKEWPARAM(button->id, BN_CLICKED),
                 reinterpret_cast<LPARAM>(button->handle));
}

static void ClickButton(HWND window)
{
    SendMessageA(window, WM_LBUTTONDOWN, 0, 0);
    SendMessageA(window, WM_LBUTTONUP, 0, 0);
}

static LRESULT CALLBACK ButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    WindowRecord *button = FindWindowRecord(window);
    ButtonData *data = button ? static_cast<ButtonData *>(ClassData(button, ButtonProc)) : nullptr;
    if (!data)
        return 0;
    switch (message) {
    case WM_GETDLGCODE: return ButtonCode(button);
    case WM_LBUTTONDOWN: PressButton(window); return 0;
    case WM_LBUTTONUP: ReleaseButton(button, data); return 0;
    case WM_KEYDOWN:
        if (wParam == VK_SPACE)
            data->isPressed = true;
        return 0;
    case WM_KEYUP:
        if (wParam == VK_SPACE)
            ReleaseButton(button, data);
        return 0;
    case WM_KILLFOCUS: data->isPressed = false; return 0;
    case BM_CLICK: ClickButton(window); return 0;
    case BM_SETSTYLE:
        button->style = (button->style & ~kButtonKind) | (wParam & kButtonKind);
        return 0;
    }
    return DefControlProc(window, message, wParam, lParam);
}

const ControlClass kButtonControl = {"BUTTON", ButtonProc, sizeof(ButtonData)};

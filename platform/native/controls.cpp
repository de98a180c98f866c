// The controls: a line of text, push buttons and the progress bar, and the class of dialogs.
#include "controls.h"
#include "window_table.h"

#include <commctrl.h>
#include <runtime.h>

static LRESULT CALLBACK StaticProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    WindowRecord *record = FindWindowRecord(window);
    switch (message) {
    case WM_GETDLGCODE: return DLGC_STATIC;
    case WM_SETTEXT:
        if (record)
            record->needsPaint = 1;
        break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

// ---- push buttons: control[0] whether it is pressed ----

static LRESULT ButtonCode(const WindowRecord *button)
{
    int isDefault = (button->style & 0xf) == BS_DEFPUSHBUTTON;
    return DLGC_BUTTON | (isDefault ? DLGC_DEFPUSHBUTTON : DLGC_UNDEFPUSHBUTTON);
}

// Pressing takes the focus, whose messages may have done anything to the window.
static void PressButton(HWND window)
{
    SetFocus(window);
    WindowRecord *button = FindWindowRecord(window);
    if (button)
        button->control[0] = 1;
}

static void ReleaseButton(WindowRecord *button)
{
    if (!button->control[0])
        return;
    button->control[0] = 0;
    SendMessageA(GetParent(button->handle), WM_COMMAND, MAKEWPARAM(button->id, BN_CLICKED),
                 (LPARAM)button->handle);
}

static void ClickButton(HWND window)
{
    SendMessageA(window, WM_LBUTTONDOWN, 0, 0);
    SendMessageA(window, WM_LBUTTONUP, 0, 0);
}

static LRESULT CALLBACK ButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    WindowRecord *button = FindWindowRecord(window);
    if (!button)
        return 0;
    switch (message) {
    case WM_GETDLGCODE: return ButtonCode(button);
    case WM_LBUTTONDOWN: PressButton(window); return 0;
    case WM_LBUTTONUP: ReleaseButton(button); return 0;
    case WM_KEYDOWN:
        if (wParam == VK_SPACE)
            button->control[0] = 1;
        return 0;
    case WM_KEYUP:
        if (wParam == VK_SPACE)
            ReleaseButton(button);
        return 0;
    case WM_KILLFOCUS: button->control[0] = 0; return 0;
    case BM_CLICK: ClickButton(window); return 0;
    case BM_SETSTYLE: button->style = (button->style & ~(DWORD)0xf) | (wParam & 0xf); return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

// ---- the progress bar: control[0] lowest, control[1] highest value, control[2] position ----

static LONG_PTR Within(const WindowRecord *bar, LONG_PTR position)
{
    if (position < bar->control[0])
        return bar->control[0];
    return position > bar->control[1] ? bar->control[1] : position;
}

static LRESULT MoveBar(WindowRecord *bar, LONG_PTR position)
{
    LONG_PTR before = bar->control[2];
    bar->control[2] = Within(bar, position);
    if (bar->control[2] != before)
        bar->needsPaint = 1;
    return before;
}

static LRESULT SetBarRange(WindowRecord *bar, int low, int high)
{
    LRESULT before = MAKELONG(bar->control[0], bar->control[1]);
    bar->control[0] = low;
    bar->control[1] = high > low ? high : low;
    MoveBar(bar, bar->control[2]);
    return before;
}

static LRESULT CALLBACK ProgressProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    WindowRecord *bar = FindWindowRecord(window);
    if (!bar)
        return 0;
    switch (message) {
    case WM_CREATE: SetBarRange(bar, 0, 100); return 0;
    case PBM_SETRANGE: return SetBarRange(bar, LOWORD(lParam), HIWORD(lParam));
    case PBM_SETPOS: return MoveBar(bar, (int)wParam);
    case PBM_GETPOS: return bar->control[2];
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

struct ControlClass {
    const char *name;
    WNDPROC procedure;
};

static constexpr ControlClass kControlClasses[] = {
    {"STATIC", StaticProc},
    {"BUTTON", ButtonProc},
    {PROGRESS_CLASSA, ProgressProc},
    {"#32770", DefDlgProcA},  // dialogs
};

WNDPROC ControlProcedure(const char *className)
{
    for (const ControlClass &control : kControlClasses) {
        if (CompareNoCase(control.name, className) == 0)
            return control.procedure;
    }
    return nullptr;
}

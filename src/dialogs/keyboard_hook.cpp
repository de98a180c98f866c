// The keyboard of modeless dialogs. Their messages come through the host's loop, which knows
// nothing of dialogs, so nobody would turn Tab, Return and Escape into what people expect. A hook
// hears a key when the host's loop takes it out of the queue; it must be quick there and only
// posts, and the dialog does what the key asks for when the message arrives. The key itself goes on
// to the control that has the focus, so that an edit box still gets its blank and its arrows.
#include "dialogs/keyboard_hook.h"

#include "frame/library.h"
#include "resources/resource.h"

struct KeyHookState {
    HHOOK hook;   // null: not installed
    HWND target;  // the dialog that it serves; stays when the hook goes
};
static KeyHookState gKeyHook;

// Keys that a dialog is told of. Those behind Space are told and nothing is done with them.
constexpr BYTE kSpecialKeyCodes[] = {VK_TAB,  VK_RETURN, VK_ESCAPE, VK_SPACE, VK_PRIOR,
                                     VK_NEXT, VK_LEFT,   VK_UP,     VK_RIGHT, VK_DOWN};

static bool IsSpecialKey(WPARAM key)
{
    for (BYTE special : kSpecialKeyCodes) {
        if (key == special)
            return true;
    }
    return false;
}

static bool IsGoingUp(LPARAM keyData)
{
    return (keyData & 0x80000000) != 0;
}

static LRESULT CALLBACK WatchKeys(int code, WPARAM key, LPARAM keyData)
{
    if (code != HC_ACTION || !gKeyHook.target || IsGoingUp(keyData) ||
        GetActiveWindow() != gKeyHook.target || !IsSpecialKey(key))
        return CallNextHookEx(gKeyHook.hook, code, key, keyData);
    PostMessageA(gKeyHook.target, RegisteredMessage(kSpecialKeys), key, keyData);
    return 0;
}

void InstallDialogKeyHook(HWND dialog)
{
    if (gKeyHook.hook)
        return;
    gKeyHook.target = dialog;
    gKeyHook.hook = SetWindowsHookExA(WH_KEYBOARD, WatchKeys, nullptr, GetCurrentThreadId());
}

void RemoveDialogKeyHook()
{
    if (gKeyHook.hook)
        UnhookWindowsHookEx(gKeyHook.hook);
    gKeyHook.hook = nullptr;
}

// ---- what a key does, in the dialog's procedure ----

static bool IsButtonControl(HWND control)
{
    constexpr LRESULT kButtonBits =
        DLGC_BUTTON | DLGC_RADIOBUTTON | DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON;
    return control && (SendMessageA(control, WM_GETDLGCODE, 0, 0) & kButtonBits);
}

static void MoveFocus()
{
    BOOL isBackward = (GetAsyncKeyState(VK_SHIFT) & 0x8000) != 0;
    HWND next = GetNextDlgTabItem(gKeyHook.target, GetFocus(), isBackward);
    if (next)
        SetFocus(next);
}

// The focused button goes before the default one.
static void PressReturn()
{
    LRESULT answer = SendMessageA(gKeyHook.target, DM_GETDEFID, 0, 0);
    int id = HIWORD(answer) == DC_HASDEFID ? LOWORD(answer) : 0;
    HWND focus = GetFocus();
    if (IsButtonControl(focus))
        id = GetDlgCtrlID(focus);
    if (id)
        SendDlgItemMessageA(gKeyHook.target, id, BM_CLICK, 0, 0);
}

// An edit box gets its blank from the system.
static void PressFocusedButton()
{
    HWND focus = GetFocus();
    if (IsButtonControl(focus))
        SendMessageA(focus, BM_CLICK, 0, 0);
}

int HandleSpecialKeys(HWND, UINT message, WPARAM key, LPARAM)
{
    if (message != RegisteredMessage(kSpecialKeys))
        return 0;
    switch (key) {
    case VK_TAB: MoveFocus(); break;
    case VK_RETURN: PressReturn(); break;
    case VK_ESCAPE: SendDlgItemMessageA(gKeyHook.target, ID_CANCEL, BM_CLICK, 0, 0); break;
    case VK_SPACE: PressFocusedButton(); break;
    }
    return 1;
}

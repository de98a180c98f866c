// Activation, focus, and whether a window is shown and enabled. Both the window that loses and the
// one that gains are told by messages, which may move the focus again: who comes last wins. Called
// by hosts and dialogs, and by the tree of windows when a window comes or goes.
#include "windows/activation.h"

#include "windows/window_table.h"

struct ActivationState {
    HWND active;  // a window on the screen; null: none of this thread
    HWND focus;   // the active window or one that stands in it; null: none
};
static ActivationState gActivation;

// Each of the two messages may change the focus itself; then the second isn't sent, since the
// window doesn't have it any more.
static void ChangeFocus(HWND window)
{
    HWND before = gActivation.focus;
    if (before == window)
        return;
    gActivation.focus = window;
    if (before)
        SendMessageA(before, WM_KILLFOCUS, reinterpret_cast<WPARAM>(window), 0);
    if (window && gActivation.focus == window)
        SendMessageA(window, WM_SETFOCUS, reinterpret_cast<WPARAM>(before), 0);
}

// Whether the focus is on a window or something that stands in it.
static bool HasFocusInside(HWND window)
{
    WindowRecord *focus = gActivation.focus ? FindWindowRecord(gActivation.focus) : nullptr;
    return focus && TopLevelOf(focus) == window;
}

// The window from before hears of it first. If its procedure makes another one active, the newcomer
// hears nothing: it isn't active any more. A dialog gives its control the focus in WM_ACTIVATE;
// where nobody did, the window itself gets it.
void ActivateWindow(HWND window)
{
    HWND before = gActivation.active;
    if (before == window)
        return;
    gActivation.active = window;
    if (before)
        SendMessageA(before, WM_ACTIVATE, WA_INACTIVE, reinterpret_cast<LPARAM>(window));
    if (window && gActivation.active == window)
        SendMessageA(window, WM_ACTIVATE, WA_ACTIVE, reinterpret_cast<LPARAM>(before));
    if (gActivation.active == window && !HasFocusInside(window))
        ChangeFocus(window);
}

// No messages to the window itself, whose record is gone.
void LeaveActivation(HWND window, HWND owner)
{
    if (gActivation.focus == window)
        gActivation.focus = nullptr;
    if (gActivation.active != window)
        return;
    gActivation.active = nullptr;
    if (owner && IsWindow(owner))
        ActivateWindow(owner);
}

HWND WINAPI GetActiveWindow()
{
    return gActivation.active;
}

// The one from before. Only windows on the screen are active, and none is a legal choice.
HWND WINAPI SetActiveWindow(HWND window)
{
    HWND before = gActivation.active;
    WindowRecord *record = window ? FindWindowRecord(window) : nullptr;
    if (window && (!record || record == RootWindow() || IsChildRecord(record)))
        return nullptr;
    ActivateWindow(window);
    return before;
}

// All windows are this thread's: it is always in the foreground.
BOOL WINAPI SetForegroundWindow(HWND window)
{
    if (!window || !FindWindowRecord(window))
        return FALSE;
    SetActiveWindow(window);
    return TRUE;
}

HWND WINAPI GetFocus()
{
    return gActivation.focus;
}

// A window in one that is disabled can't be used either.
static bool IsEnabledUpwards(const WindowRecord *window)
{
    for (; window; window = window->parent) {
        if (window->style & WS_DISABLED)
            return false;
    }
    return true;
}

// The one from before. Activation comes first: it may itself set the focus, or destroy the window.
HWND WINAPI SetFocus(HWND window)
{
    HWND before = gActivation.focus;
    WindowRecord *record = window ? FindWindowRecord(window) : nullptr;
    if (window && (!record || record == RootWindow() || !IsEnabledUpwards(record)))
        return nullptr;
    if (record)
        ActivateWindow(TopLevelOf(record));
    if (!window || IsWindow(window))
        ChangeFocus(window);
    return before;
}

// What was to be seen before. A window that appears has to be painted; one on the screen becomes
// active, and the active one leaves that to its owner when it disappears. One that has the focus
// leaves it to the window that it stands in.
BOOL WINAPI ShowWindow(HWND window, int command)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record || record == RootWindow())
        return FALSE;
    BOOL wasVisible = (record->style & WS_VISIBLE) != 0;
    if (wasVisible == (command != SW_HIDE))
        return wasVisible;
    if (command == SW_HIDE) {
        record->style &= ~DWORD(WS_VISIBLE);
        if (gActivation.active == window)
            ActivateWindow(record->owner);
        else if (gActivation.focus == window)
            SetFocus(record->parent->handle);
        return wasVisible;
    }
    record->style |= WS_VISIBLE;
    record->needsPaint = true;
    if (!IsChildRecord(record))
        ActivateWindow(window);
    return wasVisible;
}

// Whether it was disabled before. Neither it nor what stands in it can keep the focus then.
BOOL WINAPI EnableWindow(HWND window, BOOL enable)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record || record == RootWindow())
        return FALSE;
    BOOL wasDisabled = (record->style & WS_DISABLED) != 0;
    if (enable)
        record->style &= ~DWORD(WS_DISABLED);
    else
        record->style |= WS_DISABLED;
    WindowRecord *focus = gActivation.focus ? FindWindowRecord(gActivation.focus) : nullptr;
    if (focus && !IsEnabledUpwards(focus))
        ChangeFocus(nullptr);
    return wasDisabled;
}

// As a person would see it: a window in one that is hidden isn't visible either.
BOOL WINAPI IsWindowVisible(HWND window)
{
    WindowRecord *record = FindWindowRecord(window);
    for (WindowRecord *at = record; at; at = at->parent) {
        if (!(at->style & WS_VISIBLE))
            return FALSE;
    }
    return record != nullptr;
}

BOOL WINAPI IsWindowEnabled(HWND window)
{
    WindowRecord *record = FindWindowRecord(window);
    return record && IsEnabledUpwards(record);
}

// The keys of a dialog: which control comes next by Tab or by an arrow, and what a loop asks
// IsDialogMessageA about each message before it hands it out.
#include "controls/dialog.h"

// A control that the Tab key stops at: it says so, can be seen and can be used.
static bool IsTabStop(const WindowRecord *control)
{
    return (control->style & (WS_TABSTOP | WS_VISIBLE | WS_DISABLED)) == (WS_TABSTOP | WS_VISIBLE);
}

// The last stop before `control` in the order of the controls; before the end where it is none.
static HWND StopBefore(const WindowRecord *dialog, const WindowRecord *control)
{
    HWND found = nullptr;
    for (WindowRecord *child = dialog->firstChild; child && child != control; child = child->next) {
        if (IsTabStop(child))
            found = child->handle;
    }
    return found;
}

// The first stop from this control on; null behind the last.
static HWND StopFrom(const WindowRecord *control)
{
    for (; control; control = control->next) {
        if (IsTabStop(control))
            return control->handle;
    }
    return nullptr;
}

// Without a control the first stop is meant; backwards there is none then. The last is followed by
// the first; a control that is the only stop is its own neighbour.
HWND WINAPI GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous)
{
    WindowRecord *record = FindWindowRecord(dialog);
    if (!record)
        return nullptr;
    if (!control || control == dialog)
        return previous ? nullptr : StopFrom(record->firstChild);
    WindowRecord *from = FindWindowRecord(control);
    while (from && from->parent != record)
        from = from->parent;  // the edit box of a combo box stands for it
    if (!from)
        return nullptr;
    HWND found = previous ? StopBefore(record, from) : StopFrom(from->next);
    if (!found)
        found = previous ? StopBefore(record, nullptr) : StopFrom(record->firstChild);
    return found;
}

// ---- groups ----

WindowRecord *FirstOfGroup(const WindowRecord *control)
{
    WindowRecord *first = control->parent->firstChild;
    for (WindowRecord *child = first; child != control->next; child = child->next) {
        if (child->style & WS_GROUP)
            first = child;
    }
    return first;
}

static bool CanBeReached(const WindowRecord *control)
{
    return (control->style & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE;
}

// The neighbour within the group that can be seen and used; behind the last comes the first. A
// control that is alone is its own neighbour.
HWND WINAPI GetNextDlgGroupItem(HWND dialog, HWND control, BOOL previous)
{
    WindowRecord *record = FindWindowRecord(dialog);
    WindowRecord *from = FindWindowRecord(control);
    if (!record || !from || from->parent != record)
        return nullptr;
    WindowRecord *first = FirstOfGroup(from);
    WindowRecord *before = nullptr, *last = nullptr, *next = nullptr, *start = nullptr;
    bool isBehind = false;
    for (WindowRecord *at = first; at && (at == first || !(at->style & WS_GROUP)); at = at->next) {
        isBehind = isBehind || at == from;
        if (at == from || !CanBeReached(at))
            continue;
        start = start ? start : at;
        last = at;
        before = isBehind ? before : at;
        next = isBehind && !next ? at : next;
    }
    WindowRecord *found = previous ? before : next;
    if (!found)
        found = previous ? last : start;
    return found ? found->handle : control;
}

// ---- keys ----

static void MoveByTab(HWND dialog)
{
    BOOL isBackward = GetKeyState(VK_SHIFT) < 0;
    HWND next = GetNextDlgTabItem(dialog, GetFocus(), isBackward);
    if (next)
        FocusControlByKey(dialog, next);
}

// Radio buttons are chosen by the arrows that lead to them.
static void MoveByArrow(HWND dialog, HWND from, bool isBackward)
{
    HWND next = GetNextDlgGroupItem(dialog, from, isBackward);
    if (!next || next == from)
        return;
    bool isRadio = (SendMessageA(next, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) != 0;
    FocusControlByKey(dialog, next);
    if (isRadio && GetFocus() == next)
        SendMessageA(next, BM_CLICK, 0, 0);
}

// A dialog without a default button hears IDOK all the same. A disabled button isn't pressed.
static void PressById(HWND dialog, int id)
{
    HWND button = GetDlgItem(dialog, id);
    if (!button || IsWindowEnabled(button))
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                     reinterpret_cast<LPARAM>(button));
}

// The focused button goes before the dialog's own default.
static void PressDefault(HWND dialog)
{
    HWND focus = GetFocus();
    if (focus && IsDefaultButton(focus)) {
        PressById(dialog, GetDlgCtrlID(focus));
        return;
    }
    LRESULT answer = SendMessageA(dialog, DM_GETDEFID, 0, 0);
    PressById(dialog, HIWORD(answer) == DC_HASDEFID ? LOWORD(answer) : IDOK);
}

// Whether the key means something to the dialog; the control says which ones it wants itself.
static bool HandleDialogKey(HWND dialog, const MSG *message)
{
    LRESULT code = SendMessageA(message->hwnd, WM_GETDLGCODE, message->wParam,
                                reinterpret_cast<LPARAM>(message));
    switch (message->wParam) {
    case VK_TAB: MoveByTab(dialog); return true;
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN:
        if (code & DLGC_WANTARROWS)
            return false;
        MoveByArrow(dialog, message->hwnd, message->wParam == VK_LEFT || message->wParam == VK_UP);
        return true;
    case VK_RETURN: PressDefault(dialog); return true;
    case VK_ESCAPE: PressById(dialog, IDCANCEL); return true;
    }
    return false;
}

// A message for the dialog or for what stands in it is handed out here, the others are the loop's.
BOOL WINAPI IsDialogMessageA(HWND dialog, LPMSG message)
{
    WindowRecord *record = FindWindowRecord(dialog);
    WindowRecord *target = message->hwnd ? FindWindowRecord(message->hwnd) : nullptr;
    while (target && target != record)
        target = IsChildRecord(target) ? target->parent : nullptr;
    if (!record || !target)
        return FALSE;
    if (message->message == WM_KEYDOWN && HandleDialogKey(dialog, message))
        return TRUE;
    TranslateMessage(message);
    DispatchMessageA(message);
    return TRUE;
}

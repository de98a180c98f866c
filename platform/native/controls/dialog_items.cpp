// A dialog's controls: by their number, and in the order of the Tab key.
#include "windows/window_table.h"

// The first control of this number; a dialog that has none gives null.
HWND WINAPI GetDlgItem(HWND dialog, int id)
{
    WindowRecord *record = FindWindowRecord(dialog);
    if (!record)
        return nullptr;
    for (WindowRecord *child = record->firstChild; child; child = child->next) {
        if (int(child->id) == id)
            return child->handle;
    }
    SetLastError(ERROR_CONTROL_ID_NOT_FOUND);
    return nullptr;
}

int WINAPI GetDlgCtrlID(HWND control)
{
    WindowRecord *record = FindWindowRecord(control);
    return record ? int(record->id) : 0;
}

// For a control that isn't there nothing is done, and the caller hears it.
BOOL WINAPI SetDlgItemTextA(HWND dialog, int id, LPCSTR text)
{
    HWND control = GetDlgItem(dialog, id);
    return control && SetWindowTextA(control, text);
}

// A control that isn't there has an empty text: the buffer is written in any case.
UINT WINAPI GetDlgItemTextA(HWND dialog, int id, LPSTR text, int size)
{
    HWND control = GetDlgItem(dialog, id);
    if (control)
        return UINT(GetWindowTextA(control, text, size));
    if (text && size > 0)
        text[0] = '\0';
    return 0;
}

LRESULT WINAPI SendDlgItemMessageA(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam)
{
    HWND control = GetDlgItem(dialog, id);
    return control ? SendMessageA(control, message, wParam, lParam) : 0;
}

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
    if (!from || from->parent != record)
        return nullptr;
    HWND found = previous ? StopBefore(record, from) : StopFrom(from->next);
    if (!found)
        found = previous ? StopBefore(record, nullptr) : StopFrom(record->firstChild);
    return found;
}

// Sending: the one way by which a message reaches a window's procedure, and the calls that are no
// more than a message. What a window does with one by default stands in default_procedure.cpp,
// above this file.
#include "windows/atoms.h"
#include "windows/window_table.h"

// Straight into the procedure, past the queue: there is one thread, which is always the window's.
LRESULT WINAPI SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    WindowRecord *record = FindWindowRecord(window);
    return record && record->procedure ? record->procedure(window, message, wParam, lParam) : 0;
}

// For a procedure that was set over another one and hands messages on to it.
LRESULT WINAPI CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM wParam,
                               LPARAM lParam)
{
    return procedure(window, message, wParam, lParam);
}

UINT WINAPI RegisterWindowMessageA(LPCSTR name)
{
    return AtomOfName(name);
}

int WINAPI GetWindowTextA(HWND window, LPSTR text, int size)
{
    if (!text || size <= 0)
        return 0;
    text[0] = '\0';  // a window that is gone or doesn't answer has no text
    return int(SendMessageA(window, WM_GETTEXT, WPARAM(size), reinterpret_cast<LPARAM>(text)));
}

BOOL WINAPI SetWindowTextA(HWND window, LPCSTR text)
{
    return FindWindowRecord(window) &&
           SendMessageA(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) > 0;
}

// Messages between windows, what a window does with one by default, and its text.
#include "atoms.h"
#include "window_table.h"

#include <string.h>

LRESULT WINAPI SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    WindowRecord *record = FindWindowRecord(window);
    return record ? record->procedure(window, message, wParam, lParam) : 0;
}

LRESULT WINAPI CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM wParam,
                               LPARAM lParam)
{
    return procedure(window, message, wParam, lParam);
}

// Copies what fits into `size` bytes, terminator included; the length copied.
static LRESULT CopyText(const WindowRecord *window, char *text, size_t size)
{
    if (!text || size == 0)
        return 0;
    size_t length = window->text ? strnlen(window->text, size - 1) : 0;
    if (length)
        memcpy(text, window->text, length);
    text[length] = '\0';
    return (LRESULT)length;
}

LRESULT WINAPI DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return 0;
    switch (message) {
    case WM_NCCREATE: return StoreWindowText(record, ((CREATESTRUCTA *)lParam)->lpszName);
    case WM_SETTEXT: return StoreWindowText(record, (const char *)lParam);
    case WM_GETTEXT: return CopyText(record, (char *)lParam, wParam);
    case WM_GETTEXTLENGTH: return record->text ? (LRESULT)strlen(record->text) : 0;
    case WM_CLOSE: DestroyWindow(window); break;
    case WM_PAINT: record->needsPaint = 0; break;
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE)
            SetFocus(window);
        break;
    }
    return 0;
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
    return (int)SendMessageA(window, WM_GETTEXT, (WPARAM)size, (LPARAM)text);
}

BOOL WINAPI SetWindowTextA(HWND window, LPCSTR text)
{
    return FindWindowRecord(window) && SendMessageA(window, WM_SETTEXT, 0, (LPARAM)text) > 0;
}

// What a window does with a message that its own procedure leaves: the end of the road of every
// message, for the windows of programs and for the layer's controls.
#include <string.h>

#include "windows/window_table.h"

// Copies what fits into `size` bytes, terminator included; the length copied.
static LRESULT CopyText(const WindowRecord *window, char *text, size_t size)
{
    if (!text || size == 0)
        return 0;
    size_t length = window->text ? strnlen(window->text, size - 1) : 0;
    if (length)
        memcpy(text, window->text, length);
    text[length] = '\0';
    return LRESULT(length);
}

LRESULT WINAPI DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return 0;
    switch (message) {
    // A text without memory refuses the window, as it refuses a later change.
    case WM_NCCREATE:
        return StoreWindowText(record, reinterpret_cast<CREATESTRUCTA *>(lParam)->lpszName);
    case WM_SETTEXT: return StoreWindowText(record, reinterpret_cast<const char *>(lParam));
    case WM_GETTEXT: return CopyText(record, reinterpret_cast<char *>(lParam), wParam);
    case WM_GETTEXTLENGTH: return record->text ? LRESULT(strlen(record->text)) : 0;
    case WM_CLOSE: DestroyWindow(window); break;
    case WM_PAINT: record->needsPaint = false; break;  // painted by nobody is painted too
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE)
            SetFocus(window);
        break;
    }
    return 0;
}

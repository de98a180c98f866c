// Where windows stand: their rectangles and their order. A rectangle is kept within the parent and
// told on the screen. There is no frame: the client area is the whole of a window.
#include "windows/activation.h"
#include "windows/order.h"
#include "windows/window_table.h"

// On the screen: each window stands in its parent, up to the root.
BOOL WINAPI GetWindowRect(HWND window, LPRECT rect)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return FALSE;
    *rect = record->rect;
    for (record = record->parent; record; record = record->parent) {
        rect->left += record->rect.left;
        rect->right += record->rect.left;
        rect->top += record->rect.top;
        rect->bottom += record->rect.top;
    }
    return TRUE;
}

BOOL WINAPI GetClientRect(HWND window, LPRECT rect)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return FALSE;
    *rect = {0, 0, record->rect.right - record->rect.left, record->rect.bottom - record->rect.top};
    return TRUE;
}

// Keeps the size.
static void MoveTo(RECT *rect, int x, int y)
{
    *rect = {x, y, x + rect->right - rect->left, y + rect->bottom - rect->top};
}

// Keeps the place; a size below 0 is none.
static void Resize(RECT *rect, int width, int height)
{
    rect->right = rect->left + (width > 0 ? width : 0);
    rect->bottom = rect->top + (height > 0 ? height : 0);
}

// `after` is a window that it shall stand behind, or one of the four names of places. Behind a
// window of another parent means nothing, and it goes to the front.
static void Reorder(WindowRecord *window, HWND after)
{
    Unlink(window);
    if (after == HWND_TOPMOST)
        window->exStyle |= WS_EX_TOPMOST;
    if (after == HWND_NOTOPMOST || after == HWND_BOTTOM)
        window->exStyle &= ~DWORD(WS_EX_TOPMOST);
    WindowRecord *front = after == HWND_BOTTOM ? nullptr : FindWindowRecord(after);
    if (front && front->parent == window->parent) {
        window->next = front->next;
        front->next = window;
    } else if (after == HWND_BOTTOM) {
        LinkBehind(window);
    } else {
        LinkInFront(window);
    }
}

static bool IsPlaceInOrder(HWND after)
{
    return after == HWND_TOP || after == HWND_BOTTOM || after == HWND_TOPMOST ||
           after == HWND_NOTOPMOST;
}

// Sends nothing, so the record stays what it is; activation comes after it.
static void PlaceByFlags(WindowRecord *window, HWND after, const RECT *place, UINT flags)
{
    if (!(flags & SWP_NOMOVE))
        MoveTo(&window->rect, place->left, place->top);
    if (!(flags & SWP_NOSIZE))
        Resize(&window->rect, place->right, place->bottom);
    if (!(flags & SWP_NOZORDER) && after != window->handle)
        Reorder(window, after);
    if ((flags & SWP_SHOWWINDOW) && !(window->style & WS_VISIBLE))
        window->needsPaint = true;
    if (flags & SWP_SHOWWINDOW)
        window->style |= WS_VISIBLE;
    if (flags & SWP_HIDEWINDOW)
        window->style &= ~DWORD(WS_VISIBLE);
}

// All is checked before anything changes. A window that is moved in the order becomes active too,
// unless the flags say no.
BOOL WINAPI SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record || record == RootWindow())
        return FALSE;
    if (!(flags & SWP_NOZORDER) && !IsPlaceInOrder(after) && !FindWindowRecord(after))
        return FALSE;
    RECT place = {x, y, width, height};  // here the last two are width and height
    PlaceByFlags(record, after, &place, flags);
    if (!(flags & (SWP_NOACTIVATE | SWP_HIDEWINDOW | SWP_NOZORDER)) && !IsChildRecord(record) &&
        (record->style & WS_VISIBLE))
        ActivateWindow(window);
    return TRUE;
}

// The screen's size alone is asked for: dialogs are centred by it.
int WINAPI GetSystemMetrics(int index)
{
    switch (index) {
    case SM_CXSCREEN: return RootWindow()->rect.right;
    case SM_CYSCREEN: return RootWindow()->rect.bottom;
    }
    return 0;
}

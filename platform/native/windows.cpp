// The tree of windows: creation, destruction, place, order and activation.
#include "window_slots.h"
#include "activation.h"
#include "atoms.h"

#include <runtime.h>
#include <stdlib.h>
#include <string.h>

static int IsTopmost(const WindowRecord *window)
{
    return (window->exStyle & WS_EX_TOPMOST) != 0;
}

static void Unlink(WindowRecord *window)
{
    WindowRecord **link = &window->parent->firstChild;
    while (*link && *link != window)
        link = &(*link)->next;
    if (*link)
        *link = window->next;
    window->next = nullptr;
}

// In front of its siblings of the same kind: those that are always on top stay in front of the
// rest.
static void LinkInFront(WindowRecord *window)
{
    WindowRecord **link = &window->parent->firstChild;
    while (*link && IsTopmost(*link) && !IsTopmost(window))
        link = &(*link)->next;
    window->next = *link;
    *link = window;
}

static void LinkBehind(WindowRecord *window)
{
    WindowRecord **link = &window->parent->firstChild;
    while (*link && (IsTopmost(*link) || !IsTopmost(window)))
        link = &(*link)->next;
    window->next = *link;
    *link = window;
}

// An overlapped window may leave its place and size to the system; for others the default is 0.
static void PlaceWindow(WindowRecord *window, const CREATESTRUCTA *create)
{
    int isFree = !(window->style & (WS_CHILD | WS_POPUP));
    int x = create->x == CW_USEDEFAULT ? 0 : create->x;
    int y = create->x == CW_USEDEFAULT || create->y == CW_USEDEFAULT ? 0 : create->y;
    int width = create->cx, height = create->cy;
    if (width == CW_USEDEFAULT) {
        width = isFree ? RootWindow()->rect.right * 3 / 4 : 0;
        height = isFree ? RootWindow()->rect.bottom * 3 / 4 : 0;
    } else if (height == CW_USEDEFAULT) {
        height = 0;
    }
    window->rect = {x, y, x + (width > 0 ? width : 0), y + (height > 0 ? height : 0)};
}

// The window that owns a window is never a child itself, but the one that the child stands in.
static HWND OwnerFor(HWND parent)
{
    WindowRecord *record = parent ? FindWindowRecord(parent) : nullptr;
    while (record && record->parent != RootWindow())
        record = record->parent;
    return record ? record->handle : nullptr;
}

static WindowRecord *MakeRecord(WindowClass *windowClass, const CREATESTRUCTA *create)
{
    WindowRecord *window = NewWindowRecord();
    if (!window)
        return nullptr;
    window->windowClass = windowClass;
    window->procedure = windowClass->procedure;
    window->instance = create->hInstance;
    window->style = (DWORD)create->style;
    window->exStyle = create->dwExStyle;
    if (IsChildRecord(window)) {
        window->id = (LONG_PTR)create->hMenu;
        window->parent = FindWindowRecord(create->hwndParent);
    } else {
        window->owner = OwnerFor(create->hwndParent);
        window->parent = RootWindow();
    }
    PlaceWindow(window, create);
    if (IsChildRecord(window))
        LinkBehind(window);
    else
        LinkInFront(window);
    windowClass->windows++;
    return window;
}

static void RemoveRecord(WindowRecord *window)
{
    HWND handle = window->handle, owner = window->owner;
    Unlink(window);
    window->windowClass->windows--;
    FreeWindowRecord(window);
    LeaveActivation(handle, owner);
}

// The first child that hasn't had this step of the destruction yet.
static HWND ChildBefore(HWND parent, int step)
{
    WindowRecord *record = FindWindowRecord(parent);
    WindowRecord *child = record ? record->firstChild : nullptr;
    while (child && child->isDying >= step)
        child = child->next;
    return child ? child->handle : nullptr;
}

// From the children up: WM_NCDESTROY is the last that a window hears.
static void RemoveTree(HWND window)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return;
    record->isDying = 2;
    while (HWND child = ChildBefore(window, 2))
        RemoveTree(child);
    SendMessageA(window, WM_NCDESTROY, 0, 0);
    record = FindWindowRecord(window);
    if (record)
        RemoveRecord(record);
}

// WM_NCCREATE refused means a window that never was; after -1 from WM_CREATE it hears no more than
// its end.
static HWND AnnounceWindow(HWND window, CREATESTRUCTA *create)
{
    if (!SendMessageA(window, WM_NCCREATE, 0, (LPARAM)create)) {
        WindowRecord *record = FindWindowRecord(window);
        if (record)
            RemoveRecord(record);
        return nullptr;
    }
    if (SendMessageA(window, WM_CREATE, 0, (LPARAM)create) == -1) {
        RemoveTree(window);
        return nullptr;
    }
    return IsWindow(window) ? window : nullptr;
}

HWND WINAPI CreateWindowExA(DWORD exStyle, LPCSTR className, LPCSTR title, DWORD style, int x,
                            int y, int width, int height, HWND parent, HMENU menuOrId,
                            HINSTANCE instance, LPVOID parameter)
{
    instance = InstanceOrProgram(instance);
    WindowClass *windowClass = FindOrMakeClass(className, instance);
    if (!windowClass) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    if (parent && !FindWindowRecord(parent))
        return nullptr;
    if (!parent && (style & (WS_CHILD | WS_POPUP)) == WS_CHILD) {
        SetLastError(ERROR_TLW_WITH_WSCHILD);
        return nullptr;
    }
    CREATESTRUCTA create = {parameter, instance, menuOrId,    parent, height,    width,
                            y,         x,        (LONG)style, title,  className, exStyle};
    WindowRecord *record = MakeRecord(windowClass, &create);
    HWND window = record ? AnnounceWindow(record->handle, &create) : nullptr;
    record = window ? FindWindowRecord(window) : nullptr;
    if (record && (style & WS_VISIBLE))
        record->needsPaint = 1;
    if (record && !IsChildRecord(record) && (style & WS_VISIBLE))
        ActivateWindow(window);
    return window;
}

// All windows that this one owns go before it.
static void DestroyOwned(HWND owner)
{
    WindowRecord *window = RootWindow()->firstChild;
    while (window) {
        int mustGo = window->owner == owner && !window->isDying;
        HWND handle = window->handle;
        window = window->next;
        if (mustGo) {
            DestroyWindow(handle);
            window = RootWindow()->firstChild;  // any of them may be gone now
        }
    }
}

// From the window down to its children: all are still there when they hear WM_DESTROY.
static void SendDestroy(HWND window)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return;
    record->isDying = 1;
    SendMessageA(window, WM_DESTROY, 0, 0);
    while (HWND child = ChildBefore(window, 1))
        SendDestroy(child);
}

BOOL WINAPI DestroyWindow(HWND window)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return FALSE;
    if (record == RootWindow()) {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    if (record->isDying)
        return TRUE;  // asked for again by a message of its own destruction
    DestroyOwned(window);
    SendDestroy(window);
    RemoveTree(window);
    return TRUE;
}

BOOL WINAPI IsWindow(HWND window)
{
    return FindWindowRecord(window) != nullptr;
}

static int HasTitle(const WindowRecord *window, const char *title)
{
    return CompareNoCase(window->text ? window->text : "", title) == 0;
}

HWND WINAPI FindWindowA(LPCSTR className, LPCSTR title)
{
    ATOM atom = className ? FindAtom(className) : 0;
    if (className && !atom)
        return nullptr;
    for (WindowRecord *window = RootWindow()->firstChild; window; window = window->next) {
        if ((!className || window->windowClass->atom == atom) &&
            (!title || HasTitle(window, title)))
            return window->handle;
    }
    return nullptr;
}

HWND WINAPI GetDesktopWindow(void)
{
    return RootWindow()->handle;
}

HWND WINAPI GetWindow(HWND window, UINT relation)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return nullptr;
    WindowRecord *found = nullptr;
    switch (relation) {
    case GW_CHILD: found = record->firstChild; break;
    case GW_HWNDNEXT: found = record->next; break;
    case GW_OWNER: return record->owner;
    }
    return found ? found->handle : nullptr;
}

HWND WINAPI GetParent(HWND window)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return nullptr;
    return IsChildRecord(record) ? record->parent->handle : record->owner;
}

LONG WINAPI GetWindowLongA(HWND window, int index)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return 0;
    switch (index) {
    case GWL_ID: return (LONG)record->id;
    case GWL_STYLE: return (LONG)record->style;
    case GWL_EXSTYLE: return (LONG)record->exStyle;
    }
    SetLastError(ERROR_INVALID_INDEX);
    return 0;
}

LONG_PTR WINAPI SetWindowLongPtrA(HWND window, int index, LONG_PTR value)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return 0;
    if (index != GWLP_WNDPROC || !value || record == RootWindow()) {
        SetLastError(ERROR_INVALID_INDEX);
        return 0;
    }
    LONG_PTR before = (LONG_PTR)record->procedure;
    record->procedure = (WNDPROC)value;
    return before;
}

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

static void MoveTo(RECT *rect, int x, int y)
{
    *rect = {x, y, x + rect->right - rect->left, y + rect->bottom - rect->top};
}

static void Resize(RECT *rect, int width, int height)
{
    rect->right = rect->left + (width > 0 ? width : 0);
    rect->bottom = rect->top + (height > 0 ? height : 0);
}

static void Reorder(WindowRecord *window, HWND after)
{
    Unlink(window);
    if (after == HWND_TOPMOST)
        window->exStyle |= WS_EX_TOPMOST;
    if (after == HWND_NOTOPMOST || after == HWND_BOTTOM)
        window->exStyle &= ~(DWORD)WS_EX_TOPMOST;
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

static int IsPlaceInOrder(HWND after)
{
    return after == HWND_TOP || after == HWND_BOTTOM || after == HWND_TOPMOST ||
           after == HWND_NOTOPMOST;
}

static void PlaceByFlags(WindowRecord *window, HWND after, const RECT *place, UINT flags)
{
    if (!(flags & SWP_NOMOVE))
        MoveTo(&window->rect, place->left, place->top);
    if (!(flags & SWP_NOSIZE))
        Resize(&window->rect, place->right, place->bottom);
    if (!(flags & SWP_NOZORDER) && after != window->handle)
        Reorder(window, after);
    if ((flags & SWP_SHOWWINDOW) && !(window->style & WS_VISIBLE))
        window->needsPaint = 1;
    if (flags & SWP_SHOWWINDOW)
        window->style |= WS_VISIBLE;
    if (flags & SWP_HIDEWINDOW)
        window->style &= ~(DWORD)WS_VISIBLE;
}

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

int WINAPI GetSystemMetrics(int index)
{
    switch (index) {
    case SM_CXSCREEN: return RootWindow()->rect.right;
    case SM_CYSCREEN: return RootWindow()->rect.bottom;
    }
    return 0;
}

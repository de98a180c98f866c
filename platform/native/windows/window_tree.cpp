// The tree of windows: how a window comes, how it goes, and how it is found. Both ways are made of
// messages, in the system's order, and each message may do anything: handles are looked up again
// after every one of them.
#include <assert.h>

#include "runtime.h"
#include "windows/activation.h"
#include "windows/atoms.h"
#include "windows/order.h"
#include "windows/window_table.h"

// An overlapped window may leave its place and size to the system; for others the default is 0.
static void PlaceWindow(WindowRecord *window, const CREATESTRUCTA *create)
{
    bool isFree = !(window->style & (WS_CHILD | WS_POPUP));
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

// In the tree, but nobody has heard of it yet. Children stand behind those that are there, in the
// order of a dialog's template; windows on the screen come in front.
static WindowRecord *MakeRecord(WindowClass *windowClass, const CREATESTRUCTA *create)
{
    WindowRecord *window = NewWindowRecord(windowClass);
    if (!window)
        return nullptr;
    window->instance = create->hInstance;
    window->style = DWORD(create->style);
    window->exStyle = create->dwExStyle;
    if (IsChildRecord(window)) {
        window->id = reinterpret_cast<LONG_PTR>(create->hMenu);
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
    return window;
}

// The first child that hasn't had this step of the destruction yet.
static HWND ChildBefore(HWND parent, DyingStep step)
{
    WindowRecord *record = FindWindowRecord(parent);
    WindowRecord *child = record ? record->firstChild : nullptr;
    while (child && child->dying >= step)
        child = child->next;
    return child ? child->handle : nullptr;
}

// A child is still here when its own WM_NCDESTROY destroyed this window: it ends without a parent.
static void LetChildrenGo(WindowRecord *window)
{
    while (WindowRecord *child = window->firstChild) {
        assert(child->dying == kToldNcDestroy);
        Unlink(child);
        child->parent = RootWindow();
    }
}

// Activation is left at last: its messages go to the owner, who must not find the window any more.
static void RemoveRecord(WindowRecord *window)
{
    HWND handle = window->handle, owner = window->owner;
    LetChildrenGo(window);
    Unlink(window);
    FreeWindowRecord(window);
    LeaveActivation(handle, owner);
}

// From the children up: WM_NCDESTROY is the last that a window hears.
static void RemoveTree(HWND window, UINT lastMessage)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return;
    record->dying = kToldNcDestroy;
    while (HWND child = ChildBefore(window, kToldNcDestroy))
        RemoveTree(child, WM_NCDESTROY);
    SendMessageA(window, lastMessage, 0, 0);
    record = FindWindowRecord(window);
    if (record)
        RemoveRecord(record);
}

// WM_NCCREATE refused means a window that never was and hears no end; after -1 from WM_CREATE it
// hears no more than its end.
static HWND AnnounceWindow(HWND window, CREATESTRUCTA *create)
{
    if (!SendMessageA(window, WM_NCCREATE, 0, reinterpret_cast<LPARAM>(create))) {
        RemoveTree(window, WM_NULL);
        return nullptr;
    }
    if (SendMessageA(window, WM_CREATE, 0, reinterpret_cast<LPARAM>(create)) == -1) {
        RemoveTree(window, WM_NCDESTROY);
        return nullptr;
    }
    return IsWindow(window) ? window : nullptr;
}

// Nothing may come to a window that hears its last message: it would outlive its parent.
static bool CanHaveWindows(HWND parent)
{
    WindowRecord *record = FindWindowRecord(parent);
    if (record && record->dying == kToldNcDestroy)
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return record && record->dying != kToldNcDestroy;
}

// A window is in the tree when it hears its first message, and is shown and made active after its
// last one: what a procedure does in WM_CREATE sees it whole but not yet on the screen.
HWND WINAPI CreateWindowExA(DWORD exStyle, LPCSTR className, LPCSTR title, DWORD style, int x,
                            int y, int width, int height, HWND parent, HMENU menuOrId,
                            HINSTANCE instance, LPVOID parameter)
{
    instance = InstanceOrProgram(instance);
    WindowClass *windowClass = FindWindowClass(className, instance);
    if (!windowClass) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    if (parent && !CanHaveWindows(parent))
        return nullptr;
    if (!parent && (style & (WS_CHILD | WS_POPUP)) == WS_CHILD) {
        SetLastError(ERROR_TLW_WITH_WSCHILD);
        return nullptr;
    }
    CREATESTRUCTA create = {parameter, instance, menuOrId,    parent, height,    width,
                            y,         x,        LONG(style), title,  className, exStyle};
    WindowRecord *record = MakeRecord(windowClass, &create);
    HWND window = record ? AnnounceWindow(record->handle, &create) : nullptr;
    record = window ? FindWindowRecord(window) : nullptr;
    if (record && (style & WS_VISIBLE))
        record->needsPaint = true;
    if (record && !IsChildRecord(record) && (style & WS_VISIBLE))
        ActivateWindow(window);
    return window;
}

// All windows that this one owns go before it.
static void DestroyOwned(HWND owner)
{
    WindowRecord *window = RootWindow()->firstChild;
    while (window) {
        bool mustGo = window->owner == owner && !window->dying;
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
    record->dying = kToldDestroy;
    SendMessageA(window, WM_DESTROY, 0, 0);
    while (HWND child = ChildBefore(window, kToldDestroy))
        SendDestroy(child);
}

// First what the window owns, then WM_DESTROY from above, then WM_NCDESTROY from below: so each
// window still has its children when it hears the first and has none when it hears the second.
BOOL WINAPI DestroyWindow(HWND window)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return FALSE;
    if (record == RootWindow()) {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    if (record->dying)
        return TRUE;  // asked for again by a message of its own destruction
    DestroyOwned(window);
    SendDestroy(window);
    RemoveTree(window, WM_NCDESTROY);
    return TRUE;
}

BOOL WINAPI IsWindow(HWND window)
{
    return FindWindowRecord(window) != nullptr;
}

// A window without a text has the empty one.
static bool HasTitle(const WindowRecord *window, const char *title)
{
    return CompareNoCase(window->text ? window->text : "", title) == 0;
}

// Among the windows on the screen, from the front; null means any class or title.
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

// The screen stands for a window: it is the parent of all that have none, and hears nothing.
HWND WINAPI GetDesktopWindow()
{
    return RootWindow()->handle;
}

static WindowRecord *RecordBefore(const WindowRecord *window)
{
    WindowRecord *before = window->parent ? window->parent->firstChild : nullptr;
    while (before && before->next != window)
        before = before->next;
    return before;
}

// The relations that somebody asks for; any other gives null.
HWND WINAPI GetWindow(HWND window, UINT relation)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return nullptr;
    WindowRecord *found = nullptr;
    switch (relation) {
    case GW_CHILD: found = record->firstChild; break;
    case GW_HWNDNEXT: found = record->next; break;
    case GW_HWNDPREV: found = RecordBefore(record); break;
    case GW_OWNER: return record->owner;
    }
    return found ? found->handle : nullptr;
}

// On Windows too this gives the owner of a window that has no parent.
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
    case GWL_ID: return LONG(record->id);
    case GWL_STYLE: return LONG(record->style);
    case GWL_EXSTYLE: return LONG(record->exStyle);
    }
    SetLastError(ERROR_INVALID_INDEX);
    return 0;
}

// Only the procedure can be set: this is how a control is subclassed. The one from before.
LONG_PTR WINAPI SetWindowLongPtrA(HWND window, int index, LONG_PTR value)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return 0;
    if (index != GWLP_WNDPROC || !value || record == RootWindow()) {
        SetLastError(ERROR_INVALID_INDEX);
        return 0;
    }
    LONG_PTR before = reinterpret_cast<LONG_PTR>(record->procedure);
    record->procedure = reinterpret_cast<WNDPROC>(value);
    return before;
}

// The order of siblings: a list from the front to the back, in which windows that are always on top
// stand before all others.
#include "windows/order.h"

static bool IsTopmost(const WindowRecord *window)
{
    return (window->exStyle & WS_EX_TOPMOST) != 0;
}

// The list is short, so a window is sought from the front instead of knowing its neighbour.
void Unlink(WindowRecord *window)
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
void LinkInFront(WindowRecord *window)
{
    WindowRecord **link = &window->parent->firstChild;
    while (*link && IsTopmost(*link) && !IsTopmost(window))
        link = &(*link)->next;
    window->next = *link;
    *link = window;
}

// A window that is always on top goes behind the others of its kind, in front of all the rest.
void LinkBehind(WindowRecord *window)
{
    WindowRecord **link = &window->parent->firstChild;
    while (*link && (IsTopmost(*link) || !IsTopmost(window)))
        link = &(*link)->next;
    window->next = *link;
    *link = window;
}

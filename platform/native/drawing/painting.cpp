// Painting: who has to, and between which two calls. A window's painter gets a context for its
// time; what a window shows is painted at once by UpdateWindow, or when the queue has nothing
// better.
#include "drawing/contexts.h"
#include "windows/hooks.h"
#include "windows/window_table.h"

// From here on the window counts as painted, so that what changes during its painting makes it due
// again.
HDC WINAPI BeginPaint(HWND window, LPPAINTSTRUCT paint)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record)
        return nullptr;
    *paint = {};
    GetClientRect(window, &paint->rcPaint);
    record->needsPaint = false;
    paint->hdc = reinterpret_cast<HDC>(NewContext(window));
    return paint->hdc;
}

// Gives the context back.
BOOL WINAPI EndPaint(HWND, const PAINTSTRUCT *paint)
{
    ContextRecord *context = FindContext(paint->hdc);
    if (context)
        *context = {};
    return TRUE;
}

// The window before those that stand in it. Each WM_PAINT may do anything, so the next window is
// asked for by its handle.
static void PaintInside(HWND window)
{
    WindowRecord *record = FindWindowRecord(window);
    if (!record || !(record->style & WS_VISIBLE))
        return;
    if (record->needsPaint)
        SendMessageA(window, WM_PAINT, 0, 0);
    record = FindWindowRecord(window);
    HWND child = record && record->firstChild ? record->firstChild->handle : nullptr;
    while (child) {
        PaintInside(child);
        child = GetWindow(child, GW_HWNDNEXT);
    }
}

// Paints now what would be painted when the queue is empty: a meter shows its state during long
// work.
BOOL WINAPI UpdateWindow(HWND window)
{
    if (!FindWindowRecord(window))
        return FALSE;
    if (IsWindowVisible(window))
        PaintInside(window);
    return TRUE;
}

BOOL WINAPI InvalidateRect(HWND window, const RECT *, BOOL)
{
    WindowRecord *record = FindWindowRecord(window);
    if (record)
        record->needsPaint = true;
    return record != nullptr;
}

// Outside of its painting; null is the screen.
HDC WINAPI GetDC(HWND window)
{
    WindowRecord *record = window ? FindWindowRecord(window) : RootWindow();
    return record ? reinterpret_cast<HDC>(NewContext(record->handle)) : nullptr;
}

// 1 when it was given back.
int WINAPI ReleaseDC(HWND, HDC handle)
{
    ContextRecord *context = FindContext(handle);
    if (context)
        *context = {};
    return context != nullptr;
}

DWORD WINAPI GetGuiResources(HANDLE, DWORD kind)
{
    return kind == GR_USEROBJECTS ? CountWindows() + CountHooks() : CountDrawingObjects();
}

// The records behind the window handles, for the files that implement windows. A handle is a slot
// number with the slot's generation, so that a dead handle is recognised and never followed. Any
// message may destroy any window: whoever sends one looks its handles up again afterwards.
#ifndef ORVEL_PLATFORM_NATIVE_WINDOW_TABLE_H
#define ORVEL_PLATFORM_NATIVE_WINDOW_TABLE_H

#include <windows.h>

struct WindowClass {
    WindowClass *next;
    ATOM atom;
    HINSTANCE instance;  // none: a class of the layer's own, for every module
    WNDPROC procedure;
    int windows;  // how many there are of it
};

// Siblings are linked in their order on the screen, topmost first. `parent` is the root record for
// windows that aren't children, so every window has one.
struct WindowRecord {
    HWND handle;
    WindowClass *windowClass;
    WNDPROC procedure;
    HINSTANCE instance;
    WindowRecord *parent, *firstChild, *next;
    HWND owner;
    DWORD style, exStyle;
    LONG_PTR id;
    RECT rect;   // within the parent
    char *text;  // none is an empty one
    int isDying;
    int needsPaint;
    // Of dialogs: the procedure, the id of the default button, and the control that had the focus
    // when another window became active.
    DLGPROC dialogProcedure;
    int defaultId;
    HWND leftFocus;
    LONG_PTR control[3];  // what a control keeps, meaning by its class
};

// Whether the window stands in its parent instead of on the screen.
int IsChildRecord(const WindowRecord *window);

// The window itself or the one that it stands in: the one on the screen.
HWND TopLevelOf(const WindowRecord *window);

// The record of a living window; none for any other value, and the last error is set then.
WindowRecord *FindWindowRecord(HWND window);

// The root of the tree, which stands for the screen: GetDesktopWindow gives its handle.
WindowRecord *RootWindow();

// Takes a copy of the text (none is an empty one). 1, or 0 when there is no memory.
int StoreWindowText(WindowRecord *window, const char *text);

#endif

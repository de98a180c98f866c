// The records behind the window handles, for the files that implement windows. A handle is a slot
// number with the slot's generation, so that a dead handle is recognised and never followed. Any
// message may destroy any window: whoever sends one looks its handles up again afterwards.
#ifndef ORVEL_PLATFORM_NATIVE_WINDOW_TABLE_H
#define ORVEL_PLATFORM_NATIVE_WINDOW_TABLE_H

#include <windows.h>

struct WindowClass {
    WindowClass *next;
    ATOM atom;
    HINSTANCE instance;
    WNDPROC procedure;
    int windows;  // how many there are of it
};

// Siblings are linked in their order on the screen, topmost first. `parent` is the root record for
// windows that aren't children, so every window has one.
struct WindowRecord {
    HWND handle;  // none for the root
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
};

// The record of a living window; none for any other value, and the last error is set then.
WindowRecord *FindWindowRecord(HWND window);

// The root of the tree, which stands for the screen.
WindowRecord *RootWindow();

// Takes a copy of the text (none is an empty one). 1, or 0 when there is no memory.
int StoreWindowText(WindowRecord *window, const char *text);

#endif

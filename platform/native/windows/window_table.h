// The records behind the window handles, for the files that implement windows. A handle is a slot
// number with the slot's generation, so that a dead handle is recognised and never followed. Any
// message may destroy any window: whoever sends one looks its handles up again afterwards.
#ifndef ORVEL_PLATFORM_NATIVE_WINDOWS_WINDOW_TABLE_H
#define ORVEL_PLATFORM_NATIVE_WINDOWS_WINDOW_TABLE_H

#include <windows.h>

#include "windows/classes.h"

// How far the destruction of a window has come.
enum DyingStep : int {
    kAlive,
    kToldDestroy,    // WM_DESTROY is sent or being sent
    kToldNcDestroy,  // so is WM_NCDESTROY, the last that it hears
};

// Siblings are linked in their order on the screen, topmost first. `parent` is the root record for
// windows that aren't children, so every window but the root has one.
struct WindowRecord {
    HWND handle;
    WindowClass *windowClass;  // null for the root alone
    WNDPROC procedure;         // the class's, until SetWindowLongPtrA sets another
    HINSTANCE instance;        // the module that made the window
    WindowRecord *parent, *firstChild, *next;
    HWND owner;  // null, or the window on the screen that it goes with; it may be dead
    DWORD style, exStyle;
    LONG_PTR id;  // of a child
    RECT rect;    // pixels, within the parent
    char *text;   // owned; null is an empty one
    HFONT font;   // that a control or dialog was told to use, not owned; null: the system's
    DyingStep dying;
    bool needsPaint;  // WM_PAINT is due as soon as it is visible
    void *classData;  // owned: dataSize bytes of the class, zeroed at first; see ClassData
};

// A zeroed record of a class, with a new handle and not in the tree yet; null when there are too
// many or no memory, and the last error is set then.
WindowRecord *NewWindowRecord(WindowClass *windowClass);

// Frees a record that has left the tree, with its text and its class's data; its handle is dead
// from now on.
void FreeWindowRecord(WindowRecord *window);

// The record of a living window; null for any other value, and the last error is set then.
WindowRecord *FindWindowRecord(HWND window);

// The root of the tree, which stands for the screen: GetDesktopWindow gives its handle.
WindowRecord *RootWindow();

// What the class of this procedure keeps for the window, as long as the window lives; a class that
// keeps memory of its own in it gives that back at WM_NCDESTROY. Null for a window of another
// class, since anybody may hand any window to any procedure.
void *ClassData(const WindowRecord *window, WNDPROC procedure);

// Whether the window stands in its parent instead of on the screen.
bool IsChildRecord(const WindowRecord *window);

// The window itself or the one that it stands in: the one on the screen.
HWND TopLevelOf(const WindowRecord *window);

// Takes a copy of the text (null is an empty one). False when there is no memory.
bool StoreWindowText(WindowRecord *window, const char *text);

// How many windows there are.
DWORD CountWindows();

#endif

// Window classes: what all windows of one kind have in common. A program registers its own by
// RegisterClassA; the layer's own (controls, dialogs) register themselves when the layer is loaded,
// so that nothing in this folder knows which there are. Called by the tree of windows.
#ifndef ORVEL_PLATFORM_NATIVE_WINDOWS_CLASSES_H
#define ORVEL_PLATFORM_NATIVE_WINDOWS_CLASSES_H

#include <windows.h>

struct WindowClass {
    WindowClass *next;   // owned by classes.cpp, as the rest but for the layer's own classes
    ATOM atom;           // of its name
    HINSTANCE instance;  // the module that registered it; null: the layer's own, for every module
    WNDPROC procedure;
    size_t dataSize;  // bytes that each window of it keeps for the procedure, see ClassData
    int windows;      // how many there are of it
};

// Adds a class of the layer's own; the record stays with its caller and must live as long as the
// process.
void AddSystemClass(WindowClass *added, const char *name);

// The class of this name (or MAKEINTATOM) that this module registered, or the layer's own of that
// name; null when there is none.
WindowClass *FindWindowClass(const char *nameOrAtom, HINSTANCE instance);

// Null means the program's own.
HINSTANCE InstanceOrProgram(HINSTANCE instance);

#endif

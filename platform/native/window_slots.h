// Making and freeing window records, and finding classes: for the file that creates windows.
#ifndef ORVEL_PLATFORM_NATIVE_WINDOW_SLOTS_H
#define ORVEL_PLATFORM_NATIVE_WINDOW_SLOTS_H

#include "window_table.h"

// A zeroed record with a new handle, not in the tree yet; none when there are too many.
WindowRecord *NewWindowRecord();

// Frees a record that has left the tree; its handle is dead from now on.
void FreeWindowRecord(WindowRecord *window);

// The class of this name (or MAKEINTATOM) that this module registered, or the layer's own of that
// name, which is made at its first use; none when there is none.
WindowClass *FindOrMakeClass(const char *nameOrAtom, HINSTANCE instance);

// How many windows there are.
DWORD CountWindows();

// No instance means the program's own.
HINSTANCE InstanceOrProgram(HINSTANCE instance);

#endif

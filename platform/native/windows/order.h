// The order of siblings on the screen, for the files that make and move windows.
#ifndef ORVEL_PLATFORM_NATIVE_WINDOWS_ORDER_H
#define ORVEL_PLATFORM_NATIVE_WINDOWS_ORDER_H

#include "windows/window_table.h"

// Takes the window out of its parent's list; does nothing for one that isn't in it.
void Unlink(WindowRecord *window);

// Puts it into its parent's list before, or behind, those of its kind: always on top or not.
void LinkInFront(WindowRecord *window);
void LinkBehind(WindowRecord *window);

#endif

// The window classes that the layer brings along.
#ifndef ORVEL_PLATFORM_NATIVE_CONTROLS_H
#define ORVEL_PLATFORM_NATIVE_CONTROLS_H

#include <windows.h>

// The procedure of a class of this name, in any case; none for other names.
WNDPROC ControlProcedure(const char *className);

#endif

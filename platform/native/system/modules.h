// What a module's own entry code needs of the module loader.
#ifndef ORVEL_PLATFORM_NATIVE_SYSTEM_MODULES_H
#define ORVEL_PLATFORM_NATIVE_SYSTEM_MODULES_H

#include <windows.h>

#pragma GCC visibility push(default)

// The handle of the module in which this address lies; none for an address outside of all modules.
HMODULE ModuleOfAddress(const void *address);

// The entry point of a module that is being loaded said no: LoadLibraryA will unload it again.
void RefuseModule(HMODULE module);

#pragma GCC visibility pop

#endif

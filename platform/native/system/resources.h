// The resources of native modules: the compiled resource file that a module was linked with.
#ifndef ORVEL_PLATFORM_NATIVE_SYSTEM_RESOURCES_H
#define ORVEL_PLATFORM_NATIVE_SYSTEM_RESOURCES_H

#include <windows.h>

#pragma GCC visibility push(default)

// A module brings its resources when it is loaded and takes them back when it goes; the bytes stay
// where they are. False when there are too many modules with resources.
bool AddModuleResources(HMODULE module, const void *bytes, size_t size);
void RemoveModuleResources(HMODULE module);

#pragma GCC visibility pop

struct ResourceBytes {
    const BYTE *bytes;  // none: not found
    size_t size;
};

// A dialog template by its name, in any case, or its number (MAKEINTRESOURCE).
ResourceBytes FindDialogTemplate(HMODULE module, const char *name);

#endif

// The module itself, for the parts that look for files beside it.
#pragma once

#include <windows.h>

// The instance that the loader gave to DllMain; null before, which stands for the program.
HINSTANCE ModuleInstance();

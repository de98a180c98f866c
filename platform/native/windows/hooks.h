// The chain of keyboard hooks, for the queue that keys come through.
#ifndef ORVEL_PLATFORM_NATIVE_WINDOWS_HOOKS_H
#define ORVEL_PLATFORM_NATIVE_WINDOWS_HOOKS_H

#include <windows.h>

// Shows a key to the hooks, the newest first. Nonzero when they swallow it.
LRESULT CallKeyboardHooks(int code, WPARAM key, LPARAM keyData);

// How many hooks there are.
DWORD CountHooks();

#endif

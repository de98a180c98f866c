// Which window is active and which has the focus, for the files that create and destroy windows.
#ifndef ORVEL_PLATFORM_NATIVE_WINDOWS_ACTIVATION_H
#define ORVEL_PLATFORM_NATIVE_WINDOWS_ACTIVATION_H

#include <windows.h>

// Makes a window of the screen the active one, or none; both sides are told. The focus goes along.
void ActivateWindow(HWND window);

// The window is gone: it is neither active nor focused any more, and its owner takes its place.
void LeaveActivation(HWND window, HWND owner);

#endif

// Tells a developer's monitor of a dialog's commands.
#pragma once

#include <windows.h>

// Sends both values to the window whose title contains "--- Show It ---"; nothing happens without
// one.
void ShowItTrace(WPARAM first, LPARAM second);

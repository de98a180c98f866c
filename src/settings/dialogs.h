// The dialogs behind the buttons of the options.
#pragma once

#include <windows.h>

// Which font codes have a keyboard, and its hot key: 1 when the keyboard manager must be restarted
// for it, else 0.
int KeyboardsDialog(HWND parent);

// The registered fonts: 1 when the table in memory was changed, else 0. It isn't written here.
int FontsDialog(HWND parent);

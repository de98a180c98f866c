// The user's options: loading, saving, and the keyboard's hot key. GetOrvelOption and
// SetOrvelOption are declared in orvel.h.
#pragma once

#include <windows.h>

// Loads the record from the registry; without a key it stores the defaults there. 1 read or
// written, 0 not: the defaults are then in force.
int LoadOptions();

// Stores the record: 1 written, 0 not.
int SaveOptions();

// Virtual key of the hot key; 0 when keyboard mapping is off; that of Pause when nothing is stored.
DWORD ReadHotKey();
int WriteHotKey(DWORD virtualKey);

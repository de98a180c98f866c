// What tests need of the layer and nobody else: it is linked into test programs and into nothing
// that is shipped. On native the test program has functions of the layer's names, which the loader
// finds before the layer's own; on Windows most of this can't be had.
#ifndef ORVEL_PLATFORM_TESTING_TESTING_H
#define ORVEL_PLATFORM_TESTING_TESTING_H

#include <windows.h>

// Of the GlobalAllocs to come, the one after `count` others fails, once; a negative count takes
// this back. 0 where the target can't do it (Windows).
int FailAllocationAfter(int count);

struct DrawnTextRecord {
    char text[64];  // longer ones are cut
    int x, y;
    COLORREF color;
    UINT align;
    int backgroundMode;
    LOGFONTA font;  // zeroed: the system's
};

// Line `number` (from 0) of what the window's painter wrote at its last WM_PAINT. 1, or 0 behind
// the last one, and where the target can't do it (Windows).
int DrawnText(HWND window, int number, DrawnTextRecord *drawn);

struct SystemFontRecord {
    const char *face;
    DWORD type;  // TRUETYPE_FONTTYPE or another kind
};

// From now on EnumFontFamiliesA tells of these fonts, which stay the caller's; none of them asks
// for their count 0. 0 where the target can't do it: Windows has fonts of its own.
int ListSystemFonts(const SystemFontRecord *fonts, int count);

// This process's registry and shared data stand below this folder from now on, so that what the
// user has stays untouched. On Windows nothing changes.
void UseFoldersBelow(const char *folder);

// Takes a key out of the registry, with its values; a key that isn't there is no failure. On native
// all keys go with it: a program's keys are its test's own.
void RemoveRegistryKey(HKEY root, const char *path);

#endif

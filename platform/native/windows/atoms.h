// Names with numbers: window classes and registered messages share one table, as on Windows.
#ifndef ORVEL_PLATFORM_NATIVE_WINDOWS_ATOMS_H
#define ORVEL_PLATFORM_NATIVE_WINDOWS_ATOMS_H

#include <windows.h>

constexpr int kMaxAtomName = 255;  // bytes, without terminator

// The number of a name, 0xC000 to 0xFFFF, the same for the same name in any case; a new name gets a
// new number. 0 for a missing, empty or overlong name and when the table is full.
ATOM AtomOfName(const char *name);

// The number, or 0 for a name that has none yet. Takes a number in place of a name
// (MAKEINTATOM) and gives it back.
ATOM FindAtom(const char *nameOrAtom);

#endif

// The library's two folders, the install folder (registry) and the data folder (created on demand),
// and paths in them. Paths have backslashes and at most 259 bytes; one that doesn't fit is null.
// Paths given back stand in static blocks, valid until the next call of the same operation.
#pragma once

#include "frame/records.h"

// Makes a folder the install folder of this process, whatever is registered: 1, or 0 when it is
// empty or doesn't fit.
int GiveInstallFolder(const char *folder);

// Reads the install folder into buffer (capacity in bytes): 1 done, 0 unknown, empty or not whole.
// From an empty folder Vesk.dll would be loaded from wherever the system finds one.
int ReadInstallFolder(char *buffer, DWORD capacity);

// Full path of a file in the install folder, null when the folder is unknown or the path too long.
const char *InstallFilePath(const char *name);

// The data folder in buffer (kPathSize bytes), or null.
char *GetDataFolder(char *buffer);

// Full path of a file in the data folder, or null.
const char *DataFilePath(const char *name);

// folder, a backslash where it lacks one, and name in target (kPathSize bytes); target may be
// folder. With an empty folder the name alone. Null when it doesn't fit: target then holds nothing
// of use.
char *JoinPath(char *target, const char *folder, const char *name);

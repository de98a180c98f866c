// Where paths with backslashes meet the file system: the one place that maps them, both ways.
#ifndef ORVEL_PLATFORM_NATIVE_SYSTEM_PATHS_H
#define ORVEL_PLATFORM_NATIVE_SYSTEM_PATHS_H

#include <limits.h>
#include <windows.h>

// Room for any path of the file system, terminator included.
constexpr int kNativePathSize = PATH_MAX;

// Writes the file system's form of a path: slashes, no drive letter. False when the path is
// missing, empty or doesn't fit; the last error is set then.
bool ToNativePath(const char *path, char *native, int nativeSize);

// Writes a native path with backslashes. Its length, or 0 when it doesn't fit.
int FromNativePath(const char *native, char *path, int pathSize);

// Joins folder and name into `joined`. False when it doesn't fit.
bool JoinNative(const char *folder, const char *name, char *joined, int joinedSize);

// Creates a folder and those above it. True when it is there in the end.
bool MakeFolders(const char *native);

// The folder that the environment names: $variable when that is an absolute path, else $HOME with
// `below` behind it, when that is a folder. False when there is neither or it doesn't fit.
bool EnvironmentFolder(const char *variable, const char *below, char *native, int nativeSize);

// The last error for what errno says about a file operation on this path.
DWORD FileErrorCode(int error, const char *native);

#endif

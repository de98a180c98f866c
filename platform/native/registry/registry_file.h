// The one text file that holds the registry, $XDG_CONFIG_HOME/orvel/registry. A line holds a key or
// one value of a key, and says all about it, so that a damaged line harms no other:
//
//     [HKEY_CURRENT_USER\Software\Orvel]
//     [HKEY_CURRENT_USER\Software\Orvel] "Path" = "C:\orvel"
//     [HKEY_CURRENT_USER\Software\Orvel] "Count" = dword 0000002a
//     [HKEY_CURRENT_USER\Software\Orvel] "State" = type 3 size 4: 01 02 fe 00
//
// In quotes and brackets %HH stands for a byte that would be taken for something else.
// Lines that can't be read (comments among them) mean nothing and are kept as they are.
#ifndef ORVEL_PLATFORM_NATIVE_REGISTRY_REGISTRY_FILE_H
#define ORVEL_PLATFORM_NATIVE_REGISTRY_REGISTRY_FILE_H

#include <windows.h>

constexpr int kMaxKeyPath = 2048;             // bytes of a whole key, terminator included
constexpr int kMaxKeyName = 255;              // of one part of it, without terminator
constexpr int kMaxValueName = 1024;           // bytes, terminator included
constexpr DWORD kMaxValueSize = 1024 * 1024;  // bytes of data
constexpr size_t kMaxFileSize = 64u << 20;    // a longer file is one that can't be read

struct RegistryText {
    char *bytes;  // none for a file that isn't there: an empty registry
    size_t size;  // bytes
};

// What one line says. The data stand in the caller's buffer of kMaxValueSize bytes.
struct RegistryLine {
    char key[kMaxKeyPath];
    char name[kMaxValueName];
    bool isValue;  // false: the line only says that the key exists
    DWORD type;    // REG_SZ and so on; any number is kept
    DWORD size;    // bytes of data
    BYTE *data;    // the caller's; null: they aren't kept
};

// Reads the file. ERROR_SUCCESS also when there is none; everything else means that the file can't
// be read now, and that nothing may be made of it. FreeRegistryText gives the memory back.
LONG ReadRegistry(RegistryText *text);
void FreeRegistryText(RegistryText *text);

// Parses the line that starts at `*place` and moves on to the next; false for a line that can't be
// read. `data` none: the value's size and type are told and its data are not kept.
bool ParseRegistryLine(const RegistryText *text, size_t *place, RegistryLine *line);

// Holds the registry against other processes from reading it to having written it. Null when the
// lock can't be had, else what UnlockRegistry takes.
HANDLE LockRegistry();
void UnlockRegistry(HANDLE lock);

// Decides for each readable line of the old file whether the new one has it too.
typedef bool (*KeepRegistryLine)(const RegistryLine *line, void *context);

// Writes the file anew, under the lock: the old text without the lines that aren't kept, then the
// `added` lines. An error code; the old file is untouched unless it is ERROR_SUCCESS.
LONG WriteRegistry(const RegistryText *old, KeepRegistryLine keep, void *context,
                   const RegistryLine *added, int addedCount);

#endif

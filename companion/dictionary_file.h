// Dictionary files as whole contents: where they stand, how they are read and replaced.
#pragma once

#include <cstddef>

constexpr size_t kLargestFile = 64u << 20;  // a larger one counts as unreadable

enum FileResult {
    kFileRead,
    kFileMissing,
    kFileUnreadable  // it is there, but can't be read, or there is no memory for it
};

struct FileContent {
    char *bytes;  // not terminated; none for an empty file
    size_t size;
};

// Reads the file of that bare name from the data folder or, where that has none, from the folder of
// this module. The caller frees the content, whatever the result.
FileResult ReadDictionaryFile(const char *name, FileContent *content);
void FreeFileContent(FileContent *content);

// Puts a new content in the place of the data folder's file: after a crash at any moment the old or
// the new content stands there. Line ends become those of the target's text files. 1 done; 0: the
// old file is as it was.
int WriteDictionaryFile(const char *name, const char *bytes, size_t size);

// Keeps other processes from changing the file between reading and writing. A process that died
// with the lock, or holds it for too long, loses it. 0: there is no lock to be had, as in a folder
// that can't be written to; nothing is to be unlocked then.
int LockDictionaryFile(const char *name);
void UnlockDictionaryFile(const char *name);

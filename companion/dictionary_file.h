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
    char *bytes;  // not terminated; null for an empty file
    size_t size;
};

// Reads the file of that bare name from the data folder or, where that has none, from the folder of
// this module. The caller frees the content, whatever the result.
FileResult ReadDictionaryFile(const char *name, FileContent *content);

// The same from the folder of this module alone.
FileResult ReadInstalledFile(const char *name, FileContent *content);
void FreeFileContent(FileContent *content);

// Puts a new content in the place of the data folder's file: after a crash at any moment the old or
// the new content stands there. Line ends become those of the target's text files. 1 done; 0: the
// old file is as it was.
int WriteDictionaryFile(const char *name, const char *bytes, size_t size);

// Keeps other processes from changing the user's file between reading and writing. A process that
// holds the lock for seconds has lost it, and where no lock is to be had the change goes on without
// one: what the user wants to add matters more.
void LockUserFile();
void UnlockUserFile();

// Replacing a file as a whole, for both targets: what they share stands in
// runtime/replace_file.cpp, what each does in its own way is declared at the end and stands in its
// own folder. Paths are here in one form: bytes, UTF-8 on Windows, with the target's own
// separators.
#ifndef ORVEL_PLATFORM_RUNTIME_REPLACE_FILE_H
#define ORVEL_PLATFORM_RUNTIME_REPLACE_FILE_H

#include <stdio.h>

constexpr int kReplacePathSize = 4096;  // bytes, terminator included

// As BeginReplaceFile of runtime.h, for a path in that form. EndReplaceFile ends it too. Both leave
// the reason of a failure as the last error.
FILE *BeginReplacement(const char *path);

enum SiblingState {
    kSiblingOpen,
    kSiblingTaken,   // another process writes it: the next one may be free
    kSiblingFailed,  // the last error says why
};

// ---- what each target does in its own way; all set the last error when they fail ----

// Writes the path of the file that is to be replaced: the end of a chain of links.
bool ResolveTarget(const char *path, char *target);

// Whether a file may take the place of what stands there, or nothing does: not a folder, a device,
// or a file that can't be written to.
bool MayBeReplaced(const char *target);

// Opens the new file, empty and for this process alone, with the rights of the old one.
SiblingState OpenSibling(const char *sibling, const char *target, FILE **file);

// Brings what was written to the disk and renames the new file over the old one.
bool PutInPlace(FILE *file, const char *sibling, const char *target);

// Closes the new file, and removes it unless it is in place now.
void CloseSibling(FILE *file, const char *sibling, bool isInPlace);

#endif

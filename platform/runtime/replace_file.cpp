// A new file takes an old one's place by rename, after its data have reached the disk. The new file
// has one of a few names that come from the old file's name, and is held by its process alone: two
// processes never write the same one, and what a killed process left behind is taken over by the
// next.
#include "replace_file.h"

#include <string.h>

#include "runtime.h"

constexpr int kMaxReplacing = 4;     // at the same time in this process
constexpr int kSiblingsPerName = 8;  // at the same time for one file, in all processes

struct Replacement {
    FILE *file;                      // null: the slot is free
    char target[kReplacePathSize];   // the file whose place the new one takes
    char sibling[kReplacePathSize];  // the new file, in the same folder
};
static Replacement gReplacing[kMaxReplacing];

// Null finds a free slot.
static Replacement *FindReplacement(FILE *file)
{
    for (Replacement &slot : gReplacing) {
        if (slot.file == file)
            return &slot;
    }
    return nullptr;
}

// Only to tell siblings of different files apart (FNV-1a); two names with one number share their
// siblings, which are locked one by one all the same.
static unsigned HashName(const char *name)
{
    unsigned hash = 2166136261U;
    for (; *name; ++name)
        hash = (hash ^ BYTE(*name)) * 16777619U;
    return hash;
}

// A backslash or colon that is part of a name, as one target allows, only makes the sibling's name
// begin with that part: it still stands in the same folder.
static int FolderLength(const char *path)
{
    int length = 0;
    for (int i = 0; path[i]; ++i) {
        if (path[i] == '\\' || path[i] == '/' || path[i] == ':')
            length = i + 1;
    }
    return length;
}

static bool SiblingPath(Replacement *slot, int number)
{
    int folder = FolderLength(slot->target);
    int length = snprintf(slot->sibling, sizeof slot->sibling, "%.*s~%08x%d.tmp", folder,
                          slot->target, HashName(slot->target + folder), number);
    if (length > 0 && size_t(length) < sizeof slot->sibling)
        return true;
    SetLastError(ERROR_FILENAME_EXCED_RANGE);
    return false;
}

FILE *BeginReplacement(const char *path)
{
    Replacement *slot = FindReplacement(nullptr);
    if (!slot) {
        SetLastError(ERROR_TOO_MANY_OPEN_FILES);
        return nullptr;
    }
    if (!ResolveTarget(path, slot->target) || !MayBeReplaced(slot->target))
        return nullptr;
    for (int number = 0; number < kSiblingsPerName && SiblingPath(slot, number); ++number) {
        SiblingState state = OpenSibling(slot->sibling, slot->target, &slot->file);
        if (state != kSiblingTaken)
            return slot->file;  // null after a failure
    }
    return nullptr;
}

// The reason is kept over the closing, which may fail for reasons of its own.
int EndReplaceFile(FILE *file, int keep)
{
    Replacement *slot = file ? FindReplacement(file) : nullptr;
    if (!slot) {
        SetLastError(ERROR_INVALID_HANDLE);
        return 0;
    }
    bool done = keep && PutInPlace(file, slot->sibling, slot->target);
    DWORD reason = GetLastError();
    CloseSibling(file, slot->sibling, done);
    slot->file = nullptr;
    if (!done)
        SetLastError(reason);
    return done;
}

// A new file takes an old one's place by rename, after its data have reached the disk. The new file
// has one of a few names that come from the old file's name, and is held under a lock: two
// processes never write the same one, and what a killed process left behind is taken over by the
// next.
#include "replace_file.h"
#include "paths.h"

#include <errno.h>
#include <fcntl.h>
#include <runtime.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

constexpr int kMaxReplacing = 4;     // at the same time in this process
constexpr int kSiblingsPerName = 8;  // at the same time for one file, in all processes

struct Replacement {
    FILE *file;  // none: the slot is free
    char target[kNativePathSize];
    char sibling[kNativePathSize];
};
static Replacement gReplacing[kMaxReplacing];

static Replacement *FindReplacement(FILE *file)
{
    for (Replacement &slot : gReplacing) {
        if (slot.file == file)
            return &slot;
    }
    return nullptr;
}

static uint32_t HashName(const char *name)
{
    uint32_t hash = 2166136261u;
    for (; *name; name++)
        hash = (hash ^ (unsigned char)*name) * 16777619u;
    return hash;
}

static int FolderLength(const char *native)
{
    const char *slash = strrchr(native, '/');
    return slash ? (int)(slash - native) + 1 : 0;
}

static int SiblingPath(const char *target, int number, char *sibling, int siblingSize)
{
    int folder = FolderLength(target);
    int length = snprintf(sibling, (size_t)siblingSize, "%.*s~%08x%d.tmp", folder, target,
                          (unsigned)HashName(target + folder), number);
    if (length < siblingSize)
        return 1;
    errno = ENAMETOOLONG;
    return 0;
}

// What stands under the name may only be replaced when it is a file that may be written to: rename
// alone would ask for no more than the folder's permission, and would replace a device too.
static int MayBeReplaced(const char *target, mode_t *mode)
{
    struct stat status;
    if (stat(target, &status) != 0) {
        *mode = 0;
        return errno == ENOENT;
    }
    *mode = status.st_mode & 07777;
    errno = S_ISDIR(status.st_mode) ? EISDIR : EACCES;
    return S_ISREG(status.st_mode) && (status.st_mode & 0222) != 0 && access(target, W_OK) == 0;
}

// Between opening and locking another process may have renamed the file to its final place.
static int IsStillAt(int fd, const char *sibling)
{
    struct stat opened, named;
    return fstat(fd, &opened) == 0 && lstat(sibling, &named) == 0 && S_ISREG(opened.st_mode) &&
           opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

// An empty, locked file; -1 with EWOULDBLOCK when another process has it.
static int OpenSibling(const char *sibling)
{
    int fd = open(sibling, O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
    if (fd < 0)
        return -1;
    if (flock(fd, LOCK_EX | LOCK_NB) == 0) {
        if (!IsStillAt(fd, sibling))
            errno = EWOULDBLOCK;
        else if (ftruncate(fd, 0) == 0)
            return fd;
    }
    int reason = errno;
    close(fd);
    errno = reason;
    return -1;
}

static int OpenFreeSibling(Replacement *slot)
{
    for (int number = 0; number < kSiblingsPerName; number++) {
        if (!SiblingPath(slot->target, number, slot->sibling, sizeof slot->sibling))
            return -1;
        int fd = OpenSibling(slot->sibling);
        if (fd >= 0 || errno != EWOULDBLOCK)
            return fd;
    }
    return -1;
}

// A link's target is what gets replaced, never the link itself.
static int ResolveTarget(const char *native, char *target)
{
    if (realpath(native, target))
        return 1;
    if (errno != ENOENT || strlen(native) >= kNativePathSize)
        return 0;
    memcpy(target, native, strlen(native) + 1);
    return 1;
}

FILE *BeginReplaceNative(const char *native)
{
    mode_t mode = 0;
    Replacement *slot = FindReplacement(nullptr);
    if (!slot) {
        errno = EMFILE;
        return nullptr;
    }
    if (!ResolveTarget(native, slot->target) || !MayBeReplaced(slot->target, &mode))
        return nullptr;
    int fd = OpenFreeSibling(slot);
    if (fd < 0)
        return nullptr;
    if (mode && fchmod(fd, mode) != 0)
        mode = 0;  // not ours to set: the new file has the usual permissions
    slot->file = fdopen(fd, "w");
    if (slot->file)
        return slot->file;
    unlink(slot->sibling);
    close(fd);
    return nullptr;
}

// The rename itself is on the disk only when its folder is.
static void SyncFolder(const char *target)
{
    char folder[kNativePathSize];
    int length = FolderLength(target);
    memcpy(folder, target, (size_t)length);
    folder[length] = '\0';
    int fd = open(length ? folder : ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    fsync(fd);
    close(fd);
}

// The lock lasts until the file is closed, so nobody takes the sibling over before the rename.
static int PutInPlace(const Replacement *slot)
{
    mode_t mode;
    if (fflush(slot->file) != 0)
        return 0;
    if (ferror(slot->file)) {
        errno = EIO;
        return 0;
    }
    if (fsync(fileno(slot->file)) != 0 || !MayBeReplaced(slot->target, &mode))
        return 0;
    if (rename(slot->sibling, slot->target) != 0)
        return 0;
    SyncFolder(slot->target);
    return 1;
}

int EndReplaceNative(FILE *file, int keep)
{
    Replacement *slot = file ? FindReplacement(file) : nullptr;
    if (!slot) {
        errno = EBADF;
        return 0;
    }
    int done = keep && PutInPlace(slot);
    int reason = errno;
    if (!done)
        unlink(slot->sibling);
    fclose(slot->file);
    slot->file = nullptr;
    errno = reason;
    return done;
}

FILE *BeginReplaceFile(const char *path)
{
    char native[kNativePathSize];
    if (!ToNativePath(path, native, sizeof native))
        return nullptr;
    FILE *file = BeginReplaceNative(native);
    if (!file)
        SetLastError(FileErrorCode(errno, native));
    return file;
}

int EndReplaceFile(FILE *file, const char *path, int keep)
{
    int done = EndReplaceNative(file, keep);
    if (!done && keep)
        SetLastError(FileErrorCode(errno, path));
    return done;
}

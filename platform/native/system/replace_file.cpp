// Replacing files here: a lock tells which new file is being written, and a rename that has reached
// the disk puts it in place. See runtime/replace_file.h for what both targets share.
#include "replace_file.h"

#include <assert.h>
#include <errno.h>
#include <fcntl.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "runtime.h"
#include "system/paths.h"

static_assert(kReplacePathSize == kNativePathSize);

// Always 0, so that a failure is told and returned at once.
static bool FailWith(int error, const char *native)
{
    SetLastError(FileErrorCode(error, native));
    return false;
}

// A link's target is what gets replaced, never the link itself.
bool ResolveTarget(const char *path, char *target)
{
    if (realpath(path, target))
        return true;
    if (errno != ENOENT || strlen(path) >= kNativePathSize)
        return FailWith(errno == ENOENT ? ENAMETOOLONG : errno, path);
    memcpy(target, path, strlen(path) + 1);
    return true;
}

// Rename alone would ask for no more than the folder's permission, and would replace a device too.
bool MayBeReplaced(const char *target)
{
    struct stat status;
    if (stat(target, &status) != 0)
        return errno == ENOENT || FailWith(errno, target);
    if (S_ISREG(status.st_mode) && (status.st_mode & 0222) != 0 && access(target, W_OK) == 0)
        return true;
    return FailWith(EACCES, target);
}

// Between opening and locking another process may have renamed the file to its final place.
static bool IsStillAt(int fd, const char *sibling)
{
    struct stat opened, named;
    return fstat(fd, &opened) == 0 && lstat(sibling, &named) == 0 && S_ISREG(opened.st_mode) &&
           opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

// An empty, locked file; -1 with EWOULDBLOCK when another process has it.
static int LockSibling(const char *sibling)
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

// A new file has the rights of the one that it replaces, so that a change of the text isn't a
// change of who may read it.
SiblingState OpenSibling(const char *sibling, const char *target, FILE **file)
{
    int fd = LockSibling(sibling);
    if (fd < 0) {
        bool isTaken = errno == EWOULDBLOCK;
        FailWith(errno, sibling);
        return isTaken ? kSiblingTaken : kSiblingFailed;
    }
    struct stat status;
    // Where the rights aren't ours to set, the new file has the usual ones.
    if (stat(target, &status) == 0 && fchmod(fd, status.st_mode & 07777) != 0)
        errno = 0;
    *file = fdopen(fd, "w");
    if (*file)
        return kSiblingOpen;
    FailWith(errno, sibling);
    unlink(sibling);
    close(fd);
    return kSiblingFailed;
}

// The rename itself is on the disk only when its folder is.
static void SyncFolder(const char *target)
{
    char folder[kNativePathSize];
    const char *slash = strrchr(target, '/');
    size_t length = slash ? size_t(slash - target) + 1 : 0;
    assert(length < sizeof folder);
    memcpy(folder, target, length);
    folder[length] = '\0';
    int fd = open(length ? folder : ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    fsync(fd);
    close(fd);
}

// The data first, then the name, then the folder: a machine that stops in between holds the old
// file or the new one. The target is looked at once more, since others may have changed it
// meanwhile.
bool PutInPlace(FILE *file, const char *sibling, const char *target)
{
    if (fflush(file) != 0)
        return FailWith(errno, target);
    if (ferror(file))
        return FailWith(EIO, target);
    if (fsync(fileno(file)) != 0)
        return FailWith(errno, target);
    if (!MayBeReplaced(target))
        return false;
    if (rename(sibling, target) != 0)
        return FailWith(errno, target);
    SyncFolder(target);
    return true;
}

// The lock lasts until the file is closed, so nobody takes the sibling over before it is gone.
void CloseSibling(FILE *file, const char *sibling, bool isInPlace)
{
    if (!isInPlace)
        unlink(sibling);
    fclose(file);
}

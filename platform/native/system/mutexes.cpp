// Named mutexes, by which processes take turns at what they share. Each is a locked file beside the
// registry's, so that the kernel gives it back when its owner dies, however that happens. A mutex
// without a name, or one that belongs to several threads, isn't known here.
#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <unistd.h>

#include "system/paths.h"

constexpr DWORD kLockPause = 2;  // milliseconds between two tries

struct Mutex {
    int file;  // a descriptor, which carries the lock
};

// A name is one part of a path. What stands in front of its last backslash says on Windows which
// sessions share the mutex; here they all do.
static bool MutexPath(const char *name, char *native)
{
    char folder[kNativePathSize], file[kNativePathSize];
    const char *slash = strrchr(name, '\\');
    int length = snprintf(file, sizeof file, "orvel/%s.lock", slash ? slash + 1 : name);
    if (length <= 0 || length >= int(sizeof file) || strchr(slash ? slash : name, '/'))
        return false;
    if (!EnvironmentFolder("XDG_CONFIG_HOME", ".config", folder, sizeof folder) ||
        !JoinNative(folder, "orvel", native, kNativePathSize) || !MakeFolders(native))
        return false;
    return JoinNative(folder, file, native, kNativePathSize);
}

// The record is the caller's until CloseHandle, which gives the lock back too.
HANDLE WINAPI CreateMutexA(LPSECURITY_ATTRIBUTES, BOOL, LPCSTR name)
{
    char native[kNativePathSize];
    if (!name || !MutexPath(name, native)) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return nullptr;
    }
    int file = open(native, O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    Mutex *mutex = file < 0 ? nullptr : static_cast<Mutex *>(malloc(sizeof(Mutex)));
    if (!mutex) {
        SetLastError(file < 0 ? FileErrorCode(errno, native) : ERROR_NOT_ENOUGH_MEMORY);
        if (file >= 0)
            close(file);
        return nullptr;
    }
    mutex->file = file;
    return mutex;
}

// The kernel can wait for a lock, but not for so long and no longer: so it is asked again and
// again.
DWORD WINAPI WaitForSingleObject(HANDLE handle, DWORD milliseconds)
{
    if (!handle)
        return WAIT_FAILED;
    const Mutex *mutex = static_cast<const Mutex *>(handle);
    for (DWORD start = GetTickCount();;) {
        if (flock(mutex->file, LOCK_EX | LOCK_NB) == 0)
            return WAIT_OBJECT_0;
        if (errno != EWOULDBLOCK && errno != EINTR)
            return WAIT_FAILED;
        if (GetTickCount() - start >= milliseconds)
            return WAIT_TIMEOUT;
        Sleep(kLockPause);
    }
}

BOOL WINAPI ReleaseMutex(HANDLE handle)
{
    return handle && flock(static_cast<const Mutex *>(handle)->file, LOCK_UN) == 0;
}

BOOL WINAPI CloseHandle(HANDLE handle)
{
    if (!handle)
        return FALSE;
    Mutex *mutex = static_cast<Mutex *>(handle);
    close(mutex->file);
    free(mutex);
    return TRUE;
}

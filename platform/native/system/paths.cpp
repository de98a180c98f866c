// The one place where Windows' paths become the file system's. They come in with backslashes and an
// optional drive letter and leave with slashes; bytes are handed through, since what a file name is
// encoded in is not our business. Called by all that opens, makes or asks about files.
#include "system/paths.h"

#include <ctype.h>
#include <errno.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

#include "runtime.h"

// There are no drives: a path behind its letter begins at the root of the file system.
static const char *SkipDrive(const char *path)
{
    return isalpha(BYTE(path[0])) && path[1] == ':' ? path + 2 : path;
}

bool ToNativePath(const char *path, char *native, int nativeSize)
{
    if (!path || !*SkipDrive(path)) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return false;
    }
    path = SkipDrive(path);
    size_t length = strlen(path);
    if (length >= size_t(nativeSize)) {
        SetLastError(ERROR_FILENAME_EXCED_RANGE);
        return false;
    }
    for (size_t i = 0; i <= length; ++i)  // the terminator too
        native[i] = path[i] == '\\' ? '/' : path[i];
    return true;
}

// A file whose own name has a backslash looks like two parts of a path then: Windows' rules have no
// name for it.
int FromNativePath(const char *native, char *path, int pathSize)
{
    size_t length = strlen(native);
    if (length >= size_t(pathSize))
        return 0;
    for (size_t i = 0; i <= length; ++i)
        path[i] = native[i] == '/' ? '\\' : native[i];
    return int(length);
}

// Two bytes more than both together: the slash and the terminator.
bool JoinNative(const char *folder, const char *name, char *joined, int joinedSize)
{
    size_t folderLength = strlen(folder);
    size_t nameLength = strlen(name);
    if (folderLength + 1 + nameLength >= size_t(joinedSize))
        return false;
    memcpy(joined, folder, folderLength);
    joined[folderLength] = '/';
    memcpy(joined + folderLength + 1, name, nameLength + 1);
    return true;
}

// Follows links: a link to a folder is one.
static bool IsFolder(const char *native)
{
    struct stat status;
    return stat(native, &status) == 0 && S_ISDIR(status.st_mode);
}

// From the root down. A folder that is there already is no failure, nor is one above that can't be
// made: what counts is whether the last one is there.
bool MakeFolders(const char *native)
{
    char part[kNativePathSize];
    size_t length = strlen(native);
    if (length >= sizeof part)
        return false;
    memcpy(part, native, length + 1);
    for (size_t i = 1; i < length; ++i) {
        if (part[i] != '/')
            continue;
        part[i] = '\0';
        mkdir(part, 0777);  // one that can't be made shows when the last one is looked at
        part[i] = '/';
    }
    mkdir(part, 0777);
    return IsFolder(part);
}

bool EnvironmentFolder(const char *variable, const char *below, char *native, int nativeSize)
{
    const char *folder = getenv(variable);
    if (folder && folder[0] == '/') {  // a relative one is to be ignored
        if (strlen(folder) >= size_t(nativeSize))
            return false;
        memcpy(native, folder, strlen(folder) + 1);
        return true;
    }
    // A home that isn't there is nobody's (a service's account, say): nothing is made in its place.
    const char *home = getenv("HOME");
    if (!home || home[0] != '/' || !IsFolder(home))
        return false;
    return JoinNative(home, below, native, nativeSize);
}

// A missing name is "file not found" where its folder exists and "path not found" elsewhere.
static DWORD MissingCode(const char *native)
{
    char folder[kNativePathSize];
    const char *slash = strrchr(native, '/');
    if (!slash || slash == native)
        return ERROR_FILE_NOT_FOUND;
    size_t length = size_t(slash - native);
    if (length >= sizeof folder)
        return ERROR_PATH_NOT_FOUND;
    memcpy(folder, native, length);
    folder[length] = '\0';
    return IsFolder(folder) ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
}

// What has no number of its own is a general failure; nothing is told as a success.
DWORD FileErrorCode(int error, const char *native)
{
    switch (error) {
    case ENOENT: return MissingCode(native);
    case ENOTDIR: return ERROR_PATH_NOT_FOUND;
    case EEXIST: return ERROR_ALREADY_EXISTS;
    case ENAMETOOLONG: return ERROR_FILENAME_EXCED_RANGE;
    case ENOSPC:
    case EDQUOT:
    case EFBIG: return ERROR_DISK_FULL;
    case EMFILE:
    case ENFILE: return ERROR_TOO_MANY_OPEN_FILES;
    case ENOMEM: return ERROR_NOT_ENOUGH_MEMORY;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR: return ERROR_ACCESS_DENIED;
    }
    return ERROR_GEN_FAILURE;
}

BOOL WINAPI CreateDirectoryA(LPCSTR path, LPSECURITY_ATTRIBUTES)
{
    char native[kNativePathSize];
    if (!ToNativePath(path, native, sizeof native))
        return FALSE;
    if (mkdir(native, 0777) == 0)
        return TRUE;
    // Without its parent a folder can't be made: that is always "path not found".
    DWORD code = FileErrorCode(errno, native);
    SetLastError(code == ERROR_FILE_NOT_FOUND ? ERROR_PATH_NOT_FOUND : code);
    return FALSE;
}

// The file system would delete a read-only file, since it only asks for the folder's rights.
BOOL WINAPI DeleteFileA(LPCSTR path)
{
    char native[kNativePathSize];
    if (!ToNativePath(path, native, sizeof native))
        return FALSE;
    DWORD attributes = GetFileAttributesA(path);
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return FALSE;
    if (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    if (unlink(native) == 0)
        return TRUE;
    SetLastError(FileErrorCode(errno, native));
    return FALSE;
}

DWORD WINAPI GetFileAttributesA(LPCSTR path)
{
    char native[kNativePathSize];
    struct stat status;
    if (!ToNativePath(path, native, sizeof native))
        return INVALID_FILE_ATTRIBUTES;
    if (stat(native, &status) != 0) {
        SetLastError(FileErrorCode(errno, native));
        return INVALID_FILE_ATTRIBUTES;
    }
    if (S_ISDIR(status.st_mode))
        return FILE_ATTRIBUTE_DIRECTORY;
    DWORD readOnly = (status.st_mode & 0222) == 0 ? FILE_ATTRIBUTE_READONLY : 0;
    return FILE_ATTRIBUTE_ARCHIVE | readOnly;
}

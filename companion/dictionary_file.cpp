// Paths, reading and replacing of dictionary files. The user's file is replaced whole; between
// reading and replacing a folder beside it serves as lock, since making a folder is one step
// everywhere.
#include "dictionary_file.h"
#include "module.h"
#include "runtime.h"
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <shlobj.h>

constexpr size_t kBlock = 64 * 1024;
constexpr DWORD kLockWait = 2000;  // milliseconds; a change takes a few, and others may be first

// ---- paths ----

// Joins a folder and a name into path, MAX_PATH bytes. 0 when it doesn't fit.
static int MakePath(char *path, const char *folder, const char *name)
{
    int length = snprintf(path, MAX_PATH, "%s\\%s", folder, name);
    return length > 0 && length < MAX_PATH;
}

static int DataPath(char *path, const char *name)
{
    char common[MAX_PATH], folder[MAX_PATH];
    if (SHGetFolderPathA(nullptr, CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, common))
        return 0;
    return MakePath(folder, common, "Orvel") && MakePath(path, folder, name);
}

static int InstallPath(char *path, const char *name)
{
    char module[MAX_PATH];
    DWORD length = GetModuleFileNameA(ModuleInstance(), module, sizeof module);
    char *slash = length && length < sizeof module ? strrchr(module, '\\') : nullptr;
    if (!slash)
        return 0;
    *slash = 0;
    return MakePath(path, module, name);
}

// ---- reading ----

static int GrowContent(FileContent *content, size_t *room)
{
    if (*room - content->size >= kBlock)
        return 1;
    size_t more = content->size + content->size / 2 + kBlock;
    void *bytes = realloc(content->bytes, more);
    if (!bytes)
        return 0;
    content->bytes = static_cast<char *>(bytes);
    *room = more;
    return 1;
}

static int ReadStream(FILE *file, FileContent *content)
{
    size_t room = 0, count;
    do {
        if (content->size > kLargestFile || !GrowContent(content, &room))
            return 0;
        count = fread(content->bytes + content->size, 1, kBlock, file);
        content->size += count;
    } while (count > 0);
    return !ferror(file);
}

static bool IsMissing(const char *path)
{
    if (GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES)
        return false;
    DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

static FileResult ReadFileAt(const char *path, FileContent *content)
{
    FILE *file = OpenDataFile(path, "rb");
    if (!file)
        return IsMissing(path) ? kFileMissing : kFileUnreadable;
    int isRead = ReadStream(file, content);
    fclose(file);
    return isRead ? kFileRead : kFileUnreadable;
}

FileResult ReadInstalledFile(const char *name, FileContent *content)
{
    *content = {};
    char path[MAX_PATH];
    return InstallPath(path, name) ? ReadFileAt(path, content) : kFileMissing;
}

FileResult ReadDictionaryFile(const char *name, FileContent *content)
{
    *content = {};
    char path[MAX_PATH];
    if (DataPath(path, name)) {
        FileResult result = ReadFileAt(path, content);
        if (result != kFileMissing)
            return result;
    }
    return ReadInstalledFile(name, content);
}

void FreeFileContent(FileContent *content)
{
    free(content->bytes);
    *content = {};
}

// ---- replacing ----

// The stream writes the target's line ends, so a CR in front of a line's end is left out here.
static int WriteLines(FILE *file, const char *bytes, size_t size)
{
    const char *end = bytes + size;
    while (bytes < end) {
        const void *feed = memchr(bytes, '\n', size_t(end - bytes));
        const char *lineEnd = feed ? static_cast<const char *>(feed) : end;
        size_t length = size_t(lineEnd - bytes);
        if (feed && length && bytes[length - 1] == '\r')
            --length;
        if (fwrite(bytes, 1, length, file) != length || (feed && putc('\n', file) == EOF))
            return 0;
        bytes = feed ? lineEnd + 1 : end;
    }
    return 1;
}

// The data folder exists after the first file that is written there.
static void MakeDataFolder()
{
    char common[MAX_PATH], folder[MAX_PATH];
    if (!SHGetFolderPathA(nullptr, CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, common) &&
        MakePath(folder, common, "Orvel"))
        CreateDirectoryA(folder, nullptr);
}

int WriteDictionaryFile(const char *name, const char *bytes, size_t size)
{
    char path[MAX_PATH];
    MakeDataFolder();
    if (!DataPath(path, name))
        return 0;
    FILE *file = BeginReplaceFile(path);
    if (!file)
        return 0;
    return EndReplaceFile(file, WriteLines(file, bytes, size));
}

// ---- lock ----

struct LockState {
    HANDLE mutex;  // while a change is going on, else null
};
static LockState gLock;

void LockUserFile()
{
    gLock.mutex = CreateMutexA(nullptr, FALSE, "OrvelUserDictionary");
    if (gLock.mutex)
        WaitForSingleObject(gLock.mutex, kLockWait);
}

void UnlockUserFile()
{
    if (!gLock.mutex)
        return;
    ReleaseMutex(gLock.mutex);
    CloseHandle(gLock.mutex);
    gLock.mutex = nullptr;
}

// Opening and replacing files over the Windows runtime. The new file of a replacement is held open
// without sharing its writing until it is in place: two processes never write the same one, and
// what a killed process left behind is taken over by the next.
#include <runtime.h>

#include <fcntl.h>
#include <io.h>
#include <string.h>

constexpr int kMaxReplacing = 4;     // at the same time in this process
constexpr int kSiblingsPerName = 8;  // at the same time for one file, in all processes

struct Replacement {
    FILE *file;  // none: the slot is free
    wchar_t target[MAX_PATH], sibling[MAX_PATH];
};
static Replacement gReplacing[kMaxReplacing];

// The system's own form of a path in a code page, CP_UTF8 among them: 1, or 0 when it is missing,
// empty, no text of the code page or too long.
static int ReadPath(const char *path, UINT codePage, wchar_t *wide)
{
    if (!path || !*path) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return 0;
    }
    return MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, path, -1, wide, MAX_PATH) != 0;
}

FILE *OpenDataFile(const char *path, const char *mode)
{
    if (!path || !*path)
        return nullptr;
    if (strcmp(mode, "rt") != 0 && strcmp(mode, "rb") != 0 && strcmp(mode, "wb") != 0)
        return nullptr;
    return fopen(path, mode);
}

static Replacement *FindReplacement(FILE *file)
{
    for (Replacement &slot : gReplacing) {
        if (slot.file == file)
            return &slot;
    }
    return nullptr;
}

static unsigned HashName(const wchar_t *name)
{
    unsigned hash = 2166136261u;
    for (; *name; name++)
        hash = (hash ^ *name) * 16777619u;
    return hash;
}

static int FolderLength(const wchar_t *path)
{
    int length = 0;
    for (int i = 0; path[i]; i++) {
        if (path[i] == '\\' || path[i] == '/' || path[i] == ':')
            length = i + 1;
    }
    return length;
}

static int SiblingPath(const wchar_t *path, int number, wchar_t *sibling)
{
    int folder = FolderLength(path);
    int length = _snwprintf(sibling, MAX_PATH, L"%.*ls~%08x%d.tmp", folder, path,
                            HashName(path + folder), number);
    return length > 0 && length < MAX_PATH;
}

static int MayBeReplaced(const wchar_t *path)
{
    DWORD attributes = GetFileAttributesW(path);
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return GetLastError() == ERROR_FILE_NOT_FOUND;
    if (!(attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)))
        return 1;
    SetLastError(ERROR_ACCESS_DENIED);
    return 0;
}

// Sharing reading and renaming, but no writing: a second writer gets a sharing violation.
static HANDLE OpenFreeSibling(Replacement *slot)
{
    for (int number = 0; number < kSiblingsPerName; number++) {
        if (!SiblingPath(slot->target, number, slot->sibling)) {
            SetLastError(ERROR_FILENAME_EXCED_RANGE);
            break;
        }
        HANDLE file = CreateFileW(slot->sibling, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                  nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE || GetLastError() != ERROR_SHARING_VIOLATION)
            return file;
    }
    return INVALID_HANDLE_VALUE;
}

static FILE *OpenStream(HANDLE handle)
{
    int descriptor = _open_osfhandle((intptr_t)handle, _O_WRONLY | _O_TEXT);
    if (descriptor < 0) {
        CloseHandle(handle);
        return nullptr;
    }
    FILE *file = _fdopen(descriptor, "wt");
    if (!file)
        _close(descriptor);
    return file;
}

static FILE *BeginReplace(const char *path, UINT codePage)
{
    Replacement *slot = FindReplacement(nullptr);
    if (!slot || !ReadPath(path, codePage, slot->target) || !MayBeReplaced(slot->target))
        return nullptr;
    HANDLE handle = OpenFreeSibling(slot);
    if (handle == INVALID_HANDLE_VALUE)
        return nullptr;
    slot->file = OpenStream(handle);
    if (!slot->file)
        DeleteFileW(slot->sibling);
    return slot->file;
}

FILE *BeginReplaceFile(const char *path)
{
    return BeginReplace(path, CP_ACP);
}

FILE *BeginReplaceDocument(const char *path)
{
    return BeginReplace(path, CP_UTF8);
}

static int PutInPlace(const Replacement *slot)
{
    if (fflush(slot->file) != 0 || ferror(slot->file))
        return 0;
    HANDLE handle = (HANDLE)_get_osfhandle(_fileno(slot->file));
    if (!FlushFileBuffers(handle) || !MayBeReplaced(slot->target))
        return 0;
    return MoveFileExW(slot->sibling, slot->target,
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

int EndReplaceFile(FILE *file, const char *, int keep)
{
    Replacement *slot = file ? FindReplacement(file) : nullptr;
    if (!slot)
        return 0;
    int done = keep && PutInPlace(slot);
    fclose(slot->file);
    if (!done)
        DeleteFileW(slot->sibling);
    slot->file = nullptr;
    return done;
}

int FailAllocationAfter(int)
{
    return 0;  // the system's allocator takes no orders
}

int DrawnText(HWND, int, DrawnTextRecord *)
{
    return 0;
}

void UseFoldersBelow(const char *)
{
    // the registry and the shell are the system's
}

// ---- documents ----

int Utf8OfPath(const char *path, char *utf8, int size)
{
    wchar_t wide[MAX_PATH];
    return ReadPath(path, CP_ACP, wide) &&
           WideCharToMultiByte(CP_UTF8, 0, wide, -1, utf8, size, nullptr, nullptr) != 0;
}

FILE *OpenDocument(const char *path)
{
    wchar_t wide[MAX_PATH];
    return ReadPath(path, CP_UTF8, wide) ? _wfopen(wide, L"rb") : nullptr;
}

static int IsNextByte(FILE *file, int wanted)
{
    int byte = getc(file);
    if (byte != EOF)
        ungetc(byte, file);
    return byte == wanted;
}

// Text mode would end a document at byte 26.
size_t ReadDocument(FILE *file, char *buffer, size_t size)
{
    size_t count = fread(buffer, 1, size, file), kept = 0;
    for (size_t i = 0; i < count; i++) {
        bool isLast = i + 1 == count;
        if (buffer[i] != '\r' || !(isLast ? IsNextByte(file, '\n') : buffer[i + 1] == '\n'))
            buffer[kept++] = buffer[i];
        else if (isLast)
            buffer[kept++] = (char)getc(file);
    }
    return kept;
}

static int ReadFileInformation(const char *path, BY_HANDLE_FILE_INFORMATION *information)
{
    wchar_t wide[MAX_PATH];
    if (!ReadPath(path, CP_UTF8, wide))
        return 0;
    HANDLE file = CreateFileW(wide, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return 0;
    int done = GetFileInformationByHandle(file, information);
    CloseHandle(file);
    return done;
}

int IsSameFile(const char *left, const char *right)
{
    BY_HANDLE_FILE_INFORMATION one, other;
    return ReadFileInformation(left, &one) && ReadFileInformation(right, &other) &&
           one.dwVolumeSerialNumber == other.dwVolumeSerialNumber &&
           one.nFileIndexHigh == other.nFileIndexHigh && one.nFileIndexLow == other.nFileIndexLow;
}

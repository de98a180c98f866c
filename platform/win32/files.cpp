// Opening and replacing files over the Windows runtime. The new file of a replacement is held open
// without sharing its writing until it is in place, so that no other process writes it; see
// runtime/replace_file.h for what both targets share.
#include <fcntl.h>
#include <io.h>
#include <string.h>

#include "replace_file.h"
#include "runtime.h"

// The system's own form of a path in a code page, CP_UTF8 among them; false when it is missing,
// empty, no text of the code page or too long.
static bool ReadPath(const char *path, UINT codePage, wchar_t *wide)
{
    if (!path || !*path) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return false;
    }
    return MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, path, -1, wide, MAX_PATH) != 0;
}

// The runtime knows the three modes as the library means them.
FILE *OpenDataFile(const char *path, const char *mode)
{
    if (!path || !*path)
        return nullptr;
    if (strcmp(mode, "rt") != 0 && strcmp(mode, "rb") != 0 && strcmp(mode, "wb") != 0)
        return nullptr;
    return fopen(path, mode);
}

// ---- replacing: a path is UTF-8 between the calls and the system's own form in them ----

static bool NarrowPath(const wchar_t *wide, char *utf8, int size)
{
    return WideCharToMultiByte(CP_UTF8, 0, wide, -1, utf8, size, nullptr, nullptr) != 0;
}

// Links are the system's business: it opens and renames through them.
bool ResolveTarget(const char *path, char *target)
{
    wchar_t wide[MAX_PATH];
    return ReadPath(path, CP_UTF8, wide) && NarrowPath(wide, target, kReplacePathSize);
}

bool MayBeReplaced(const char *target)
{
    wchar_t wide[MAX_PATH];
    if (!ReadPath(target, CP_UTF8, wide))
        return false;
    DWORD attributes = GetFileAttributesW(wide);
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return GetLastError() == ERROR_FILE_NOT_FOUND;
    if (!(attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)))
        return true;
    SetLastError(ERROR_ACCESS_DENIED);
    return false;
}

// The stream owns the handle from here on; without a stream it is closed.
static FILE *OpenStream(HANDLE handle)
{
    int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_WRONLY | _O_TEXT);
    if (descriptor < 0) {
        CloseHandle(handle);
        return nullptr;
    }
    FILE *file = _fdopen(descriptor, "wt");
    if (!file)
        _close(descriptor);
    return file;
}

// Sharing reading and renaming, but no writing: a second writer gets a sharing violation.
SiblingState OpenSibling(const char *sibling, const char *, FILE **file)
{
    wchar_t wide[MAX_PATH];
    if (!ReadPath(sibling, CP_UTF8, wide))
        return kSiblingFailed;
    HANDLE handle = CreateFileW(wide, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_SHARING_VIOLATION ? kSiblingTaken : kSiblingFailed;
    *file = OpenStream(handle);
    if (*file)
        return kSiblingOpen;
    DeleteFileW(wide);
    return kSiblingFailed;
}

bool PutInPlace(FILE *file, const char *sibling, const char *target)
{
    wchar_t from[MAX_PATH], to[MAX_PATH];
    if (fflush(file) != 0 || ferror(file))
        return false;
    if (!FlushFileBuffers(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)))) ||
        !MayBeReplaced(target))
        return false;
    return ReadPath(sibling, CP_UTF8, from) && ReadPath(target, CP_UTF8, to) &&
           MoveFileExW(from, to, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

// An open file can't be removed.
void CloseSibling(FILE *file, const char *sibling, bool isInPlace)
{
    wchar_t wide[MAX_PATH];
    fclose(file);
    if (!isInPlace && ReadPath(sibling, CP_UTF8, wide))
        DeleteFileW(wide);
}

// A data file's path is in the system's code page.
FILE *BeginReplaceFile(const char *path)
{
    char utf8[kReplacePathSize];
    return Utf8OfPath(path, utf8, sizeof utf8) ? BeginReplacement(utf8) : nullptr;
}

FILE *BeginReplaceDocument(const char *path)
{
    return BeginReplacement(path);
}

// ---- documents ----

void KeepLineEnds(FILE *file)
{
    _setmode(_fileno(file), _O_BINARY);
}

int Utf8OfPath(const char *path, char *utf8, int size)
{
    wchar_t wide[MAX_PATH];
    return ReadPath(path, CP_ACP, wide) && NarrowPath(wide, utf8, size);
}

FILE *OpenDocument(const char *path)
{
    wchar_t wide[MAX_PATH];
    return ReadPath(path, CP_UTF8, wide) ? _wfopen(wide, L"rb") : nullptr;
}

// Looks one byte ahead: a CR at the end of a block may belong to the next one's LF.
static bool IsNextByte(FILE *file, int wanted)
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
    for (size_t i = 0; i < count; ++i) {
        bool isLast = i + 1 == count;
        if (buffer[i] != '\r' || !(isLast ? IsNextByte(file, '\n') : buffer[i + 1] == '\n'))
            buffer[kept++] = buffer[i];
        else if (isLast)
            buffer[kept++] = char(getc(file));
    }
    return kept;
}

static bool ReadFileInformation(const char *path, BY_HANDLE_FILE_INFORMATION *information)
{
    wchar_t wide[MAX_PATH];
    if (!ReadPath(path, CP_UTF8, wide))
        return false;
    HANDLE file = CreateFileW(wide, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    BOOL done = GetFileInformationByHandle(file, information);
    CloseHandle(file);
    return done;
}

// A file's number is its own on its volume, whatever name it was opened by.
bool IsSameFile(const char *left, const char *right)
{
    BY_HANDLE_FILE_INFORMATION one, other;
    return ReadFileInformation(left, &one) && ReadFileInformation(right, &other) &&
           one.dwVolumeSerialNumber == other.dwVolumeSerialNumber &&
           one.nFileIndexHigh == other.nFileIndexHigh && one.nFileIndexLow == other.nFileIndexLow;
}

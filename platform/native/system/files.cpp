// Opening files, for the library's settings and documents. Text is read through a stream of our own
// that drops the CR of each CR LF and ends the file at byte 26, as the Windows runtime does in text
// mode. A failure leaves its reason as the last error.
#include <errno.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>

#include "replace_file.h"
#include "runtime.h"
#include "system/paths.h"

// The cookie of the stream that a reader of text gets.
struct TextReader {
    FILE *file;  // owned: closed with the stream
    bool ended;  // byte 26 has been seen
};

// One byte of the text, or EOF.
static int ReadTextByte(TextReader *reader)
{
    int byte = reader->ended ? EOF : getc_unlocked(reader->file);
    if (byte == '\r') {  // dropped before LF alone; else it is a byte like any other
        int next = getc_unlocked(reader->file);
        if (next == '\n')
            return '\n';
        if (next != EOF)
            ungetc(next, reader->file);
    }
    if (byte == 26) {
        reader->ended = true;
        return EOF;
    }
    return byte;
}

// As read(2) for the stream: bytes, 0 at the end, -1 with errno when the disk fails.
static ssize_t ReadText(void *cookie, char *buffer, size_t size)
{
    TextReader *reader = static_cast<TextReader *>(cookie);
    size_t length = 0;
    while (length < size) {
        int byte = ReadTextByte(reader);
        if (byte == EOF)
            break;
        buffer[length++] = char(byte);
    }
    if (length == 0 && ferror(reader->file)) {
        errno = EIO;
        return -1;
    }
    return static_cast<ssize_t>(length);
}

static int CloseText(void *cookie)
{
    TextReader *reader = static_cast<TextReader *>(cookie);
    int result = fclose(reader->file);
    free(reader);
    return result;
}

// A stream over the file, which it owns from now on; null when there is no memory, and the file is
// still the caller's.
static FILE *WrapText(FILE *file)
{
    TextReader *reader = static_cast<TextReader *>(malloc(sizeof *reader));
    if (!reader)
        return nullptr;
    *reader = {file, 0};
    FILE *text = fopencookie(reader, "r", {ReadText, nullptr, nullptr, CloseText});
    if (!text)
        free(reader);
    return text;
}

// The system lets a folder be opened for reading and fails later; Windows fails here.
static FILE *OpenBytes(const char *native, const char *mode)
{
    FILE *file = fopen(native, mode);
    struct stat status;
    if (file && fstat(fileno(file), &status) == 0 && !S_ISDIR(status.st_mode))
        return file;
    SetLastError(FileErrorCode(file ? EISDIR : errno, native));
    if (file)
        fclose(file);
    return nullptr;
}

FILE *OpenDataFile(const char *path, const char *mode)
{
    char native[kNativePathSize];
    if (!ToNativePath(path, native, sizeof native))
        return nullptr;
    if (strcmp(mode, "wb") == 0)
        return OpenBytes(native, "we");
    if (strcmp(mode, "rb") == 0)
        return OpenBytes(native, "re");
    if (strcmp(mode, "rt") != 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    FILE *file = OpenBytes(native, "re");
    FILE *text = file ? WrapText(file) : nullptr;
    if (file && !text) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        fclose(file);
    }
    return text;
}

FILE *BeginReplaceFile(const char *path)
{
    char native[kNativePathSize];
    return ToNativePath(path, native, sizeof native) ? BeginReplacement(native) : nullptr;
}

// ---- documents: their paths are UTF-8, as all paths are here ----

FILE *OpenDocument(const char *path)
{
    return OpenDataFile(path, "rb");
}

size_t ReadDocument(FILE *file, char *buffer, size_t size)
{
    return fread(buffer, 1, size, file);
}

FILE *BeginReplaceDocument(const char *path)
{
    return BeginReplaceFile(path);
}

// Text files here end their lines as the library does.
void KeepLineEnds(FILE *) {}

int Utf8OfPath(const char *path, char *utf8, int size)
{
    int length = snprintf(utf8, size_t(size), "%s", path);
    return length >= 0 && length < size;
}

// Two names are one file when they lead to one inode, by whatever links.
bool IsSameFile(const char *left, const char *right)
{
    char one[kNativePathSize], other[kNativePathSize];
    struct stat oneStatus, otherStatus;
    return ToNativePath(left, one, sizeof one) && ToNativePath(right, other, sizeof other) &&
           stat(one, &oneStatus) == 0 && stat(other, &otherStatus) == 0 &&
           oneStatus.st_dev == otherStatus.st_dev && oneStatus.st_ino == otherStatus.st_ino;
}

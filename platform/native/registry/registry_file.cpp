// Reading and writing the registry's file, for registry.cpp alone. It is read whole for each
// question and replaced whole for each change: a question costs little beside what a program does
// with the answer, and there is no copy in memory that another process could make untrue.
#include "registry/registry_file.h"

#include <assert.h>
#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

#include "replace_file.h"
#include "runtime.h"
#include "system/paths.h"

constexpr DWORD kLockWait = 5000;  // milliseconds; a change takes a few

// --- the file's place ---

// Of a file in the registry's folder; false when the environment names none or it doesn't fit.
static bool RegistryPath(const char *name, char *native)
{
    char home[kNativePathSize];
    char folder[kNativePathSize];
    return EnvironmentFolder("XDG_CONFIG_HOME", ".config", home, sizeof home) &&
           JoinNative(home, "orvel", folder, sizeof folder) &&
           JoinNative(folder, name, native, kNativePathSize);
}

int NameRegistry(char *place, int size)
{
    char native[kNativePathSize];
    if (!place || size <= 0)
        return 0;
    bool fits = RegistryPath("registry", native) && strlen(native) < size_t(size);
    memcpy(place, fits ? native : "", fits ? strlen(native) + 1 : 1);
    return fits;
}

// What a registry call says of a failed file operation.
static LONG FailureCode(DWORD code)
{
    return code == ERROR_ACCESS_DENIED || code == ERROR_DISK_FULL || code == ERROR_NOT_ENOUGH_MEMORY
               ? LONG(code)
               : ERROR_REGISTRY_IO_FAILED;
}

// --- reading ---

// A file that grows meanwhile is read as long as it was; one that shrinks can't be read.
static LONG ReadOpened(int fd, RegistryText *text)
{
    struct stat status;
    if (fstat(fd, &status) != 0 || !S_ISREG(status.st_mode))
        return ERROR_REGISTRY_IO_FAILED;
    if (uint64_t(status.st_size) > kMaxFileSize)
        return ERROR_REGISTRY_IO_FAILED;
    size_t size = size_t(status.st_size);
    text->bytes = static_cast<char *>(malloc(size + 1));
    if (!text->bytes)
        return ERROR_NOT_ENOUGH_MEMORY;
    while (text->size < size) {
        ssize_t count = read(fd, text->bytes + text->size, size - text->size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return ERROR_REGISTRY_IO_FAILED;
        text->size += size_t(count);
    }
    return ERROR_SUCCESS;
}

LONG ReadRegistry(RegistryText *text)
{
    char native[kNativePathSize];
    *text = {nullptr, 0};
    if (!RegistryPath("registry", native))
        return ERROR_REGISTRY_IO_FAILED;
    // A pipe in the file's place must not keep us waiting.
    int fd = open(native, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0)
        return errno == ENOENT ? ERROR_SUCCESS : FailureCode(FileErrorCode(errno, native));
    LONG result = ReadOpened(fd, text);
    close(fd);
    if (result != ERROR_SUCCESS)
        FreeRegistryText(text);
    return result;
}

void FreeRegistryText(RegistryText *text)
{
    free(text->bytes);
    *text = {nullptr, 0};
}

// --- one line ---

// The rest of a line. The functions below take what they know from its start and say whether they
// did.
struct Cursor {
    const char *at, *end;
};

// Exactly these bytes.
static bool Take(Cursor *cursor, const char *expected)
{
    size_t length = strlen(expected);
    if (size_t(cursor->end - cursor->at) < length || memcmp(cursor->at, expected, length) != 0)
        return false;
    cursor->at += length;
    return true;
}

// Small letters alone: what this file writes is the only form, so that a line has one spelling.
static int HexDigit(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    return -1;
}

// Two digits, always: a single one is no byte.
static bool TakeHexByte(Cursor *cursor, BYTE *byte)
{
    if (cursor->end - cursor->at < 2)
        return false;
    int high = HexDigit(cursor->at[0]), low = HexDigit(cursor->at[1]);
    if (high < 0 || low < 0)
        return false;
    *byte = BYTE(high << 4 | low);
    cursor->at += 2;
    return true;
}

// A decimal number of 32 bits; a larger one is no number.
static bool TakeNumber(Cursor *cursor, DWORD *number)
{
    uint64_t value = 0;
    const char *start = cursor->at;
    for (; cursor->at < cursor->end && *cursor->at >= '0' && *cursor->at <= '9'; ++cursor->at) {
        value = value * 10 + uint64_t(*cursor->at - '0');
        if (value > 0xffffffffu)
            return false;
    }
    *number = DWORD(value);
    return cursor->at > start;
}

// The text up to `closing`, which is taken too. Never a NUL inside: names and texts end with one.
static bool TakeQuoted(Cursor *cursor, char closing, char *text, size_t size, DWORD *length)
{
    size_t count = 0;
    while (cursor->at < cursor->end) {
        BYTE byte = BYTE(*cursor->at++);
        if (byte == BYTE(closing)) {
            text[count] = '\0';
            *length = DWORD(count);
            return true;
        }
        if (byte == '%' && !TakeHexByte(cursor, &byte))
            return false;
        if (byte == 0 || count + 1 >= size)
            return false;
        text[count++] = char(byte);
    }
    return false;
}

// Eight digits, with the highest first as a person reads a number.
static bool TakeDword(Cursor *cursor, RegistryLine *line)
{
    line->type = REG_DWORD;
    line->size = 4;
    for (int i = 3; i >= 0; --i) {  // written as a number, kept with the low byte first
        BYTE byte;
        if (!TakeHexByte(cursor, &byte))
            return false;
        if (line->data)
            line->data[i] = byte;
    }
    return true;
}

// Its size must be that of its bytes: a line that was cut shows by this.
static bool TakeBytes(Cursor *cursor, RegistryLine *line)
{
    if (!TakeNumber(cursor, &line->type) || !Take(cursor, " size ") ||
        !TakeNumber(cursor, &line->size) || !Take(cursor, ":") || line->size > kMaxValueSize)
        return false;
    for (DWORD i = 0; i < line->size; ++i) {
        BYTE byte;
        if (!Take(cursor, " ") || !TakeHexByte(cursor, &byte))
            return false;
        if (line->data)
            line->data[i] = byte;
    }
    return true;
}

// A text's size in the file is found out even where nobody wants its bytes.
static bool TakeText(Cursor *cursor, RegistryLine *line)
{
    DWORD length = 0;
    char *room = reinterpret_cast<char *>(line->data);
    if (!room && !(room = static_cast<char *>(malloc(kMaxValueSize))))
        return false;
    int taken = TakeQuoted(cursor, '"', room, kMaxValueSize, &length);
    if (room != reinterpret_cast<char *>(line->data))
        free(room);
    line->type = REG_SZ;
    line->size = length + 1;
    return taken;
}

// The name and one of the three forms.
static bool TakeValue(Cursor *cursor, RegistryLine *line)
{
    DWORD length;
    if (!TakeQuoted(cursor, '"', line->name, sizeof line->name, &length) || !Take(cursor, " = "))
        return false;
    if (Take(cursor, "\""))
        return TakeText(cursor, line);
    if (Take(cursor, "dword "))
        return TakeDword(cursor, line);
    return Take(cursor, "type ") && TakeBytes(cursor, line);
}

bool ParseRegistryLine(const RegistryText *text, size_t *place, RegistryLine *line)
{
    assert(*place < text->size);
    const char *start = text->bytes + *place;
    const char *newline = static_cast<const char *>(memchr(start, '\n', text->size - *place));
    const char *end = newline ? newline : text->bytes + text->size;
    *place = size_t(end - text->bytes) + (newline ? 1 : 0);
    if (end > start && end[-1] == '\r')
        --end;  // an editor may have added them
    Cursor cursor = {start, end};
    DWORD length;
    line->isValue = false;
    line->name[0] = '\0';
    if (!Take(&cursor, "[") || !TakeQuoted(&cursor, ']', line->key, sizeof line->key, &length))
        return false;
    if (cursor.at == cursor.end)
        return true;
    line->isValue = true;
    return Take(&cursor, " \"") && TakeValue(&cursor, line) && cursor.at == cursor.end;
}

// --- writing ---

// What would end the quotes or the line, or begin an escape, is escaped.
static void PutQuoted(FILE *file, const char *text, char closing)
{
    for (; *text; ++text) {
        BYTE byte = BYTE(*text);
        if (byte < 32 || byte == 127 || byte == '%' || byte == BYTE(closing))
            fprintf(file, "%%%02x", byte);
        else
            putc(byte, file);
    }
    putc(closing, file);
}

// A text can stand in quotes when it ends with its only NUL.
static bool IsPlainText(const RegistryLine *line)
{
    return line->type == REG_SZ && line->size > 0 &&
           memchr(line->data, 0, line->size) == line->data + line->size - 1;
}

// The form that ParseRegistryLine reads back; see the header of this file.
static void PutLine(FILE *file, const RegistryLine *line)
{
    putc('[', file);
    PutQuoted(file, line->key, ']');
    if (line->isValue) {
        fputs(" \"", file);
        PutQuoted(file, line->name, '"');
        fputs(" = ", file);
        if (IsPlainText(line)) {
            putc('"', file);
            PutQuoted(file, reinterpret_cast<const char *>(line->data), '"');
        } else if (line->type == REG_DWORD && line->size == 4) {
            const BYTE *data = line->data;
            fprintf(file, "dword %02x%02x%02x%02x", data[3], data[2], data[1], data[0]);
        } else {
            fprintf(file, "type %u size %u:", line->type, line->size);
            for (DWORD i = 0; i < line->size; ++i)
                fprintf(file, " %02x", line->data[i]);
        }
    }
    putc('\n', file);
}

// Lines that can't be read are carried over as they are; a last one without its end gets one.
static void PutOldLines(FILE *file, const RegistryText *old, KeepRegistryLine keep, void *context,
                        RegistryLine *line)
{
    size_t place = 0;
    while (place < old->size) {
        size_t start = place;
        if (ParseRegistryLine(old, &place, line) && !keep(line, context))
            continue;
        assert(place > start);  // the parser always moves on
        fwrite(old->bytes + start, 1, place - start, file);
        if (old->bytes[place - 1] != '\n')
            putc('\n', file);
    }
}

LONG WriteRegistry(const RegistryText *old, KeepRegistryLine keep, void *context,
                   const RegistryLine *added, int addedCount)
{
    char native[kNativePathSize];
    if (!RegistryPath("registry", native))
        return ERROR_REGISTRY_IO_FAILED;
    RegistryLine *line = static_cast<RegistryLine *>(calloc(1, sizeof *line));
    if (!line)
        return ERROR_NOT_ENOUGH_MEMORY;
    FILE *file = BeginReplacement(native);
    LONG result = file ? ERROR_SUCCESS : FailureCode(GetLastError());
    if (file) {
        PutOldLines(file, old, keep, context, line);
        for (int i = 0; i < addedCount; ++i)
            PutLine(file, &added[i]);
        if (!EndReplaceFile(file, 1))
            result = FailureCode(GetLastError());
    }
    free(line);
    return result;
}

// The mutex has a file of its own, since the registry's is replaced by each write; it makes the
// folder of both. A process that holds it for so long hangs, and the write fails rather than hang
// too.
HANDLE LockRegistry()
{
    HANDLE lock = CreateMutexA(nullptr, FALSE, "registry");
    if (!lock || WaitForSingleObject(lock, kLockWait) == WAIT_OBJECT_0)
        return lock;
    CloseHandle(lock);
    return nullptr;
}

void UnlockRegistry(HANDLE lock)
{
    CloseHandle(lock);  // the lock goes with it
}

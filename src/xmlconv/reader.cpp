// The input of a conversion.
#include "xmlconv/reader.h"

#include <cstdlib>
#include <cstring>

constexpr size_t kBlockSize = 256 * 1024;

int StartReading(DocumentReader *reader, FILE *file)
{
    *reader = {};
    reader->file = file;
    reader->block = static_cast<char *>(malloc(kBlockSize));
    return reader->block != nullptr;
}

void StopReading(DocumentReader *reader)
{
    free(reader->block);
    reader->block = nullptr;
}

static bool HasBytes(DocumentReader *reader)
{
    if (reader->used < reader->filled)
        return true;
    reader->used = 0;
    reader->filled = fread(reader->block, 1, kBlockSize, reader->file);
    return reader->filled > 0;
}

int PeekByte(DocumentReader *reader)
{
    return HasBytes(reader) ? static_cast<unsigned char>(reader->block[reader->used]) : -1;
}

void SkipByte(DocumentReader *reader)
{
    ++reader->used;
    ++reader->position;
}

PieceEnd ReadPiece(DocumentReader *reader, char stop, char *buffer, size_t limit, size_t *length)
{
    *length = 0;
    while (HasBytes(reader)) {
        const char *from = reader->block + reader->used;
        size_t left = reader->filled - reader->used;
        const void *found = memchr(from, stop, left);
        size_t size = found ? size_t(static_cast<const char *>(found) - from) : left;
        if (size > limit - *length)
            return kPieceTooLong;
        memcpy(buffer + *length, from, size);
        *length += size;
        reader->used += size;
        reader->position += size;
        if (found)
            return kPieceWhole;
    }
    return kPieceEnded;
}

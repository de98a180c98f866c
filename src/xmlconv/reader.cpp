// The input of a conversion: one block, filled anew when all of it was given out. Pieces are found
// by memchr, which looks at many bytes at once.
#include "xmlconv/reader.h"

#include <cassert>
#include <cstdlib>
#include <cstring>

int StartReading(DocumentReader *reader, const DocumentSource &source, size_t blockSize)
{
    *reader = {};
    reader->source = source;
    reader->size = blockSize;
    reader->block = static_cast<char *>(malloc(blockSize + 1));
    return reader->block != nullptr;
}

void StopReading(DocumentReader *reader)
{
    free(reader->block);
    reader->block = nullptr;
}

// Whether there is a next byte, which stands in the block then. At the end the source is asked
// again by each call, and goes on saying so.
static bool HasBytes(DocumentReader *reader)
{
    if (!IsBlockUsed(reader))
        return true;
    reader->used = 0;
    reader->filled = reader->source.read(reader->source.context, reader->block, reader->size);
    assert(reader->filled <= reader->size);
    reader->block[reader->filled] = 0;
    return reader->filled > 0;
}

int PeekByte(DocumentReader *reader)
{
    return HasBytes(reader) ? static_cast<unsigned char>(*PlaceInBlock(reader)) : -1;
}

size_t PieceInBlock(const DocumentReader *reader, char stop)
{
    const char *from = PlaceInBlock(reader);
    const void *found = memchr(from, stop, reader->filled - reader->used);
    return found ? size_t(static_cast<const char *>(found) - from) : 0;
}

PieceEnd ReadPiece(DocumentReader *reader, char stop, char *buffer, size_t limit, size_t *length)
{
    assert(*length <= limit);
    while (HasBytes(reader)) {
        const char *from = PlaceInBlock(reader);
        size_t left = reader->filled - reader->used;
        const void *found = memchr(from, stop, left);
        size_t size = found ? size_t(static_cast<const char *>(found) - from) : left;
        if (size > limit - *length)
            return kPieceTooLong;  // what is stored stays, the rest is still in the block
        memcpy(buffer + *length, from, size);
        *length += size;
        SkipBytes(reader, size);
        if (found)
            return kPieceWhole;
    }
    return kPieceEnded;
}

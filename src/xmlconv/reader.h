// The input of a conversion in pieces: up to the next bracket. It is read in blocks, and bytes are
// counted here, since to ask a stream for its place costs more than to read a tag.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

struct DocumentReader {
    FILE *file;
    char *block;
    size_t size, used, filled;  // of the block
    uint64_t position;          // bytes of the file that were given out
};

// Room for a block: 1, or 0 without memory.
int StartReading(DocumentReader *reader, FILE *file, size_t blockSize);
void StopReading(DocumentReader *reader);

// Whether the next byte, if there is one, comes in a new block. What pointed into this one is lost
// then.
inline bool IsBlockUsed(const DocumentReader *reader)
{
    return reader->used == reader->filled;
}

// Where the next byte stands in the block.
inline const char *PlaceInBlock(const DocumentReader *reader)
{
    return reader->block + reader->used;
}

// The next byte, which stays; -1 at the end or at a failure, which counts like the end.
int PeekByte(DocumentReader *reader);

// Bytes in front of the next `stop` of the block; 0 when there are none or it isn't in the block.
size_t PieceInBlock(const DocumentReader *reader, char stop);

// Steps over bytes that stand in the block.
inline void SkipBytes(DocumentReader *reader, size_t count)
{
    reader->used += count;
    reader->position += count;
}

enum PieceEnd { kPieceWhole, kPieceTooLong, kPieceEnded };

// Stores bytes up to `stop`, which stays, or to the end of the input: at most `limit` of them,
// without terminator.
PieceEnd ReadPiece(DocumentReader *reader, char stop, char *buffer, size_t limit, size_t *length);

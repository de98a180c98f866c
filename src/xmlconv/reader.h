// The input of a conversion in pieces: up to the next bracket. The part converter reads a document
// through it. It is read in blocks, since most pieces lie whole in one and never have to be copied,
// and bytes are counted here, since to ask a stream for its place costs more than to read a tag.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>

// Where a document comes from.
struct DocumentSource {
    // Stores up to `size` bytes and gives their number; 0 at the end, and at a failure, which
    // counts like the end.
    size_t (*read)(void *context, char *buffer, size_t size);
    void *context;    // the first argument of `read`; it has to live as long as the reading
    uint64_t length;  // in bytes, for the percentage; 0: not known
};

struct DocumentReader {
    DocumentSource source;
    char *block;          // owned; behind what was read stands a zero byte
    size_t size;          // of the block without that byte
    size_t filled, used;  // bytes of the block that were read, and that were given out
    uint64_t position;    // bytes of the document that were given out
};

// Takes a block: 1, or 0 without memory.
int StartReading(DocumentReader *reader, const DocumentSource &source, size_t blockSize);
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

// The next byte, which stays; -1 at the end.
int PeekByte(DocumentReader *reader);

// Number of bytes in front of the next `stop` of the block; 0 when there are none or it isn't in
// the block.
size_t PieceInBlock(const DocumentReader *reader, char stop);

// Steps over bytes that stand in the block.
inline void SkipBytes(DocumentReader *reader, size_t count)
{
    assert(count <= reader->filled - reader->used);
    reader->used += count;
    reader->position += count;
}

enum PieceEnd { kPieceWhole, kPieceTooLong, kPieceEnded };

// Stores bytes up to `stop`, which stays, or to the end of the input, behind the `*length` bytes
// that the buffer has already; without terminator, at most `limit` in all. kPieceTooLong stores
// what fits by whole blocks: the call can be repeated with a larger limit and goes on there.
PieceEnd ReadPiece(DocumentReader *reader, char stop, char *buffer, size_t limit, size_t *length);

// The input of a conversion in pieces: up to the next bracket. It is read in blocks, and bytes are
// counted here, since to ask a stream for its place costs more than to read a tag.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

struct DocumentReader {
    FILE *file;
    char *block;
    size_t used, filled;  // of the block
    uint64_t position;    // bytes of the file that were given out
};

// Room for a block: 1, or 0 without memory.
int StartReading(DocumentReader *reader, FILE *file);
void StopReading(DocumentReader *reader);

// The next byte, which stays; -1 at the end or at a failure, which counts like the end.
int PeekByte(DocumentReader *reader);

// Steps over a byte that PeekByte or ReadPiece has shown.
void SkipByte(DocumentReader *reader);

enum PieceEnd { kPieceWhole, kPieceTooLong, kPieceEnded };

// Stores bytes up to `stop`, which stays, or to the end of the input: at most `limit` of them,
// without terminator.
PieceEnd ReadPiece(DocumentReader *reader, char stop, char *buffer, size_t limit, size_t *length);

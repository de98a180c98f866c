// Input in pieces, for files.cpp: as many whole lines as are there, up to a limit, so that a file
// of any size takes bounded memory and a pipe gets its answer line by line. A line longer than the
// limit is cut where a run of Lao ends.
#pragma once

#include <string>
#include <string_view>

struct PieceReader {
    int file;             // a descriptor, the caller's
    std::string buffer;   // what was read, from the current piece on
    size_t used;          // bytes of the buffer that were given out as the current piece
    bool ended;           // nothing more comes
    int failure;          // errno of a read that failed, 0 for none
    size_t line, column;  // of the current piece's first character, from 1
};

// Starts reading a file that is open.
PieceReader StartReading(int file);

// The next piece, valid until the next call; empty at the end. An input that can't be read ends
// there, with `failure` set.
std::string_view ReadPiece(PieceReader *reader);

// Short runs of Lao divided at once by words and, inside of these, by syllables: the chunks that
// two calls of WrapText would mark. For the key tables, which divide names and words by the million
// and need no more than where the chunks begin.
#pragma once

#include <windows.h>

#include <cstdint>

// In bytes. No value of so short a run can be too great for scoring.
enum { kLongestShortRun = 255 };

struct RunChunk {
    uint8_t start, length;
    bool startsWord;  // a boundary of words, or the start of the run
};

// Divides run, length bytes of Lao with something else behind them, into at most length chunks; the
// number of them. dictionaries: those to divide by, which have to be loaded. Not byWords: by
// syllables alone, and each of them counts as a word. The companion must answer FindWordLengths.
int DivideShortRun(const uint8_t *run, int length, DWORD dictionaries, bool byWords,
                   RunChunk *chunks);

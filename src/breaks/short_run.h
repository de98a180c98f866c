// Short runs of Lao divided quickly: the chunks that MarkBreakPoints finds, and, for the key
// tables, those of two calls of WrapText, by words and inside of these by syllables.
#pragma once

#include <windows.h>

#include <cstdint>

// In bytes. No value of so short a run can be too great for scoring.
enum { kLongestShortRun = 255 };

struct RunChunk {
    uint8_t start, length;
    bool startsWord;  // a boundary of words, or the start of the run; for key tables
    uint8_t kind;     // kSyllable to kBadStretch; words are told from syllables by MarkShortRun
};

// Divides run, length bytes of Lao with something else behind them, into at most length chunks; the
// number of them. dictionaries: those to divide by, which have to be loaded; flags as of
// MarkBreakPoints. The companion must answer FindWordLengths.
int MarkShortRun(const uint8_t *run, int length, DWORD dictionaries, DWORD flags, RunChunk *chunks);

// The same by words and, inside of these, by syllables. Not byWords: by syllables alone, and each
// of them counts as a word.
int DivideShortRun(const uint8_t *run, int length, DWORD dictionaries, bool byWords,
                   RunChunk *chunks);

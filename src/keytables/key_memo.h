// The memory of the fast road of conversions: texts of syllables and of whole runs, by their bytes.
// What the texts depend on beside the bytes is a record; where a conversion comes with another one,
// all that was remembered for its type of table is forgotten. This is the one place that decides
// about it.
#pragma once

#include <windows.h>

#include <cstdint>

#include "keytables/conversion.h"

// All that a run's text depends on beside the run. It is compared as bytes: no gaps in it.
struct MemoBasis {
    uint32_t filling;   // of the table
    DWORD revision;     // of the dictionaries' words
    WORD dictionaries;  // that the options have on
    char sequence[kSequenceRoom];
    uint8_t separator;
    bool byWords, showsFailures;
    uint8_t unused[2];
};
static_assert(sizeof(MemoBasis) == 24);

// The memory for one basis; valid until the next question for the same type of table.
struct KeyMemo {
    MemoBasis basis;
    uint32_t epoch;    // cells of this number are of this basis; 0: no conversion came yet
    bool staysInside;  // see PatternsStayInside
};

enum { kMemoSyllable = 8, kMemoRun = 16 };  // bytes of the longest that is remembered
enum { kSyllableTextRoom = 18, kRunTextRoom = 40 };

// Texts are terminated and filled up with zeros, so that they can be copied at their whole size.
struct SyllableCell {
    uint64_t bytes;  // filled up with zeros
    uint32_t epoch;
    uint8_t length;  // of the text
    RunMemory memory;
    char text[kSyllableTextRoom];
};
static_assert(sizeof(SyllableCell) == 32);

struct RunCell {
    uint64_t bytes[2];  // filled up with zeros
    uint32_t epoch;
    uint8_t length;                 // of the text
    RunMemory memory;               // of the whole run
    uint8_t wordStart, wordLength;  // of kBecomesWord: what a repeat sign repeats, in the text
    char text[kRunTextRoom];
};
static_assert(sizeof(RunCell) == 64);

// The memory for a conversion; it is empty when something has changed since the last one.
const KeyMemo *MemoOf(const Conversion *conversion, DWORD revision);

// The one cell in which the syllable or run has its place. It is of the memory if its epoch and its
// bytes are the same.
SyllableCell *SyllableCellOf(uint64_t bytes);
RunCell *RunCellOf(const uint64_t *bytes);

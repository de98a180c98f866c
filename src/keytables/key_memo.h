// The memory of the fast road of conversions: texts of syllables and of whole runs, by their bytes.
// What the texts depend on beside the bytes is a record; where a conversion comes with another one,
// all that was remembered for its type of table is forgotten. This is the one place that decides
// about it.
#pragma once

#include <windows.h>

#include <cstdint>

#include "keytables/conversion.h"

// All that a run's text depends on beside the run.
struct MemoBasis {
    uint32_t filling;   // of the table
    DWORD revision;     // of the dictionaries' words
    WORD dictionaries;  // that the options have on
    char sequence[kSequenceRoom];
    uint8_t separator;
    bool byWords, showsFailures;
};

// The memory for one basis; valid until the next question for the same type of table.
struct KeyMemo {
    MemoBasis basis;
    uint32_t epoch;    // cells of this number are of this basis; 0: no conversion came yet
    bool staysInside;  // see PatternsStayInside
};

enum { kMemoSyllable = 8 };  // bytes of the longest that is remembered
enum { kSyllableTextRoom = 18, kRunTextRoom = 1024 };

// The text is terminated and filled up with zeros, so that it can be copied at its whole size.
struct SyllableCell {
    uint64_t bytes;  // filled up with zeros
    uint32_t epoch;
    uint8_t length;  // of the text
    RunMemory memory;
    char text[kSyllableTextRoom];
};
static_assert(sizeof(SyllableCell) == 32);

// What is remembered of a whole run, in front of its bytes and its terminated text.
struct KeptRun {
    uint16_t textLength;
    uint16_t wordStart;  // of kBecomesWord: what a repeat sign repeats, in the text
    uint8_t wordLength;
    uint8_t runLength;
    RunMemory memory;  // of the whole run
};

// The memory for a conversion; it is empty when something has changed since the last one.
const KeyMemo *MemoOf(const Conversion *conversion, DWORD revision);

// A syllable that the memory holds; null for others. Valid until the next KeepSyllable.
const SyllableCell *FindSyllable(const KeyMemo *memo, uint64_t bytes);

void KeepSyllable(const SyllableCell &cell);

// A run of the memory as a number. The bytes are read in eights, the last one beyond their end.
uint64_t HashRun(const KeyMemo *memo, const uint8_t *run, size_t length);

// A run that the memory holds, and its text; null for others. Valid until the next KeepRun.
const KeptRun *FindRun(const KeyMemo *memo, uint64_t hash, const uint8_t *run, size_t length);
const char *TextOfRun(const KeptRun *kept);

// Takes a run of kept->runLength bytes and a text, shorter than kRunTextRoom.
void KeepRun(const KeyMemo *memo, uint64_t hash, const KeptRun &kept, const uint8_t *run,
             const char *text);

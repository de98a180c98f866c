// The syllable parser: do the first n bytes of an internal-code text form a Lao syllable, and which
// bytes are its initial, vowel, tone and final? It works on spelling alone and knows no words.
#pragma once

#include <cstdint>

// The pieces of one syllable: four NUL-terminated byte strings in the caller's record. After a
// failed parse they hold the partial reading.
struct SyllableParts {
    uint8_t initial[4];  // the consonant, and the second one of a cluster
    uint8_t final[4];  // final consonant and closing sign; after a failure what could not be placed
    uint8_t vowel[6];  // lead vowel first, then the signs in text order
    uint8_t tone[2];
};
static_assert(sizeof(SyllableParts) == 16);

enum VowelClass : uint8_t {
    kNoPattern,    // not a vowel
    kClosedVowel,  // complete, takes no final consonant
    kNeedsFinal,   // must be followed by one
    kOpenVowel,    // complete, may be followed by one
    kUnfinished,   // the start of a longer pattern
};

// Class of a NUL-terminated vowel pattern; one of no byte or of more than three is no pattern.
VowelClass ClassifyVowelPattern(const uint8_t *pattern);

// 1 when the first n bytes are a syllable under one of the readings that Lao spelling leaves open,
// which are tried in turn; else 0. text must be terminated somewhere behind them: the parser looks
// one byte ahead. parts may be null. A text in which WO can be cluster or vowel raises the number
// of readings from 2 to 4, and it stays raised until ResetVariants.
int ParseSyllable(const uint8_t *text, int n, SyllableParts *parts);

// Back to two readings. Callers do so before each question, so that an answer depends on the text
// asked about and on nothing before it.
void ResetVariants();

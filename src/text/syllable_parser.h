// The syllable parser: do the first n bytes of an internal-code text form a Lao syllable, and which
// bytes are its initial, vowel, tone and final? It works on spelling alone and knows no words.
#pragma once

#include <cstdint>

// Four NUL-terminated byte strings. After a failed parse they hold the partial reading.
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

// Class of a NUL-terminated vowel pattern; one of more than three bytes, or none, is no pattern.
VowelClass ClassifyVowelPattern(const uint8_t *pattern);

// Bits of a variant: which other reading of an open sequence is tried.
enum : int {
    kRefuseFinal = 1,    // an open vowel takes no final consonant
    kRefuseCluster = 2,  // the second consonant of a cluster is left for the vowel
};

// 1 when the first n bytes are a syllable under this variant, else 0. text must be terminated
// somewhere behind them: the parser looks one byte ahead.
int ParseSyllableVariant(const uint8_t *text, int n, int variant, SyllableParts *parts);

// 1 when consonant, WO and a final consonant leave open whether WO is cluster or vowel, else 0.
int IsAmbiguousCluster(const uint8_t *text, int n);

// Tries the variants in turn: 1 at the first that fits, else 0. parts may be null. A text with an
// ambiguous cluster raises the number of variants to 4, and it stays raised until ResetVariants.
int ParseSyllable(const uint8_t *text, int n, SyllableParts *parts);

// Back to two variants. Callers do so before each question, so that an answer depends on the text
// asked about and on nothing before it.
void ResetVariants();

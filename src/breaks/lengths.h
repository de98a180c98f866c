// What fits at a position: the lengths at which a syllable or a dictionary word starts there, as a
// mask. The bit of value 2^(L-1) stands for length L. Texts are internal code, terminated somewhere
// behind.
#pragma once

#include <cstdint>

#include "frame/companion.h"

enum : int { kShortestChunk = 2, kLongestSyllable = 7, kLongestChunk = 15 };

constexpr uint32_t LengthBit(int length)
{
    return 1u << (length - 1);
}

// Syllables, by asking the parser for each length: the truth.
uint32_t SyllableLengthMask(const uint8_t *position);

// The same from one walk.
uint32_t SyllableLengths(const uint8_t *position);

// The same in two: lengths that are syllables whatever stands behind them, and those that are one
// only because the byte behind is a cancellation mark, which must then be of the same text.
struct SyllableFits {
    uint8_t sure, cancelled;
};
SyllableFits WalkSyllables(const uint8_t *position);

// Whole entries of one dictionary, by asking the companion twice for each length. A repeat sign or
// an ellipsis behind a word goes with it.
uint32_t DictionaryWordMask(const uint8_t *position, int dictionary);

// The words of all dictionaries in the set (bits 1, 2, 4), by one question where the companion
// answers it.
void DictionaryWords(const uint8_t *position, DWORD dictionaries, WordLengths *lengths);

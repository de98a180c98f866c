// Lengths of syllables and words at a position: what break scoring asks for each byte of a run. The
// plain versions ask a question for each length; the fast ones stand beside them and give the same
// masks, which the tests prove on millions of texts.
#include "breaks/lengths.h"

#include "text/lao_code.h"
#include "text/syllable_parser.h"
#include "text/syllable_table.h"
#include "text/syllable_table.inc"

constexpr uint32_t kSyllableMask = (1u << kLongestSyllable) - LengthBit(kShortestChunk);

// The walk shifts the flags to the place of the length that they tell of.
static_assert(kEndsHere == 1 && kEndedBefore == 2);

uint32_t SyllableLengthMask(const uint8_t *position)
{
    uint32_t mask = 0;
    for (int length = 1; length <= kLongestSyllable && IsLaoByte(position[length - 1]); ++length) {
        ResetVariants();
        if (length >= kShortestChunk && ParseSyllable(position, length, nullptr))
            mask |= LengthBit(length);
    }
    return mask;
}

// One step more than the longest syllable: the byte behind can cancel its last consonant. A byte
// that isn't Lao, the terminator too, leads to the dead state.
static inline void WalkTable(const uint8_t *position, uint32_t *sure, uint32_t *cancelled)
{
    uint32_t state = kStartState;
    for (int i = 0; i <= kLongestSyllable; ++i) {
        uint32_t cell = kSyllableNext[state][kSyllableClasses[position[i]]];
        *sure |= (cell & kEndsHere) << i;
        *cancelled |= (cell & kEndedBefore) << i >> 2;  // one byte shorter
        state = cell >> kStateShift;
        if (state == kDeadState)
            break;
    }
}

uint32_t SyllableLengths(const uint8_t *position)
{
    uint32_t sure = 0, cancelled = 0;
    WalkTable(position, &sure, &cancelled);
    return (sure | cancelled) & kSyllableMask;
}

SyllableFits WalkSyllables(const uint8_t *position)
{
    uint32_t sure = 0, cancelled = 0;
    WalkTable(position, &sure, &cancelled);
    return {uint8_t(sure & kSyllableMask), uint8_t(cancelled & kSyllableMask)};
}

// Two questions for a length: does any word begin so, and is it one? The first no ends the search.
uint32_t DictionaryWordMask(const uint8_t *position, int dictionary)
{
    const char *text = reinterpret_cast<const char *>(position);
    uint32_t mask = 0;
    for (int length = kShortestChunk; length <= kLongestChunk; ++length) {
        if (!IsLaoByte(position[length - 1]) || !FindWord(text, length, 0, dictionary))
            break;
        if (FindWord(text, length, 0, dictionary + kWholeEntry))
            mask |= LengthBit(IsWordSign(position[length]) ? length + 1 : length);
    }
    return mask;
}

void DictionaryWords(const uint8_t *position, DWORD dictionaries, WordLengths *lengths)
{
    if (FindWordLengths(reinterpret_cast<const char *>(position), dictionaries, lengths))
        return;
    *lengths = {};
    if (dictionaries & kMainDictionary)
        lengths->main = DictionaryWordMask(position, kMainDictionary);
    if (dictionaries & kUserDictionary)
        lengths->user = DictionaryWordMask(position, kUserDictionary);
    if (dictionaries & kOldDictionary)
        lengths->old = DictionaryWordMask(position, kOldDictionary);
}

// The dynamic programme of break scoring, the core of all that divides text: wrapping asks it for
// each run of Lao. The best division of a run is the one of greatest value, and the value of a
// chunk is its length squared, so that one long chunk is worth more than two short ones; a word
// counts twice. Going from the end of the run to its start, the best value behind each chunk is
// known.
//
// A score of 0 means that no chunk starts at the position; 1, that one does but leads nowhere.
#include "breaks/scoring.h"

#include <bit>
#include <cassert>
#include <cstring>

#include "breaks/dictionaries.h"
#include "breaks/lengths.h"
#include "frame/companion.h"
#include "orvel.h"
#include "text/lao_code.h"

constexpr uint32_t kGreatestScore = 32767;
constexpr uint32_t kChunkMask = (1u << kLongestChunk) - LengthBit(kShortestChunk);
static_assert(int(kLongestChunk) <= int(kMarkLength));  // a mark holds any chunk's length

struct ScoringState {
    int overflowShown;  // for the current run
};
static ScoringState gScoring;

static void ShowOverflow()
{
    if (!gScoring.overflowShown)
        OrvelMsg(nullptr, "The Lao text is too long to process correctly!", nullptr, MB_ICONSTOP);
    gScoring.overflowShown = 1;
}

// A word of several dictionaries counts as the user's, then as one of the main dictionary.
static uint8_t MarkOfChunk(const WordLengths &words, uint32_t bit, int length)
{
    int source = words.user & bit   ? kFromUser
                 : words.main & bit ? kFromMain
                 : words.old & bit  ? kFromOld
                                    : 0;
    return uint8_t(length | source);
}

// Scores one position; the entries behind its slots are those of the positions behind it.
static void ScorePosition(const uint8_t *position, uint16_t *score, uint8_t *mark, DWORD flags)
{
    WordLengths words = {};
    uint32_t syllables = flags & kSyllableBreaks ? SyllableLengths(position) : 0;
    if (flags & kWordBreaks)
        DictionaryWords(position, gProcess.options->dictionaries, &words);
    uint32_t allWords = words.main | words.user | words.old;
    uint32_t best = 0;
    *mark = 1;
    // From the shortest length up: each round takes the lowest bit that is left.
    for (uint32_t left = (syllables | allWords) & kChunkMask; left; left &= left - 1) {
        uint32_t bit = left & (0 - left);
        int length = std::countr_zero(left) + 1;
        uint32_t square = uint32_t(length * length);
        uint32_t next = score[length];
        // 1: the chunk fits, but the rest of the run can't be reached from it.
        uint32_t value = next ? next + (allWords & bit ? 2 * square : square) : 1;
        if (value < best)
            continue;  // among equals the longer chunk wins
        if (value > kGreatestScore) {
            ShowOverflow();
            value = 1;
        }
        best = value;
        *mark = MarkOfChunk(words, bit, length);
    }
    assert(best <= kGreatestScore);
    *score = uint16_t(best);
}

// Until all chunks behind a position are known its value is too, so one walk back is enough.
static void ScoreRun(const uint8_t *text, size_t length, uint16_t *scores, uint8_t *marks,
                     DWORD flags)
{
    scores[length] = 1;  // a chunk that ends the run has a successor
    marks[length] = 0;
    for (size_t i = length; i-- > 0;) {
        ScorePosition(text + i, scores + i, marks + i, flags);
        if (i > 0 && IsLeadVowel(text[i - 1]))
            scores[i] = 0;  // a lead vowel belongs to the consonant behind it
    }
}

// A chunk of no dictionary is a syllable.
static uint8_t MarkerOfSource(uint8_t mark)
{
    switch (mark & ~kMarkLength) {
    case kFromMain: return kMainWord;
    case kFromUser: return kUserWord;
    case kFromOld: return kOldWord;
    default: return kSyllable;
    }
}

// Bytes up to the next one at which a chunk starts, within those that are left.
static size_t BadStretchLength(const uint16_t *scores, size_t left)
{
    size_t length = 1;
    while (length < left && !scores[length])
        ++length;
    return length;
}

// Follows the best chunks from the start; their marks are what is left of the programme.
static void WriteMarkers(uint8_t *text, size_t length, const uint16_t *scores, const uint8_t *marks)
{
    for (size_t i = 0; i < length;) {
        bool isChunk = scores[i] != 0;
        size_t chunk = isChunk ? marks[i] & kMarkLength : BadStretchLength(scores + i, length - i);
        assert(chunk > 0 && chunk <= length - i);
        text[i] = isChunk ? MarkerOfSource(marks[i]) : uint8_t(kBadStretch);
        memset(text + i + 1, kInside, chunk - 1);
        i += chunk;
    }
}

void MarkBreakPoints(uint8_t *text, uint16_t *scores, uint8_t *marks, DWORD flags)
{
    if (flags & kWordBreaks)
        LoadDictionaries(gProcess.options->dictionaries);
    gScoring.overflowShown = 0;
    size_t length = strlen(reinterpret_cast<char *>(text));
    ScoreRun(text, length, scores, marks, flags);
    WriteMarkers(text, length, scores, marks);
}

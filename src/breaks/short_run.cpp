// The programme of break scoring from the other end: it looks only at positions that chunks lead to
// from the start of the run, which are about half of them. Their scores are those of the whole
// programme, since a score depends on nothing but the positions behind it. Only where no chunk
// fits are the other positions wanted too; then all are scored.
//
// The look-ups are shared: the syllables of a position are looked up once for both passes. What
// ends behind a word isn't seen by the pass inside of it, so the lengths that depend on the byte
// behind them are kept apart.
#include "breaks/short_run.h"

#include <bit>
#include <cassert>
#include <cstring>

#include "breaks/lengths.h"
#include "orvel.h"
#include "text/lao_code.h"

constexpr uint32_t kChunkMask = (1u << kLongestChunk) - LengthBit(kShortestChunk);

// A byte of the run, or its end, in the pass over the run or over a word of it.
struct RunPosition {
    uint16_t candidates;  // lengths of chunks
    uint16_t words;       // those of them that are in a dictionary
    uint16_t main, user;  // those that are in this one
    uint16_t score;
    uint8_t length;  // of the best chunk
};

// Work of one run.
struct ShortRunState {
    const uint8_t *text;
    DWORD dictionaries;
    RunPosition positions[kLongestShortRun + 1];
    SyllableFits fits[kLongestShortRun];
    bool hasFits[kLongestShortRun];
    RunPosition *reached[kLongestShortRun];  // positions that chunks lead to, from the start on
};
static ShortRunState gShortRun;

static inline uint32_t SyllablesWithin(ShortRunState *run, int position, int end)
{
    if (!run->hasFits[position])
        run->fits[position] = WalkSyllables(run->text + position);
    run->hasFits[position] = true;
    int left = end - position;
    uint32_t within = left > kLongestSyllable ? ~0u : (1u << left) - 1;
    SyllableFits fits = run->fits[position];
    return (fits.sure & within) | (fits.cancelled & (within >> 1));
}

static inline uint32_t WordsAt(ShortRunState *run, int position)
{
    WordLengths words = {};
    FindWordLengths(reinterpret_cast<const char *>(run->text) + position, run->dictionaries,
                    &words);
    run->positions[position].main = uint16_t(words.main);
    run->positions[position].user = uint16_t(words.user);
    return (words.main | words.old | words.user) & kChunkMask;
}

// A word that reaches to the end is worth more than any division of what is left, and so is a
// syllable where only syllables count: the square of a sum is more than the sum of the squares. A
// lead vowel belongs to the consonant behind it: nothing starts there.
static inline uint32_t ListCandidates(ShortRunState *run, int position, int end, DWORD by)
{
    int left = end - position;
    uint32_t whole = left >= kShortestChunk && left <= kLongestChunk ? LengthBit(left) : 0;
    uint32_t words = by & kWordBreaks ? WordsAt(run, position) : 0, all = words;
    if (!(words & whole)) {
        all |= by & kSyllableBreaks ? SyllablesWithin(run, position, end) : 0;
        whole = by & kWordBreaks ? 0 : all & whole;
    }
    run->positions[position].words = uint16_t(words);
    return whole ? whole : all;
}

// Lists positions that are reached from the start, or all, and the candidates of each; the number
// of positions.
static inline int ListForward(ShortRunState *run, int start, int end, DWORD by, bool takesAll)
{
    int count = 0;
    uint32_t ahead = 1;  // bit n stands for the position n bytes ahead
    for (int i = start; ahead; ++i) {
        int skipped = std::countr_zero(ahead);
        i += skipped;
        if (i >= end)
            break;
        bool isFree = i == start || !IsLeadVowel(run->text[i - 1]);
        uint32_t candidates = isFree ? ListCandidates(run, i, end, by) : 0;
        run->positions[i].candidates = uint16_t(candidates);
        run->reached[count++] = &run->positions[i];
        ahead = ahead >> skipped >> 1 | candidates | (takesAll ? 1 : 0);
    }
    return count;
}

// As in break scoring: among equals the longer chunk wins, and a chunk that fits but leads nowhere
// is worth 1.
static inline void ScorePosition(RunPosition *position)
{
    uint32_t best = 0, words = position->words;
    int bestLength = 1;
    for (uint32_t left = position->candidates; left; left &= left - 1) {
        int length = std::countr_zero(left) + 1;
        uint32_t next = position[length].score, square = uint32_t(length * length);
        uint32_t value = next ? next + (square << (words >> (length - 1) & 1)) : 1;
        bestLength = value >= best ? length : bestLength;
        best = value >= best ? value : best;
    }
    position->score = uint16_t(best);
    position->length = uint8_t(bestLength);
}

static inline void ScorePart(ShortRunState *run, int start, int end, DWORD by, bool takesAll)
{
    int count = ListForward(run, start, end, by, takesAll);
    run->positions[end].score = 1;
    while (count--)
        ScorePosition(run->reached[count]);
}

// Three versions, which the compiler makes of one.
static void ScoreReached(ShortRunState *run, int start, int end, DWORD by)
{
    switch (by) {
    case kBothBreaks: ScorePart(run, start, end, kBothBreaks, false); break;
    case kWordBreaks: ScorePart(run, start, end, kWordBreaks, false); break;
    default: ScorePart(run, start, end, kSyllableBreaks, false); break;
    }
}

static uint8_t BadStretchLength(const ShortRunState *run, int position, int end)
{
    int length = 1;
    while (position + length < end && !run->positions[position + length].score)
        ++length;
    return uint8_t(length);
}

// Follows the best chunks from start to end; the number of chunks.
static int DividePart(ShortRunState *run, int start, int end, DWORD by, RunChunk *chunks)
{
    bool isComplete = false;
    int count = 0;
    ScoreReached(run, start, end, by);
    for (int i = start; i < end; i += chunks[count++].length) {
        const RunPosition *position = &run->positions[i];
        if (!position->score && !isComplete) {
            ScorePart(run, start, end, by, true);
            isComplete = true;
        }
        uint8_t length = position->score ? position->length : BadStretchLength(run, i, end);
        assert(length > 0 && length <= end - i);
        chunks[count] = {uint8_t(i), length, false,
                         uint8_t(position->score ? kSyllable : kBadStretch)};
    }
    return count;
}

// A chunk that is a syllable by itself stays whole, and one byte has no boundary inside.
static int DivideChunk(ShortRunState *run, const RunChunk &chunk, RunChunk *chunks)
{
    int start = chunk.start, length = chunk.length, end = start + length;
    bool isSyllable =
        length <= kLongestSyllable && SyllablesWithin(run, start, end) & LengthBit(length);
    if (length < kShortestChunk || isSyllable) {
        chunks[0] = {chunk.start, chunk.length, true, chunk.kind};
        return 1;
    }
    int count = DividePart(run, start, end, kSyllableBreaks, chunks);
    chunks[0].startsWord = true;
    return count;
}

static int DivideBySyllables(ShortRunState *run, int length, RunChunk *chunks)
{
    int count = DividePart(run, 0, length, kSyllableBreaks, chunks);
    for (int i = 0; i < count; ++i)
        chunks[i].startsWord = true;
    return count;
}

static ShortRunState *StartRun(const uint8_t *text, int length, DWORD dictionaries)
{
    assert(length > 0 && length <= kLongestShortRun);
    ShortRunState *run = &gShortRun;
    run->text = text;
    run->dictionaries = dictionaries;
    memset(run->hasFits, 0, size_t(length));
    return run;
}

// A word of several dictionaries counts as the user's, then as one of the main dictionary.
static uint8_t KindOfWord(const RunPosition &position, uint32_t bit)
{
    return position.user & bit ? kUserWord : position.main & bit ? kMainWord : kOldWord;
}

int MarkShortRun(const uint8_t *text, int length, DWORD dictionaries, DWORD flags, RunChunk *chunks)
{
    ShortRunState *run = StartRun(text, length, dictionaries);
    int count = DividePart(run, 0, length, flags & kBothBreaks, chunks);
    for (int i = 0; i < count; ++i) {
        const RunPosition &position = run->positions[chunks[i].start];
        if (chunks[i].kind == kBadStretch)
            continue;  // it may be of any length
        uint32_t bit = LengthBit(chunks[i].length);
        if (position.words & bit)
            chunks[i].kind = KindOfWord(position, bit);
    }
    return count;
}

int DivideShortRun(const uint8_t *text, int length, DWORD dictionaries, bool byWords,
                   RunChunk *chunks)
{
    ShortRunState *run = StartRun(text, length, dictionaries);
    RunChunk words[kLongestShortRun];
    if (!byWords)
        return DivideBySyllables(run, length, chunks);
    int wordCount = DividePart(run, 0, length, kBothBreaks, words), count = 0;
    for (int i = 0; i < wordCount; ++i)
        count += DivideChunk(run, words[i], chunks + count);
    return count;
}

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
#include "text/lao_code.h"

constexpr uint32_t kChunkMask = (1u << kLongestChunk) - LengthBit(kShortestChunk);

// Work of one run; entries stand for its bytes, and one more for its end.
struct ShortRunState {
    const uint8_t *text;
    DWORD dictionaries;
    SyllableFits fits[kLongestShortRun + 1];
    bool hasFits[kLongestShortRun + 1];
    // of the pass over the run or over a word of it
    bool isReached[kLongestShortRun + 1];
    uint16_t candidates[kLongestShortRun + 1];  // lengths of chunks
    uint16_t words[kLongestShortRun + 1];       // those of them that are in a dictionary
    uint16_t scores[kLongestShortRun + 1];
    uint8_t lengths[kLongestShortRun + 1];  // of the best chunk
};
static ShortRunState gShortRun;

static uint32_t SyllablesWithin(ShortRunState *run, int position, int end)
{
    if (!run->hasFits[position]) {
        run->fits[position] = WalkSyllables(run->text + position);
        run->hasFits[position] = true;
    }
    uint32_t left = uint32_t(end - position);
    uint32_t within = left > kLongestSyllable ? ~0u : (1u << left) - 1;
    SyllableFits fits = run->fits[position];
    return (fits.sure & within) | (fits.cancelled & (within >> 1));
}

static uint32_t WordsAt(const ShortRunState *run, int position)
{
    WordLengths words;
    if (!FindWordLengths(reinterpret_cast<const char *>(run->text) + position, run->dictionaries,
                         &words))
        return 0;
    return (words.main | words.old | words.user) & kChunkMask;
}

// A word that reaches to the end is worth more than any division of what is left, and so is a
// syllable where only syllables count: the square of a sum is more than the sum of the squares.
static void ListCandidates(ShortRunState *run, int position, int end, bool byWords)
{
    int left = end - position;
    uint32_t whole = left >= kShortestChunk && left <= kLongestChunk ? LengthBit(left) : 0;
    uint32_t words = byWords ? WordsAt(run, position) : 0, all = words;
    if (!(words & whole)) {
        all |= SyllablesWithin(run, position, end);
        whole = byWords ? 0 : all & whole;
    }
    run->candidates[position] = uint16_t(whole ? whole : all);
    run->words[position] = uint16_t(words);
}

// Lists the candidates of each position that is reached; the positions that they lead to are
// reached then. A lead vowel belongs to the consonant behind it: nothing starts there.
static void ListForward(ShortRunState *run, int start, int end, bool byWords)
{
    for (int i = start; i < end; ++i) {
        if (!run->isReached[i])
            continue;
        if (i > start && IsLeadVowel(run->text[i - 1])) {
            run->candidates[i] = 0;
            continue;
        }
        ListCandidates(run, i, end, byWords);
        for (uint32_t left = run->candidates[i]; left; left &= left - 1)
            run->isReached[i + std::countr_zero(left) + 1] = true;
    }
}

// As in break scoring: among equals the longer chunk wins, and a chunk that fits but leads nowhere
// is worth 1.
static void ScorePosition(ShortRunState *run, int position)
{
    uint32_t best = 0;
    uint8_t bestLength = 1;
    for (uint32_t left = run->candidates[position]; left; left &= left - 1) {
        int length = std::countr_zero(left) + 1;
        uint32_t next = run->scores[position + length], square = uint32_t(length * length);
        bool isWord = run->words[position] & LengthBit(length);
        uint32_t value = next ? next + (isWord ? 2 * square : square) : 1;
        if (value < best)
            continue;
        best = value;
        bestLength = uint8_t(length);
    }
    run->scores[position] = uint16_t(best);
    run->lengths[position] = bestLength;
}

static void ScoreReached(ShortRunState *run, int start, int end, bool byWords)
{
    ListForward(run, start, end, byWords);
    run->scores[end] = 1;
    for (int i = end; i-- > start;)
        if (run->isReached[i])
            ScorePosition(run, i);
}

static void ScoreAll(ShortRunState *run, int start, int end, bool byWords)
{
    memset(run->isReached + start, 1, size_t(end - start));
    ScoreReached(run, start, end, byWords);
}

static uint8_t BadStretchLength(const ShortRunState *run, int position, int end)
{
    int length = 1;
    while (position + length < end && !run->scores[position + length])
        ++length;
    return uint8_t(length);
}

// Follows the best chunks from start to end; the number of chunks.
static int DividePart(ShortRunState *run, int start, int end, bool byWords, RunChunk *chunks)
{
    bool isComplete = false;
    int count = 0;
    memset(run->isReached + start, 0, size_t(end - start + 1));
    run->isReached[start] = true;
    ScoreReached(run, start, end, byWords);
    for (int i = start; i < end; i += chunks[count++].length) {
        if (!run->scores[i] && !isComplete) {
            ScoreAll(run, start, end, byWords);
            isComplete = true;
        }
        uint8_t length = run->scores[i] ? run->lengths[i] : BadStretchLength(run, i, end);
        assert(length > 0 && length <= end - i);
        chunks[count] = {uint8_t(i), length, false};
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
        chunks[0] = {chunk.start, chunk.length, true};
        return 1;
    }
    int count = DividePart(run, start, end, false, chunks);
    chunks[0].startsWord = true;
    return count;
}

static int DivideBySyllables(ShortRunState *run, int length, RunChunk *chunks)
{
    int count = DividePart(run, 0, length, false, chunks);
    for (int i = 0; i < count; ++i)
        chunks[i].startsWord = true;
    return count;
}

int DivideShortRun(const uint8_t *text, int length, DWORD dictionaries, bool byWords,
                   RunChunk *chunks)
{
    assert(length > 0 && length <= kLongestShortRun);
    ShortRunState *run = &gShortRun;
    RunChunk words[kLongestShortRun];
    run->text = text;
    run->dictionaries = dictionaries;
    memset(run->hasFits, 0, size_t(length));
    if (!byWords)
        return DivideBySyllables(run, length, chunks);
    int wordCount = DividePart(run, 0, length, true, words), count = 0;
    for (int i = 0; i < wordCount; ++i)
        count += DivideChunk(run, words[i], chunks + count);
    return count;
}

// Coded letters back to Lao. At each place of a stretch all
// spellings of the tables are tried, initial, cluster, vowel, final and tone in turn, and the
// longest syllable is written in the order of Lao: lead vowel, initial and cluster, signs over and
// under them, tone, the rest of the vowel, final. A cancellation mark silences a final and stands
// behind it. Only rows that begin with the next letter are looked at, so a syllable costs some
// dozen comparisons.
#include "email_syllable.h"
#include "email_table.h"
#include "lao_signs.h"
#include "vesk.h"
#include <cassert>
#include <cstring>

constexpr uint8_t kO = 186, kWo = 184, kCancellation = 254;
constexpr size_t kMostBytesPerLetter = 4;  // "O" alone is a syllable of four signs
constexpr EmailSpelling kNoVowel = {{}, "", kAbsent};

// What is left of a stretch.
struct Letters {
    const char *start, *end;
};

// A reading of the letters at a place. The pieces are rows of the tables, or null.
struct EmailReading {
    const EmailSpelling *initial;  // null: the consonant O, which is not written
    const EmailSpelling *cluster;
    const EmailSpelling *vowel;
    const EmailSpelling *final;
    const EmailSpelling *tone;
    size_t length;  // letters read
};

// The rows of a table that begin with the next letter.
struct Candidates {
    const EmailSpelling *begin, *end;
};

static Candidates RowsFor(const SpellingTable &table, Letters letters)
{
    size_t letter = letters.start < letters.end ? uint8_t(*letters.start) : 128;
    if (letter >= 128)
        return {table.rows, table.rows};
    return {table.rows + table.first[letter], table.rows + table.first[letter + 1]};
}

// The spelling's length where the letters begin with it, else 0.
static size_t MatchLength(Letters letters, const char *spelling)
{
    size_t length = 0;
    for (; spelling[length]; ++length)
        if (letters.start + length == letters.end || letters.start[length] != spelling[length])
            return 0;
    return length;
}

static Letters Skip(Letters letters, size_t count)
{
    return {letters.start + count, letters.end};
}

static size_t CountLao(const uint8_t *lao)
{
    return strlen(reinterpret_cast<const char *>(lao));
}

static bool IsSonorant(uint8_t code)
{
    return code == 164 || code == 168 || code == 173 || code == 180 || code == 181;
}

// Can the initial lead a cluster with this second consonant?
static bool CanLeadCluster(const uint8_t *initial, uint8_t second)
{
    uint8_t first = initial[0];
    if (initial[1] || first == kWo || first == 235 || first == 236)
        return false;
    return second == kWo || !(IsSonorant(first) || first == kO);
}

// The row of a table whose spellings are single letters, or null.
static const EmailSpelling *FindLetter(const SpellingTable &table, Letters letters)
{
    Candidates rows = RowsFor(table, letters);
    return rows.begin < rows.end ? rows.begin : nullptr;
}

// The longer reading wins; of two as long the one that was found first, which has the longer piece
// in front: "am" is the vowel of that name and not "a" with a final.
static void TryTone(EmailReading *best, EmailReading reading, Letters rest)
{
    reading.tone = FindLetter(kToneTable, rest);
    reading.length += reading.tone ? 1 : 0;
    if (reading.length > best->length)
        *best = reading;
}

static bool IsSilenced(Letters rest)
{
    const EmailSpelling *tone = FindLetter(kToneTable, rest);
    return tone && tone->lao[0] == kCancellation;
}

// Whether the WO of such a vowel can join the initial.
static bool CanTakeWo(const EmailReading *reading)
{
    constexpr uint8_t kUnwrittenInitial[] = {kO, 0};
    const uint8_t *initial = reading->initial ? reading->initial->lao : kUnwrittenInitial;
    return !reading->cluster && CanLeadCluster(initial, kWo);
}

// Behind a consonant without a vowel "t" at the end is the final of "pt", elsewhere the next
// initial.
static bool TakesFinal(VowelUse use, Letters behind)
{
    switch (use) {
    case kOpen:
    case kWithWo: return IsSilenced(behind);
    case kAbsent: return IsSilenced(behind) || behind.start == behind.end;
    default: return true;
    }
}

// Each function of this row tries the rows of its table and hands each reading on to the next one.
static void TryFinals(EmailReading *best, EmailReading reading, Letters rest)
{
    VowelUse use = reading.vowel->use;
    if (use != kClosed)
        TryTone(best, reading, rest);
    Candidates rows = RowsFor(kFinalTable, rest);
    for (const EmailSpelling *row = rows.begin; row < rows.end; ++row) {
        size_t length = MatchLength(rest, row->letters);
        if (!length || !TakesFinal(use, Skip(rest, length)))
            continue;
        EmailReading longer = reading;
        longer.final = row;
        longer.length += length;
        TryTone(best, longer, Skip(rest, length));
    }
}

static void TryVowels(EmailReading *best, EmailReading reading, Letters rest)
{
    Candidates rows = RowsFor(kVowelTable, rest);
    for (const EmailSpelling *row = rows.begin; row < rows.end; ++row) {
        size_t length = MatchLength(rest, row->letters);
        if (!length || (row->use == kWithWo && !CanTakeWo(&reading)))
            continue;
        EmailReading longer = reading;
        longer.vowel = row;
        longer.length += length;
        TryFinals(best, longer, Skip(rest, length));
    }
    reading.vowel = &kNoVowel;
    if (reading.initial)
        TryFinals(best, reading, rest);
}

static void TryClusters(EmailReading *best, EmailReading reading, Letters rest)
{
    const EmailSpelling *second = FindLetter(kClusterTable, rest);
    if (second && CanLeadCluster(reading.initial->lao, second->lao[0])) {
        EmailReading longer = reading;
        longer.cluster = second;
        longer.length += 1;
        TryVowels(best, longer, Skip(rest, 1));
    }
    TryVowels(best, reading, rest);
}

// The longest reading at the start of the letters; its length is 0 where nothing spells a syllable.
static EmailReading ReadSyllable(Letters letters)
{
    EmailReading best = {};
    Candidates rows = RowsFor(kInitialTable, letters);
    for (const EmailSpelling *row = rows.begin; row < rows.end; ++row) {
        size_t length = MatchLength(letters, row->letters);
        if (!length)
            continue;
        EmailReading reading = {};
        reading.initial = row;
        reading.length = length;
        TryClusters(&best, reading, Skip(letters, length));
    }
    TryVowels(&best, EmailReading{}, letters);
    return best;
}

// ---- writing ----

static char *AppendLao(char *output, const uint8_t *lao)
{
    size_t count = CountLao(lao);
    memcpy(output, lao, count);
    return output + count;
}

static bool IsLeadVowel(uint8_t code)
{
    return code >= 192 && code <= 196;
}

static bool StandsOverOrUnder(uint8_t code)
{
    return code >= 240 && code <= 248;
}

// vowel is what stands behind the lead vowel.
static char *AppendToneAndRest(char *output, const EmailReading *reading, const uint8_t *vowel)
{
    while (StandsOverOrUnder(*vowel))
        *output++ = char(*vowel++);
    bool isSilenced = reading->final && reading->tone && reading->tone->lao[0] == kCancellation;
    if (reading->tone && !isSilenced)
        output = AppendLao(output, reading->tone->lao);
    output = AppendLao(output, vowel);
    if (reading->final)
        output = AppendLao(output, reading->final->lao);
    return isSilenced ? AppendLao(output, reading->tone->lao) : output;
}

// Writes a reading; the number of bytes.
static size_t WriteSyllable(char *start, const EmailReading *reading)
{
    const uint8_t *vowel = reading->vowel->lao;
    char *output = start;
    if (IsLeadVowel(*vowel))
        *output++ = char(*vowel++);
    if (reading->initial)
        output = AppendLao(output, reading->initial->lao);
    else
        *output++ = char(kO);
    if (reading->cluster)
        output = AppendLao(output, reading->cluster->lao);
    if (reading->vowel->use == kWithWo)
        *output++ = char(kWo);
    return size_t(AppendToneAndRest(output, reading, vowel) - start);
}

// Decodes what stands first: a syllable, else a repeat sign or ellipsis, else the byte as it came.
static size_t DecodeNext(char *output, Letters *letters)
{
    EmailReading reading = ReadSyllable(*letters);
    if (reading.length) {
        size_t count = WriteSyllable(output, &reading);
        assert(count <= kMostBytesPerLetter * reading.length);
        *letters = Skip(*letters, reading.length);
        return count;
    }
    const EmailSpelling *sign = FindLetter(kSignTable, *letters);
    *output = sign ? char(sign->lao[0]) : *letters->start;
    *letters = Skip(*letters, 1);
    return 1;
}

DWORD DecodeStretch(char *output, const char *start, const char *end)
{
    DWORD written = 0;
    for (Letters letters = {start, end}; letters.start < letters.end;)
        written += DWORD(DecodeNext(output + written, &letters));
    return written;
}

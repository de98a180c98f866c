// AddLaoSyllable. At each place of a stretch all spellings of the table are tried, and the longest
// syllable is written: lead vowel, initial and cluster, signs over and under them, tone, the rest
// of the vowel, final. A cancellation mark silences a final and stands behind it.
#include "email_table.h"
#include "lao_signs.h"
#include "vesk.h"
#include <cstring>

constexpr uint8_t kO = 186, kWo = 184, kCancellation = 254;
constexpr size_t kLongestInitial = 3, kLongestVowel = 4;  // letters
constexpr size_t kMostBytesPerLetter = 3;
constexpr EmailVowel kNoVowel = {{}, "", kOpen};

// What is left of a stretch.
struct Letters {
    const char *start, *end;
};

// A reading of the letters at a place. The pieces are rows of the table, or none.
struct EmailReading {
    const EmailSpelling *initial;  // none: the consonant O, which is not written
    const EmailSpelling *cluster;
    const EmailVowel *vowel;
    const EmailSpelling *final;
    const EmailSpelling *tone;
    size_t length;  // letters read
};

static size_t MatchLength(Letters letters, const char *spelling)
{
    size_t length = strlen(spelling);
    if (length > size_t(letters.end - letters.start))
        return 0;
    return memcmp(letters.start, spelling, length) ? 0 : length;
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

static const EmailSpelling *FindTone(Letters letters)
{
    for (const EmailSpelling &row : kEmailTones)
        if (MatchLength(letters, row.letters))
            return &row;
    return nullptr;
}

// The longer reading wins; of two as long the one that was found first, which has the longer piece
// in front: "am" is the vowel of that name and not "a" with a final.
static void KeepLonger(EmailReading *best, const EmailReading *reading)
{
    if (reading->length > best->length)
        *best = *reading;
}

static void TryTone(EmailReading *best, EmailReading reading, Letters rest)
{
    reading.tone = FindTone(rest);
    reading.length += reading.tone ? 1 : 0;
    KeepLonger(best, &reading);
}

static bool IsSilenced(Letters rest)
{
    const EmailSpelling *tone = FindTone(rest);
    return tone && tone->lao[0] == kCancellation;
}

// An open vowel takes no final, but a silenced letter may stand behind any.
static void TryFinals(EmailReading *best, EmailReading reading, Letters rest)
{
    if (reading.vowel->use != kClosed)
        TryTone(best, reading, rest);
    for (const EmailSpelling &row : kEmailFinals) {
        size_t length = MatchLength(rest, row.letters);
        if (!length || (reading.vowel->use == kOpen && !IsSilenced(Skip(rest, length))))
            continue;
        EmailReading longer = reading;
        longer.final = &row;
        longer.length += length;
        TryTone(best, longer, Skip(rest, length));
    }
}

static void TryVowelsOfLength(EmailReading *best, EmailReading reading, Letters rest, size_t wanted)
{
    for (const EmailVowel &row : kEmailVowels) {
        if (MatchLength(rest, row.letters) != wanted)
            continue;
        EmailReading longer = reading;
        longer.vowel = &row;
        longer.length += wanted;
        TryFinals(best, longer, Skip(rest, wanted));
    }
}

static void TryVowels(EmailReading *best, EmailReading reading, Letters rest)
{
    for (size_t wanted = kLongestVowel; wanted > 0; --wanted)
        TryVowelsOfLength(best, reading, rest, wanted);
    reading.vowel = &kNoVowel;
    if (reading.initial)
        TryTone(best, reading, rest);
}

static void TryClusters(EmailReading *best, EmailReading reading, Letters rest)
{
    for (const EmailSpelling &row : kEmailClusters) {
        size_t length = MatchLength(rest, row.letters);
        if (!length || !CanLeadCluster(reading.initial->lao, row.lao[0]))
            continue;
        EmailReading longer = reading;
        longer.cluster = &row;
        longer.length += length;
        TryVowels(best, longer, Skip(rest, length));
    }
    TryVowels(best, reading, rest);
}

// The longest reading at the start of the letters; its length is 0 where nothing spells a syllable.
static EmailReading ReadSyllable(Letters letters)
{
    EmailReading best = {};
    for (size_t wanted = kLongestInitial; wanted > 0; --wanted)
        for (const EmailSpelling &row : kEmailInitials) {
            if (MatchLength(letters, row.letters) != wanted)
                continue;
            EmailReading reading = {};
            reading.initial = &row;
            reading.length = wanted;
            TryClusters(&best, reading, Skip(letters, wanted));
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

constexpr size_t kLongestSyllable = 16;

// Writes a reading; the number of bytes, fewer than kLongestSyllable.
static size_t WriteSyllable(char *syllable, const EmailReading *reading)
{
    const uint8_t *vowel = reading->vowel->lao;
    char *output = syllable;
    if (IsLeadVowel(*vowel))
        *output++ = char(*vowel++);
    if (reading->initial)
        output = AppendLao(output, reading->initial->lao);
    else
        *output++ = char(kO);
    if (reading->cluster)
        output = AppendLao(output, reading->cluster->lao);
    return size_t(AppendToneAndRest(output, reading, vowel) - syllable);
}

// A repeat sign or ellipsis at the start of the letters, or 0.
static uint8_t FindClosingSign(Letters letters)
{
    for (const EmailSpelling &row : kEmailSigns)
        if (MatchLength(letters, row.letters))
            return row.lao[0];
    return 0;
}

// Decodes what stands first. At most kMostBytesPerLetter bytes are written for each letter, so the
// one syllable that is longer, a lone "O", stays as it came.
static size_t DecodeNext(char *output, Letters *letters)
{
    char syllable[kLongestSyllable];
    EmailReading reading = ReadSyllable(*letters);
    size_t count = reading.length ? WriteSyllable(syllable, &reading) : 0;
    if (count && count <= kMostBytesPerLetter * reading.length) {
        memcpy(output, syllable, count);
        *letters = Skip(*letters, reading.length);
        return count;
    }
    uint8_t sign = FindClosingSign(*letters);
    *output = sign ? char(sign) : *letters->start;
    *letters = Skip(*letters, 1);
    return 1;
}

DWORD WINAPI AddLaoSyllable(char *output, const char *start, const char *end)
{
    if (!output || !start || !end)
        return 0;
    DWORD written = 0;
    for (Letters letters = {start, end}; letters.start < letters.end;)
        written += DWORD(DecodeNext(output + written, &letters));
    return written;
}

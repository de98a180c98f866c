// The syllable parser: break scoring asks it which lengths are syllables (through the table that is
// made from it), the key tables which pieces a syllable has. It reads from left to right: lead
// vowel, initial, cluster, tone and vowel signs in any order, final, closing sign. A reader carries
// the place in the text and the bytes left; the fields of the record grow beside it.
//
// The one idea: the vowel signs read so far are a pattern, and the class of the pattern tells
// whether the syllable may end here, must have a final, or can have no more.
#include "text/syllable_parser.h"

#include <cassert>
#include <cstring>

#include "text/lao_code.h"

enum : uint8_t { kWo = 184, kLeadE = 192, kLeadEi = 193 };

// Bits of a variant: which other reading of an open sequence is tried.
enum : int {
    kRefuseFinal = 1,    // an open vowel takes no final consonant
    kRefuseCluster = 2,  // the second consonant of a cluster is left for the vowel
};
enum { kFinalRoom = 3, kMostVariants = 4, kFewestVariants = 2 };

// Lives from call to call until ResetVariants.
struct ParserState {
    int variantCount;  // 2, or 4 once a text with an ambiguous cluster was seen
};
static ParserState gParser = {kFewestVariants};

// All patterns that share their first bytes and their class, as one row.
struct VowelRow {
    uint8_t pattern[4];  // the first bytes, then the alternatives of the last one stand in `last`
    const char *last;
    VowelClass vowelClass;
};

// clang-format off
constexpr VowelRow kVowelRows[] = {
    // before     last byte, one of                                            class
    {{},          "\xBD\xBF\xC3\xC4\xD2\xD3\xD4\xD5\xF0",                      kClosedVowel},
    {{},          "\x84\x89\x98\x9D\xBA\xBC\xED\xF1\xF6",                      kNeedsFinal},
    {{},          "\x85\x86\x87\x88\x99\x9A\x9B\x9C\xB8\xBE\xC0\xC1\xC2"
                  "\xD0\xD1\xF2\xF3\xF4\xF5\xF7\xF8",                          kOpenVowel},
    {{132},       "\xB8\xBA",                                                  kNeedsFinal},
    {{152},       "\xB8\xBA",                                                  kNeedsFinal},
    {{241},       "\xB8\xBA\xBC",                                              kNeedsFinal},
    {{246},       "\xB8",                                                      kClosedVowel},
    {{192},       "\xBD",                                                      kClosedVowel},
    {{192},       "\x84\x98\xF1",                                              kNeedsFinal},
    {{192},       "\x85\x86\x99\x9A\xF2\xF3",                                  kOpenVowel},
    {{192},       "\x87\x88\x89\x9B\x9C\x9D\xBE\xED\xF4\xF5\xF6",              kUnfinished},
    {{193},       "\xBD",                                                      kClosedVowel},
    {{193},       "\x84\x98\xF1",                                              kNeedsFinal},
    {{194},       "\xBD",                                                      kClosedVowel},
    {{192, 135},  "\xBA",                                                      kOpenVowel},
    {{192, 136},  "\xBA",                                                      kOpenVowel},
    {{192, 155},  "\xBA",                                                      kOpenVowel},
    {{192, 156},  "\xBA",                                                      kOpenVowel},
    {{192, 244},  "\xBA",                                                      kOpenVowel},
    {{192, 245},  "\xBA",                                                      kOpenVowel},
    {{192, 190},  "\xBD",                                                      kClosedVowel},
    {{192, 137},  "\xBE",                                                      kClosedVowel},
    {{192, 157},  "\xBE",                                                      kClosedVowel},
    {{192, 237},  "\xBE",                                                      kClosedVowel},
    {{192, 246},  "\xBE",                                                      kClosedVowel},
    {{246, 184},  "\xBD",                                                      kClosedVowel},
};
// clang-format on

// pattern[before] is its last byte, which is never zero: strchr would find the terminator.
static bool MatchesRow(const VowelRow &row, const uint8_t *pattern, size_t before)
{
    return strlen(reinterpret_cast<const char *>(row.pattern)) == before &&
           memcmp(row.pattern, pattern, before) == 0 && strchr(row.last, pattern[before]);
}

VowelClass ClassifyVowelPattern(const uint8_t *pattern)
{
    size_t length = strnlen(reinterpret_cast<const char *>(pattern), 4);
    if (length < 1 || length > 3)
        return kNoPattern;
    for (const VowelRow &row : kVowelRows)
        if (MatchesRow(row, pattern, length - 1))
            return row.vowelClass;
    return kNoPattern;
}

// A place in the text and the bytes of the length that are left from there.
struct Reader {
    const uint8_t *next;
    int left;
};

static uint8_t Take(Reader *reader)
{
    --reader->left;
    return *reader->next++;
}

static size_t LengthOf(const uint8_t *field)
{
    return strlen(reinterpret_cast<const char *>(field));
}

// A final consonant, a silenced one and its mark are the most that comes here.
static void AppendToFinal(SyllableParts *parts, uint8_t byte)
{
    size_t length = LengthOf(parts->final);
    assert(length < kFinalRoom);
    parts->final[length] = byte;
    parts->final[length + 1] = 0;
}

// What could not be placed goes to the final, as far as it has room.
static int FailParse(Reader *reader, SyllableParts *parts)
{
    while (reader->left > 0 && *reader->next && LengthOf(parts->final) < kFinalRoom)
        AppendToFinal(parts, Take(reader));
    return 0;
}

// Takes tones and vowel signs while they make a pattern. False when a second tone comes.
static bool TakeSigns(Reader *reader, SyllableParts *parts, VowelClass *vowelClass)
{
    while (reader->left >= 1) {
        uint8_t byte = *reader->next;
        if (IsToneCode(byte)) {
            if (parts->tone[0])
                return false;
            parts->tone[0] = Take(reader);
            continue;
        }
        size_t signs = LengthOf(parts->vowel);
        assert(signs + 1 < sizeof parts->vowel);  // no pattern has more than three
        parts->vowel[signs] = byte;
        parts->vowel[signs + 1] = 0;
        // The sign stays only where it makes a pattern; else it is the final or doesn't belong.
        VowelClass grown = byte ? ClassifyVowelPattern(parts->vowel) : kNoPattern;
        if (grown == kNoPattern) {
            parts->vowel[signs] = 0;
            return true;
        }
        Take(reader);
        *vowelClass = grown;
    }
    return true;
}

// The end of a syllable whose vowel and final are complete.
static int CloseSyllable(Reader *reader, SyllableParts *parts)
{
    if (reader->left < 1)
        return 1;
    uint8_t byte = reader->next[0];
    if (IsWordSign(byte) || IsCancellationMark(byte)) {
        AppendToFinal(parts, byte);  // whatever stands behind it goes with the syllable
        return 1;
    }
    if (byte && IsCancellationMark(reader->next[1])) {
        AppendToFinal(parts, byte);  // a consonant that the mark silences
        AppendToFinal(parts, reader->next[1]);
        return 1;
    }
    return FailParse(reader, parts);
}

static int ParseFinal(Reader *reader, VowelClass vowelClass, int variant, SyllableParts *parts)
{
    bool isFinal = IsFinalConsonant(*reader->next);
    switch (vowelClass) {
    case kClosedVowel: break;
    case kNeedsFinal:
        if (!isFinal)
            return FailParse(reader, parts);
        AppendToFinal(parts, Take(reader));
        break;
    case kOpenVowel:
        if (isFinal && !(variant & kRefuseFinal))
            AppendToFinal(parts, Take(reader));
        break;
    default: return FailParse(reader, parts);
    }
    return CloseSyllable(reader, parts);
}

// 1 when the first n bytes are a syllable under this variant, else 0.
static int ParseSyllableVariant(const uint8_t *text, int n, int variant, SyllableParts *parts)
{
    Reader reader = {text, n};
    *parts = {};
    if (IsLeadVowel(*reader.next))
        parts->vowel[0] = Take(&reader);
    if (reader.left <= 0 || !IsConsonantCode(*reader.next))
        return 0;
    parts->initial[0] = Take(&reader);
    if (reader.left == 0)
        return parts->vowel[0] != 0;  // ເກ is a syllable, ກ alone is none
    if (IsLeadVowel(*reader.next))
        return 0;
    if (!(variant & kRefuseCluster) && IsClusterPair(reader.next - 1))
        parts->initial[1] = Take(&reader);
    if (reader.left > 0 && IsToneCode(*reader.next))
        parts->tone[0] = Take(&reader);
    VowelClass vowelClass = ClassifyVowelPattern(parts->vowel);
    if (!TakeSigns(&reader, parts, &vowelClass))
        return 0;
    if (reader.left == 0)
        return vowelClass == kClosedVowel || vowelClass == kOpenVowel;
    return ParseFinal(&reader, vowelClass, variant, parts);
}

// ກວນ can be ກ with the vowel ວ and final ນ, or the cluster ກວ and more to come.
static int IsAmbiguousCluster(const uint8_t *text, int n)
{
    if (IsLeadVowel(*text)) {
        ++text;
        --n;
    }
    return n >= 3 && IsConsonantCode(text[0]) && text[1] == kWo && IsClusterPair(text) &&
           IsFinalConsonant(text[2]);
}

// Lead E or EI before a consonant and WO, with nothing else: WO closes the syllable.
static void MoveWoToFinal(SyllableParts *parts)
{
    bool bare = !parts->final[0] && !parts->tone[0];
    bool leadE = parts->vowel[0] == kLeadE || parts->vowel[0] == kLeadEi;
    if (!bare || !leadE || parts->initial[1] != kWo)
        return;
    parts->final[0] = kWo;
    parts->initial[1] = 0;
}

int ParseSyllable(const uint8_t *text, int n, SyllableParts *parts)
{
    SyllableParts scratch;
    if (IsAmbiguousCluster(text, n))
        gParser.variantCount = kMostVariants;
    for (int variant = 0; variant < gParser.variantCount; ++variant) {
        if (!ParseSyllableVariant(text, n, variant, parts ? parts : &scratch))
            continue;
        if (parts)
            MoveWoToFinal(parts);
        return 1;
    }
    return 0;
}

void ResetVariants()
{
    gParser.variantCount = kFewestVariants;
}

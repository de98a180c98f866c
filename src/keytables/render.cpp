// Rendering of a syllable, for sort keys, romanization and e-mail coding alike: canonical codes,
// one lookup for each letter of the table's sequence, the pieces in their order. The sequence says
// what is looked up and where it is written; so a table rules the form without a line of code of
// its own. Each piece has its own small field; what is longer is cut to it.
#include "keytables/render.h"

#include <cassert>
#include <cstring>

#include "frame/strings.h"
#include "keytables/tone_number.h"
#include "text/lao_code.h"

enum : uint8_t { kHoSung = 185, kMaiEk = 250, kMaiTho = 251, kOldCancellation = 204 };
enum { kShortField = 4, kLongField = 8, kMostCaptured = 3 };

// Texts of one syllable, by letter of the sequence.
struct PieceTexts {
    char initial[kLongField];
    char cluster[kShortField];
    char vowel[kLongField];
    char final[kShortField];
    char tone[kShortField];
    char number[kShortField];
    char clusterKey[kShortField];  // what letter I left for letter 2
};

// The result of MatchChangeEntry, until its next call.
struct ChangeState {
    char text[12];
};
static ChangeState gChange;

static char *AsText(uint8_t *bytes)
{
    return reinterpret_cast<char *>(bytes);
}

// ---- canonical codes ----

// A code and the one or two codes of the chart that it stands for.
struct ConsonantForm {
    uint8_t code;
    uint8_t form[2];
};

// clang-format off
constexpr ConsonantForm kConsonantForms[] = {
    {172, {234, 0}}, {182, {235, 0}}, {249, {235, 0}}, {183, {236, 0}},
    {205, {kHoSung, 236}}, {206, {kHoSung, 173}}, {207, {kHoSung, 180}},  // nothing stands behind
};

// A vowel code, or a range of them that counts up along with its signs.
struct VowelForm {
    uint8_t first, last, sign;
    uint8_t tone;  // 0: the tone stays
};

constexpr VowelForm kVowelForms[] = {
    {132, 137, 241, kMaiEk}, {152, 157, 241, kMaiTho},
    {208, 209, 247, 0},
    {210, 210, 240, kMaiEk}, {211, 211, 240, kMaiTho},
    {212, 212, 191, kMaiEk}, {213, 213, 191, kMaiTho},
    {237, 237, 246, kMaiTho},
};
// clang-format on

// Writes the canonical form of the consonant; whether it ends the field.
static bool NormalizeConsonant(uint8_t *initial, size_t room)
{
    for (const ConsonantForm &form : kConsonantForms) {
        if (form.code != *initial)
            continue;
        *initial = form.form[0];
        if (!form.form[1] || room < 3)
            return false;
        initial[1] = form.form[1];
        initial[2] = 0;
        return true;
    }
    return false;
}

// room counts down with the field, terminator included.
static void NormalizeInitial(uint8_t *initial, size_t room)
{
    while (*initial && !NormalizeConsonant(initial, room)) {
        ++initial;
        --room;
    }
}

// A vowel code that holds its tone gives it up; of several the last one counts.
static void NormalizeVowel(SyllableParts *parts)
{
    for (uint8_t *vowel = parts->vowel; *vowel; ++vowel)
        for (const VowelForm &form : kVowelForms) {
            if (*vowel < form.first || *vowel > form.last)
                continue;
            *vowel = uint8_t(form.sign + (*vowel - form.first));
            if (form.tone)
                parts->tone[0] = form.tone;
            break;
        }
}

// Rewrites a parsed syllable to canonical codes, in place: one form for each consonant, plain vowel
// signs, the tone in its own field, the final alone. Keys of a table are in these codes.
static void NormalizeSyllable(SyllableParts *parts)
{
    NormalizeInitial(parts->initial, sizeof parts->initial);
    NormalizeVowel(parts);
    if (parts->final[0] && IsCancellationMark(parts->final[1]))
        parts->tone[0] = kOldCancellation;
    parts->final[1] = 0;
    if (parts->tone[0] >= 200 && parts->tone[0] <= kOldCancellation)
        parts->tone[0] = uint8_t(parts->tone[0] + 50);
    parts->tone[1] = 0;
}

// ---- Change patterns ----

// How far a pattern has matched: the place in the text and the bytes that "?" and "*" have taken.
struct PatternPlace {
    const uint8_t *text;
    char captured[kMostCaptured + 1];
    int count;
};

// Takes bytes for "?" and "*". False at the end of the text and where there is no more room.
static bool CaptureBytes(PatternPlace *place, int count)
{
    for (; count > 0; --count) {
        if (!*place->text || place->count == kMostCaptured)
            return false;
        place->captured[place->count++] = char(*place->text++);
    }
    return true;
}

static bool MatchPatternByte(PatternPlace *place, char byte)
{
    switch (byte) {
    case '#':
        if (IsToneCode(*place->text))
            ++place->text;
        return true;
    case '?': return CaptureBytes(place, 1);
    case '*': return CaptureBytes(place, 2);
    default: return uint8_t(byte) == *place->text++;  // a pattern holds no terminator
    }
}

const char *MatchChangeEntry(const uint8_t *text, const KeyTable *table, int index)
{
    const KeyTableEntry *entry = &table->entries[index];
    PatternPlace place = {text, {}, 0};
    for (const char *byte = entry->key; *byte; ++byte)
        if (!MatchPatternByte(&place, *byte))
            return nullptr;
    char initial[kLongField] = {};
    if (place.count &&
        !LookupSection(place.captured, initial, sizeof initial, table, kInitialSection))
        return nullptr;
    CopyCut(gChange.text, sizeof gChange.text, initial);
    size_t length = strlen(gChange.text);
    CopyCut(gChange.text + length, sizeof gChange.text - length, entry->value);
    return gChange.text;
}

// ---- pieces ----

// A final that has a vowel entry of its own together with the vowel belongs to the vowel.
static void JoinFinal(SyllableParts *parts, const KeyTable *table)
{
    char ignored[kLongField];
    char *vowel = AsText(parts->vowel);
    size_t length = strlen(vowel);
    if (!parts->final[0] || length + 1 >= sizeof parts->vowel)
        return;
    CopyCut(vowel + length, sizeof parts->vowel - length, AsText(parts->final));
    if (LookupSection(vowel, ignored, sizeof ignored, table, kVowelSection))
        parts->final[0] = 0;
    else
        vowel[length] = 0;
}

// A pair of consonants without an entry of its own is an initial and a cluster member.
static int LookupInitial(SyllableParts *parts, PieceTexts *texts, const KeyTable *table)
{
    char *key = AsText(parts->initial);
    texts->clusterKey[0] = 0;
    if (LookupSection(key, texts->initial, sizeof texts->initial, table, kInitialSection))
        return 1;
    size_t length = strlen(key);
    if (length < 2)
        return 0;
    CopyCut(texts->clusterKey, sizeof texts->clusterKey, key + length - 1);
    key[length - 1] = 0;
    return LookupSection(key, texts->initial, sizeof texts->initial, table, kInitialSection);
}

static int LookupNumber(const SyllableParts *parts, PieceTexts *texts, const KeyTable *table)
{
    char key[kShortField];
    ToneNumberText(parts, key);
    return LookupSection(key, texts->number, sizeof texts->number, table, kNumberSection);
}

// Fills the field of a letter: 1 found, 0 missed. Other letters are always found.
static int LookupPiece(char letter, SyllableParts *parts, PieceTexts *texts, const KeyTable *table)
{
    switch (letter) {
    case 'I': return LookupInitial(parts, texts, table);
    case '2':
        return LookupSection(texts->clusterKey, texts->cluster, kShortField, table,
                             kClusterSection);
    case 'F':
        return LookupSection(AsText(parts->final), texts->final, kShortField, table, kFinalSection);
    case 'V':
        return LookupSection(AsText(parts->vowel), texts->vowel, kLongField, table, kVowelSection);
    case 'T':
        return LookupSection(AsText(parts->tone), texts->tone, kShortField, table, kToneSection);
    case 'N':
    case 'X': return LookupNumber(parts, texts, table);
    default: return 1;
    }
}

static const char *PieceOf(char letter, const PieceTexts *texts)
{
    switch (letter) {
    case 'I': return texts->initial;
    case '2': return texts->cluster;
    case 'V': return texts->vowel;
    case 'F': return texts->final;
    case 'T': return texts->tone;
    case 'N': return texts->number;
    default: return "";  // X has no place of its own
    }
}

// Puts the number at a place of output, or at its end where there is no such place. What is pushed
// over the end is cut.
static void InsertNumber(char *output, size_t size, size_t place, const char *number)
{
    char tail[64];
    assert(size <= sizeof tail);
    size_t length = strlen(output);
    if (place > length)
        place = length;
    CopyCut(tail, sizeof tail, output + place);
    CopyCut(output + place, size - place, number);
    length = strlen(output);
    CopyCut(output + length, size - length, tail);
}

static void WritePieces(char *output, size_t size, const PieceTexts *texts, const char *sequence)
{
    size_t vowelPlace = size, length = 0;
    for (const char *letter = sequence; *letter; ++letter) {
        if (*letter == 'V')
            vowelPlace = length + 1;  // behind the first byte of the vowel's text
        CopyCut(output + length, size - length, PieceOf(*letter, texts));
        length += strlen(output + length);
    }
    if (texts->number[0] && strchr(sequence, 'X'))
        InsertNumber(output, size, vowelPlace, texts->number);
}

int RenderSyllable(SyllableParts *parts, char *output, size_t size, const KeyTable *table)
{
    PieceTexts texts = {};
    output[0] = 0;
    if (!parts || !parts->initial[0])
        return 0;
    NormalizeSyllable(parts);
    JoinFinal(parts, table);
    int isWhole = 1;
    for (const char *letter = table->sequence; *letter; ++letter)
        isWhole &= LookupPiece(*letter, parts, &texts, table);
    WritePieces(output, size, &texts, table->sequence);
    return isWhole;
}

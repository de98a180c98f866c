// Tone numbers: one chart and its four subscripts. A tone mark alone doesn't tell the tone: ກ່າ and
// ຂ່າ have one mark and the same tone, ກາ and ຂາ have none and two tones.
#include "keytables/tone_number.h"

#include <cassert>
#include <cstring>

#include "frame/strings.h"

enum { kMid, kLow, kHigh, kNoClass = -1 };
enum { kLong, kShort };
enum { kNoFinal, kStopFinal, kSonorantFinal };

struct ConsonantRow {
    int consonantClass;
    const char *codes;
};

// clang-format off
constexpr ConsonantRow kConsonantRows[] = {
    {kMid,  "\xA1\xA5\xA9\xAA\xAE\xAF\xB5\xBA"},             // ກ ຈ ດ ຕ ບ ປ ຢ ອ
    {kLow,  "\xA3\xA4\xA7\xA8\xAC\xAD\xB2\xB3\xB4\xB6\xB7"
            "\xB8\xBB\xEA\xEB\xEC"},                         // ຄ ງ ຊ ຍ ທ ນ ພ ຟ ມ ຣ ລ ວ ຮ
    {kHigh, "\xA2\xA6\xAB\xB0\xB1\xB9\xCD\xCE\xCF"},         // ຂ ສ ຖ ຜ ຝ ຫ ຫຼ ໜ ໝ
};

constexpr char kLongSigns[] = "\xB8\xBA\xBC\xBE\xBF\xC0\xC1\xC2\xC3\xC4\xF0\xF3\xF5\xF8";
constexpr const char *kLongPatterns[] = {
    "\xC0\xF3", "\xF6\xB8", "\xC0\xF5\xBA", "\xC0\xF6\xBE",  // ເ◌ີ ◌ົວ ເ◌ືອ ເ◌ົາ
};

constexpr uint8_t kToneTable[3][2][3][3] = {
    // no final    stop final  sonorant final, each with tone mark 0, 1, 2
    {{{1, 2, 5}, {6, 0, 0}, {1, 2, 5}},    // mid, long
     {{3, 2, 5}, {3, 2, 5}, {1, 2, 5}}},   // mid, short
    {{{3, 2, 5}, {5, 0, 0}, {3, 2, 5}},    // low, long
     {{2, 2, 5}, {2, 2, 5}, {3, 2, 5}}},   // low, short
    {{{4, 2, 6}, {6, 0, 0}, {4, 2, 6}},    // high, long
     {{3, 2, 6}, {3, 2, 6}, {4, 2, 6}}},   // high, short
};
// clang-format on

// By the first byte of the initial; -1 for a consonant of no class.
static int ConsonantClass(const uint8_t *initial)
{
    for (const ConsonantRow &row : kConsonantRows)
        if (*initial && strchr(row.codes, *initial))
            return row.consonantClass;
    return kNoClass;
}

// A single sign is looked up; of the longer patterns a few are long.
static int VowelLengthClass(const uint8_t *vowel)
{
    if (vowel[0] && !vowel[1])
        return strchr(kLongSigns, vowel[0]) ? kLong : kShort;
    for (const char *pattern : kLongPatterns)
        if (strcmp(pattern, reinterpret_cast<const char *>(vowel)) == 0)
            return kLong;
    return kShort;
}

static int FinalClass(const uint8_t *final)
{
    if (!*final)
        return kNoFinal;
    return strchr("\xA1\xA9\xAE", *final) ? kStopFinal : kSonorantFinal;
}

// 0 without a mark, 1 to 5 for the codes 250 to 254.
static int ToneMarkIndex(const uint8_t *tone)
{
    assert(*tone <= 254);
    return *tone >= 250 ? *tone - 249 : 0;
}

void ToneNumberText(const SyllableParts *parts, char *text)
{
    int consonant = ConsonantClass(parts->initial), mark = ToneMarkIndex(parts->tone);
    int number = 0;
    if (consonant != kNoClass)  // the marks from the third on rule alone
        number = mark > 2 ? mark
                          : kToneTable[consonant][VowelLengthClass(parts->vowel)]
                                      [FinalClass(parts->final)][mark];
    assert(number >= 0 && number <= 9);
    text[0] = char('0' + number);
    text[1] = 0;
}

// The spellings of e-mail coding, from letters to Lao: the chart that coders write by, read
// backwards. Only email_syllable.cpp reads it. A syllable is written as initial, cluster, vowel,
// final and tone. Where several Lao spellings share their letters, the one that dictionary words
// use stands here; the counts are words of the main dictionary.
//
// The rows of each table stand by their first letter, longer spellings in front, and a vowel that
// needs a final in front of one of the same letters that takes none. The decoder keeps the first of
// the readings that are equally long, so this order is the rule of preference.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

// How a vowel goes with a final consonant.
enum VowelUse : uint8_t {
    kEither,
    kOpen,    // only without one, but for a silenced letter, which may stand behind any
    kClosed,  // only with one
    kWithWo,  // as kOpen; the WO of the letters stands behind the initial: "thew" is 192 234 184
              // 189
    kAbsent   // no vowel is written: a final counts at the end of the stretch alone
};

struct EmailSpelling {
    uint8_t lao[4];          // internal code, terminated; of a vowel the lead vowel first
    const char *letters;     // ASCII
    VowelUse use = kEither;  // of a vowel
};

// clang-format off
constexpr EmailSpelling kEmailInitials[] = {
    {{177}, "F"},        {{185, 164}, "G"},   {{185}, "H"},        {{162}, "Kh"},
    {{162}, "K"},        {{205}, "L"},        {{207}, "M"},        {{206}, "N"},
    {{176}, "Ph"},       {{176}, "P"},        {{185, 235}, "R"},   {{171}, "Th"},
    {{171}, "T"},        {{185, 184}, "V"},   {{185, 168}, "Y"},   {{174}, "b"},
    {{165}, "ch"},       {{165}, "c"},        {{169}, "d"},        {{179}, "f"},
    {{185, 164}, "hng"}, {{185, 168}, "hny"}, {{185, 249}, "hR"},  {{177}, "hf"},
    {{185}, "hh"},       {{162}, "hk"},       {{185, 236}, "hl"},
    {{207}, "hm"},        // 706; 185 180: 37
    {{206}, "hn"},        // 745; 185 173: 24
    {{176}, "hp"},
    {{185, 249}, "hr"},   // 789; 185 235: none
    {{171}, "ht"},       {{185, 184}, "hv"},  {{185, 168}, "hy"},  {{187}, "h"},
    {{165}, "j"},        {{163}, "kh"},       {{161}, "k"},        {{236}, "l"},
    {{180}, "m"},        {{164}, "ng"},       {{168}, "ny"},       {{173}, "n"},
    {{178}, "ph"},       {{175}, "p"},        {{187, 184}, "qw"},  {{187}, "q"},
    {{235}, "r"},        {{166}, "s"},        {{234}, "th"},       {{170}, "t"},
    {{184}, "v"},        {{184}, "w"},        {{167}, "x"},        {{181}, "y"},
    {{186, 184}, "zw"},
    {{186}, "z"},         // or no letter at all in front of a vowel
};

constexpr EmailSpelling kEmailClusters[] = {
    {{249}, "R"},       {{236}, "l"},
    {{235}, "r"},        // 473; 249: 6
    {{184}, "v"},       {{184}, "w"},
};

constexpr EmailSpelling kEmailVowels[] = {
    {{193},            "EE",   kEither},    {{193, 241},       "E",    kClosed},
    {{193, 189},       "E",    kOpen},      {{186},            "OO",   kClosed},
    {{240},            "OO",   kOpen},      {{241, 186},       "O",    kClosed},
    {{192, 190, 189},  "O",    kOpen},      {{241, 180},       "amm",  kOpen},
    {{192, 246, 190},  "aow",  kWithWo},    {{241, 168},       "ayy",  kOpen},
    {{190},            "aa",   kEither},    {{193},            "ae",   kEither},
    {{196},            "ai",   kOpen},      {{191},            "am",   kOpen},
    {{192, 246, 190},  "ao",   kOpen},      {{195},            "ay",   kOpen},
    {{241},            "a",    kClosed},    {{189},            "a",    kOpen},
    {{192, 244, 186},  "eua'", kEither},    {{192, 243},       "erw",  kWithWo},
    {{192, 245, 186},  "eua",  kEither},    {{193, 241},       "e'",   kClosed},
    {{193, 189},       "e'",   kOpen},      {{192},            "ee",   kEither},
    {{192, 243},       "er",   kEither},    {{245},            "eu",   kEither},
    {{192, 189},       "ew",   kWithWo},    {{192, 241},       "e",    kClosed},
    {{192, 189},       "e",    kOpen},      {{192, 241, 168},  "ia'",  kOpen},
    {{188},            "ia",   kClosed},    {{192, 168},       "ia",   kOpen},
    {{243},            "ii",   kEither},    {{242},            "i",    kEither},
    {{192, 242},       "oew",  kWithWo},    {{241, 186},       "o'",   kClosed},
    {{192, 190, 189},  "o'",   kOpen},      {{192, 242},       "oe",   kEither},
    {{186},            "oh",   kClosed},    {{240},            "oh",   kOpen},
    {{194},            "oo",   kEither},    {{246},            "o",    kClosed},
    {{194, 189},       "o",    kOpen},      {{241, 184},       "ua'",  kClosed},
    {{246, 184, 189},  "ua'",  kOpen},      {{184},            "ua",   kClosed},
    {{246, 184},       "ua",   kOpen},      {{244},            "ue",   kEither},
    {{248},            "uu",   kEither},    {{247},            "u",    kEither},
};

constexpr EmailSpelling kEmailFinals[] = {
    {{177}, "F"},    {{174}, "b"},    {{169}, "d"},    {{179}, "f"},    {{161}, "k"},
    {{236}, "l"},    {{180}, "m"},    {{164}, "ng"},   {{173}, "n"},    {{174}, "p"},
    {{235}, "r"},    {{166}, "s"},    {{169}, "t"},    {{184}, "v"},    {{184}, "w"},
    {{167}, "x"},    {{168}, "y"},
};

constexpr EmailSpelling kEmailTones[] = {
    {{254}, "*"},       {{250}, "1"},       {{251}, "2"},       {{252}, "3"},       {{253}, "4"},
};

// These end a syllable and stand for themselves.
constexpr EmailSpelling kEmailSigns[] = {
    {{197}, "#"},       {{198}, "&"},
};
// clang-format on

// A table and where the rows of each letter begin in it.
struct SpellingTable {
    const EmailSpelling *rows;
    uint8_t first[129];  // by ASCII letter; the last is the number of rows
};

constexpr bool StandsInOrder(const EmailSpelling &row, const EmailSpelling &next)
{
    size_t i = 0;
    while (row.letters[i] && row.letters[i] == next.letters[i])
        ++i;
    if (i == 0)
        return row.letters[0] < next.letters[0];
    return next.letters[i] == 0 || row.letters[i] != 0;  // no row in front of one that it begins
}

constexpr bool AreInOrder(const EmailSpelling *rows, size_t count)
{
    for (size_t i = 1; i < count; ++i)
        if (!StandsInOrder(rows[i - 1], rows[i]))
            return false;
    return true;
}

constexpr SpellingTable IndexByLetter(const EmailSpelling *rows, size_t count)
{
    SpellingTable table = {rows, {}};
    size_t row = 0;
    for (size_t letter = 0; letter <= 128; ++letter) {
        while (row < count && size_t(rows[row].letters[0]) < letter)
            ++row;
        table.first[letter] = uint8_t(row);
    }
    return table;
}

constexpr SpellingTable kInitialTable = IndexByLetter(kEmailInitials, std::size(kEmailInitials));
constexpr SpellingTable kClusterTable = IndexByLetter(kEmailClusters, std::size(kEmailClusters));
constexpr SpellingTable kVowelTable = IndexByLetter(kEmailVowels, std::size(kEmailVowels));
constexpr SpellingTable kFinalTable = IndexByLetter(kEmailFinals, std::size(kEmailFinals));
constexpr SpellingTable kToneTable = IndexByLetter(kEmailTones, std::size(kEmailTones));
constexpr SpellingTable kSignTable = IndexByLetter(kEmailSigns, std::size(kEmailSigns));

static_assert(AreInOrder(kEmailInitials, std::size(kEmailInitials)) &&
              AreInOrder(kEmailClusters, std::size(kEmailClusters)) &&
              AreInOrder(kEmailVowels, std::size(kEmailVowels)) &&
              AreInOrder(kEmailFinals, std::size(kEmailFinals)));

// The spellings of e-mail coding, from letters to Lao: the chart that coders write by, read
// backwards. A syllable is written as initial, cluster, vowel, final and tone. Where several Lao
// spellings share their letters, the one that dictionary words use stands here; the counts are
// words of the main dictionary.
#pragma once

#include <cstdint>

struct EmailSpelling {
    uint8_t lao[4];
    const char *letters;
};

// How a vowel goes with a final consonant.
enum VowelUse : uint8_t {
    kOpen,    // only without one
    kClosed,  // only with one
    kEither
};

struct EmailVowel {
    uint8_t lao[4];  // a lead vowel first
    const char *letters;
    VowelUse use;
};

// clang-format off
constexpr EmailSpelling kEmailInitials[] = {
    {{161}, "k"},       {{162}, "Kh"},      {{162}, "K"},       {{162}, "hk"},      {{163}, "kh"},
    {{164}, "ng"},      {{165}, "j"},       {{165}, "c"},       {{165}, "ch"},      {{166}, "s"},
    {{167}, "x"},       {{168}, "ny"},      {{169}, "d"},       {{170}, "t"},       {{171}, "Th"},
    {{171}, "T"},       {{171}, "ht"},      {{234}, "th"},      {{173}, "n"},       {{174}, "b"},
    {{175}, "p"},       {{176}, "Ph"},      {{176}, "P"},       {{176}, "hp"},      {{177}, "F"},
    {{177}, "hf"},      {{178}, "ph"},      {{179}, "f"},       {{180}, "m"},       {{181}, "y"},
    {{235}, "r"},       {{236}, "l"},       {{184}, "v"},       {{184}, "w"},       {{185}, "H"},
    {{185}, "hh"},      {{185, 164}, "hng"}, {{185, 164}, "G"},
    {{185, 168}, "hny"}, {{185, 168}, "hy"}, {{185, 168}, "Y"},
    {{206}, "hn"},       // 745; 185 173: 24
    {{206}, "N"},
    {{207}, "hm"},       // 706; 185 180: 37
    {{207}, "M"},
    {{185, 249}, "hr"},  // 789; 185 235: none
    {{185, 235}, "R"},   {{185, 249}, "hR"}, {{185, 236}, "hl"}, {{205}, "L"},
    {{185, 184}, "hv"},  {{185, 184}, "V"},
    {{186}, "z"},        // and no letter at all in front of a vowel
    {{186, 184}, "zw"},  {{187}, "h"},      {{187}, "q"},       {{187, 184}, "qw"},
};

constexpr EmailSpelling kEmailClusters[] = {
    {{235}, "r"},        // 473; 249: 6
    {{236}, "l"},       {{184}, "w"},       {{184}, "v"},       {{249}, "R"},
};

constexpr EmailVowel kEmailVowels[] = {
    {{189},           "a",    kOpen},    {{241},           "a",    kClosed},
    {{190},           "aa",   kEither},  {{242},           "i",    kEither},
    {{243},           "ii",   kEither},  {{244},           "ue",   kEither},
    {{245},           "eu",   kEither},  {{247},           "u",    kEither},
    {{248},           "uu",   kEither},  {{192, 189},      "e",    kOpen},
    {{192, 241},      "e",    kClosed},  {{192},           "ee",   kEither},
    {{193, 189},      "E",    kOpen},    {{193, 241},      "E",    kClosed},
    {{193, 189},      "e'",   kOpen},    {{193, 241},      "e'",   kClosed},
    {{193},           "EE",   kEither},  {{193},           "ae",   kEither},
    {{194, 189},      "o",    kOpen},    {{246},           "o",    kClosed},
    {{194},           "oo",   kEither},  {{192, 190, 189}, "O",    kOpen},
    {{241, 186},      "O",    kClosed},  {{192, 190, 189}, "o'",   kOpen},
    {{241, 186},      "o'",   kClosed},  {{240},           "OO",   kOpen},
    {{186},           "OO",   kClosed},  {{240},           "oh",   kOpen},
    {{186},           "oh",   kClosed},  {{192, 242},      "oe",   kEither},
    {{192, 243},      "er",   kEither},  {{192, 244, 186}, "eua'", kEither},
    {{192, 245, 186}, "eua",  kEither},  {{246, 184, 189}, "ua'",  kOpen},
    {{241, 184},      "ua'",  kClosed},  {{246, 184},      "ua",   kOpen},
    {{184},           "ua",   kClosed},  {{196},           "ai",   kOpen},
    {{195},           "ay",   kOpen},    {{192, 246, 190}, "ao",   kOpen},
    {{191},           "am",   kOpen},    {{192, 241, 168}, "ia'",  kOpen},
    {{192, 168},      "ia",   kOpen},    {{188},           "ia",   kClosed},
    {{241, 168},      "ayy",  kOpen},    {{241, 180},      "amm",  kOpen},
};

constexpr EmailSpelling kEmailFinals[] = {
    {{161}, "k"},       {{164}, "ng"},      {{166}, "s"},       {{167}, "x"},       {{168}, "y"},
    {{169}, "t"},       {{169}, "d"},       {{173}, "n"},       {{174}, "p"},       {{174}, "b"},
    {{177}, "F"},       {{179}, "f"},       {{180}, "m"},       {{235}, "r"},       {{236}, "l"},
    {{184}, "w"},       {{184}, "v"},
};

constexpr EmailSpelling kEmailTones[] = {
    {{250}, "1"},       {{251}, "2"},       {{252}, "3"},       {{253}, "4"},       {{254}, "*"},
};

// These end a syllable and stand for themselves.
constexpr EmailSpelling kEmailSigns[] = {
    {{197}, "#"},       {{198}, "&"},
};
// clang-format on

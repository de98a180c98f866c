// The built-in font map, in the order of the search.
#pragma once

#include "xmlconv/font_map.h"

// clang-format off
constexpr FontMapEntry kBuiltInFontMap[] = {
    // legacy font       type  Unicode font
    {"Saysettha Lao",     0,    "Saysettha OT"},
    {"Chantabouli Lao",   0,    "Saysettha OT"},
    {"Bubble Lao",        0,    "Saysettha OT"},
    {"Hollow Lao",        0,    "Saysettha OT"},
    {"Alice0 Lao",        0,    "Alice0 Unicode"},
    {"Alice1 Lao",        0,    "Alice1 Unicode"},
    {"Alice2 Lao",        0,    "Alice2 Unicode"},
    {"Alice3 Lao",        0,    "Alice3 Unicode"},
    {"Alice4 Lao",        0,    "Alice4 Unicode"},
    {"Alice5 Lao",        0,    "Alice5 Unicode"},
    {"Saysettha 95",      1,    "Saysettha OT"},
    {"Chantabouli 95",    1,    "Saysettha OT"},
    {"Bubble 95",         1,    "Saysettha OT"},
    {"Hollow 95",         1,    "Saysettha OT"},
    {"Alice0 95",         1,    "Alice0 Unicode"},
    {"Alice1 95",         1,    "Alice1 Unicode"},
    {"Alice2 95",         1,    "Alice2 Unicode"},
    {"Alice3 95",         1,    "Alice3 Unicode"},
    {"Alice4 95",         1,    "Alice4 Unicode"},
    {"Alice5 95",         1,    "Alice5 Unicode"},
    {"Saysettha 2000",    2,    "Saysettha OT"},
    {"XiengThong 2000",   2,    "XiengThong Unicode"},
    {"VangVieng 2000",    2,    "VangVieng Unicode"},
    {"Alice0 2000",       2,    "Alice0 Unicode"},
    {"Alice1 2000",       2,    "Alice1 Unicode"},
    {"Alice2 2000",       2,    "Alice2 Unicode"},
    {"Alice3 2000",       2,    "Alice3 Unicode"},
    {"Alice4 2000",       2,    "Alice4 Unicode"},
    {"Alice5 2000",       2,    "Alice5 Unicode"},
    {"alice_0",           3,    "Alice0 Unicode"},
    {"alice_1",           3,    "Alice1 Unicode"},
    {"alice_2",           3,    "Alice2 Unicode"},
    {"alice_3",           3,    "Alice3 Unicode"},
    {"alice_4",           3,    "Alice4 Unicode"},
    {"alice_5",           3,    "Alice5 Unicode"},
    {"Lao Light",         3,    "Saysettha OT"},
    {"SengChanh",         4,    "Saysettha OT"},
    {"Xayawath",          5,    "Saysettha OT"},
};
// clang-format on

static_assert(sizeof kBuiltInFontMap / sizeof *kBuiltInFontMap == 38);

// Classes of the internal code at the borders of their ranges, and clusters.
#include <gtest/gtest.h>

#include "orvel.h"
#include "text/lao_code.h"

struct ClassRow {
    const char *name;
    CodeClass codeClass;
    int count;                 // of the bytes in the class
    std::vector<int> in, out;  // borders
};

// clang-format off
static const ClassRow kClassRows[] = {
    {"Lao",        kLaoCode,    86, {132, 137, 152, 157, 161, 199, 213, 234, 254}, {0, 131, 138, 151, 158, 160, 214, 224, 233, 255}},
    {"lead vowel", kLeadVowel,   5, {192, 196},                                    {191, 197}},
    {"vowel",      kVowel,      28, {188, 191, 208, 222, 240, 248},                {187, 192, 207, 223, 239, 249, 132}},
    {"tone",       kTone,       10, {200, 204, 250, 254},                          {199, 205, 249, 255}},
    {"consonant",  kConsonant,  33, {161, 187, 205, 207, 234, 236},                {160, 188, 204, 208, 233, 237}},
    {"sonorant",   kSonorant,   11, {164, 168, 173, 180, 182, 183, 184, 235, 236, 249}, {161, 179, 185, 234, 237, 248}},
    {"final",      kFinal,       8, {161, 164, 168, 169, 173, 174, 180, 184},      {162, 170, 175, 181, 235}},
    {"combining",  kCombining,  36, {132, 137, 152, 157, 200, 204, 208, 211, 240, 254}, {131, 138, 199, 205, 212, 237, 255}},
};
// clang-format on

TEST(LaoCode, ClassesHoldTheirBordersAndNothingElse)
{
    for (const ClassRow &row : kClassRows) {
        int count = 0;
        for (int code = 0; code < 256; ++code)
            count += HasClass(code, row.codeClass);
        EXPECT_EQ(count, row.count) << row.name;
        for (int code : row.in)
            EXPECT_TRUE(HasClass(code, row.codeClass)) << row.name << " " << code;
        for (int code : row.out)
            EXPECT_FALSE(HasClass(code, row.codeClass)) << row.name << " " << code;
    }
}

TEST(LaoCode, ExportReadsTheLowEightBitsAlone)
{
    for (int code : {161, 161 + 256, 161 - 256, -95})
        EXPECT_EQ(IsLaoCode(code), 1) << code;
    EXPECT_EQ(IsLaoCode(224 + 512), 0);
}

struct ClusterRow {
    uint8_t pair[2];
    bool joins;
};

static const ClusterRow kClusterRows[] = {
    {{161, 184}, true},  {{161, 249}, true},  {{161, 235}, true},  {{161, 164}, false},
    {{185, 164}, true},  {{185, 249}, true},  {{185, 161}, false}, {{186, 184}, true},
    {{186, 235}, false}, {{164, 184}, true},  {{164, 235}, false}, {{184, 184}, false},
    {{235, 184}, false}, {{236, 184}, false}, {{182, 184}, true},  {{183, 184}, true},
    {{205, 184}, true},  {{249, 184}, false}, {{190, 184}, false}, {{0, 184}, false},
};

TEST(LaoCode, ClustersFollowTheFirstRuleThatApplies)
{
    for (const ClusterRow &row : kClusterRows)
        EXPECT_EQ(IsClusterPair(row.pair), row.joins)
            << int(row.pair[0]) << " " << int(row.pair[1]);
}

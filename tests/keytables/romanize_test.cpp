// Romanization: worked examples, control files and their fonts, the whole dictionary.
#include <cstring>

#include "keytables/builtin_tables.h"
#include "keytables/key_support.h"

class Romanizing : public KeyTables
{
};

TEST_F(Romanizing, FollowsTheBuiltInTable)
{
    SetOrvelOption("r", 0, 0);
    ExpectRomanized({
        // clang-format off
        {"ກາຍ", "kai"}, {"ກ້າວ", "kao"},         // these two have patterns of their own
        {"ຄວາມ", "khwam"},                     // consonant and cluster member
        {"ຄວາຍ", "khway"},                     // a pattern's one byte is no cluster
        {"ຫຼາຍ", "ray"}, {"ກຼາ", "kra"},         // the subscript is looked up as ຣ, everywhere
        {"ເຂົ້າ", "khao"}, {"ເມຍ", "mia"}, {"ສະບາຍດີ", "sabaidi"}, {"ແກວ", "keo"}, {"ໜູ", "nou"},
        {"ອາ", "a"}, {"ເອົາ", "ao"}, {"ນ້ຳ", "nam"}, {"ວຽງຈັນ", "viangchan"}, {"ຫງາຍ", "ngay"},
        {"abc, 12!", "abc, 12!"}, {"ກາ໑໒", "ka\xE1\xE2"}, {"ລາວ ABC ລາວ", "lao ABC lao"}
        // clang-format on
    });
}

// With the built-in table every word comes out in Latin letters; of its 30,550 words 245 hold a
// stretch that is no syllable, which a table with a "?" shows.
TEST_F(Romanizing, WritesEveryWordOfTheDictionary)
{
    std::vector<std::string> plain;
    for (const std::string &word : DictionaryWords()) {
        plain.push_back(RomanOf(word));
        for (char c : plain.back())
            ASSERT_TRUE((c >= 'a' && c <= 'z') || strchr(" ().-", c)) << TextOfCode(word);
    }
    LoadRomanFile(ControlFileOf(kBuiltInRomanTable, "I2VF?"));
    int marked = 0;
    for (size_t i = 0; i < plain.size(); ++i) {
        std::string roman = RomanOf(DictionaryWords()[i]);
        bool isMarked = roman.find("[?]") != std::string::npos;
        marked += isMarked;
        ASSERT_TRUE(isMarked || roman == plain[i]) << roman << ", " << plain[i];
    }
    EXPECT_LE(marked, 245);
}

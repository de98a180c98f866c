// Romanization: worked examples, control files and their fonts, the whole dictionary.
#include <cstring>

#include "keytables/builtin_tables.h"
#include "keytables/key_support.h"

class Romanizing : public KeyTables
{
};

static const struct {
    const char *text, *roman;
} kRomanRows[] = {
    {"ກາຍ", "kai"},  // these two have patterns of their own
    {"ກ້າວ", "kao"},         {"ກິນ", "kin"},
    {"ຄວາມ", "khwam"},                       // consonant and cluster member
    {"ຄວາຍ", "khway"},                       // a pattern's one byte is no cluster
    {"ເຂົ້າ", "khao"},        {"ເມຍ", "mia"},  // the final belongs to the vowel
    {"ສະບາຍດີ", "sabaidi"},  {"ແກວ", "keo"},
    {"ຫງາຍ", "ngay"},       {"ໜູ", "nou"},
    {"ຫຼາຍ", "ray"},  // the subscript is looked up as ຣ, everywhere
    {"ກຼາ", "kra"},          {"ອາ", "a"},
    {"ເອົາ", "ao"},          {"ນ້ຳ", "nam"},
    {"ວຽງຈັນ", "viangchan"}, {"abc, 12!", "abc, 12!"},
    {"ກາ໑໒", "ka\xE1\xE2"}, {"ລາວ ABC ລາວ", "lao ABC lao"},
};

TEST_F(Romanizing, FollowsTheBuiltInTable)
{
    SetOrvelOption("r", 0, 0);
    for (const auto &row : kRomanRows)
        EXPECT_EQ(RomanOf(CodeOfText(row.text)), row.roman) << row.text;
}

TEST_F(Romanizing, SetsWordsOrSyllablesApart)
{
    const std::string text = CodeOfText("ສະບາຍດີ");
    ReplaceDictionary("MainDict.dat", "ບາຍດີ\n");
    EXPECT_EQ(RomanOf(text), "sa baidi");
    SetOrvelOption("b", 4, 0);
    EXPECT_EQ(RomanOf(text), "sa bai di");
    SetOrvelOption("r", 31, 0);
    EXPECT_EQ(RomanOf(text), "sa\x1F"
                             "bai\x1F"
                             "di");
    SetOrvelOption("r", 0, 0);
    EXPECT_EQ(RomanOf(text), "sabaidi");
}

// A separator of a control file rules, but for the three that the option gives.
TEST_F(Romanizing, SeparatorsOfAFileRule)
{
    const std::string text = CodeOfText("ກາສາ");
    SetOrvelOption("b", 4, 0);
    const struct {
        const char *separator, *result;
    } rows[] = {{"-", "ka-sa"}, {"#32", "kasa"}, {"#31", "kasa"}, {"#0", "kasa"}, {"#33", "ka!sa"}};
    SetOrvelOption("r", 0, 0);
    for (const auto &row : rows) {
        LoadRomanFile(ControlFileOf(kBuiltInRomanTable, std::string("I2VF ") + row.separator));
        EXPECT_EQ(RomanOf(text), row.result) << row.separator;
    }
}

static std::string RomanFont(DWORD size)
{
    Guarded<char> font(size);
    GetRomanFont(font.data(), size);
    return size ? font.data() : "";
}

TEST_F(Romanizing, TellsTheFontOfTheFile)
{
    EXPECT_EQ(RomanFont(128), "Arial");
    LoadRomanFile("I2VF #0 #0 Times New Roman\n");
    EXPECT_EQ(RomanFont(128), "Times New Roman");
    EXPECT_EQ(RomanFont(6), "Times");
    EXPECT_EQ(RomanFont(1), "");
    EXPECT_EQ(RomanFont(0), "");
    GetRomanFont(nullptr, 10);
    LoadRomanFile("I2VF\n");  // a file that names none leaves it
    EXPECT_EQ(RomanFont(128), "Times New Roman");
    LoadSortFile("I2VF #0 #0 Alice\n");  // any file's line sets it
    EXPECT_EQ(RomanFont(128), "Alice");
    char missing[] = "missing.key";
    {
        ExpectBoxes boxes({kNoFile});
        EXPECT_EQ(SetRomanKey(missing), 1);
    }
    EXPECT_EQ(RomanFont(128), "Arial");
}

TEST_F(Romanizing, FallsBackOnTheBuiltInTable)
{
    for (const char *content : {"I\nInitial\n0 12345678\n", "I\nInitial\n\xA1 12345678"}) {
        ExpectBoxes boxes({kTooLong});
        EXPECT_EQ(LoadRomanFile(content), 1);
        EXPECT_EQ(RomanOf("\xA1\xBE"), "ka");
    }
}

TEST_F(Romanizing, RefusesAndCopies)
{
    char output[4] = "xxx";
    EXPECT_EQ(Romanize("abcd", output, sizeof output, kInternal), 0);
    EXPECT_STREQ(output, "xxx");
    EXPECT_EQ(Romanize("a\xA1", output, sizeof output, "no such font"), 1);
    EXPECT_STREQ(output, "a\xA1");
    EXPECT_EQ(Romanize("", output, 0, kInternal), 0);
    EXPECT_EQ(Romanize(nullptr, output, sizeof output, kInternal), 0);
    EXPECT_EQ(Romanize("a", nullptr, 4, kInternal), 0);
    ExpectBoxes boxes({kCannotConvert});  // one byte has to stay free
    EXPECT_EQ(Romanize("", output, 1, kInternal), 0);
}

// With the built-in table every word comes out in Latin letters; of its 30,550 words 245 hold a
// stretch that is no syllable, which a table with a "?" shows.
TEST_F(Romanizing, WritesEveryWordOfTheDictionary)
{
    std::vector<std::string> plain;
    for (const std::string &word : DictionaryWords()) {
        plain.push_back(RomanOf(word));
        ASSERT_EQ(plain.back().find("[?]"), std::string::npos) << TextOfCode(word);
        for (char c : plain.back())
            ASSERT_TRUE((c >= 'a' && c <= 'z') || strchr(" ().-", c))
                << TextOfCode(word) << plain.back();
    }
    LoadRomanFile(ControlFileOf(kBuiltInRomanTable, "I2VF?"));
    int marked = 0;
    for (size_t i = 0; i < plain.size(); ++i) {
        std::string roman = RomanOf(DictionaryWords()[i]);
        bool isMarked = roman.find("[?]") != std::string::npos;
        marked += isMarked;
        if (!isMarked) {
            ASSERT_EQ(roman, plain[i]);
        }
    }
    EXPECT_LE(marked, 245);
}

// What the guides and samples promise: the built-in romanization, the sample control files, and the
// table of common words.
#include <algorithm>
#include <map>

#include "keytables/key_support.h"
#include "support/temp_folder.h"

using KeyGuides = KeyTables;

static std::string FromRepository(const std::string &path)
{
    std::string content = ReadWholeFile(std::string(ORVEL_CORPUS) + "/../../" + path);
    EXPECT_FALSE(content.empty()) << path;
    return content;
}

TEST_F(KeyGuides, TheRomanizationSampleWorks)
{
    EXPECT_EQ(LoadRomanFile(FromRepository("samples/romanization.key")), 1);
    SetOrvelOption("r", 0, 0);
    ExpectRomanized({
        // clang-format off
        {"ສະບາຍດີ", "sa3baai1dii1"}, {"ຫຼາຍ", "laai4"}, {"ຫລວງ", "luang"}, {"ເຂົ້າ", "khao6"},
        {"ຄວາມ", "khwaam3"}, {"ເຮືອນ", "hueean3"}, {"ໝາ", "maa4"}, {"ຕ່າງໆ", "taang2taang2"}, {"ສ", "s3[?]"}, {"ອັດຕະປື", "at3ta3puee1"}
        // clang-format on
    });
    char font[40];
    GetRomanFont(font, sizeof font);
    EXPECT_STREQ(font, "Times New Roman");
}

TEST_F(KeyGuides, TheSortSampleWorks)
{
    EXPECT_EQ(LoadSortFile(FromRepository("samples/sort.key")), 1);
    std::string before;
    for (const char *word : {"ກາ", "ກາກ", "ງາ", "ຫງາ", "ນາ", "ນ້າ", "ໜາ", "ບາ", "ລາ", "ຫຼາ", "ວາ",
                             "ຫວາ", "ຫາ", "ອາ", "ຮາ"}) {
        std::string key = KeyOf(CodeOfText(word));
        EXPECT_EQ(key.size(), 10u) << word;
        EXPECT_LT(before, key) << word;
        before = key;
    }
    EXPECT_EQ(KeyOf(CodeOfText("ຫຼາ")), KeyOf(CodeOfText("ຫລາ")));
}

TEST_F(KeyGuides, TheTableOfCommonWordsIsWhatIsWritten)
{
    SetOrvelOption("r", 0, 0);
    int rows = 0;
    for (const std::string &line : SplitLines(FromRepository("docs/romanization.md"))) {
        size_t bar = line.find(" | "), end = line.find(" | ", bar + 3);
        if (line.substr(0, 3) != "| \xE0" || end == std::string::npos)
            continue;
        ++rows;
        std::string word = line.substr(2, bar - 2);
        EXPECT_EQ(RomanOf(CodeOfText(word)), line.substr(bar + 3, end - bar - 3)) << word;
    }
    EXPECT_EQ(rows, 200);
}

// Almost any wrong row of the table makes words meet that were apart, or parts some that met.
TEST_F(KeyGuides, TheRomanizationHasAsManySpellingsAsTheGuideSays)
{
    SetOrvelOption("r", 0, 0);
    std::map<std::string, int> spellings;
    for (const std::string &word : DictionaryWords())
        ++spellings[RomanOf(word)];
    int alone = int(std::count_if(spellings.begin(), spellings.end(),
                                  [](const auto &spelling) { return spelling.second == 1; }));
    EXPECT_EQ(spellings.size(), 37218u);
    EXPECT_EQ(int(DictionaryWords().size()) - alone, 10273);
}

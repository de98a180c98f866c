// Dictionary files as users and accidents leave them.
#include "companion/support.h"

#include <chrono>

class DictionaryFile : public CleanDictionaries
{
  protected:
    static std::vector<std::string> WordsOf(const std::string &content)
    {
        WriteDataFile("UserDict.dat", content);
        UnloadDictionaries();
        return UserWords();
    }
};

TEST_F(DictionaryFile, ABadLineCostsNoOther)
{
    const std::string rubbish(8 << 20, '\xE0');
    std::string lao;  // a word of two million characters
    for (int i = 0; i < 1 << 20; ++i)
        lao += KAA;
    const struct {
        std::string content;
        size_t words;  // of the two, the second one at least
    } rows[] = {
        // clang-format off
        {KAA "\r\n" KHI "\r\n", 2}, {KAA "\n" KHI, 2}, {"\xEF\xBB\xBF" KAA "\n" KHI "\n", 2},
        {" \t" KAA "\t \n" KHI "  \n", 2}, {KAA "\n" KAA "\n" KHI "\n" KAA, 2},
        {KAA "\xE2\x80\x8B\n" KHI "\n", 2},  // an invisible break
        {"# " KAA "\n" KHI "# end\n", 1}, {"\n\n \t\r\n" KHI "\n\n", 1}, {"\r\r\n" KHI "\r\r\n" KHI "\n", 1},
        {std::string(KAA) + '\0' + "\n" KHI "\n", 1},
        {"\xE0\xBA\n" KHI "\n", 1}, {KAA "\xFF\n" KHI "\n", 1}, {"\x81" KAA "\n" KHI "\n", 1},  // no UTF-8
        {KAA "\xF0\x9F\x98\x80\n" KHI "\n", 1}, {KAA "\xE0\xBA\x83\n" KHI "\n", 1}, {KAA "\xC2\xA0\n" KHI "\n", 1},
        {rubbish + "\n" KHI "\n", 1}, {lao + "\n" KHI "\n", 1}, {KHI "\n" + lao, 1},
        // clang-format on
    };
    const std::vector<std::string> words = {"\241\276", "\242\362"};
    for (const auto &row : rows)
        EXPECT_EQ(WordsOf(row.content),
                  std::vector<std::string>(words.end() - long(row.words), words.end()))
            << row.content.substr(0, 40);
}

TEST_F(DictionaryFile, OnlyTheThreeNamesWithTheirBits)
{
    WriteDataFile("UserDict.dat", KAA "\n");
    for (DWORD bit : {0u, 1u, 2u, 5u, 1u << 31})
        EXPECT_EQ(ReadLaoDict("UserDict.dat", bit), 0u) << bit;
    for (const char *name : {"MainDict.dat", "..\\Orvel\\UserDict.dat", "./UserDict.dat", "",
                             "UserDict", static_cast<const char *>(nullptr)})
        EXPECT_EQ(ReadLaoDict(name, 4), 0u);
    EXPECT_EQ(ReadLaoDict("UserDict.dat", 4), 1u);
}

TEST_F(DictionaryFile, ALoadedDictionaryIsNotReadAgain)
{
    EXPECT_EQ(ReadLaoDict("MainDict.dat", 1), 43583u) << "beside the program";
    UnloadDictionaries();
    WriteDataFile("MainDict.dat", KAA "\n");
    EXPECT_EQ(ReadLaoDict("MainDict.dat", 1), 1u) << "the data folder comes first";
    EXPECT_EQ(ReadLaoDict("OldDict.dat", 2), 277u) << "beside the program";
    WriteDataFile("MainDict.dat", KAA "\n" KHI "\n");
    WriteDataFile("OldDict.dat", KAA "\t" KHI "\n");
    EXPECT_EQ(ReadLaoDict("MainDict.dat", 1) + ReadLaoDict("OldDict.dat", 2), 278u);
    EXPECT_EQ(UnloadDictionaries(), 1u);
    EXPECT_FALSE(FindWord("\241\276", 2, 0, 65));
    EXPECT_EQ(ReadLaoDict("MainDict.dat", 1) + ReadLaoDict("OldDict.dat", 2), 3u);
    UnloadDictionaries();
    RemoveDataFile("MainDict.dat");
    ASSERT_TRUE(CreateDirectoryA(DataPath("MainDict.dat").c_str(), nullptr));
    EXPECT_EQ(ReadLaoDict("MainDict.dat", 1), 0u) << "a folder in its place";
    EXPECT_TRUE(RemoveDataFolder("MainDict.dat"));
}

// Random long words share little: the hardest case for placing nodes. The count ends at 65535.
TEST_F(DictionaryFile, AHostileListLoadsInBoundedTime)
{
    std::string content;
    while (content.size() < (5u << 20)) {
        for (int i = 0; i < 40; ++i)
            content += char(0x30 + NextRandom() % 75);
        content += '\n';
    }
    WriteDataFile("UserDict.dat", content);
    auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(ReadLaoDict("UserDict.dat", 4), 65535u);
    EXPECT_TRUE(FindWord(content.c_str(), 40, 0, 68));
    std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    EXPECT_LT(seconds.count(), 20.0);
    char word[64];
    EXPECT_EQ(GetWord(word, sizeof word, 70000, 4), 1u) << "numbers go on";
    EXPECT_EQ(GetWord(word, sizeof word, 120000, 4), 0u) << "four megabytes of words are kept";
}

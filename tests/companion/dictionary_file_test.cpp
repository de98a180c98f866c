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
    const std::vector<std::string> two = {"\241\276", "\242\362"}, one = {"\242\362"};
    const std::string longLine(8 << 20, '\xE0');
    std::string lao;
    for (int i = 0; i < 1 << 20; ++i)
        lao += KAA;
    const struct {
        std::string content;
        std::vector<std::string> words;
        const char *what;
    } rows[] = {{KAA "\r\n" KHI "\r\n", two, "CR LF"},
                {KAA "\n" KHI, two, "no last line end"},
                {"\xEF\xBB\xBF" KAA "\n" KHI "\n", two, "byte order mark"},
                {"# " KAA "\n" KHI "# end\n", one, "comments"},
                {"\n\n \t\r\n" KHI "\n\n", one, "empty lines"},
                {" \t" KAA "\t \n" KHI "  \n", two, "blanks around words"},
                {KAA "\n" KAA "\n" KHI "\n" KAA, two, "repeated words"},
                {std::string(KAA) + '\0' + "\n" KHI "\n", one, "a terminator inside a line"},
                {"\xE0\xBA\n" KHI "\n", one, "a cut character"},
                {KAA "\xFF\n" KHI "\n", one, "no UTF-8"},
                {"\x81" KAA "\n" KHI "\n", one, "a lone continuation"},
                {KAA "\xF0\x9F\x98\x80\n" KHI "\n", one, "a character of four bytes"},
                {KAA "\xE0\xBA\x83\n" KHI "\n", one, "a hole in the Lao block"},
                {KAA "\xC2\xA0\n" KHI "\n", one, "a no-break space"},
                {KAA "\xE2\x80\x8B\n" KHI "\n", two, "an invisible break"},
                {longLine + "\n" KHI "\n", one, "8 MB of rubbish"},
                {lao + "\n" KHI "\n", one, "a word of 2 million characters"},
                {KHI "\n" + lao, one, "the same at the end"},
                {"\r\r\n" KHI "\r\r\n" KHI "\n", one, "CR CR LF"}};
    for (const auto &row : rows)
        EXPECT_EQ(WordsOf(row.content), row.words) << row.what;
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
    EXPECT_EQ(ReadLaoDict("MainDict.dat", 1), 30504u) << "beside the program";
    UnloadDictionaries();
    WriteDataFile("MainDict.dat", KAA "\n");
    EXPECT_EQ(ReadLaoDict("MainDict.dat", 1), 1u) << "the data folder comes first";
    EXPECT_EQ(ReadLaoDict("OldDict.dat", 2), 0u);
    WriteDataFile("MainDict.dat", KAA "\n" KHI "\n");
    WriteDataFile("OldDict.dat", KAA "\t" KHI "\n");
    EXPECT_EQ(ReadLaoDict("MainDict.dat", 1) + ReadLaoDict("OldDict.dat", 2), 1u);
    EXPECT_EQ(UnloadDictionaries(), 1u);
    EXPECT_FALSE(FindWord("\241\276", 2, 0, 65));
    EXPECT_EQ(ReadLaoDict("MainDict.dat", 1) + ReadLaoDict("OldDict.dat", 2), 3u);
    UnloadDictionaries();
    RemoveDataFile("MainDict.dat");
    ASSERT_TRUE(CreateDirectoryA(DataPath("MainDict.dat").c_str(), nullptr));
    EXPECT_EQ(ReadLaoDict("MainDict.dat", 1), 0u) << "a folder in its place";
    EXPECT_TRUE(RemoveDataFolder("MainDict.dat"));
}

TEST_F(DictionaryFile, TheCountEndsAt65535)
{
    std::string content;
    for (int i = 0; i < 70000; ++i)
        content += KAA + std::to_string(i) + "\n";
    WriteDataFile("UserDict.dat", content);
    EXPECT_EQ(ReadLaoDict("UserDict.dat", 4), 65535u);
    char word[32];
    EXPECT_EQ(GetWord(word, sizeof word, 70000, 4), 1u);
    EXPECT_EQ(GetWord(word, sizeof word, 70001, 4), 0u);
    EXPECT_TRUE(FindWord((std::string("\241\276") + "69999").c_str(), 7, 0, 68));
}

// Random long words share little: the hardest case for placing nodes.
TEST_F(DictionaryFile, AHostileListLoadsInBoundedTime)
{
    std::string content;
    while (content.size() < (5u << 20)) {
        for (int i = 0; i < 40; ++i)
            content += char(0x24 + NextRandom() % 90);
        content += '\n';
    }
    WriteDataFile("UserDict.dat", content);
    auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(ReadLaoDict("UserDict.dat", 4), 65535u);
    std::string first = content.substr(0, 40);
    for (char &c : first)
        c = c == '-' ? char(140) : c;
    EXPECT_TRUE(FindWord(first.c_str(), 40, 0, 68));
    std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    EXPECT_LT(seconds.count(), 20.0);
}

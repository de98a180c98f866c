// AddWord, DeleteWord, GetWord and the file that they keep.
#include "companion/support.h"

#include <cstring>
#include <sys/stat.h>

#include "support/guarded.h"
#include "support/temp_folder.h"

using UserDictionary = CleanDictionaries;

// The file as a reader sees it, whatever its line ends.
static std::string UserFile()
{
    std::string content = ReadDataFile("UserDict.dat"), text;
    for (char c : content)
        if (c != '\r')
            text += c;
    return text;
}

TEST_F(UserDictionary, AddsAndDeletes)
{
    EXPECT_EQ(ReadLaoDict("UserDict.dat", 4), 0u);
    EXPECT_EQ(AddWord("\241\276"), 0);
    EXPECT_EQ(AddWord("\241\276"), 2);
    EXPECT_EQ(AddWord("\242\362\372"), 0);
    EXPECT_EQ(AddWord("\242\205"), 2) << "the same, packed";
    EXPECT_EQ(UserFile(), KAA "\n" KHI "\xE0\xBB\x88\n");
    EXPECT_EQ(ReadLaoDict("UserDict.dat", 4), 2u);
    EXPECT_TRUE(FindWord("\242\205", 2, 0, 68));
    EXPECT_EQ(DeleteWord("\241\276"), 0);
    EXPECT_EQ(DeleteWord("\241\276"), 1);
    EXPECT_FALSE(FindWord("\241\276", 2, 0, 4));
    UnloadDictionaries();
    EXPECT_EQ(UserWords(), std::vector<std::string>{"\242\205"});
    EXPECT_EQ(DeleteWord("\242\362\372"), 0);
    EXPECT_EQ(UserFile(), "");
    EXPECT_EQ(ReadLaoDict("UserDict.dat", 4), 0u);
}

TEST_F(UserDictionary, KeepsCommentsAndLinesThatAreNoWords)
{
    const std::string hostile =
        std::string("\xFF\xFE") + '\0' + "x\n" + std::string(100000, 'y') + "\n";
    const std::string head = "\xEF\xBB\xBF# my words\n\n" KAA " # the first\n";
    WriteDataFile("UserDict.dat", head + hostile + "#end");
    EXPECT_EQ(AddWord("\242\362"), 0);
    EXPECT_EQ(UserFile(), head + hostile + "#end\n" KHI "\n");
    EXPECT_EQ(DeleteWord("\241\276"), 0);
    EXPECT_EQ(UserFile(), "\xEF\xBB\xBF# my words\n\n" + hostile + "#end\n" KHI "\n");
    EXPECT_EQ(UserWords(), std::vector<std::string>{"\242\362"});
    WriteDataFile("UserDict.dat", "\xEF\xBB\xBF" KAA "\r\n" KAA "\r\n" KHI);
    UnloadDictionaries();
    EXPECT_EQ(DeleteWord("\241\276"), 0) << "the first line, and each that holds it";
    EXPECT_EQ(UserWords(), std::vector<std::string>{"\242\362"});
}

TEST_F(UserDictionary, GetWordKeepsToItsBuffer)
{
    ASSERT_EQ(AddWord("\241\276\255"), 0);
    for (size_t size = 1; size < 6; ++size) {
        Guarded<char> buffer(size);
        memset(buffer.data(), 'x', size);
        EXPECT_EQ(GetWord(buffer.data(), DWORD(size), 1, 4), size > 3);
        EXPECT_EQ(buffer.data()[0], size > 3 ? '\241' : 'x');
    }
    char word[32];
    for (DWORD number : {DWORD(0), DWORD(2), ~DWORD(0)})
        EXPECT_EQ(GetWord(word, sizeof word, number, 4), 0u);
    EXPECT_EQ(GetWord(word, sizeof word, 1, 1) + GetWord(nullptr, 32, 1, 4), 0u);
}

// What another process has written stays, and counts.
TEST_F(UserDictionary, KeepsWhatSomebodyElseHasWritten)
{
    EXPECT_EQ(AddWord("\241\276"), 0);
    WriteDataFile("UserDict.dat", ReadDataFile("UserDict.dat") + KHI "\n");
    EXPECT_EQ(AddWord("\255\276"), 0);
    EXPECT_EQ(ReadLaoDict("UserDict.dat", 4), 3u);
    WriteDataFile("UserDict.dat", KHI "\n");
    EXPECT_EQ(DeleteWord("\241\276"), 1) << "somebody else was quicker";
    EXPECT_EQ(UserWords(), std::vector<std::string>{"\242\362"});
}

TEST_F(UserDictionary, RefusesWhatIsNoWord)
{
    const struct {
        std::string word;
        LONG result;
    } rows[] = {
        // clang-format off
        {"", 1}, {"\360\372", 1}, {"-\241\037", 1},  // one byte, packed, without breaks
        // the file would not give them back
        {"\241#\276", 3}, {" \241\276", 3}, {"\241\276\t", 3}, {"\241\307", 3}, {"\241\001\276", 3},
        {std::string(256, '\241'), 3},
        // clang-format on
    };
    for (const auto &row : rows) {
        EXPECT_EQ(AddWord(row.word.c_str()), row.result) << ShowCode(row.word);
        EXPECT_EQ(DeleteWord(row.word.c_str()), 1) << ShowCode(row.word);
    }
    EXPECT_EQ(AddWord(nullptr) + DeleteWord(nullptr), 2);
    EXPECT_EQ(UserFile(), "");
    EXPECT_EQ(AddWord(std::string(255, '\241').c_str()), 0) << "the longest";
}

// Whatever a word is made of, the file gives it back, and its other spellings are the same word.
TEST_F(UserDictionary, WordsAreKeptInTheirMainForm)
{
    const char *rows[][2] = {{"\254\276", "\352\276"},         {"\241\310\276", "\241\372\276"},
                             {"\315\276", "\271\371\276"},     {"\241\355\276", "\241\235\276"},
                             {"\241-\276\037", "\241\276"},    {"\241\214\241", "\241\214\241"},
                             {"\316\276\305", "\316\276\305"}, {"\241 \241", "\241 \241"}};
    for (const auto &[given, kept] : rows) {
        ASSERT_EQ(AddWord(given), 0) << ShowCode(given);
        EXPECT_EQ(AddWord(kept), 2) << ShowCode(given);
        UnloadDictionaries();
        EXPECT_EQ(UserWords(), std::vector<std::string>{kept}) << ShowCode(given);
        EXPECT_EQ(DeleteWord(given), 0) << ShowCode(given);
    }
}

TEST_F(UserDictionary, NumbersAreInLaoOrder)
{
    // lead vowels behind their consonant, a tone behind the word without it, THO TAM before NO
    const std::vector<std::string> inOrder = {"\241\275\324",     "\241\276",     "\241\276\255",
                                              "\241\372\276\255", "\300\241\276", "\242\276",
                                              "\300\242\211\276", "\352\276",     "\255\276",
                                              "\353\276",         "\354\276",     "\270\276"};
    for (size_t i = inOrder.size(); i-- > 0;)
        ASSERT_EQ(AddWord(inOrder[i * 7 % inOrder.size()].c_str()), 0);
    EXPECT_EQ(UserWords(), inOrder);
}

// The failed change leaves words, lookups and file alone.
TEST_F(UserDictionary, AFileThatCannotBeReadOrWrittenIsNotReplaced)
{
    ASSERT_EQ(AddWord("\241\276"), 0);
    std::string before = ReadDataFile("UserDict.dat");
    std::string path = ToPath(DataPath("UserDict.dat")).string();
    for (bool isReadOnly : {true, false}) {
        ASSERT_EQ(chmod(path.c_str(), isReadOnly ? 0444 : 0777), 0);
        if (!isReadOnly) {
            RemoveDataFile("UserDict.dat");
            ASSERT_TRUE(CreateDirectoryA(DataPath("UserDict.dat").c_str(), nullptr));
        }
        EXPECT_EQ(AddWord("\255\276") + DeleteWord("\241\276"), 6);
        EXPECT_EQ(UserWords(), std::vector<std::string>{"\241\276"});
        EXPECT_TRUE(FindWord("\241\276", 2, 0, 68));
        EXPECT_FALSE(FindWord("\255\276", 2, 0, 4));
        EXPECT_TRUE(!isReadOnly || ReadDataFile("UserDict.dat") == before);
    }
    EXPECT_TRUE(RemoveDataFolder("UserDict.dat")) << "still an empty folder";
    EXPECT_EQ(AddWord("\255\276"), 0);
    EXPECT_EQ(UserWords(), std::vector<std::string>{"\255\276"}) << "the file is the truth";
}

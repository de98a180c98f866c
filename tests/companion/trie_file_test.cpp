// The trie that is read from a file: the same answers as a built one, and no harm from any file.
#include "companion/support.h"

#include <cstring>

#include "dictionary.h"
#include "support/temp_folder.h"
#include "trie_file.h"

using TrieFile = CleanDictionaries;

static DWORD MainLengths(const char *text)
{
    WordLengths lengths;
    FindWordLengths(text, 1, &lengths);
    return lengths.main;
}

// What is known of each word, shorter, longer and with one byte changed.
static std::vector<DWORD> AnswersNear(const std::vector<std::string> &words)
{
    std::vector<DWORD> answers;
    for (size_t i = 0; i < words.size(); ++i) {
        std::string changed = words[i], longer = words[i] + words[i * 7 % words.size()];
        changed[i % changed.size()] = char(0x80 + i % 0x80);
        for (const std::string &text : {words[i], changed, longer, words[i].substr(0, i % 5)})
            for (DWORD flags : {1, 65}) {
                answers.push_back(MainLengths(text.c_str()));
                answers.push_back(FindWord(text.c_str(), DWORD(text.size()), 0, flags));
            }
    }
    return answers;
}

TEST_F(TrieFile, AnswersAsABuiltTrieAndOnlyForItsList)
{
    const std::vector<std::string> words = MainWords();
    const Dictionary *main = DictionaryOfBit(1);
    DWORD count = ReadLaoDict("MainDict.dat", 1);
    ASSERT_EQ(main->list.count, 0u) << "no trie beside the program";
    const std::vector<DWORD> answers = AnswersNear(words);
    WriteDataFile("MainDict.dat", ReadWholeFile(ORVEL_MAIN_DICTIONARY) + "#");
    UnloadDictionaries();
    ASSERT_EQ(ReadLaoDict("MainDict.dat", 1), count);
    ASSERT_EQ(main->list.count, count) << "the trie of another list";
    EXPECT_EQ(AnswersNear(words), answers);
}

// Damage is refused or, in a few bits behind the head, makes other words; no walk leaves the text
// or the trie.
TEST_F(TrieFile, DamagedFilesDoNoHarm)
{
    std::string words = KAA "\n" KHI "\n" NAM "\nກາກາ\n";
    FileContent list = {words.data(), words.size()}, made;
    WordList parsed;
    Dictionary *main = DictionaryOfBit(1);
    ASSERT_TRUE(ParseWordList(&parsed, list.bytes, list.size, false) &&
                BuildTrie(&main->trie, &parsed) && WriteTrieFile(&made, &main->trie, 4, &list));
    const std::string good(made.bytes, made.size);
    const size_t head = 40, cells = head + 256, end = good.size();
    FreeFileContent(&made);
    FreeWordList(&parsed);
    auto read = [&](std::string bytes) {
        FreeTrie(&main->trie);
        ++main->revision;
        made = {bytes.data(), bytes.size()};
        return ReadTrieFile(&main->trie, &main->wordCount, &made, &list);
    };
    // clang-format off
    const size_t rows[][2] = {
        {0, 0}, {4, 0}, {8, 1}, {16, 1}, {28, 0}, {28, 255}, {32, 0}, {32, 1u << 30}, {36, ~0u},
        {head, 1}, {head + 1, 99}, {cells, 0}, {cells, 0x100}, {end - 4, 1u << 31}};
    // clang-format on
    for (const auto &[place, value] : rows) {
        std::string bad = good;
        memcpy(&bad[place], &value, 4);
        EXPECT_FALSE(read(bad)) << place << ' ' << value;
    }
    for (size_t size : {size_t(0), head - 1, cells, end - 1})
        EXPECT_FALSE(read(good.substr(0, size))) << size;
    int taken = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string bad = good, text = "\241\276\241\276";
        for (int i = 0; i < round % 4; ++i)
            bad[head + NextRandom() % (end - head)] ^= char(1 << NextRandom() % 8);
        for (int i = 0; i < 20; ++i)
            text += char(1 + NextRandom() % 255);
        taken += read(bad);
        for (size_t i = 0; i < text.size(); ++i) {
            const std::vector<char> block(text.c_str() + i, text.c_str() + text.size() + 1);
            MainLengths(block.data());
            FindWord(block.data(), 99, 0, 1);
        }
    }
    EXPECT_GT(taken, 1000);
}

// Lookups against a sorted list and a binary search, over real and generated text.
#include "companion/support.h"

#include <algorithm>
#include <cstring>

#include "lao_signs.h"

// Every sign in the form that words have it in.
static std::string InMainForms(const std::string &text)
{
    std::string forms;
    for (char c : text)
        forms += uint8_t(c) == kHoLo ? "\271\371" : std::string(1, char(MainForm(uint8_t(c))));
    return forms;
}

static std::vector<std::string> Sorted(std::vector<std::string> words)
{
    for (std::string &word : words)
        word = InMainForms(word);
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
    return words;
}

// FindWord as anybody would write it.
static bool FindPlainly(const std::vector<std::string> &sorted, const std::string &text, bool whole)
{
    std::string key = InMainForms(text);
    auto found = std::lower_bound(sorted.begin(), sorted.end(), key);
    return found != sorted.end() && (whole ? *found == key : found->substr(0, key.size()) == key);
}

// At every position of the text: FindWord says what the list says, and FindWordLengths, with the
// dictionary being the user's, what FindWord says length by length.
static void ExpectPlainAnswers(const std::vector<std::string> &sorted, const std::string &text)
{
    for (size_t i = 0; i < text.size(); ++i) {
        DWORD wanted = 0;
        bool isLao = true;
        for (DWORD length = 1; length <= 17 && i + length <= text.size(); ++length) {
            std::string key = text.substr(i, length);
            bool begins = FindPlainly(sorted, key, false), whole = FindPlainly(sorted, key, true);
            ASSERT_EQ(FindWord(&text[i], length, 0, 4) != 0, begins) << ShowCode(key);
            ASSERT_EQ(FindWord(&text[i], length, 0, 68) != 0, whole) << ShowCode(key);
            isLao &= length == 1 || IsLaoSign(uint8_t(key.back()));
            uint8_t next = uint8_t(text.c_str()[i + length]);
            bool isRepeated = next == kRepeatSign || next == kEllipsis;
            if (whole && isLao && length > 1 && length < 16)
                wanted |= 1u << (isRepeated ? length : length - 1);
            if (!begins && length > 2)
                break;
        }
        WordLengths lengths = {};
        FindWordLengths(&text[i], 7, &lengths);
        ASSERT_EQ(lengths.user, wanted) << ShowCode(text.substr(i, 17));
        ASSERT_EQ(lengths.main + lengths.old, 0u);
    }
}

class Lookup : public CleanDictionaries
{
  protected:
    // Two spellings of AM fold 59 of 43,642 words.
    void LoadMain() { ASSERT_EQ(ReadLaoDict("MainDict.dat", 1), 43583u); }
    const std::vector<std::string> words = MainWords(), sorted = Sorted(words);
};

TEST_F(Lookup, ShippedWordsAreAllFound)
{
    ASSERT_EQ(words.size(), 43642u);
    ASSERT_EQ(sorted.size(), 43583u);
    LoadMain();
    for (const std::string &word : words) {
        EXPECT_TRUE(FindWord(word.c_str(), DWORD(word.size()), 0, 65)) << ShowCode(word);
        WordLengths lengths;
        FindWordLengths(word.c_str(), 7, &lengths);
        bool isScored = word.size() < 32 && lengths.main >> (word.size() - 1) & 1;
        EXPECT_EQ(isScored, word.size() >= 2 && word.size() <= 15) << ShowCode(word);
    }
}

static std::string RandomText(const std::vector<std::string> &pieces, size_t longest)
{
    std::string text;
    for (size_t left = 1 + NextRandom() % longest; left; --left)
        text += pieces[NextRandom() % pieces.size()];
    return text;
}

// Dense and sparse sets of words, texts that nearly hit, repeat signs behind words; `all` gives a
// node as many children as can be.
TEST_F(Lookup, GeneratedDictionariesAndTexts)
{
    const std::vector<std::string> letters = {"ກ", "ຂ", "ຫ", "ຼ",  "ັ",  "າ", "ິ",
                                              "ໆ", "່",  "ໍ",  "ຯ", "a", "b"};
    std::vector<std::string> signs, all;
    for (char c : CodeOf("ກຂຫຼັາິໆ່ໍຯab") + "\254\310\321\204\231\322\315\271\371 -\301")
        signs.emplace_back(1, c);
    for (int code = 0x21; code < 0xDF; ++code) {
        std::string utf8(1, char(code));
        if (code >= 0x80)
            utf8 = {'\xE0', char(0xBA + (code >> 6 & 1)), char(0x80 | (code & 63))};
        if (code != '#' && code != '-' && code != 0x7F && code != 0x80 && CodeOf(utf8) != "?")
            all.push_back(utf8);
    }
    for (int round = 0; round < 13; ++round) {
        std::string file, text;
        std::vector<std::string> made;
        for (int i = 0; i < (round < 12 ? 20 << (round % 6) : 40000); ++i) {
            std::string utf8 =
                round < 12 ? RandomText(letters, round < 6 ? 5 : 20) : RandomText(all, 3);
            file += utf8 + "\n";
            made.push_back(CodeOf(utf8));
        }
        WriteDataFile("UserDict.dat", file);
        UnloadDictionaries();
        ASSERT_EQ(ReadLaoDict("UserDict.dat", 4), Sorted(made).size());
        for (int i = 0; i < 2000; ++i)
            text += NextRandom() % 3 ? made[NextRandom() % made.size()] : RandomText(signs, 4);
        ExpectPlainAnswers(Sorted(made), text);
    }
}

// A host fills one buffer again and again and asks for lengths in any order.
TEST_F(Lookup, TheBytesCountAndNotThePointer)
{
    LoadMain();
    char buffer[600] = "\241\241\241\241\241\241\241\241";
    for (int round = 0; round < 200000; ++round) {
        const std::string &word = words[NextRandom() % words.size()];
        strcpy(buffer + NextRandom() % 8, word.c_str());  // the beginning stays as it was
        DWORD length = 1 + NextRandom() % DWORD(word.size());
        ASSERT_EQ(FindWord(buffer, length, 0, 65) != 0,
                  FindPlainly(sorted, std::string(buffer, length), true))
            << ShowCode(buffer) << " length " << length;
    }
}

// Exact heap blocks: the sanitizer sees one byte too far.
TEST_F(Lookup, NothingIsReadBehindTheTerminator)
{
    LoadMain();
    for (size_t number = 0; number < words.size(); number += 97)
        for (size_t size = 0; size <= words[number].size(); ++size) {
            std::vector<char> block(words[number].begin(), words[number].begin() + long(size));
            block.push_back(0);
            block.shrink_to_fit();
            WordLengths lengths;
            FindWordLengths(block.data(), 7, &lengths);
            EXPECT_EQ(lengths.main >> std::min<size_t>(size, 16), 0u);
            for (DWORD length = DWORD(size) + 1; length < 40; ++length)
                EXPECT_FALSE(FindWord(block.data(), length, 0, 1));
        }
}

TEST_F(Lookup, LongWordsAreFoundByFindWordAlone)
{
    std::string code;
    for (int i = 0; i < 101; ++i)
        code += i % 3 ? '\276' : '\241';
    ASSERT_EQ(AddWord(code.substr(0, 100).c_str()), 0);
    for (DWORD length : {100, 101, 1, 99, 100}) {
        EXPECT_EQ(FindWord(code.c_str(), length, 0, 4) != 0, length <= 100) << length;
        EXPECT_EQ(FindWord(code.c_str(), length, 0, 68) != 0, length == 100) << length;
    }
    code[80] = '\242';
    EXPECT_FALSE(FindWord(code.c_str(), 100, 0, 4));
    EXPECT_TRUE(FindWord(code.c_str(), 80, 0, 4));
}

TEST_F(Lookup, HandlesHoldUntilUnloaded)
{
    // lines of which a spelling is missing or spoilt are no entries
    WriteDataFile("OldDict.dat", "# old\tກ\nກິ\tຂີ່\nຄິ\nຄິ\t\n\tກິ\nຄິ\tກ\xFF\nຂິ\tກ#ກ\r\n");
    char word[32] = "x";
    EXPECT_EQ(FindWord("\241\362", 2, 0, 194), 0u);
    ASSERT_EQ(ReadLaoDict("OldDict.dat", 2), 2u);
    DWORD handle = FindWord("\241\362y", 2, 0, 194);
    ASSERT_NE(handle, 0u);
    EXPECT_EQ(FindWord("\241", 1, 0, 194) + FindWord("\241\362", 300, 0, 194) +
                  FindWord("\241\362", 2, 0, 193),
              0u);
    EXPECT_EQ(GetNewWord(word, 2, handle) + GetNewWord(nullptr, 32, handle), 0u);
    EXPECT_STREQ(word, "x");
    EXPECT_EQ(GetNewWord(word, 3, handle), 1u);
    EXPECT_STREQ(word, "\242\206");
    for (DWORD wrong : {DWORD(0), handle + 2, handle - 1, ~DWORD(0), handle + (DWORD(1) << 20)})
        EXPECT_EQ(GetNewWord(word, sizeof word, wrong), 0u) << wrong;
    UnloadDictionaries();
    ASSERT_EQ(ReadLaoDict("OldDict.dat", 2), 2u);
    EXPECT_EQ(GetNewWord(word, sizeof word, handle), 0u) << "a handle of before";
    EXPECT_EQ(GetNewWord(word, sizeof word, FindWord("\242\362", 2, 0, 194)), 1u);
    EXPECT_STREQ(word, "\241");
}

TEST_F(Lookup, FlagsNameDictionaries)
{
    WriteDataFile("MainDict.dat", KAA "\n");
    WriteDataFile("OldDict.dat", "ກິ\t" KHI "\n");  // 161 242
    ReadLaoDict("MainDict.dat", 1);
    ReadLaoDict("OldDict.dat", 2);
    const char *main = "\241\276x", *old = "\241\362";
    EXPECT_TRUE(FindWord(main, 2, 0, 65) && FindWord(main, 1, 0, 1) && FindWord(old, 2, 0, 70));
    EXPECT_EQ(FindWord(main, 2, 0, 68) + FindWord(main, 2, 0, 64) + FindWord(old, 2, 0, 69) +
                  FindWord(main, 0, 0, 7) + FindWord(main, 1, 0, 65) + FindWord(main, 3, 0, 1) +
                  FindWord(nullptr, 2, 0, 65),
              0u);
    WordLengths lengths = {9, 9, 9};
    FindWordLengths(nullptr, 7, &lengths);
    EXPECT_EQ(lengths.main + lengths.old + lengths.user, 0u);
    FindWordLengths(main, 7, nullptr);
    FindWordLengths("\241\276\305", 1, &lengths);
    EXPECT_EQ(lengths.main, 4u) << "the repeat sign goes with the word";
    FindWordLengths(main, 6, &lengths);
    EXPECT_EQ(lengths.main, 0u) << "not asked for";
}

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
        if (uint8_t(c) == kHoLo)
            forms += "\271\371";
        else
            forms += char(MainForm(uint8_t(c)));
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

// What break scoring asks at a position, length by length.
static DWORD LengthsByFindWord(const char *text, DWORD dictionary)
{
    DWORD lengths = 0;
    for (DWORD length = 2; length < 16 && IsLaoSign(uint8_t(text[length - 1])); ++length) {
        if (!FindWord(text, length, 0, dictionary))
            break;
        if (FindWord(text, length, 0, dictionary + kWholeWord)) {
            uint8_t next = uint8_t(text[length]);
            lengths |= 1u << (next == kRepeatSign || next == kEllipsis ? length : length - 1);
        }
    }
    return lengths;
}

// At every position of the text: FindWordLengths is the FindWord loop.
static void ExpectEqualLengths(const std::string &text)
{
    for (size_t i = 0; i < text.size(); ++i) {
        const char *at = text.c_str() + i;
        WordLengths lengths = {};
        FindWordLengths(at, 7, &lengths);
        ASSERT_EQ(lengths.main, LengthsByFindWord(at, 1)) << Show(text.substr(i, 17));
        ASSERT_EQ(lengths.old, LengthsByFindWord(at, 2)) << Show(text.substr(i, 17));
        ASSERT_EQ(lengths.user, LengthsByFindWord(at, 4)) << Show(text.substr(i, 17));
    }
}

static void ExpectPlainAnswers(const std::vector<std::string> &sorted, const std::string &text,
                               DWORD dictionary)
{
    for (size_t i = 0; i < text.size(); ++i)
        for (DWORD length = 1; length <= 17 && i + length <= text.size(); ++length) {
            std::string key = text.substr(i, length);
            bool begins = FindPlainly(sorted, key, false);
            ASSERT_EQ(FindWord(&text[i], length, 0, dictionary) != 0, begins) << Show(key);
            ASSERT_EQ(FindWord(&text[i], length, 0, dictionary + kWholeWord) != 0,
                      FindPlainly(sorted, key, true))
                << Show(key);
            if (!begins && length > 2)
                break;
        }
}

class Lookup : public CleanDictionaries
{
};

TEST_F(Lookup, ShippedWordsAreAllFound)
{
    std::vector<std::string> words = MainWords(), sorted = Sorted(words);
    ASSERT_EQ(words.size(), 30550u);
    ASSERT_EQ(ReadLaoDict("MainDict.dat", 1), sorted.size());  // two spellings of AM fold 46
    EXPECT_EQ(sorted.size(), 30504u);
    size_t scored = 0;
    for (const std::string &word : words) {
        EXPECT_TRUE(FindWord(word.c_str(), DWORD(word.size()), 0, 65)) << Show(word);
        WordLengths lengths;
        FindWordLengths(word.c_str(), 7, &lengths);
        bool isScored = word.size() < 32 && lengths.main >> (word.size() - 1) & 1;
        EXPECT_EQ(isScored, word.size() >= 2 && word.size() <= 15) << Show(word);
        scored += isScored;
    }
    EXPECT_EQ(scored, 30293u);
}

TEST_F(Lookup, CorpusTextGivesTheSameAsABinarySearch)
{
    std::vector<std::string> sorted = Sorted(MainWords());
    ASSERT_GT(ReadLaoDict("MainDict.dat", 1), 0u);
    for (const char *name : kCorpusFiles)
        ExpectPlainAnswers(sorted, CorpusCode(name), 1);
}

// Parts of the shipped dictionary as the other two.
static void WriteSmallDictionaries()
{
    std::string old = "\xEF\xBB\xBF", user;
    size_t number = 0;
    for (const std::string &line : Lines(ReadFile(ORVEL_MAIN_DICTIONARY))) {
        if (line[0] == '#')
            continue;
        if (++number % 7 == 0)
            old += line + "\t" + "\xE0\xBA\x81\n";
        if (number % 5 == 0)
            user += line + "\r\n";
    }
    WriteDataFile("OldDict.dat", old);
    WriteDataFile("UserDict.dat", user);
}

TEST_F(Lookup, OneWalkGivesTheSameAsCallsForEachLength)
{
    WriteSmallDictionaries();
    WordLengths lengths = {1, 2, 3};
    std::string text = CorpusCode("udhr.txt");
    FindWordLengths(text.c_str(), 7, &lengths);
    EXPECT_EQ(lengths.main | lengths.old | lengths.user, 0u) << "before loading";
    ASSERT_GT(ReadLaoDict("MainDict.dat", 1), 30000u);
    ASSERT_GT(ReadLaoDict("OldDict.dat", 2), 4000u);
    ASSERT_GT(ReadLaoDict("UserDict.dat", 4), 6000u);
    for (const char *name : kCorpusFiles)
        ExpectEqualLengths(CorpusCode(name));
}

static std::string RandomText(const std::string &alphabet, size_t longest)
{
    std::string text;
    for (size_t length = 1 + NextRandom() % longest; length > 0; --length)
        text += alphabet[NextRandom() % alphabet.size()];
    return text;
}

static std::string Utf8OfBlock(const std::string &letters)
{
    std::string utf8;
    for (char c : letters) {  // an offset in the Lao block, or ASCII
        int character = uint8_t(c) < 0x80 ? c : uint8_t(c) - 0xA0 + 0x0E80;
        if (character < 0x80)
            utf8 += char(character);
        else
            utf8 += {char(0xE0 | character >> 12), char(0x80 | (character >> 6 & 63)),
                     char(0x80 | (character & 63))};
    }
    return utf8;
}

// Fonts have HO SUNG with LO as one byte, Unicode text and so the words as two.
TEST_F(Lookup, HoSungWithLoIsFoundInOneByte)
{
    std::vector<std::string> words = MainWords(), sorted = Sorted(words);
    ASSERT_GT(ReadLaoDict("MainDict.dat", 1), 0u);
    int count = 0;
    for (const std::string &word : words) {
        std::string text;
        for (char c : word)
            if (c == '\371' && !text.empty() && text.back() == '\271')
                text.back() = '\315';
            else
                text += c;
        if (text == word)
            continue;
        ExpectPlainAnswers(sorted, text + "\315\276", 1);
        ExpectEqualLengths(text + "\305");
        ++count;
    }
    EXPECT_GT(count, 700);
}

// Dense and sparse sets of words, texts that nearly hit, repeat signs behind words.
TEST_F(Lookup, GeneratedDictionariesAndTexts)
{
    const std::string letters =
        "\241\242\313\334\321\322\324\346\350\355\317ab";  // as font code 5 has them
    const std::string signs =
        CodeOf(Utf8OfBlock(letters)) + "\254\310\321\204\231\322\315\271\371 -\301";
    for (int round = 0; round < 12; ++round) {
        std::string file;
        std::vector<std::string> words;
        for (int i = 0; i < 20 << (round % 6); ++i) {
            std::string utf8 = Utf8OfBlock(RandomText(letters, round < 6 ? 5 : 20));
            file += utf8 + "\n";
            words.push_back(CodeOf(utf8));
        }
        WriteDataFile("UserDict.dat", file);
        UnloadDictionaries();
        std::vector<std::string> sorted = Sorted(words);
        ASSERT_EQ(ReadLaoDict("UserDict.dat", 4), sorted.size());
        std::string text;
        for (int i = 0; i < 2000; ++i)
            text += NextRandom() % 3 ? words[NextRandom() % words.size()] : RandomText(signs, 4);
        ExpectPlainAnswers(sorted, text, 4);
        ExpectEqualLengths(text);
    }
}

// Every pair of letters that a file can hold, so that a node has as many children as can be.
TEST_F(Lookup, AllLettersAtOnce)
{
    std::string letters, file;
    for (int code = 0x21; code < 0x7F; ++code)
        letters += code == '#' ? '!' : char(code);
    for (int code = 0xA1; code < 0xFE; ++code)
        letters += CodeOf(Utf8OfBlock(std::string(1, char(code)))) == "?" ? '!' : char(code);
    std::vector<std::string> words;
    for (char a : letters)
        for (char b : letters) {
            std::string utf8 = Utf8OfBlock({a, b, 'x'});
            file += utf8 + "\n";
            std::string word = CodeOf(utf8);
            for (char &c : word)
                c = c == '-' ? char(kRealHyphen) : c;
            words.push_back(word);
        }
    WriteDataFile("MainDict.dat", file);
    std::vector<std::string> sorted = Sorted(words);
    ASSERT_EQ(ReadLaoDict("MainDict.dat", 1), sorted.size());
    for (const std::string &word : sorted) {
        ASSERT_TRUE(FindWord(word.c_str(), DWORD(word.size()), 0, 65)) << Show(word);
        ASSERT_FALSE(FindWord((word + "#").c_str(), DWORD(word.size() + 1), 0, 1)) << Show(word);
    }
}

// A host fills one buffer again and again and asks for lengths in any order.
TEST_F(Lookup, TheBytesCountAndNotThePointer)
{
    std::vector<std::string> words = MainWords(), sorted = Sorted(words);
    ASSERT_GT(ReadLaoDict("MainDict.dat", 1), 0u);
    char buffer[64];
    for (int round = 0; round < 200000; ++round) {
        std::string text = words[NextRandom() % words.size()] + words[NextRandom() % words.size()];
        text.resize(std::min<size_t>(text.size(), 60));
        size_t keep = NextRandom() % 8;  // the buffer's beginning stays as it was
        if (round && keep < text.size() && keep < strlen(buffer))
            memcpy(&text[0], buffer, keep);
        strcpy(buffer, text.c_str());
        DWORD length = 1 + NextRandom() % DWORD(text.size());
        bool whole = NextRandom() % 2;
        ASSERT_EQ(FindWord(buffer, length, 0, whole ? 65 : 1) != 0,
                  FindPlainly(sorted, text.substr(0, length), whole))
            << Show(text) << " length " << length;
    }
}

TEST_F(Lookup, LongWordsAreFoundByFindWordAlone)
{
    std::string word;
    for (int i = 0; i < 100; ++i)
        word += i % 3 ? "\xE0\xBA\xB2" : "\xE0\xBA\x81";
    WriteDataFile("UserDict.dat", word + "\n");
    ASSERT_EQ(ReadLaoDict("UserDict.dat", 4), 1u);
    std::string code = CodeOf(word);
    ASSERT_EQ(code.size(), 100u);
    for (int round = 0; round < 2; ++round)
        for (DWORD length = 1; length <= 100; ++length) {
            EXPECT_TRUE(FindWord(code.c_str(), length, 0, 4)) << length;
            EXPECT_EQ(FindWord(code.c_str(), length, 0, 68) != 0, length == 100) << length;
        }
    EXPECT_FALSE(FindWord((code + "\241").c_str(), 101, 0, 4));
    code[80] = '\242';
    EXPECT_FALSE(FindWord(code.c_str(), 100, 0, 4));
    EXPECT_TRUE(FindWord(code.c_str(), 80, 0, 4));
}

// Exact heap blocks: the sanitizer sees one byte too far.
TEST_F(Lookup, NothingIsReadBehindTheTerminator)
{
    std::vector<std::string> words = MainWords();
    ASSERT_GT(ReadLaoDict("MainDict.dat", 1), 0u);
    for (size_t number = 0; number < words.size(); number += 97)
        for (size_t size = 0; size <= words[number].size(); ++size) {
            std::vector<char> block(words[number].begin(), words[number].begin() + long(size));
            block.push_back(0);
            block.shrink_to_fit();
            WordLengths lengths;
            FindWordLengths(block.data(), 7, &lengths);
            EXPECT_EQ(lengths.main, size ? LengthsByFindWord(block.data(), 1) : 0);
            for (DWORD length = DWORD(size) + 1; length < 40; ++length)
                EXPECT_FALSE(FindWord(block.data(), length, 0, 1));
        }
}

TEST_F(Lookup, FlagsNameDictionaries)
{
    WriteDataFile("MainDict.dat", "\xE0\xBA\x81\xE0\xBA\xB2\n");  // 161 190
    WriteDataFile("OldDict.dat",
                  "\xE0\xBA\x81\xE0\xBA\xB4\t\xE0\xBA\x82\xE0\xBA\xB4\n");    // 161 242
    WriteDataFile("UserDict.dat", "\xE0\xBA\x97\xE0\xBA\xB2\xE0\xBA\x99\n");  // 234 190 173
    ReadLaoDict("MainDict.dat", 1);
    ReadLaoDict("OldDict.dat", 2);
    EXPECT_FALSE(FindWord("\352\276\255", 3, 0, 68)) << "not loaded";
    ReadLaoDict("UserDict.dat", 4);
    const struct {
        const char *text;
        DWORD length, flags;
        bool found;
    } rows[] = {
        {"\241\276", 2, 65, true},
        {"\241\276", 2, 66, false},
        {"\241\276", 2, 68, false},
        {"\241\276", 2, 71, true},
        {"\241\362", 2, 70, true},
        {"\241\362", 2, 69, false},
        {"\241", 1, 1, true},
        {"\241", 1, 65, false},
        {"\241", 1, 4, false},
        {"\352\276\255", 3, 68, true},
        {"\254\276\255", 3, 68, true},  // THO TAM's other form
        {"\352\276\255x", 3, 68, true},
        {"\352\276\255x", 4, 4, false},
        {"\241\276", 2, 64, false},
        {"\241\276", 0, 7, false},
        {"", 0, 7, false},
        {"", 1, 7, false},
    };
    for (const auto &row : rows)
        EXPECT_EQ(FindWord(row.text, row.length, 0, row.flags) != 0, row.found)
            << Show(row.text) << " " << row.length << " " << row.flags;
    EXPECT_FALSE(FindWord(nullptr, 2, 0, 65));
    WordLengths lengths = {9, 9, 9};
    FindWordLengths(nullptr, 7, &lengths);
    EXPECT_EQ(lengths.main + lengths.old + lengths.user, 0u);
    FindWordLengths("\241\276", 7, nullptr);
    FindWordLengths("\241\276\305", 1, &lengths);
    EXPECT_EQ(lengths.main, 4u) << "the repeat sign goes with the word";
    FindWordLengths("\241\276", 6, &lengths);
    EXPECT_EQ(lengths.main, 0u) << "not asked for";
}

TEST_F(Lookup, HandlesHoldUntilUnloaded)
{
    const char *file = "# old and modern\n"
                       "\xE0\xBA\x81\xE0\xBA\xB4\t\xE0\xBA\x82\xE0\xBA\xB5\xE0\xBB\x88\n"
                       "\xE0\xBA\x82\xE0\xBA\xB4\t\xE0\xBA\x81\n"
                       "\xE0\xBA\x84\xE0\xBA\xB4\n";  // without a modern spelling: no entry
    WriteDataFile("OldDict.dat", file);
    char word[32] = "x";
    EXPECT_EQ(FindWord("\241\362", 2, 0, 194), 0u);
    ASSERT_EQ(ReadLaoDict("OldDict.dat", 2), 2u);
    DWORD handle = FindWord("\241\362y", 2, 0, 194);
    ASSERT_NE(handle, 0u);
    EXPECT_EQ(FindWord("\241\363", 2, 0, 194), 0u);
    EXPECT_EQ(FindWord("\241", 1, 0, 194), 0u);
    EXPECT_EQ(FindWord("\241\362", 300, 0, 194), 0u);
    EXPECT_EQ(FindWord("\241\362", 2, 0, 193), 0u) << "only old spellings have handles";
    for (DWORD size = 0; size < 3; ++size)
        EXPECT_EQ(GetNewWord(word, size, handle), 0u) << size;
    EXPECT_STREQ(word, "x");
    EXPECT_EQ(GetNewWord(word, 3, handle), 1u);
    EXPECT_STREQ(word, "\242\206");
    EXPECT_EQ(GetNewWord(nullptr, 32, handle), 0u);
    for (DWORD wrong : {DWORD(0), handle + 2, handle - 1, ~DWORD(0), handle + (DWORD(1) << 20),
                        DWORD(0x80000001)})
        EXPECT_EQ(GetNewWord(word, sizeof word, wrong), 0u) << wrong;
    UnloadDictionaries();
    EXPECT_EQ(GetNewWord(word, sizeof word, handle), 0u);
    ASSERT_EQ(ReadLaoDict("OldDict.dat", 2), 2u);
    EXPECT_EQ(GetNewWord(word, sizeof word, handle), 0u) << "a handle of before";
    EXPECT_EQ(GetNewWord(word, sizeof word, FindWord("\242\362", 2, 0, 194)), 1u);
    EXPECT_STREQ(word, "\241");
}

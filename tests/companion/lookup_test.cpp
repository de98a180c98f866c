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
        const DWORD found[] = {lengths.main, lengths.old, lengths.user};
        for (DWORD bit : {0, 1, 2})
            ASSERT_EQ(found[bit], LengthsByFindWord(at, 1u << bit)) << Show(text.substr(i, 17));
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
  protected:
    // Two spellings of AM fold 46 of 30,550 words.
    void LoadMain() { ASSERT_EQ(ReadLaoDict("MainDict.dat", 1), 30504u); }
    const std::vector<std::string> words = MainWords(), sorted = Sorted(words);
};

TEST_F(Lookup, ShippedWordsAreAllFound)
{
    ASSERT_EQ(words.size(), 30550u);
    ASSERT_EQ(sorted.size(), 30504u);
    LoadMain();
    for (const std::string &word : words) {
        EXPECT_TRUE(FindWord(word.c_str(), DWORD(word.size()), 0, 65)) << Show(word);
        WordLengths lengths;
        FindWordLengths(word.c_str(), 7, &lengths);
        bool isScored = word.size() < 32 && lengths.main >> (word.size() - 1) & 1;
        EXPECT_EQ(isScored, word.size() >= 2 && word.size() <= 15) << Show(word);
    }
}

// Parts of the shipped dictionary are the other two.
TEST_F(Lookup, CorpusTextGivesTheSameInEachWay)
{
    std::string old = "\xEF\xBB\xBF", user;
    std::vector<std::string> lines = MainLines();
    for (size_t i = 0; i < lines.size(); ++i) {
        old += i % 7 ? "" : lines[i] + "\tກ\n";
        user += i % 5 ? "" : lines[i] + "\r\n";
    }
    WriteDataFile("OldDict.dat", old);
    WriteDataFile("UserDict.dat", user);
    WordLengths lengths = {1, 2, 3};
    FindWordLengths(words[0].c_str(), 7, &lengths);
    EXPECT_EQ(lengths.main | lengths.old | lengths.user, 0u) << "before loading";
    LoadMain();
    ASSERT_GT(ReadLaoDict("OldDict.dat", 2), 4000u);
    ASSERT_GT(ReadLaoDict("UserDict.dat", 4), 6000u);
    for (const char *name : kCorpusFiles) {
        ExpectPlainAnswers(sorted, CodeOf(ReadCorpus(name)), 1);
        ExpectEqualLengths(CodeOf(ReadCorpus(name)));
    }
}

static std::string RandomText(const std::string &alphabet, size_t longest)
{
    std::string text(1 + NextRandom() % longest, ' ');
    for (char &c : text)
        c = alphabet[NextRandom() % alphabet.size()];
    return text;
}

static std::string Utf8OfBlock(const std::string &letters)
{
    std::string utf8;
    for (char c : letters)  // an offset in the Lao block, or ASCII
        if (uint8_t(c) < 0x80)
            utf8 += c;
        else
            utf8 += {'\xE0', char(uint8_t(c) < 0xE0 ? 0xBA : 0xBB), char(0x80 | ((c - 0xA0) & 63))};
    return utf8;
}

// Fonts have HO SUNG with LO as one byte, Unicode text and so the words as two.
TEST_F(Lookup, HoSungWithLoIsFoundInOneByte)
{
    LoadMain();
    int count = 0;
    for (const std::string &word : words) {
        std::string text = word;
        for (size_t at; (at = text.find("\271\371")) != std::string::npos;)
            text.replace(at, 2, "\315");
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
        std::string file, text;
        std::vector<std::string> made;
        for (int i = 0; i < 20 << (round % 6); ++i) {
            std::string utf8 = Utf8OfBlock(RandomText(letters, round < 6 ? 5 : 20));
            file += utf8 + "\n";
            made.push_back(CodeOf(utf8));
        }
        WriteDataFile("UserDict.dat", file);
        UnloadDictionaries();
        ASSERT_EQ(ReadLaoDict("UserDict.dat", 4), Sorted(made).size());
        for (int i = 0; i < 2000; ++i)
            text += NextRandom() % 3 ? made[NextRandom() % made.size()] : RandomText(signs, 4);
        ExpectPlainAnswers(Sorted(made), text, 4);
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
    std::vector<std::string> made;
    for (char a : letters)
        for (char b : letters) {
            std::string utf8 = Utf8OfBlock({a, b, 'x'});
            file += utf8 + "\n";
            made.push_back(CodeOf(utf8));
            std::replace(made.back().begin(), made.back().end(), '-', char(kRealHyphen));
        }
    WriteDataFile("MainDict.dat", file);
    made = Sorted(made);
    ASSERT_EQ(ReadLaoDict("MainDict.dat", 1), made.size());
    for (const std::string &word : made) {
        ASSERT_TRUE(FindWord(word.c_str(), DWORD(word.size()), 0, 65)) << Show(word);
        ASSERT_FALSE(FindWord((word + "#").c_str(), DWORD(word.size() + 1), 0, 1)) << Show(word);
    }
}

// A host fills one buffer again and again and asks for lengths in any order.
TEST_F(Lookup, TheBytesCountAndNotThePointer)
{
    LoadMain();
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
        word += i % 3 ? "າ" : "ກ";
    WriteDataFile("UserDict.dat", word + "\n");
    ASSERT_EQ(ReadLaoDict("UserDict.dat", 4), 1u);
    std::string code = CodeOf(word);
    ASSERT_EQ(code.size(), 100u);
    for (DWORD i = 0; i < 200; ++i) {
        DWORD length = i % 100 + 1;
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
    LoadMain();
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
    WriteDataFile("MainDict.dat", KAA "\n");
    WriteDataFile("OldDict.dat", "ກິ\t" KHI "\n");  // 161 242
    WriteDataFile("UserDict.dat", "ທານ\n");        // 234 190 173
    ReadLaoDict("MainDict.dat", 1);
    ReadLaoDict("OldDict.dat", 2);
    EXPECT_FALSE(FindWord("\352\276\255", 3, 0, 68)) << "not loaded";
    ReadLaoDict("UserDict.dat", 4);
    const struct {
        const char *text;
        DWORD length, flags;
        bool found;
    } rows[] = {
        // clang-format off
        {"\241\276", 2, 65, true},      {"\241\276", 2, 68, false},      {"\241\276", 2, 64, false},
        {"\241\362", 2, 70, true},      {"\241\362", 2, 69, false},      {"\241\276", 0, 7, false},
        {"\241", 1, 1, true},           {"\241", 1, 65, false},          {"", 1, 7, false},
        {"\352\276\255x", 3, 68, true}, {"\352\276\255x", 4, 4, false},
        {"\254\276\255", 3, 68, true},  // THO TAM's other form
        // clang-format on
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
    // lines of which a spelling is missing or spoilt are no entries
    WriteDataFile("OldDict.dat", "# old\tກ\nກິ\tຂີ່\nຄິ\nຄິ\t\n\tກິ\nຄິ\tກ\xFF\nຂິ\tກ#ກ\r\n");
    char word[32] = "x";
    EXPECT_EQ(FindWord("\241\362", 2, 0, 194), 0u);
    ASSERT_EQ(ReadLaoDict("OldDict.dat", 2), 2u);
    DWORD handle = FindWord("\241\362y", 2, 0, 194);
    ASSERT_NE(handle, 0u);
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

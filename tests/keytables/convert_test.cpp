// The conversion as the operations show it: separators, the two word signs, the memory of the last
// syllable, runs that are no syllable, buffers of every size.
#include <cstring>

#include "fonts/font_table.h"
#include "keytables/builtin_tables.h"
#include "keytables/convert.h"
#include "keytables/key_support.h"
#include "support/message_boxes.h"

class Converting : public KeyTables
{
};

// ກາ as syllables of the user's own, so that breaks are known. A dictionary of one word that holds
// two of them tells word breaks from the others.
static const char *const kOneWord = "ກາສາ\n";

struct TextRow {
    const char *text;  // UTF-8
    const char *result;
};

static void ExpectRomanized(const TextRow *rows, size_t count)
{
    for (size_t i = 0; i < count; ++i) {
        ForgetLastWord();
        EXPECT_EQ(RomanOf(CodeOfText(rows[i].text)), rows[i].result) << rows[i].text;
    }
}

static const TextRow kSignRows[] = {
    {"ໆ", "(rep.)"},  // nothing to repeat
    {"ກາໆ", "kaka"},
    {"ກາໆໆ", "kakaka"},
    {"ກາສາໆ", "kasasa"},      // the last syllable only
    {"ກາ ໆ", "ka ka"},        // a blank leaves the memory alone
    {"ກາ, ໆ", "ka, (rep.)"},  // all else clears it
    {"ກາ\n ໆ", "ka\n (rep.)"},
    {"ກາ໑ໆ", "ka\xE1(rep.)"},  // a digit is no run
    {"ກາຯ", "ka(etc.)"},
    {"ກາຯໆ", "ka(etc.)(rep.)"},  // "(etc.)" clears it too
    {"ອະໆ", "a(rep.)"},          // one letter is not repeated
    {"ອະໆ ກາໆ", "a(rep.) kaka"},
    {"ອະ ໆໆ", "a (rep.)(rep.)"},
    {"ກາ ສ ໆ", "ka s (rep.)"},  // what is no syllable clears it
    {"ກາ ອງ ໆ", "ka ng (rep.)"},
};

TEST_F(Converting, RepeatsTheLastSyllable)
{
    ReplaceDictionary("MainDict.dat", kOneWord);
    ExpectRomanized(kSignRows, std::size(kSignRows));
    ForgetLastWord();
    EXPECT_EQ(RomanOf("\xA1\xBE\xA0\xC5"), "ka\xA0ka");  // a no-break space
}

TEST_F(Converting, RemembersFromCallToCall)
{
    RomanOf(CodeOfText("ກາ"));
    EXPECT_EQ(RomanOf(CodeOfText("ໆ")), "ka");
    EXPECT_EQ(RomanOf(CodeOfText(" ໆ")), " ka");
    EXPECT_EQ(RomanOf(""), "");
    EXPECT_EQ(RomanOf("-\x1F"), "");  // breaks alone
    EXPECT_EQ(RomanOf(CodeOfText("ໆ")), "ka");
    DWORD state = 0;
    EncodedOf(CodeOfText("ໆຯ"), &state);  // an e-mail table has its own signs for them
    EXPECT_EQ(RomanOf(CodeOfText("ໆ")), "ka");
    EXPECT_EQ(RomanOf(CodeOfText(".ໆ")), ".(rep.)");
}

// A syllable of which a piece is missing leaves the memory as it was.
TEST_F(Converting, RemembersWholeSyllablesOnly)
{
    LoadRomanFile("I2VF #0\nInitial\n0\n\xA1 k\n\xA6 s\nCluster\n0\nVowel\n0\n\xBE aa\nFinal\n0\n"
                  "Tone\nChange\n?\xA8 \xA8\nNumber\n");
    EXPECT_EQ(RomanOf(CodeOfText("ກາ ຂາ ໆ")), "kaa aa kaa");
    EXPECT_EQ(RomanOf(CodeOfText("ກາ ກາກ ໆ")), "kaa kaa kaa");
    // the longest text that a syllable can have, whole and again
    LoadRomanFile(
        "IIIIIII #0\nInitial\n0\n\xA1 1234567\nCluster\nVowel\nFinal\nTone\nChange\nNumber\n");
    const std::string longest = "12345671234567123456712345671234567";
    EXPECT_EQ(RomanOf(CodeOfText("ກາ ໆ")), longest + " " + longest);
    EXPECT_EQ(RomanOf(CodeOfText("ໆ"), 37), longest);
    ExpectBoxes boxes({kCannotConvert});
    EXPECT_EQ(RomanOf(CodeOfText("ໆ"), 36), "failed: ");
}

struct SeparatorRow {
    WORD breakMode, romanBreak;
    const char *text, *result;
};

static const SeparatorRow kSeparatorRows[] = {
    {12, 32, "ກາສານາ", "kasa na"},  // between words
    {8, 32, "ກາສານາ", "kasa na"},
    {4, 32, "ກາສານາ", "ka sa na"},  // between all syllables
    {0, 32, "ກາສານາ", "ka sa na"},
    {12, 31, "ກາສານາ", "kasa\x1Fna"},
    {12, 0, "ກາສານາ", "kasana"},
    {12, 45, "ກາສານາ", "kasa-na"},
    {12, 256 + 32, "ກາສານາ", "kasa na"},  // its low byte
    // no separator without a break, or where a break isn't one of the library's
    {12, 32, "ກາ ນາ", "ka na"},
};

TEST_F(Converting, SeparatesWordsOrSyllables)
{
    ReplaceDictionary("MainDict.dat", kOneWord);
    for (const SeparatorRow &row : kSeparatorRows) {
        SetRomanKey(nullptr);  // a separator of the option's own would stay
        SetOrvelOption("b", row.breakMode, 0);
        SetOrvelOption("r", row.romanBreak, 0);
        EXPECT_EQ(RomanOf(CodeOfText(row.text)), row.result) << row.text << " " << row.breakMode;
    }
    EXPECT_EQ(RomanOf("a-b\x1F"), "ab");  // breaks of the text's own go, Lao or not
}

// With a replacement break the text brings its breaks along and isn't analysed.
TEST_F(Converting, TakesTheBreaksOfTheText)
{
    LoadRomanFile("I2VF . |\n" + ControlFileOf(kBuiltInRomanTable, "I2VF"));
    const TextRow rows[] = {
        {"ກາ|ສາ", "ka.sa"},
        {"|ກາ|ສາ|", "ka.sa"},  // none at the start and at the end
        {"||ກາ||ສາ||", "ka.sa"},
        {"ກາ|,", "ka,"},        // nothing stands behind the comma
        {"ກາ|ກ,", "kak,"},      // a comma one byte behind
        {"ກາ|,ສາ", "ka.,sa"},   // a comma at the break has no such effect
        {"ກາ|ກ", "kak"},        // a single byte at the end
        {"ກາສາ", "kat"},        // two syllables are one run: no syllable
        {"ກາ-ສາ", "ka\x8Csa"},  // old marks are bytes like others
        {"|", ""},
        {"ກາ|ໆ", "kaka"},
        {"ກາ|ໆ ", "ka.ka "},
    };
    ExpectRomanized(rows, std::size(rows));
    EXPECT_EQ(RomanOf("\xA1\xBE-\xA6\xBE"), "ka-sa");  // old marks are bytes like others
    EXPECT_EQ(RomanOf(CodeOfText("ກາ|")), "ka");
    EXPECT_EQ(RomanOf(CodeOfText("ໆ")), "ka") << "a mark at the end clears nothing";
}

TEST_F(Converting, TriesChangesFirst)
{
    LoadRomanFile(
        "I2VF? #0\nInitial\n0\n\xA1 k\n\xA6 s\nCluster\n0\nVowel\n0\n\xBE a\nFinal\n0\nTone\n"
        "Change\n?#\xBE\xA1 ook\n\xA1\xBE ku\n\xA6 xx\n?? y\nNumber\n");
    const TextRow rows[] = {
        {"ກາກ", "kook"}, {"ກ່າກ", "kook"}, {"ສາກ", "sook"}, {"ກາ", "ku"},  // the first that matches
        {"ສາ", "xx"},                  // the whole run goes, though the pattern ends before it
        {"ສ", "s[?]"},                 // a run of one byte is no pattern's
        {"ກາໆ", "kuku"}, {"ຂາ", "a"},  // an initial that isn't there
    };
    ExpectRomanized(rows, std::size(rows));
}

// What is no syllable is rendered as far as it was read, and marked where the table asks for it.
TEST_F(Converting, MarksWhatIsNoSyllable)
{
    LoadRomanFile(ControlFileOf(kBuiltInRomanTable, "I2VF?"));
    const TextRow rows[] = {{"ສ", "s[?]"},   {"ກາ", "ka"},     {"ັ", "[?]"},
                            {"ກາັ", "ka[?]"}, {"ກງ", "kng[?]"}, {"ກາ ສ ນາ", "ka s[?] na"}};
    ExpectRomanized(rows, std::size(rows));
    // behind a text of 28, 35 and 30 bytes: whole or not at all
    const std::string rest = "\nCluster\nVowel\nFinal\nTone\nChange\nNumber\n";
    LoadRomanFile("IIII? #0\nInitial\n\xA6 1234567" + rest);
    EXPECT_EQ(RomanOf(CodeOfText("ສ")), "1234567123456712345671234567[?]");
    LoadRomanFile("IIIII? #0\nInitial\n\xA6 1234567" + rest);
    EXPECT_EQ(RomanOf(CodeOfText("ສ")), "12345671234567123456712345671234567");
    LoadRomanFile("IIIII? #0\nInitial\n\xA6 123456" + rest);
    EXPECT_EQ(RomanOf(CodeOfText("ສ")), "123456123456123456123456123456[?]");
}

// Only the conversion after the load shows a sort table's "[?]": then the option's sequence rules.
TEST_F(Converting, SortTablesShowFailuresOnce)
{
    LoadSortFile(ControlFileOf(kBuiltInSortTable, "I?"));
    EXPECT_EQ(KeyOf(CodeOfText("ສ")), "##06000000[?]");
    EXPECT_EQ(KeyOf(CodeOfText("ສ")), "##06000000");
    AddFontToList("Arial", "", 0, 100, 0);  // then the load itself is the first conversion
    LoadSortFile(ControlFileOf(kBuiltInSortTable, "I?"));
    EXPECT_EQ(KeyOf(CodeOfText("ສ")), "##06000000");
}

TEST_F(Converting, WithoutItsFontFindsNoBreaks)
{
    ReplaceDictionary("MainDict.dat", kOneWord);
    AddFontToList("Other", "", 1, 100, 0);
    ASSERT_EQ(RemoveFontFromList("Saysettha Lao"), 1);
    EXPECT_EQ(RomanOf(CodeOfText("ກາສາ")), "kat");
    EXPECT_EQ(RomanOf(CodeOfText("ກາ ສາ")), "ka sa");
}

// Each size tells what doesn't fit, and what stands there is the beginning of the whole.
TEST_F(Converting, WritesNothingBehindItsBuffer)
{
    ReplaceDictionary("MainDict.dat", kOneWord);
    const std::string text = CodeOfText("ກາສານາ, ໆຯ");
    RomanOf(CodeOfText("ກາ"));
    const std::string whole = RomanOf(text);
    EXPECT_EQ(whole, "kasa na, (rep.)(etc.)");
    for (DWORD size = 0; size < 40; ++size) {
        // marks need room too while the text is divided
        bool refused = size <= text.size(), fits = size >= whole.size() + 2;
        ExpectBoxes boxes({});
        std::string result = RomanOf(text, size);
        EXPECT_EQ(boxes.shown.size(), size_t(!refused && !fits)) << size;
        boxes.pieces.assign(boxes.shown.size(), "selection is too large");
        EXPECT_EQ(!result.starts_with("failed: "), fits) << size << " " << result;
        if (!refused && !fits && !boxes.shown.empty() && boxes.shown[0].text == kCannotConvert) {
            EXPECT_TRUE(whole.starts_with(result.substr(8))) << result;
        }
    }
}

TEST_F(Converting, GivesUpWithoutMemory)
{
    if (!FailAllocationAfter(0))
        GTEST_SKIP() << "allocations can't be made to fail here";
    for (int count = 0; count < 3; ++count) {  // the copy, then each pass
        FailAllocationAfter(count);
        ExpectBoxes boxes({"Out of memory"});
        EXPECT_EQ(RomanOf(CodeOfText("ກາສາ")).substr(0, 7), "failed:");
    }
    FailAllocationAfter(-1);
    EXPECT_EQ(RomanOf(CodeOfText("ກາ")), "ka");
}

// A side buffer that a host has armed is that of a text of its own.
TEST_F(Converting, UsesNoSideBuffer)
{
    BYTE side[4] = {9, 9, 9, 9};
    ASSERT_EQ(SetBreakBuf(side), 1);
    RomanOf(CodeOfText("ກາສານາສາກາ"));
    EXPECT_EQ(side[0], 9);
    EXPECT_EQ(SetBreakBuf(side), 1);  // used up
    SetBreakBuf(nullptr);
    char buffer[8];
    WrapText("", buffer, sizeof buffer, kInternal, 0);
}

// A text has one result, whatever was converted before it.
TEST_F(Converting, KeepsNothingButTheLastSyllable)
{
    std::vector<std::string> texts, keys, romans;
    for (const std::string &line : SplitLines(ReadCorpus("udhr.txt")))
        texts.push_back(CodeOfText(line));
    texts.push_back(CodeOfText("ກວນ"));  // an ambiguous cluster
    texts.push_back(CodeOfText("ກວ"));
    for (const std::string &text : texts) {
        ForgetLastWord();
        keys.push_back(KeyOf(text, 20000));
        romans.push_back(RomanOf(text, 20000));
    }
    for (int round = 0; round < 400; ++round) {
        size_t i = NextRandom() % texts.size();
        ForgetLastWord();
        ASSERT_EQ(RomanOf(texts[i], 20000), romans[i]);
        ASSERT_EQ(KeyOf(texts[i], 20000), keys[i]);
    }
}

// The conversion as the operations show it: separators, the two word signs, the memory of the last
// syllable, runs that are no syllable, buffers of every size.
#include <cstring>

#include "fonts/font_table.h"
#include "keytables/builtin_tables.h"
#include "keytables/convert.h"
#include "keytables/fast_convert.h"
#include "keytables/key_support.h"
#include "support/message_boxes.h"
#include "testing/testing.h"

using Converting = KeyTables;

// ກາ as syllables of the user's own, so that breaks are known. A dictionary of one word that holds
// two of them tells word breaks from the others.
static const char *const kOneWord = "ກາສາ\n";

TEST_F(Converting, RepeatsTheLastSyllable)
{
    ReplaceDictionary("MainDict.dat", kOneWord);
    ExpectRomanized({
        // clang-format off
        {"ໆ", "(rep.)"}, {"ກາໆໆ", "kakaka"}, {"ກາສາໆ", "kasasa"},  // the last syllable only
        {"ກາ ໆ", "ka ka"}, {"ກາ, ໆ", "ka, (rep.)"},  // but for a blank all clears the memory
        {"ກາ\n ໆ", "ka\n (rep.)"}, {"ກາ໑ໆ", "ka\xE1(rep.)"}, {"ກາຯໆ", "ka(etc.)(rep.)"},
        {"ອະໆ ກາໆ", "a(rep.) kaka"}, {"ອະ ໆໆ", "a (rep.)(rep.)"},  // one letter is not repeated
        {"ກາ ສ ໆ", "ka s (rep.)"}, {"ກາ ອງ ໆ", "ka ng (rep.)"},  // nor what is no syllable
        // clang-format on
    });
    ForgetLastWord();
    EXPECT_EQ(RomanOf("\xA1\xBE\xA0\xC5"), "ka\xA0ka");  // a no-break space
}

TEST_F(Converting, RemembersFromCallToCall)
{
    DWORD state = 0;
    RomanOf(CodeOfText("ກາ"));
    EXPECT_EQ(RomanOf(CodeOfText(" ໆ")), " ka");
    EXPECT_EQ(RomanOf("-\x1F"), "");      // breaks alone
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
    LoadRomanFile(std::string("IIIIIII #0\nInitial\n0\n\xA1 1234567") + kEmptySections);
    const std::string longest = "12345671234567123456712345671234567";
    EXPECT_EQ(RomanOf(CodeOfText("ກາ ໆ")), longest + " " + longest);
    EXPECT_EQ(RomanOf(CodeOfText("ໆ"), 37), longest);
    ExpectBoxes boxes({kCannotConvert});
    EXPECT_EQ(RomanOf(CodeOfText("ໆ"), 36), "failed: ");
}

TEST_F(Converting, SeparatesWordsOrSyllables)
{
    ReplaceDictionary("MainDict.dat", kOneWord);
    const struct {
        WORD breakMode, romanBreak;
        const char *result;
    } rows[] = {{12, 32, "kasa na"},    {8, 32, "kasa na"},   // between words
                {4, 32, "ka sa na"},    {0, 32, "ka sa na"},  // between all syllables
                {12, 31, "kasa\x1Fna"}, {12, 0, "kasana"},   {12, 256 + 45, "kasa-na"}};
    for (const auto &row : rows) {
        SetRomanKey(nullptr);  // a separator of the option's own would stay
        SetOrvelOption("b", row.breakMode, 0);
        SetOrvelOption("r", row.romanBreak, 0);
        EXPECT_EQ(RomanOf(CodeOfText("ກາສານາ")), row.result);
    }
    EXPECT_EQ(RomanOf(CodeOfText("ກາ ນາ")), "ka na");  // none without a break
    SetOrvelOption("r", 0, 0);
    for (const TextRow &row :
         {TextRow{"-", "kasa-na"}, TextRow{"#31", "kasana"}, TextRow{"#33", "kasa!na"}}) {
        LoadRomanFile(ControlFileOf(kBuiltInRomanTable, std::string("I2VF ") + row.text));
        EXPECT_EQ(RomanOf(CodeOfText("ກາສານາ")), row.result);  // a file's own rules
    }
    EXPECT_EQ(RomanOf("a-b\x1F"), "ab");  // breaks of the text's own go, Lao or not
}

// With a replacement break the text brings its breaks along and isn't analysed.
TEST_F(Converting, TakesTheBreaksOfTheText)
{
    LoadRomanFile("I2VF . |\n" + ControlFileOf(kBuiltInRomanTable, "I2VF"));
    ExpectRomanized({
        // clang-format off
        {"||ກາ||ສາ||", "ka.sa"}, {"|", ""},  // none at the start and at the end
        {"ກາ|,", "ka,"}, {"ກາ|ກ,", "kak,"},  // a comma at the end, one byte behind
        {"ກາ|,ສາ", "ka.,sa"},   // a comma at the break has no such effect
        {"ກາ|ກ", "kak"}, {"ກາສາ", "kat"},  // two syllables are one run: no syllable
        {"ກາ|ໆ", "kaka"}, {"ກາ|ໆ ", "ka.ka "},
        // clang-format on
    });
    EXPECT_EQ(RomanOf("\xA1\xBE-\xA6\xBE"), "ka-sa");  // old marks are bytes like others
    EXPECT_EQ(RomanOf(CodeOfText("ກາ|")), "ka");
    EXPECT_EQ(RomanOf(CodeOfText("ໆ")), "ka") << "a mark at the end clears nothing";
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

// The operations with one signature.
typedef std::string (*Call)(const std::string &, DWORD);
static const Call kSort = KeyOf, kRomanize = RomanOf;
static const Call kEncode = [](const std::string &text, DWORD size) {
    DWORD state = 0;
    return EncodedOf(text, &state, size);
};

// Each size tells what doesn't fit, and what stands there is the beginning of the whole.
TEST_F(Converting, WritesNothingBehindItsBuffer)
{
    ReplaceDictionary("MainDict.dat", kOneWord);
    const struct {
        Call call;
        std::string text, whole;
    } rows[] = {{kRomanize, CodeOfText("ກາສານາ, ໆຯ"), "kasa na, (rep.)(etc.)"},
                {kSort, CodeOfText("ກາສາ"), "##0100003006000030"},
                {kSort, "abcdefghij", "##abcdefghij"},
                {kEncode, CodeOfText("ກາ abກາໜ່ອຍ"), "kaa [ab]kaa-hnOOy1"}};
    for (const auto &row : rows) {
        EXPECT_EQ(row.call(row.text, 100), row.whole);
        for (DWORD size = 0; size < 40; ++size) {
            // marks need room too while the text is divided, and an e-mail text's brackets
            bool refused = size <= (row.call == kSort ? 7 : row.text.size());
            bool fits = size >= row.whole.size() + 2;
            ExpectBoxes boxes({});
            std::string result = row.call(row.text, size);
            EXPECT_EQ(!result.starts_with("failed: "), fits) << size << " " << result;
            EXPECT_EQ(boxes.shown.size(), size_t(!refused && !fits)) << size;
            boxes.pieces.assign(boxes.shown.size(), "selection is too large");
            bool isCut = boxes.shown.size() == 1 && boxes.shown[0].text == kCannotConvert;
            EXPECT_TRUE(!isCut || row.whole.starts_with(result.substr(8))) << size << " " << result;
            if (row.call == kEncode) {
                bool noBrackets = !boxes.shown.empty() && boxes.shown[0].text == kCannotProcess;
                EXPECT_EQ(noBrackets, !refused && size <= row.text.size() + 2);
            }
        }
    }
}

TEST_F(Converting, GivesUpWithoutMemory)
{
    if (!FailAllocationAfter(0))
        GTEST_SKIP() << "allocations can't be made to fail here";
    for (int count = 0; count < 4; ++count) {  // a long text; the copy, then each pass
        CloseFastRoad(count > 0);
        FailAllocationAfter(count > 0 ? count - 1 : 0);
        ExpectBoxes boxes({"Out of memory"});
        EXPECT_EQ(RomanOf(CodeOfText("ກາສາ") + std::string(800, ',')).substr(0, 7), "failed:");
    }
    CloseFastRoad(false);
    FailAllocationAfter(-1);
    EXPECT_EQ(RomanOf(CodeOfText("ກາ")), "ka");
}

// What is no syllable is rendered as far as it was read, and marked where the table asks for it;
// the mark stands whole behind texts of up to 31 bytes or not at all.
TEST_F(Converting, MarksWhatIsNoSyllable)
{
    LoadRomanFile(ControlFileOf(kBuiltInRomanTable, "I2VF?"));
    ExpectRomanized({{"ັ", "[?]"}, {"ກາັ", "ka[?]"}, {"ກງ", "kng[?]"}, {"ກາ ສ ນາ", "ka s[?] na"}});
    for (const TextRow &row : {TextRow{"1234567", ""}, TextRow{"123456", "[?]"}}) {
        std::string wanted, piece = row.text;
        for (int i = 0; i < 5; ++i)
            wanted += piece;
        LoadRomanFile("IIIII? #0\nInitial\n\xA6 " + piece + kEmptySections);
        EXPECT_EQ(RomanOf(CodeOfText("ສ")), wanted + row.result);
    }
}

// A file that is missing or refused tells so once, and the built-in table serves. One that was read
// isn't read again, but for a table of the name that says "not loaded".
TEST_F(Converting, FallsBackOnTheBuiltInTables)
{
    for (std::string name :
         {std::string("missing.key"), std::string(200, 'x'), std::string(kFile)}) {
        LoadSortFile("I\nInitial\n0 q" + std::string(kEmptySections));
        RemoveDataFile(kFile);
        EXPECT_EQ(KeyOf("\xA1\xBE"), "##q");
        bool isBad = name == kFile;
        if (isBad)
            WriteDataFile(kFile, "I\nInitial\n0 12345678\n");
        ExpectBoxes boxes({isBad ? kTooLong : kNoFile});
        EXPECT_EQ(SetSortKey(name.data()), 1);
        EXPECT_EQ(KeyOf("\xA1\xBE"), "##01000030");
    }
    char empty[] = " EMPTY\t ";
    for (std::string value : {"q", "p"}) {
        WriteDataFile("EMPTY", "I\nInitial\n0 " + value + kEmptySections);
        EXPECT_EQ(value == "q" ? SetSortKey(empty) : 1, 1);
        EXPECT_EQ(KeyOf("\xA1\xBE"), "##" + value);
    }
    RemoveDataFile("EMPTY");
    SetSortKey(nullptr);
}

// A side buffer that a host has armed is that of a text of its own: used up and not written.
TEST_F(Converting, UsesNoSideBuffer)
{
    BYTE side[4] = {9, 9, 9, 9};
    ASSERT_EQ(SetBreakBuf(side), 1);
    RomanOf(CodeOfText("ກາສານາສາກາ"));
    EXPECT_EQ(side[0], 9);
    EXPECT_EQ(SetBreakBuf(side), 1);
    RomanOf("");
}

TEST_F(Converting, RefusesAndCopies)
{
    DWORD state = 0;
    char output[8] = "xxx";
    for (const char *text : {"abcdefg", static_cast<const char *>(nullptr)}) {
        EXPECT_EQ(SortString(text, output, 7, kInternal) + Romanize(text, output, 7, kInternal) +
                      EncodeEmail(text, output, 7, kInternal, &state),
                  0);
    }
    EXPECT_EQ(Romanize("", output, 0, kInternal) + Romanize("a", nullptr, 8, kInternal) +
                  SortString("a", nullptr, 8, kInternal),
              0);
    EXPECT_STREQ(output, "xxx");
    EXPECT_EQ(SortString("a\xA1", output, 8, "no such font"), 1);
    EXPECT_STREQ(output, "##a\xA1");
    EXPECT_EQ(Romanize("a\xA1", output, 8, "no such font"), 1);
    EXPECT_STREQ(output, "a\xA1");
}

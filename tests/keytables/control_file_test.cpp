// Control files: every rule of a line, every way in which a file is refused, and files that are
// cut, damaged or hostile.
#include <cstring>

#include "keytables/builtin_tables.h"
#include "keytables/control_file.h"
#include "keytables/key_support.h"
#include "support/message_boxes.h"

using ControlFiles = KeyTables;

// What a table holds, drawn: sequence, separator and replacement break where there are any, and the
// sections that have entries, as "I161=k,=". Bytes that aren't ASCII stand as numbers.
static std::string ShowBytes(const char *text)
{
    std::string shown;
    for (; *text; ++text)
        shown += uint8_t(*text) < 128 ? std::string(1, *text)
                                      : (shown.empty() ? "" : " ") + std::to_string(uint8_t(*text));
    return shown;
}

static std::string Draw(const KeyTable &table)
{
    std::string drawn = table.sequence;
    if (table.separator || table.replacementBreak)
        drawn +=
            " " + std::to_string(table.separator) + "/" + std::to_string(table.replacementBreak);
    for (int section = 0; section < kSectionCount; ++section) {
        if (table.first[section] < table.first[section + 1])
            drawn += std::string(" ") + "ICVFTHN"[section];
        for (int i = table.first[section]; i < table.first[section + 1]; ++i)
            drawn += (i > table.first[section] ? "," : "") + ShowBytes(table.entries[i].key) + "=" +
                     ShowBytes(table.entries[i].value);
    }
    return drawn;
}

// All sections in their order, with lines in one or two of them.
static std::string File(const std::string &section, const std::string &lines,
                        const std::string &second = "", const std::string &secondLines = "")
{
    std::string content = "IV\n";
    for (std::string keyword : {"Initial", "Cluster", "Vowel", "Final", "Tone", "Change", "Number"})
        content += keyword + "\n" +
                   (keyword == section  ? lines
                    : keyword == second ? secondLines
                                        : "");
    return content;
}

static const struct {
    std::string content;
    const char *drawn;
} kFileRows[] = {
    // a Sequence line at the top, with and without the keyword; in upper case; the last one counts
    {"i2vf\n", "I2VF"},
    {"Sequence\nIV\nSeq\nFT - |\nSEQUENCE and more\nNX\n", "NX 45/124"},
    {"I2VF #32 #0\n", "I2VF 32/0"},
    {"I2VF #300\n", "I2VF 44/0"},
    {"longlonger -\nIV\n", "IV"},  // more than seven letters: no sequence line
    // comments, and words that begin like them
    {"Comment\ncolour\nc\nCInitial\n" + File("Initial", "C\n\xA1 k\nCx y\n"), "IV I161=k"},
    {"IV\nINITIALS\n0\nClusters\n0\nVow\n0\nfinally\n0\ntone x y\n0\nchange\n? x\nnumbered\n1 "
     "one\n",
     "IV I= C= V= F= T= H?=x N1=one"},
    {File("Number", " Comment x\n"), "IV NComment=x"},
    // tokens: blanks, tabs, line feeds; the rest of a line is free text
    {File("Initial", " \t \xA1 \t k \t free text\n\n  \n\xA2\n"), "IV I161=k,162="},
    {"IV\r\nInitial\r\n0\r\nCluster\r\n0 k\r\nNumber\r\n", "IV I= H=,=k"},
    {File("Number", "1 k\n2 x"), "IV N1=k,2=x"},  // no line end
    // keys: the default, too long, not in Lao code
    {File("Initial", "0\n0abc x\n0 00\n"), "IV I=,=x,=00"},
    {File("Initial", "\xA1\xA1\xA1\xA1\xA1\xA1\xA1\xA1 k\n"), "IV"},
    {File("Initial", "x k\n\xFF k\n\xA1x k\n", "Cluster", "x k\n"), "IV I161x=k"},
    {File("Vowel", "x k\n", "Final", "x k\n\xE0 k\n"), "IV"},
    {File("Tone", "x k\n- k\n", "Change", "x k\n"), "IV Hx=k"},
    {File("Vowel", "\xA1 a\n\xC0\xA1\xBD e\n\xA1\xF1\xA1 o\n"), "IV V=a,192 189=e,241=o"},
    {File("Tone", "\xA1\xC8 1\n\xCC 5\n\xFA 1\n\xA1 0\n"), "IV T250=1,254=5,250=1,=0"},
    {File("Change", "\xA1\xC8 x\n0 y\n", "Number", "0 z\n"), "IV H161 200=x,=y N=z"},
    {File("Initial", "\xA1\xC8 x\n", "Final", "\xA1\xC8 y\n"), "IV I161 200=x F161 200=y"},
    // escapes in values, never in keys
    {File("Initial", "\xA1 a#161b\n\xA2 #300\n\xA3 #0ab\n\xA4 a#\n\xA5 #35#0#35\n", "Number",
          "#65 #65\n"),
     "IV I161=a 161b,162=,,163=,164=a,165=# N#65=A"},
    {File("Initial", "\xA1 #97#98#99#100#101#102#103\n"), "IV I161=abcdefg"},
    {File("Initial", "\xA1 #25600000000000000000000000000000000000000097\n"), "IV I161=a"},
    // a keyword again moves its section's start
    {File("Initial", "\xA1 a\nInitial\n\xA2 b\n"), "IV I162=b"},
    // without "Number" no change is ever applied
    {"IV\nInitial\nCluster\nVowel\nFinal\nTone\nChange\n? x\n", "IV N?=x"},
    // no section at all, nothing at all: the sequence of before stays
    {"IV\n", "IV"},
    {"\n\n  \t\n", "I2VFT"},
    // a byte 26 ends the file; what stands behind a NUL in a line isn't seen
    {File("Number", "1 k\n\x1A"
                    "2 k\n"),
     "IV N1=k"},
    {File("Number", std::string("1 k\0 x\n2 m\n", 11)), "IV N1=k,2=m"},
    // what stands behind the 127th byte of a line is a line of its own
    {File("Initial",
          "\xA1 k " + std::string(123, 'x') + "\xA2 m\n" + std::string(127, 'C') + "\xA3 n\n"),
     "IV I161=k,162=m,163=n"},
};

// Of what the table held before only the sequence may stay.
TEST_F(ControlFiles, AreReadLineByLine)
{
    for (const auto &row : kFileRows) {
        KeyTable table = kBuiltInEmailTable;
        table.replacementBreak = '|';
        WriteDataFile(kFile, row.content);
        EXPECT_EQ(LoadControlFile(&table, kFile, kSortTable), 1) << ShowBytes(row.content.c_str());
        EXPECT_EQ(Draw(table), row.drawn) << ShowBytes(row.content.c_str());
        EXPECT_STREQ(table.name, kFile);
        EXPECT_EQ(table.type, kSortTable);
    }
}

static std::string Entries(int count)
{
    std::string content = "IV\nNumber\n";
    for (int i = 0; i < count; ++i)
        content += "x y\n";
    return content;
}

// The font's name stands behind the replacement break and stays where there is none.
TEST_F(ControlFiles, NamesAreCutAndFontsKept)
{
    const TextRow rows[] = {{"IV - x  Phetsarath OT \t free\n", "Phetsarath OT"},
                            {"IV - #0 \t\t Saysettha\n", "Saysettha"},
                            {"IV - #0 \t \t \n", "Saysettha"},
                            {"IV - | Alice 0\nIV - | Alice 5", "Alice 5"}};
    std::string name = "a-very-long-name.key";
    for (const auto &row : rows) {
        KeyTable table = {};
        Guarded<char> font(6);
        WriteDataFile(name.c_str(), row.text);
        EXPECT_EQ(LoadControlFile(&table, name.c_str(), kRomanTable), 1);
        EXPECT_STREQ(table.name, "a-very-long-nam");
        EXPECT_STREQ(RomanFontName(), row.result) << row.text;
        GetRomanFont(font.data(), 6);
        EXPECT_EQ(font.data(), std::string(row.result).substr(0, 5));
    }
    RemoveDataFile(name.c_str());
    std::string missing = "missing.key";  // the built-in table has a font too
    ExpectBoxes boxes({kNoFile});
    EXPECT_EQ(SetRomanKey(missing.data()), 1);
    EXPECT_STREQ(RomanFontName(), "Arial");
}

TEST_F(ControlFiles, AreRefusedWithAMessage)
{
    const struct {
        std::string content;
        int entries, result;
    } rows[] = {
        {"IV\nInitial\n\xA1 12345678", 0, 0},  // read to its end all the same
        {"IV\nVowel\n0 a\n\xA1 #97#98#99#100#101#102#103#104\n", 1, 0},
        {"IV\nTone\nx 12345678\n", 0, 0},  // also where the entry would be dropped
        {Entries(200) + "x y", 200, 0},
        {Entries(200) + " ", 200, 0},
        {Entries(5000), 200, 0},
        {Entries(199) + "x y", 200, 1},
    };
    for (const auto &row : rows) {
        KeyTable table = {};
        WriteDataFile(kFile, row.content);
        ExpectBoxes boxes(std::vector<std::string>(size_t(!row.result), kTooLong));
        EXPECT_EQ(LoadControlFile(&table, kFile, kSortTable), row.result);
        EXPECT_EQ(table.first[kSectionCount], row.entries);
    }
}

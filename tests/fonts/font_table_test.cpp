// The table of fonts and its file: what is read from good, odd and hostile lines, what is written
// back, limits and refusals.
#include <algorithm>
#include <climits>
#include <cstring>

#include "fonts/font_table.h"
#include "support/guarded.h"
#include "support/message_boxes.h"
#include "support/started_library.h"
#include "support/temp_folder.h"

using Fonts = StartedLibrary;

static std::string Describe(const FontRecord &record)
{
    return std::string(record.name) + "/" + std::to_string(record.code) + "/" + record.substitute +
           "/" + std::to_string(record.scale) + "/" + std::to_string(record.extended);
}

static std::string Long(size_t length)
{
    return std::string(length, 'n');
}

static const char kDefault[] = "Saysettha Lao/1//100/0";

static const struct {
    std::string line, record;
} kLineRows[] = {
    // clang-format off
    {"A,Unicode,B,90,1\n", "A/1/B/90/1"}, {"A,Unicode", "A/1//100/0"},
    {" A b\t,  uniCODE , B ,90,7\r\n", "A b/1/B/90/1"}, {"A,Unicode,,120,1\n", "A/1//120/1"},
    {"A,", kDefault}, {"A,nonsense,B,90\n", kDefault}, {",Unicode,B,90\n", kDefault}, {"", kDefault},
    {"A,Lao2000,B,90,1\n", "A/2/B/90/0"}, {"A,Unicode,B,9,1\n", "A/1/B/100/0"},
    {"A,Unicode,B,1000\n", "A/1/B/1000/0"}, {"A,Unicode,B,1001,1\n", "A/1/B/100/0"},
    {"A,Unicode,B,99999999999999999999,1\n", "A/1/B/100/0"}, {"A,Unicode,B,x,1\n", "A/1/B/100/0"},
    {"A,Unicode,B," + std::string(70, '0') + "90x,1\n", "A/1/B/90/1"},
    {"A,Unicode,B,90,99999999999\n", "A/1/B/90/1"}, {Long(36) + ",Unicode\n", Long(36) + "/1//100/0"},
    {Long(63) + ",Unicode," + Long(63) + ",90\n", Long(36) + "/1/" + Long(36) + "/90/0"},
    {Long(64) + ",Unicode\n", kDefault}, {"A,Unicode," + Long(64) + ",90\n", "A/1//100/0"},
    {"\x1A" "A,Unicode\n", kDefault},
    // clang-format on
};

TEST_F(Fonts, LinesOfTheFile)
{
    for (const auto &row : kLineRows) {
        ReplaceFonts(row.line);
        EXPECT_EQ(Describe(gFonts.records[0]), row.record) << row.line;
    }
}

TEST_F(Fonts, RecordsBehindTheRoomAreLeftOut)
{
    std::string content;
    for (int i = 0; i < 300; ++i)
        content += "Font " + std::to_string(i) + ",Unicode,,100,0\n";
    EXPECT_EQ(ReplaceFonts(content), 127);
    EXPECT_EQ(FontIndex("Font 126"), 126);
    EXPECT_EQ(FontIndex("Font 127"), -1);
    EXPECT_EQ(AddFontToList("one more", "", 1, 100, 0), 0);
    EXPECT_EQ(RemoveFontFromList("font 5"), 1);
    EXPECT_EQ(FontIndex("Font 6"), 5);
    EXPECT_EQ(AddFontToList("one more", "", 1, 100, 0), 1);
    EXPECT_EQ(FontIndex("One More"), 126);
}

TEST_F(Fonts, WhatIsWrittenIsReadBackTheSame)
{
    ReplaceFonts("A,Unicode,,100,0\n");
    ASSERT_EQ(AddFontToList("Alice_0", "a", 3, 90, 5), 1);
    ASSERT_EQ(AddFontToList("Saysettha OT", "", 1, -5, 5), 1);
    EXPECT_EQ(Describe(gFonts.records[1]), "Alice_0/3/a/90/5");
    EXPECT_EQ(Describe(gFonts.records[2]), "Saysettha OT/1/A/100/5");
    std::string file = ReadDataFile("LaoFonts.dat");
    EXPECT_EQ(ReplaceFonts(file), 3);
    EXPECT_EQ(WriteFontList(), 1);
    std::string again = ReadDataFile("LaoFonts.dat");
    std::erase(file, '\r');
    std::erase(again, '\r');
    EXPECT_EQ(file, "A,Unicode,,100,0\nAlice_0,Lao95,a,90\nSaysettha OT,Unicode,A,100,5\n");
    EXPECT_EQ(again, "A,Unicode,,100,0\nAlice_0,Lao95,a,90\nSaysettha OT,Unicode,A,100,1\n");
}

// There is no quoting: a text that would be read as two fields or two records doesn't get there.
TEST_F(Fonts, ASubstituteMakesNoOtherField)
{
    ReplaceFonts("A,Lao95,,100\nB,Lao95,,100\n");
    for (const char *substitute : {"x,500", "x\nC,Lao95", "x\r", "x\x1A"}) {
        ASSERT_EQ(SetReplacementFontName("A", substitute), 1);
        ASSERT_EQ(WriteFontList(), 1);
        EXPECT_EQ(ReplaceFonts(ReadDataFile("LaoFonts.dat")), 2) << substitute;
        EXPECT_EQ(Describe(gFonts.records[0]), "A/3/x/100/0");
    }
}

// The count is the table's, whatever a host reads again.
TEST_F(Fonts, ReadingAgainKeepsTheCount)
{
    ReplaceFonts("A,Unicode\nB,Unicode\n");
    WriteDataFile("LaoFonts.dat", "C,Unicode\nD,Unicode\nE,Unicode\n");
    EXPECT_EQ(ReadFontList(), 3);
    EXPECT_EQ(FontIndex("D"), 1);
    EXPECT_EQ(FontIndex("E"), -1);
}

// A long name is cut and stays unique; one without a name stays in memory.
TEST_F(Fonts, AddAndRemoveRefuse)
{
    ReplaceFonts("Alice,Unicode,,100,0\n");
    EXPECT_EQ(RemoveFontFromList("Alice"), 0);  // the only one
    EXPECT_EQ(AddFontToList("", "", 3, 100, 0), 1);
    EXPECT_EQ(ReadDataFile("LaoFonts.dat").find("Lao95"), std::string::npos);
    EXPECT_EQ(AddFontToList(Long(60).c_str(), "", 1, 100, 0), 1);
    EXPECT_EQ(FontType(Long(36).c_str()), 1);
    const std::string longName = Long(50);
    const struct {
        const char *name;
        WORD code;
    } rows[] = {{nullptr, 1}, {"aLICE", 1}, {"", 3},       {longName.c_str(), 1},
                {"B", 7},     {"B", 16},    {"B", 0xFFFF}, {"B,C", 1},
                {"B\nC", 1},  {"B\x1A", 1}, {" B", 1},     {" ", 1}};
    for (const auto &row : rows)
        EXPECT_EQ(AddFontToList(row.name, "", row.code, 100, 0), 0) << row.code;
    EXPECT_EQ(gFonts.count, 3);
    EXPECT_EQ(RemoveFontFromList("B") + RemoveFontRecord(-1) + RemoveFontRecord(3), 0);
}

// The first of two equal names answers.
TEST_F(Fonts, SubstituteFallsBackToTheFirstFontOfTheCurrentCode)
{
    ReplaceFonts("Uni,Unicode\nOld,Lao95\nuni,Lao95\n");
    EXPECT_EQ(LaoFontType("UNI") + OldFontType("uni"), 2);
    EXPECT_EQ(LaoFontType("B"), -1);
    EXPECT_EQ(ThaiFontType("B"), 0);
    const struct {
        const char *name, *given, *kept;
        DWORD code;
    } rows[] = {{"A", "unknown", "Old", 3}, {"B", "", "", 6}, {"C", "uni", "uni", 6}};
    DWORD mode = LaoMode(0, 0);
    for (const auto &row : rows) {
        LaoMode(row.code, 15);
        EXPECT_EQ(AddFontToList(row.name, row.given, 1, 100, 0), 1);
        EXPECT_STREQ(gFonts.records[FontIndex(row.name)].substitute, row.kept);
    }
    LaoMode(mode, 63);
}

TEST_F(Fonts, InfoFillsExactlyItsSize)
{
    ReplaceFonts("Alice,Unicode,Bob,90\n");
    for (DWORD size = 0; size < 10; ++size) {
        Guarded<char> name(size), substitute(size), code(size);
        int scale = 0;
        EXPECT_EQ(GetLaoFontInfo(name.data(), substitute.data(), size, &scale, 1), 1);
        EXPECT_EQ(std::string(name.data(), size),
                  std::string("Alice\0\0\0\0\0", 10).substr(0, size));
        EXPECT_EQ(std::string(substitute.data(), size),
                  std::string("Bob\0\0\0\0\0\0\0", 10).substr(0, size));
        EXPECT_EQ(GetFontCodeName(code.data(), size, 5), size > 7 ? 7 : 0);
    }
    char name[37];
    for (int number : {0, 2, -1, INT_MAX, INT_MIN})
        EXPECT_EQ(GetLaoFontInfo(name, name, 37, nullptr, number), -1) << number;
    EXPECT_EQ(GetLaoFontInfo(nullptr, name, 37, nullptr, 1), -1);
    EXPECT_EQ(GetFontCodeName(name, 37, 7) + GetFontCodeName(name, 37, -1) +
                  GetFontCodeName(nullptr, 37, 1),
              0);
}

// A folder in the file's place can't be written: the message, and memory as it was.
TEST_F(Fonts, FailedWriteKeepsWhatWasThere)
{
    ReplaceFonts("A,Unicode\nB,Unicode\n");
    RemoveDataFile("LaoFonts.dat");
    ASSERT_TRUE(CreateDirectoryA(DataPath("LaoFonts.dat").c_str(), nullptr));
    {
        const std::string message = "Unable to save modified font list";
        ExpectBoxes boxes({message, message});
        EXPECT_EQ(WriteFontList() + RemoveFontFromList("A"), 0);
    }
    EXPECT_EQ(FontIndex("A") + FontIndex("B"), 1);
    std::filesystem::remove(ToPath(DataPath("LaoFonts.dat")));
}

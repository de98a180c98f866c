// Substitutes: exact fits, fonts of one name, likeness of names, and what the list's file keeps.
#include "fonts/font_table.h"
#include "support/guarded.h"
#include "support/started_library.h"

class Substitution : public StartedLibrary
{
  protected:
    static std::string Substitute(const char *name)
    {
        char buffer[37] = "none";
        return GetReplacementFontName(name, buffer, sizeof buffer) ? buffer : "unknown";
    }
};

TEST_F(Substitution, NamesFitExactlyOrNotAtAll)
{
    ReplaceFonts("Alice,Unicode,Bob\n");
    for (DWORD size = 0; size < 8; ++size) {
        Guarded<char> name(size), substitute(size);
        EXPECT_EQ(GetDefaultFontName(name.data(), size, 1), size > 5 ? 5 : 0);
        EXPECT_EQ(GetReplacementFontName("ALICE", substitute.data(), size), size > 3);
    }
    char buffer[37];
    EXPECT_EQ(GetDefaultFontName(buffer, 37, 2) + GetDefaultFontName(nullptr, 37, 1), 0);
    EXPECT_EQ(GetReplacementFontName(nullptr, buffer, 37) +
                  GetReplacementFontName("Alice", nullptr, 37),
              0);
}

// The first record of a name whose substitute fits answers; an empty one fits too.
TEST_F(Substitution, ALongSubstituteIsPassedOver)
{
    ReplaceFonts("A,Unicode,a long one\na,Lao95,short\n");
    char buffer[8];
    EXPECT_EQ(GetReplacementFontName("A", buffer, 8), 1);
    EXPECT_STREQ(buffer, "short");
    ReplaceFonts("A,Unicode\n");
    EXPECT_EQ(GetReplacementFontName("A", buffer, 1), 1);
    EXPECT_STREQ(buffer, "");
}

TEST_F(Substitution, SettersRefuseWhatTheyCanNotKeep)
{
    ReplaceFonts("A,Unicode,B,90,1\nB,Lao95\n");
    std::string longName(60, 'n');
    EXPECT_EQ(SetReplacementFontName("a", longName.c_str()), 1);
    EXPECT_EQ(Substitute("A"), longName.substr(0, 36));
    EXPECT_EQ(SetReplacementFontName("C", "A") + SetReplacementFontName(nullptr, "A") +
                  SetReplacementFontName("A", nullptr),
              0);
    EXPECT_EQ(GetReplacementFontSize("a"), 90);
    for (int scale : {9, 1001, 0, -1, 65536 + 100})
        EXPECT_EQ(SetReplacementFontSize("A", scale), 0) << scale;
    EXPECT_EQ(SetReplacementFontSize("A", 1000), 1);
    EXPECT_EQ(GetReplacementFontSize("A"), 1000);
    gFonts.records[0].scale = 0;
    for (const char *name : {"A", "C", static_cast<const char *>(nullptr)})
        EXPECT_EQ(GetReplacementFontSize(name), 100);
    EXPECT_EQ(GetFontExtended("A"), 1);
    EXPECT_EQ(SetFontExtended("A", 0), 1);
    EXPECT_EQ(GetFontExtended("A") + GetFontExtended("C"), 0);
    EXPECT_EQ(SetFontExtended("B", 1) + SetFontExtended("C", 1), 0);
}

// The current code is 1.
static const char *const kLikenessRows[][2] = {
    // clang-format off
    {"Alice0 Lao", "Alice0 Unicode"}, {"ALICE0 LAO", "Saysettha OT"},  // case counts
    {"Al", "Alice0 Unicode"}, {"Axe", "Saysettha OT"},  // one common letter is no likeness
    {"Alice0 Unicode", "Alice0 Unicode"}, {"Zebra", "Saysettha OT"},
    // clang-format on
};

TEST_F(Substitution, TheMostAlikeFontOfTheCurrentCodeIsChosen)
{
    DWORD mode = LaoMode(1, 15);
    for (auto [name, chosen] : kLikenessRows) {
        ReplaceFonts("Saysettha OT,Unicode\nAlice0 Unicode,Unicode\nAlice0 UniTwo,Unicode\n" +
                     std::string(name) + ",Lao95\n");
        EXPECT_EQ(UpdateReplacementFont(name), 1);
        EXPECT_EQ(Substitute(name), chosen) << name;
    }
    EXPECT_EQ(UpdateReplacementFont("not there") + UpdateReplacementFont(nullptr), 0);
    LaoMode(6, 15);  // a code without a font
    EXPECT_EQ(UpdateReplacementFont("Saysettha OT"), 0);
    LaoMode(mode, 63);
}

// ConvertText between font codes, and the choice of a keyboard.
#include <cstring>

#include "fonts/font_table.h"
#include "frame/companion.h"
#include "support/corpus.h"
#include "support/guarded.h"
#include "support/started_library.h"

class Recoding : public StartedLibrary
{
  protected:
    void SetUp() override
    {
        StartedLibrary::SetUp();
        ReplaceFonts(
            "F0,Orvel\nF1,Unicode\nF2,Lao2000\nF3,Lao95\nF4,IBM-STENO\nF5,Lao ISO\nF6,Thai\n");
        mode_ = LaoMode(0, 0);
    }
    void TearDown() override
    {
        LaoMode(mode_, 63);
        StartedLibrary::TearDown();
    }
    DWORD mode_;
};

static std::string Convert(const std::string &source, int from, int to)
{
    std::vector<char> buffer(3 * source.size() + 1);
    LaoMode(DWORD(to), 15);
    std::string font = "F" + std::to_string(from);
    EXPECT_EQ(ConvertText(source.c_str(), buffer.data(), DWORD(buffer.size()), font.c_str()), 1);
    return buffer.data();
}

TEST_F(Recoding, EqualCodesAndUnknownFontsGiveAPlainCopy)
{
    const std::string unpacked = "\xA1\xF2\xFA";
    EXPECT_EQ(Convert(unpacked, 1, 1), unpacked);
    EXPECT_EQ(Convert(unpacked, 9, 2), unpacked);
    EXPECT_EQ(Convert(unpacked, 1, 0), "\xA1\x85");
    EXPECT_EQ(Convert("\xC1\xF2-", 2, 3), Convert(Convert("\xC1\xF2-", 2, 0), 0, 3));
}

TEST_F(Recoding, NothingIsWrittenBehindTheBuffer)
{
    const std::string source = "\xA1\x85\xA1\x85";  // grows where a code has no two-sign bytes
    for (int to = 0; to < 7; ++to)
        for (DWORD size = 0; size < 10; ++size) {
            Guarded<char> buffer(size);
            LaoMode(DWORD(to), 15);
            EXPECT_EQ(ConvertText(source.c_str(), buffer.data(), size, "F0"), size > source.size())
                << size;
            EXPECT_TRUE(size <= source.size() || strnlen(buffer.data(), size) < size);
        }
    char buffer[8];
    EXPECT_EQ(ConvertText(nullptr, buffer, 8, "F0") + ConvertText("a", nullptr, 8, "F0"), 0);
}

struct KeyboardRow {
    const char *name;
    int done, number;  // as GetKeybdNo gives it, from keyboard 5 on
};

static const KeyboardRow kKeyboardRows[] = {
    {"", 1, 5},
    {"enhlxyz", 1, 16},
    {"LAO95", 1, 17},
    {"lao9", 1, 17},
    {"Lao", 1, 18},
    {"lao iso", 1, 21},
    {"IBM", 1, 20},
    {"t", 1, 22},
    {"U", 1, 17},
    {"x", 0, 21},
    {"Lao2000x", 0, 21},
    {"Enh", 0, 21},
    {"a name of more than thirty-two letters", 0, 21},
    {nullptr, 0, 21},
};

TEST_F(Recoding, KeyboardsByName)
{
    for (const KeyboardRow &row : kKeyboardRows) {
        SetKeybdNo(5);
        EXPECT_EQ(SetKeyboard(row.name), row.done) << (row.name ? row.name : "none");
        EXPECT_EQ(GetKeybdNo(), row.number) << (row.name ? row.name : "none");
    }
}

TEST_F(Recoding, KeyboardsByNumber)
{
    EXPECT_EQ(SetKeybdNo(4), 1);
    EXPECT_EQ(GetKeybdNo(), 20);
    EXPECT_EQ(SetKeybdNo(-1), 1);
    EXPECT_EQ(GetKeybdNo(), 4);
    SetKeybdNo(0x7FFFFFF3);
    EXPECT_EQ(GetKeybdNo(), 19);
    SetKeybdNo(-1);
    SetLaoDefaultKeyboard();
    EXPECT_EQ(GetKeybdNo(), 19);
}

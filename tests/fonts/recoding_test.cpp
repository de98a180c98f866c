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

TEST_F(Recoding, KeyboardsByNameAndNumber)
{
    const struct {
        const char *name;
        int done, number;  // as GetKeybdNo gives it, from keyboard 5 on
    } rows[] = {
        // clang-format off
        {"", 1, 5}, {"enhlxyz", 1, 16}, {"LAO95", 1, 17}, {"Lao", 1, 18}, {"lao iso", 1, 21},
        {"t", 1, 22}, {"x", 0, 21}, {"Lao2000x", 0, 21}, {"Enh", 0, 21}, {nullptr, 0, 21},
        {"a name of more than thirty-two letters", 0, 21},
        // clang-format on
    };
    for (const auto &row : rows) {
        SetKeybdNo(5);
        EXPECT_EQ(SetKeyboard(row.name), row.done) << row.number;
        EXPECT_EQ(GetKeybdNo(), row.number) << (row.name ? row.name : "null");
    }
    SetKeybdNo(0x7FFFFFF3);
    EXPECT_EQ(GetKeybdNo(), 19);
    EXPECT_EQ(SetKeybdNo(-1), 1);
    EXPECT_EQ(GetKeybdNo(), 3);
    SetLaoDefaultKeyboard();
    EXPECT_EQ(GetKeybdNo(), 19);
}

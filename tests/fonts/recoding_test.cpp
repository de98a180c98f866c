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
        WriteDataFile(
            "LaoFonts.dat",
            "F0,Orvel\nF1,Unicode\nF2,Lao2000\nF3,Lao95\nF4,IBM-STENO\nF5,Lao ISO\nF6,Thai\n");
        gFonts.count = WORD(ReadFontList());
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

// What two codes share goes there and back. Single signs, so that no code has to split or join any.
TEST_F(Recoding, TextGoesThereAndBack)
{
    const std::string code = CodeOfText("ກາ ຂ 12 ເມືອງ ສະບາຍດີ abc");
    std::string packed = code;
    PackLao(packed.data());
    for (int from = 0; from < 7; ++from) {
        std::string source = Convert(packed, 0, from);
        for (int to = 0; to < 7; ++to)
            EXPECT_EQ(Convert(Convert(source, from, to), to, from), source) << from << " " << to;
    }
}

static std::string Meaning(const std::string &text, int code)
{
    return TextOfCode(Convert(text, code, 0));
}

// The real hyphen has no byte of its own in some codes, and the other codes of three letters become
// their main form.
static bool HasOneMeaning(const std::string &text, int code)
{
    return Convert(text, code, 0).find_first_of("\x8C\xAC\xB6\xB7") == std::string::npos;
}

// A byte that another code has a place for means the same when it has gone there and back.
TEST_F(Recoding, EveryByteThatTwoCodesShareComesBack)
{
    for (int from = 0; from < 7; ++from)
        for (int to = 0; to < 7; ++to)
            for (int byte = 32; byte < 256; ++byte) {
                std::string source(1, char(byte));
                std::string there = Convert(source, from, to);
                if (byte == '?' || there.find('?') != std::string::npos ||
                    !HasOneMeaning(source, from))
                    continue;
                EXPECT_EQ(Meaning(there, to), Meaning(source, from))
                    << from << " to " << to << ": " << byte;
                EXPECT_EQ(Meaning(Convert(there, to, from), from), Meaning(source, from))
                    << from << " to " << to << " and back: " << byte;
            }
}

TEST_F(Recoding, EqualCodesAndUnknownFontsGiveAPlainCopy)
{
    const std::string unpacked = "\xA1\xF2\xFA";
    EXPECT_EQ(Convert(unpacked, 1, 1), unpacked);
    EXPECT_EQ(Convert(unpacked, 9, 2), unpacked);
    EXPECT_EQ(Convert(unpacked, 1, 0), "\xA1\x85");
    EXPECT_EQ(Convert(unpacked, 0, 1), "\xA1\x85");
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

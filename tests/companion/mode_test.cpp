// Mode word, font codes, about box.
#include "companion/support.h"

#include <climits>
#include <cstring>

#include "font_codes.h"
#include "support/message_boxes.h"

TEST(Mode, ReplacesWhatTheMaskNames)
{
    const DWORD rows[][3] = {{1, 0xFFFFFFFF, 1}, {48, 63, 48},  {0x80, 0x80, 0xB0},
                             {0x12, 0x1F, 0xB2}, {0, 16, 0xA2}, {1, 0xFFFFFFFF, 1}};
    for (auto [value, mask, after] : rows) {
        DWORD before = LaoMode(0, 0);
        EXPECT_EQ(LaoMode(value, mask), before);
        EXPECT_EQ(LaoMode(0, 0), after);
    }
    EXPECT_EQ(LaoOn(1), 1u);
    EXPECT_EQ(LaoOn(0), 17u);
    EXPECT_EQ(LaoMode(0, 0), 1u);
    EXPECT_EQ(Options(), 0u);
}

class FontCodes : public testing::Test
{
  protected:
    void SetUp() override { StoreValue(REG_BINARY, std::string(7, '\0')); }
    void TearDown() override { SetUp(); }
    static FontCodeRecord Record(LONG code)
    {
        FontCodeRecord record;
        memset(&record, 0xEE, sizeof record);
        EXPECT_EQ(FontCodeData(code, &record), 1u) << code;
        return record;
    }
    static void StoreValue(DWORD type, const std::string &data)
    {
        StoreRegistryValue(HKEY_CURRENT_USER, "Software\\Orvel\\Orvel7", "FontCodes", type, data);
        ForgetFontCodes();
    }
};

TEST_F(FontCodes, AreSevenAndFlagsSurviveARestart)
{
    const int breaks[] = {45, 45, 150, 150, 31, 31, 45};
    for (LONG code = 0; code < 7; ++code)
        EXPECT_EQ(Record(code).breakChar, breaks[code]) << code;
    FontCodeRecord record = Record(5);
    record.flags |= 16;
    memset(record.name, 'x', sizeof record.name);
    EXPECT_EQ(SetFontCodeData(5, &record), 1u);
    EXPECT_EQ(strlen(Record(5).name), sizeof record.name - 1);
    ForgetFontCodes();
    for (LONG code = 0; code < 7; ++code)
        EXPECT_EQ(Record(code).flags, code == 5 ? 16 : 0) << code;
    EXPECT_STREQ(Record(5).name, "Lao ISO");
    EXPECT_EQ(FontCodeData(5, nullptr) + SetFontCodeData(5, nullptr), 0u);
    for (LONG code : {LONG(-1), LONG(7), LONG(INT_MAX), LONG(INT_MIN)})
        EXPECT_EQ(FontCodeData(code, &record) + SetFontCodeData(code, &record), 0u) << code;
}

TEST_F(FontCodes, AnOddValueLeavesAllEnabled)
{
    const std::pair<DWORD, size_t> rows[] = {
        {REG_BINARY, 6}, {REG_BINARY, 8}, {REG_SZ, 7}, {REG_DWORD, 4}, {REG_BINARY, 0}};
    for (auto [type, size] : rows) {
        StoreValue(type, std::string(size, '\x10'));
        EXPECT_EQ(Record(0).flags + Record(6).flags, 0) << type << " of " << size;
    }
    StoreValue(REG_BINARY, std::string(7, '\x10'));
    EXPECT_EQ(Record(6).flags, 16);
}

TEST(About, ShowsNameAndVersion)
{
    ExpectBoxes boxes({"Orvel: Orvel companion module, version "});
    AboutOrvel(0);
}

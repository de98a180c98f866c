// RecodeString: every sign through every charset and back, break marks, every buffer size.
#include "companion/support.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "charset_tables.h"
#include "fonts/unicode_tables.h"
#include "lao_signs.h"
#include "support/guarded.h"
#include "xmlconv/translate_tables.h"

// Three charts stand twice, since the modules know nothing of each other and the document converter
// has rows of its own: what is equal stays so.
static_assert(std::ranges::equal(kFont2000, kBytesOf2000));
static_assert(std::ranges::equal(kSignOfUnicode, kUnicodeLaoTable));
constexpr bool IsRowOfConverter(int byte)
{
    return byte == 0x80 || byte == 0x96 || (byte >= 0xD6 && byte <= 0xDE);
}
constexpr bool AreUnitsEqual()
{
    for (int byte = 0x80; byte < 0x100; ++byte)
        if ((kFirstUnits[byte - 0x80] == kLaoUnicodeTable[byte - 0x80]) == IsRowOfConverter(byte))
            return false;
    return true;
}
static_assert(AreUnitsEqual());

TEST(RecodeString, EveryLaoSignComesBack)
{
    for (LONG code = 2; code <= 5; ++code)
        for (int byte = 128; byte < 256; ++byte) {
            uint8_t sign = MainForm(uint8_t(byte));
            if (!UnicodeOfSign(sign) && !SignPairOf(sign) && (byte < 224 || byte > 233) &&
                byte != 160)
                continue;
            // a charset that has only main forms and single signs
            std::string back = Packed(Recoded(Recoded(std::string(1, char(byte)), -code), code));
            std::string wanted = byte == 205 && code >= 4 ? "\271\371" : std::string(1, char(sign));
            ASSERT_EQ(back.size(), wanted.size()) << "code " << code << " sign " << byte;
            for (char &c : back)
                c = char(MainForm(uint8_t(c)));
            EXPECT_EQ(ShowCode(back), ShowCode(wanted)) << "code " << code << " sign " << byte;
        }
}

TEST(RecodeString, BreakMarksAndHyphens)
{
    const struct {
        LONG code;
        const char *from, *to;
    } rows[] = {
        {2, "\226-", "-\214"},          {-3, "-\214", "\226-"},     {4, "e-\037", "e\214-"},
        {-4, "-\214\037", "\037-\037"}, {5, "-\037", "\214-"},      {-5, "-\214", "\037-"},
        {-2, "\037", "\037"},           {4, "\200\240\337", "??k"}, {5, "\203\243\376", "???"},
        {-2, "\235\355", "\277\277"},   {-4, "\315", "\271\311"},   {-4, "\307", "?"}};
    for (const auto &row : rows)
        EXPECT_EQ(ShowCode(Recoded(row.from, row.code)), ShowCode(row.to))
            << row.code << " " << ShowCode(row.from);
    for (LONG code = -6; code <= 6; ++code) {
        FontCodeRecord record;
        ASSERT_EQ(FontCodeData(code < 0 ? -code : code, &record), 1u);
        std::string mark(1, code < 0 ? '-' : char(record.breakChar));
        std::string wanted(1, code < 0 ? char(record.breakChar) : '-');
        EXPECT_EQ(ShowCode(Recoded(mark, code)), ShowCode(wanted)) << code;
    }
    std::string all;
    for (int byte = 1; byte < 256; ++byte)
        all += char(byte);
    for (LONG code : {0, 1, -1, 6, -6})
        EXPECT_EQ(Recoded(all, code), all) << code;
}

TEST(RecodeString, CutsAtAWholeSignInEverySize)
{
    const std::string text = "\241\204\255\324a\315\235";  // two signs in one code and single ones
    const std::string whole = Recoded(text, -4);
    const size_t fits[] = {7, 7, 9, 9, 11, 11, 11};  // of buffers of 8 bytes and more
    ASSERT_EQ(whole.size(), 11u);
    for (size_t size = text.size() + 1; size <= 14; ++size) {
        Guarded<char> buffer(size);
        strcpy(buffer.data(), text.c_str());
        EXPECT_EQ(RecodeString(buffer.data(), DWORD(size), -4), size > whole.size());
        EXPECT_EQ(ShowCode(buffer.data()), ShowCode(whole.substr(0, fits[size - 8]))) << size;
    }
}

TEST(RecodeString, RefusesWhatItCannotRead)
{
    for (LONG code : {2, -2, 4, -4, 5, -5}) {
        Guarded<char> buffer(4);  // an unterminated text is cut
        memset(buffer.data(), 'a', 4);
        EXPECT_EQ(RecodeString(buffer.data(), 4, code) + RecodeString(nullptr, 5, code), 0u);
        EXPECT_STREQ(buffer.data(), "aaa");
    }
    char text[] = "\241\226";
    for (LONG code : {LONG(7), LONG(-7), LONG(15), LONG(INT_MAX), LONG(INT_MIN)})
        EXPECT_EQ(RecodeString(text, sizeof text, code) + RecodeString(text, 0, 3), 0u) << code;
    EXPECT_STREQ(text, "\241\226");
}

// RecodeString: every sign through every charset and back, break marks, every buffer size.
#include "companion/support.h"

#include <climits>
#include <cstring>

#include "lao_signs.h"
#include "support/guarded.h"

static std::string Recoded(const std::string &text, LONG code)
{
    std::vector<char> buffer(2 * text.size() + 1);
    memcpy(buffer.data(), text.c_str(), text.size() + 1);
    EXPECT_EQ(RecodeString(buffer.data(), DWORD(buffer.size()), code), 1u);
    return buffer.data();
}

// What a sign is after a way through a charset that has only main forms and single signs.
static std::string BackFrom(const std::string &text, LONG code)
{
    std::string back = Recoded(Recoded(text, -code), code);
    PackLao(back.data());
    return back.c_str();
}

TEST(RecodeString, EveryLaoSignComesBack)
{
    for (LONG code = 2; code <= 5; ++code)
        for (int byte = 128; byte < 256; ++byte) {
            uint8_t sign = MainForm(uint8_t(byte));
            bool isDigit = byte >= 224 && byte <= 233;
            if (!UnicodeOfSign(sign) && !SignPairOf(sign) && !isDigit && byte != 160)
                continue;
            std::string back = BackFrom(std::string(1, char(byte)), code);
            bool isPublic = code >= 4;
            std::string wanted(1, char(byte == 205 && isPublic ? 185 : sign));
            if (byte == 205 && isPublic)
                wanted += char(249);
            ASSERT_EQ(back.size(), wanted.size()) << "code " << code << " sign " << byte;
            for (char &c : back)
                c = char(MainForm(uint8_t(c)));
            EXPECT_EQ(Show(back), Show(wanted)) << "code " << code << " sign " << byte;
        }
}

// Every byte of a font that has a counterpart comes back as itself or as a lower byte that means
// the same.
TEST(RecodeString, EveryFontByteComesBack)
{
    for (LONG code = 2; code <= 5; ++code)
        for (int byte = 1; byte < 256; ++byte) {
            std::string text(1, char(byte)), sign = Recoded(text, code);
            ASSERT_EQ(sign.size(), 1u);
            if (sign == "?")
                continue;
            std::string back = Recoded(sign, -code);
            EXPECT_LE(uint8_t(back[0]), byte) << "code " << code;
            EXPECT_EQ(Show(Recoded(back, code)), Show(sign)) << "code " << code << " byte " << byte;
        }
}

TEST(RecodeString, BreakMarksAndHyphens)
{
    const struct {
        LONG code;
        const char *from, *to;
    } rows[] = {
        {2, "\226-", "-\214"},
        {-2, "-\214", "\226-"},
        {3, "\226-", "-\214"},
        {-3, "-\214", "\226-"},
        {4, "-", "-"},
        {-4, "-\214", "--"},
        {-5, "-\214", "--"},
        {-3, "\226", "?"},
        {-2, "\037", "\037"},
        {4, "\200\240\337", "??k"},
        {-4, "\225", "?"},
        {5, "\203\243\376", "???"},
        {-2, "\235\355", "\277\277"},
        {2, "\277", "\355"},
        {-4, "\315", "\271\311"},
        {2, "\200", "?"},
        {-4, "\307", "?"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(Show(Recoded(row.from, row.code)), Show(row.to))
            << row.code << " " << Show(row.from);
    for (LONG code = -6; code <= 6; ++code) {
        FontCodeRecord record;
        ASSERT_EQ(FontCodeData(code < 0 ? -code : code, &record), 1u);
        std::string mark(1, code < 0 ? '-' : char(record.breakChar));
        std::string wanted(1, code < 0 ? char(record.breakChar) : '-');
        EXPECT_EQ(Show(Recoded(mark, code)), Show(wanted)) << code;
    }
    std::string all;
    for (int byte = 1; byte < 256; ++byte)
        all += char(byte);
    for (LONG code : {0, 1, -1, 6, -6})
        EXPECT_EQ(Recoded(all, code), all) << code;
}

TEST(RecodeString, CutsAtAWholeSignInEverySize)
{
    const std::string text =
        "\241\204\255\324a\315\235";  // codes for two signs between single ones
    const std::string whole = Recoded(text, -4);
    const size_t ends[] = {0, 1, 3, 4, 6, 7, 9, 11};
    ASSERT_EQ(whole.size(), 11u);
    for (size_t size = text.size() + 1; size <= 14; ++size) {
        Guarded<char> buffer(size);
        memcpy(buffer.data(), text.c_str(), text.size() + 1);
        EXPECT_EQ(RecodeString(buffer.data(), DWORD(size), -4), size > whole.size());
        size_t fits = 0;
        for (size_t end : ends)
            fits = end < size ? end : fits;
        EXPECT_EQ(Show(buffer.data()), Show(whole.substr(0, fits))) << size;
    }
}

TEST(RecodeString, AnUnterminatedTextIsCut)
{
    for (LONG code : {2, -2, 3, 4, -4, 5, -5})
        for (size_t size = 1; size < 5; ++size) {
            Guarded<char> buffer(size);
            memset(buffer.data(), 'a', size);
            EXPECT_EQ(RecodeString(buffer.data(), DWORD(size), code), 0u);
            EXPECT_EQ(std::string(buffer.data()), std::string(size - 1, 'a'));
        }
}

TEST(RecodeString, RefusesUnknownCodes)
{
    for (LONG code : {LONG(7), LONG(-7), LONG(15), LONG(-16), LONG(INT_MAX), LONG(INT_MIN)}) {
        char text[] = "\241\226";
        EXPECT_EQ(RecodeString(text, sizeof text, code), 0u) << code;
        EXPECT_STREQ(text, "\241\226");
    }
    char text[] = "x";
    for (LONG code = -6; code <= 6; ++code) {
        EXPECT_EQ(RecodeString(nullptr, 5, code), 0u);
        EXPECT_EQ(RecodeString(text, 0, code), 0u);
    }
}

// Code pages 65001 and 1252. The digests are those of the system's own results (Wine 8), so that
// the layer is held to them case by case without a table of millions of rows.
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <windows.h>

TEST(Utf8, NarrowsLoneSurrogatesToReplacements)
{
    struct Row {
        std::u16string units;
        std::string bytes;
    } const rows[] = {
        {u"a\u00E9\u0E81", "a\xC3\xA9\xE0\xBA\x81"},
        {{0xD83D, 0xDE00}, "\xF0\x9F\x98\x80"},
        {{0xDC00, 0xD800}, "\xEF\xBF\xBD\xEF\xBF\xBD"},
        {{0xD800, 0x61}, "\xEF\xBF\xBD\x61"},
        {{0xD800, 0xD83D, 0xDE00}, "\xEF\xBF\xBD\xF0\x9F\x98\x80"},
    };
    for (const Row &row : rows)
        for (DWORD flags : {0, WC_ERR_INVALID_CHARS}) {
            char bytes[64] = "";
            std::vector<WCHAR> units(row.units.begin(), row.units.end());
            int size = WideCharToMultiByte(CP_UTF8, flags, units.data(), int(units.size()), bytes,
                                           64, nullptr, nullptr);
            bool isBroken = row.bytes.find("\xEF\xBF\xBD") != std::string::npos;
            EXPECT_EQ(std::string(bytes, size), flags && isBroken ? "" : row.bytes);
        }
}

// The two calls with little room: what they give, and that nothing is written behind it. A length
// of -1 takes the terminator along; a room of 0 asks for the size.
TEST(CodePages, LengthsAndRoom)
{
    struct Row {
        UINT codePage;
        int length, room, count;
        DWORD error;  // where the count is 0
    } const rows[] = {
        // clang-format off
        {CP_UTF8, -1, 0, 4, 0}, {CP_UTF8, 3, 0, 3, 0}, {CP_UTF8, -1, 4, 4, 0},
        {1252, -1, 0, 4, 0}, {1252, 3, 0, 3, 0}, {1252, -1, 4, 4, 0},
        {CP_UTF8, -1, 3, 0, ERROR_INSUFFICIENT_BUFFER}, {1252, -1, 3, 0, ERROR_INSUFFICIENT_BUFFER},
        {CP_UTF8, 0, 8, 0, ERROR_INVALID_PARAMETER}, {1252, 0, 8, 0, ERROR_INVALID_PARAMETER},
        {12345, 1, 8, 0, ERROR_INVALID_PARAMETER},
        // clang-format on
    };
    const WCHAR abc[] = {'a', 'b', 'c', 0};
    for (const Row &row : rows) {
        std::vector<WCHAR> wide(size_t(row.room) + 1, 0x2323);
        std::string bytes(size_t(row.room) + 1, '#');
        EXPECT_EQ(MultiByteToWideChar(row.codePage, 0, "abc", row.length, wide.data(), row.room),
                  row.count);
        EXPECT_EQ(row.count ? 0 : GetLastError(), row.error) << row.codePage << " " << row.room;
        EXPECT_EQ(WideCharToMultiByte(row.codePage, 0, abc, row.length, bytes.data(), row.room,
                                      nullptr, nullptr),
                  row.count);
        EXPECT_EQ(row.count ? 0 : GetLastError(), row.error) << row.codePage << " " << row.room;
        EXPECT_TRUE(wide.back() == 0x2323 && bytes.back() == '#');
    }
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, nullptr, 3, nullptr, 0), 0);
}

constexpr uint64_t kDigestStart = 14695981039346656037u;

static void Add(uint64_t *digest, unsigned number)
{
    for (int i = 0; i < 4; i++, number >>= 8)
        *digest = (*digest ^ (number & 0xff)) * 1099511628211u;
}

TEST(CodePage1252, EveryUnitAndEveryByteAsTheSystemHasThem)
{
    uint64_t narrow = kDigestStart;
    for (unsigned unit = 0; unit < 0x10000; unit++) {
        for (DWORD flags : {0, WC_NO_BEST_FIT_CHARS}) {
            WCHAR wide = WCHAR(unit);
            char byte = 0;
            BOOL used = -1;
            int size = WideCharToMultiByte(1252, flags, &wide, 1, &byte, 1, "~", &used);
            for (unsigned number : {unsigned(size), unsigned((unsigned char)byte), unsigned(used)})
                Add(&narrow, number);
            if (!flags || used)
                continue;
            ASSERT_EQ(MultiByteToWideChar(1252, 0, &byte, 1, &wide, 1), 1);
            ASSERT_EQ(wide, unit);
        }
    }
    EXPECT_EQ(narrow, 9797404161008907145u);
}

// All texts of up to four bytes from those between which the rules of UTF-8 change. Wine swallows
// what stands behind a cut character at the very end of a text; so three letters end each of these.
TEST(Utf8, EveryShortTextAsTheSystemHasIt)
{
    const unsigned char bytes[] = {0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF,
                                   0xC0, 0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xED, 0xEF,
                                   0xF0, 0xF1, 0xF4, 0xF5, 0xF8, 0xFF};
    const unsigned count = sizeof bytes;
    uint64_t digest = kDigestStart;
    for (unsigned length = 1, texts = count; length <= 4; length++, texts *= count) {
        for (unsigned text = 0; text < texts; text++) {
            char narrow[7];
            WCHAR wide[8];
            memset(narrow, 'z', sizeof narrow);
            for (unsigned i = 0, rest = text; i < length; i++, rest /= count)
                narrow[i] = char(bytes[rest % count]);
            int units = MultiByteToWideChar(CP_UTF8, 0, narrow, int(length) + 3, wide, 8);
            Add(&digest, unsigned(units));
            for (int i = 0; i < units; i++)
                Add(&digest, wide[i]);
            Add(&digest, unsigned(MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, narrow,
                                                      int(length) + 3, wide, 8)));
        }
    }
    EXPECT_EQ(digest, 11179652489018525071u);
}

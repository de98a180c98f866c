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
        std::vector<WCHAR> units;
        const char *bytes;
    } const rows[] = {
        {{0x61, 0xE9, 0xE81}, "a\xC3\xA9\xE0\xBA\x81"},
        {{0xD83D, 0xDE00}, "\xF0\x9F\x98\x80"},
        {{0xD800}, "\xEF\xBF\xBD"},
        {{0xDC00, 0xD800}, "\xEF\xBF\xBD\xEF\xBF\xBD"},
        {{0xD800, 0x61}, "\xEF\xBF\xBD\x61"},
        {{0xD800, 0xD83D, 0xDE00}, "\xEF\xBF\xBD\xF0\x9F\x98\x80"},
    };
    for (const Row &row : rows) {
        char bytes[64] = "";
        int size = WideCharToMultiByte(CP_UTF8, 0, row.units.data(), int(row.units.size()), bytes,
                                       sizeof bytes - 1, nullptr, nullptr);
        EXPECT_EQ(std::string(bytes, size), row.bytes);
        SetLastError(0);
        int strict =
            WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, row.units.data(),
                                int(row.units.size()), bytes, sizeof bytes - 1, nullptr, nullptr);
        bool isBroken = std::string(row.bytes).find("\xEF\xBF\xBD") != std::string::npos;
        EXPECT_EQ(strict, isBroken ? 0 : size);
        EXPECT_EQ(GetLastError(), DWORD(isBroken ? ERROR_NO_UNICODE_TRANSLATION : 0));
    }
}

TEST(CodePages, LengthsAndRoom)
{
    WCHAR wide[8];
    char bytes[8];
    for (UINT codePage : {UINT(CP_UTF8), 1252u}) {
        EXPECT_EQ(MultiByteToWideChar(codePage, 0, "abc", -1, nullptr, 0), 4);
        EXPECT_EQ(MultiByteToWideChar(codePage, 0, "abc", 3, nullptr, 0), 3);
        EXPECT_EQ(MultiByteToWideChar(codePage, 0, "a\0c", 3, wide, 8), 3);
        EXPECT_EQ(MultiByteToWideChar(codePage, 0, "abc", -1, wide, 4), 4);
        EXPECT_EQ(MultiByteToWideChar(codePage, 0, "abc", -1, wide, 3), 0);
        EXPECT_EQ(GetLastError(), DWORD(ERROR_INSUFFICIENT_BUFFER));
        EXPECT_EQ(MultiByteToWideChar(codePage, 0, "abc", 0, wide, 8), 0);
        EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
        EXPECT_EQ(MultiByteToWideChar(codePage, 0, nullptr, 3, wide, 8), 0);
        EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
        const WCHAR text[] = {'a', 'b', 0xE9, 0};
        int units = codePage == CP_UTF8 ? 4 : 3;
        EXPECT_EQ(WideCharToMultiByte(codePage, 0, text, -1, nullptr, 0, nullptr, nullptr),
                  units + 1);
        EXPECT_EQ(WideCharToMultiByte(codePage, 0, text, 3, bytes, units, nullptr, nullptr), units);
        EXPECT_EQ(WideCharToMultiByte(codePage, 0, text, 3, bytes, units - 1, nullptr, nullptr), 0);
        EXPECT_EQ(GetLastError(), DWORD(ERROR_INSUFFICIENT_BUFFER));
        EXPECT_EQ(WideCharToMultiByte(codePage, 0, text, 0, bytes, 8, nullptr, nullptr), 0);
        EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
    }
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, "a\x80", 2, wide, 8), 0);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_NO_UNICODE_TRANSLATION));
    EXPECT_EQ(MultiByteToWideChar(12345, 0, "a", 1, wide, 8), 0);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
}

// A broken conversion may have written, but never behind its room.
TEST(CodePages, NeverWritePastTheRoom)
{
    const std::string text = "a\xC3\xA9\xE0\xBA\x81\xF0\x9F\x98\x80\x80";
    for (int room = 1; room < 8; room++) {
        std::vector<WCHAR> wide(room + 1, 0x2323);
        int count =
            MultiByteToWideChar(CP_UTF8, 0, text.data(), int(text.size()), wide.data(), room);
        EXPECT_EQ(count, room >= 6 ? 6 : 0) << room;
        EXPECT_EQ(wide[room], 0x2323) << room;
    }
    const WCHAR units[] = {0x61, 0xE9, 0xE81, 0xD83D, 0xDE00, 0xD800};
    for (int room = 1; room < 16; room++) {
        std::string bytes(room + 1, '#');
        int count = WideCharToMultiByte(CP_UTF8, 0, units, 6, bytes.data(), room, nullptr, nullptr);
        EXPECT_EQ(count, room >= 13 ? 13 : 0) << room;
        EXPECT_EQ(bytes[room], '#') << room;
    }
}

struct Digest {
    uint64_t value = 14695981039346656037u;
};

static void Add(Digest *digest, unsigned number)
{
    for (int i = 0; i < 4; i++, number >>= 8)
        digest->value = (digest->value ^ (number & 0xff)) * 1099511628211u;
}

TEST(CodePage1252, EveryUnitAndEveryByteAsTheSystemHasThem)
{
    Digest narrow;
    for (unsigned unit = 0; unit < 0x10000; unit++) {
        for (DWORD flags : {0, WC_NO_BEST_FIT_CHARS}) {
            WCHAR wide = WCHAR(unit);
            char byte = 0;
            BOOL used = -1;
            Add(&narrow,
                unsigned(WideCharToMultiByte(1252, flags, &wide, 1, &byte, 1, "~", &used)));
            Add(&narrow, (unsigned char)byte);
            Add(&narrow, unsigned(used));
        }
    }
    EXPECT_EQ(narrow.value, 9797404161008907145u);
    for (int byte = 0; byte < 256; byte++) {
        char narrowed = char(byte), back = 0;
        WCHAR wide = 0;
        ASSERT_EQ(MultiByteToWideChar(1252, 0, &narrowed, 1, &wide, 1), 1);
        ASSERT_EQ(WideCharToMultiByte(1252, 0, &wide, 1, &back, 1, nullptr, nullptr), 1);
        EXPECT_EQ(back, narrowed) << byte;
    }
}

// All texts of up to four bytes from those between which the rules of UTF-8 change. Wine swallows
// what stands behind a cut character at the very end of a text; so three letters end each of these.
TEST(Utf8, EveryShortTextAsTheSystemHasIt)
{
    const unsigned char bytes[] = {0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF,
                                   0xC0, 0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xED, 0xEF,
                                   0xF0, 0xF1, 0xF4, 0xF5, 0xF8, 0xFF};
    const unsigned count = sizeof bytes;
    Digest digest;
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
    EXPECT_EQ(digest.value, 11179652489018525071u);
}

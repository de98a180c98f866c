// From 0x80 to 0x9F the code page has characters of its own; all others are those of Unicode.
#include "documents/code_page.h"

#include <cstdint>

// clang-format off
constexpr uint16_t kHigh[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 8
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 9
};
// clang-format on
constexpr WCHAR kGreatest = 0x2122;

WCHAR CharacterOf1252(unsigned char byte)
{
    return byte >= 0x80 && byte <= 0x9F ? WCHAR(kHigh[byte - 0x80]) : WCHAR(byte);
}

int ByteOf1252(WCHAR character)
{
    if (character < 0x100)
        return character;
    for (int i = 0; i < 32 && character <= kGreatest; ++i)
        if (kHigh[i] == character)
            return 0x80 + i;
    return -1;
}

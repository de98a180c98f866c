// Bytes are read from code page 1252 without its best fit: a letter that is only like one of its
// letters is itself.
#include "documents/legacy_text.h"

#include "xmlconv/translate.h"

// The characters of code page 1252 at 0x80 to 0x9F; 0: the byte's own value.
// clang-format off
constexpr uint16_t kHighControls[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0, 0x017D, 0,
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0, 0x017E, 0x0178,
};
// clang-format on
enum { kNoByte = -1 };
constexpr WCHAR kSymbols = 0xF000;  // a symbol font's byte 0 would stand here

static int ByteOf(WCHAR character)
{
    if (character < 0x100)
        return character;
    if (character >= kSymbols + 0x20 && character <= kSymbols + 0xFF)
        return character - kSymbols;
    for (int i = 0; i < 32 && character < 0x2123; ++i)
        if (kHighControls[i] == character)
            return 0x80 + i;
    return kNoByte;
}

LegacySign SignOfFont(WCHAR character, const FontMapEntry &entry)
{
    LegacySign sign = {};
    int byte = ByteOf(character);
    if (byte != kNoByte)
        sign.count = UnitsOfFontByte(uint8_t(byte), entry.conversionType, sign.units);
    return sign;
}

const LegacyTable *TableOfFont(LegacyTable *tables, const FontMapEntry &entry)
{
    int type = entry.conversionType;
    LegacyTable *table = &tables[type == 0 || type == 2 || type == 3 ? type : 1];
    for (int i = 0; i < 256 && !table->isMade; ++i)
        table->signs[i] = SignOfFont(WCHAR(i), entry);
    table->isMade = true;
    return table;
}

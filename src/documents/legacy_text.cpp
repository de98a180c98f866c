// A character is the byte of the font that it is in code page 1252.
#include "documents/legacy_text.h"

#include "documents/code_page.h"
#include "xmlconv/translate.h"

constexpr WCHAR kSymbols = 0xF000;  // a symbol font's byte 0 would stand here

static int ByteOfFont(WCHAR character)
{
    bool isSymbol = character >= kSymbols + 0x20 && character <= kSymbols + 0xFF;
    return isSymbol ? character - kSymbols : ByteOf1252(character);
}

LegacySign SignOfFont(WCHAR character, const FontMapEntry &entry)
{
    LegacySign sign = {};
    int byte = ByteOfFont(character);
    if (byte >= 0)
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

// One character of a legacy font as Unicode. A document holds the bytes of such text as the
// characters that they are in code page 1252, or as U+F020 to U+F0FF where the font is a symbol
// font. What is neither was no sign of the font and stays: Lao that is Unicode already, letters of
// other scripts.
#pragma once

#include <windows.h>

#include "xmlconv/font_map.h"

// What a character is in the font: one or two code units, in the order of the text.
struct LegacySign {
    WCHAR units[2];
    int count;  // 0: the character is no byte of the font
};
LegacySign SignOfFont(WCHAR character, const FontMapEntry &entry);

// The same for the characters below U+0100, which legacy text is made of, made once for each code.
struct LegacyTable {
    bool isMade;
    LegacySign signs[256];
};
enum { kLegacyCodes = 4 };

// The table of a font's code among those of a document, which it makes at the first question.
const LegacyTable *TableOfFont(LegacyTable *tables, const FontMapEntry &entry);

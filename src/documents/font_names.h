// The font names of a document, each once. Styles, runs and texts hold a name's number, and what
// the font map says of it is asked once. The counts of characters that a host wants are kept here
// too.
#pragma once

#include "documents/bytes.h"
#include "orvel.h"
#include "xmlconv/font_map.h"

enum { kNoFont = 0 };  // the number of no font; names begin with 1

struct FontName {
    size_t start, length;           // of the name, in the block of texts
    const FontMapEntry *entry;      // null: no legacy font
    unsigned long long characters;  // of the document's text, in this font
    unsigned long long pending;     // the same of a reading that may not count
    size_t order;                   // of its first use, from 1; 0: not used yet
};

struct FontNames {
    FontMap *map;     // not owned; null: no font is a legacy one
    Bytes texts;      // names, one behind the other
    FontName *items;  // owned; the first one stands for no font
    int *index;       // owned: numbers by a hash of the name, 0 for a free slot
    int *touched;     // owned: numbers with pending characters, in the order of their use
    size_t count, room, indexSize, usedCount, touchedCount, touchedRoom;
    bool hasLegacy;  // some name is a legacy font's
    bool failed;     // memory was short
};

// Takes what is needed; FreeFontNames frees it in either case.
bool StartFontNames(FontNames *fonts, FontMap *map);
void FreeFontNames(FontNames *fonts);

// The number of a name, without regard to the case of A to Z; kNoFont for an empty one and without
// memory.
int FontNumber(FontNames *fonts, std::string_view name);

// The row of the font map for a number; null for a font that is no legacy font.
inline const FontMapEntry *LegacyFont(const FontNames &fonts, int number)
{
    return fonts.items[number].entry;
}

// The name as the document first had it; valid until the next one is asked for its number.
std::string_view NameOfFont(const FontNames &fonts, int number);

// Characters count when their reading does.
void CountCharacters(FontNames *fonts, int number, size_t characters);
void EndCount(FontNames *fonts, bool counts);

// Hands over what was counted, in the order of first use, as far as the job has room.
void TellFonts(const FontNames &fonts, DocumentJob *job);

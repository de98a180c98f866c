// The styles of a document, of whatever format: each has a family, a name, perhaps a base, and
// fonts. A format enters them while the document is read the first time, and asks for their fonts
// while it is rewritten; a style without a font of its own has its base's.
#pragma once

#include "documents/bytes.h"

enum { kAscii, kHighAnsi, kEastAsia, kComplex, kFontSlots };  // of the fonts of a style or a run

enum { kNoFontStyle = -1 };

struct FontStyle {
    size_t name, nameLength;  // in the block of texts
    size_t base, baseLength;  // of the base's name, the same
    int family;               // names of two families have nothing to do with each other
    int baseFamily;           // in which the base is looked for
    int baseStyle;            // kNoFontStyle: none, or not looked up yet
    int below;                // of the walk that finds the fonts: the style that asks this one
    bool isFound;             // `fonts` has those of the bases too
    int fonts[kFontSlots];    // numbers of FontNames, and what a format means by others; 0: none
};

struct FontStyles {
    Bytes texts;       // names
    FontStyle *items;  // owned
    int *index;        // owned: numbers from 1 by a hash of family and name, 0 for a free slot
    size_t count, room, indexSize;
    bool failed;  // memory was short
};

void FreeFontStyles(FontStyles *styles);

// A new style, or the one that is there; kNoFontStyle without memory. Styles keep their numbers.
int AddFontStyle(FontStyles *styles, int family, std::string_view name);
int FindFontStyle(const FontStyles &styles, int family, std::string_view name);

void SetBase(FontStyles *styles, int style, int family, std::string_view name);

// The font of a style in a slot, its own or that of the nearest base that has one; 0: none. The
// first question fixes the fonts of the style and its bases.
int FontOfStyle(FontStyles *styles, int style, int slot);

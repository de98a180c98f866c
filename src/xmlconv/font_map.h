// The font map of a conversion: legacy fonts, the code each uses, and the Unicode fonts that
// replace them. The driver fills it, the style tracker asks it which text is legacy text, the tag
// writer which names to replace. It comes from a file, or is the built-in one; the two are never
// merged.
#pragma once

#include <cstdio>
#include <string_view>

#include "xmlconv/tag.h"

enum { kMapNameSize = 64 };  // terminator included

struct FontMapEntry {
    char legacyName[kMapNameSize];  // as a document has it between the quotes
    int conversionType;             // the font's code: see docs/font-map.md
    char
        unicodeName[kMapNameSize];  // well-formed UTF-8 without control characters, nothing escaped
};

// The row that was found for a name. A document asks for few names over and over.
struct FoundName {
    char name[kMapNameSize];    // empty: no name yet
    const FontMapEntry *entry;  // null: no row has the name
};
enum { kFoundNames = 64 };

struct FontMap {
    FontMapEntry *loaded;      // owned: rows of a file; null: the built-in ones are in force
    const FontMapEntry *rows;  // those in force; null in a zeroed map, in which nothing is found
    int count;                 // of rows
    FoundName found[kFoundNames];
};

// Puts the rows of FontList.ini or the built-in ones in force: their number; 0 without memory.
int LoadFontMap(FontMap *map);

// Puts the rows of a file in force and closes it: their number; 0 when it has none or the file is
// null, -1 without memory.
int ReadFontMap(FontMap *map, FILE *file);

// Leaves a zeroed map.
void FreeFontMap(FontMap *map);

// The first row of a legacy font, without regard to case, or null. name may be null.
const FontMapEntry *FindFontMapEntry(FontMap *map, const char *name);

// Whether a tag of this name has attributes that name fonts, in whatever capitals.
bool IsFontTag(std::string_view name);

// The row that replaces the value of a font tag's attribute: where the attribute is one that names
// a font, and this is a legacy one; else null, and the value stays.
const FontMapEntry *FindRenamedFont(FontMap *map, const TagAttribute *attribute);

// The font map of the document converter: legacy fonts, the code each uses, and the Unicode fonts
// that replace them. It comes from FontList.ini of the data folder, or is the built-in one.
#pragma once

#include "xmlconv/tag.h"

enum { kMapNameSize = 64 };

struct FontMapEntry {
    char legacyName[kMapNameSize];
    int conversionType;
    char unicodeName[kMapNameSize];
};

struct FontMap {
    FontMapEntry *loaded;      // rows of the file, none: the built-in ones
    const FontMapEntry *rows;  // in force
    int count;                 // 0 outside of a conversion: nothing is found
};
extern FontMap gFontMap;

// Reads the file and puts its rows or the built-in ones in force: their number; 0 without memory.
int LoadFontMap();

void FreeFontMap();

// The first row of a legacy font, without regard to case, or none. name may be none.
const FontMapEntry *FindFontMapEntry(const char *name);

// The text to write for an attribute's value: the Unicode font where it names a legacy one in a
// place that names fonts, else value.
const char *RenameFontAttribute(const TagRecord *tag, const TagAttribute *attribute,
                                const char *value);

// The font map of the document converter: legacy fonts, the code each uses, and the Unicode fonts
// that replace them. It comes from FontList.ini of the data folder, or is the built-in one.
#pragma once

#include <cstdio>
#include <string_view>

#include "xmlconv/tag.h"

enum { kMapNameSize = 64 };

struct FontMapEntry {
    char legacyName[kMapNameSize];
    int conversionType;
    char unicodeName[kMapNameSize];
};

// Puts the rows of FontList.ini or the built-in ones in force: their number; 0 without memory.
// Outside of a conversion no row is in force.
int LoadFontMap();

// Puts the rows of a file in force and closes it: their number; 0 when it has none or there is no
// file, -1 without memory.
int ReadFontMap(FILE *file);

void FreeFontMap();

// The first row of a legacy font, without regard to case, or none. name may be none.
const FontMapEntry *FindFontMapEntry(const char *name);

// Whether a tag of this name has attributes that name fonts, in whatever capitals.
bool IsFontTag(std::string_view name);

// The text to write for an attribute's value: the Unicode font where it names a legacy one in a
// place that names fonts, else value.
const char *RenameFontAttribute(const TagRecord *tag, const TagAttribute *attribute,
                                const char *value);

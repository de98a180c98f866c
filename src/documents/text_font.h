// The code of a font that isn't named by a document but by a person.
#pragma once

#include "xmlconv/font_map.h"

// Fills a row for a font of the map, or for a registered font whose code the converter knows: false
// for any other.
bool FindTextFont(FontMap *map, const char *name, FontMapEntry *entry);

// The fonts of a document's text, counted for the host while the text goes by. The part converter
// calls this for each text of a job that asks for fonts.
#pragma once

#include <cstddef>

#include "orvel.h"
#include "xmlconv/font_map.h"

// Adds the characters of a UTF-8 text to its font's record, or a record where there is room. font
// may be null: nothing is counted.
void CountFontText(DocumentJob *job, FontMap *map, const char *font, const char *text,
                   size_t length);

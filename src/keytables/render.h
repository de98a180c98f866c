// One syllable to text, under a key table: the conversion asks here for each syllable that it has
// divided off.
#pragma once

#include "keytables/key_table.h"
#include "text/syllable_parser.h"

// Writes the syllable's text to output (size bytes; what is longer is cut): 1 when every piece was
// found, else 0, and the text holds the defaults of what was missed. Without parts or an initial: 0
// and an empty text. parts is of no further use then.
int RenderSyllable(SyllableParts *parts, char *output, size_t size, const KeyTable *table);

// The text that stands for the syllable at text (internal code) when entry `index` of the section
// Change matches there, else null. Valid until the next call. A pattern holds bytes of text, "#"
// for an optional tone mark, "?" for one and "*" for two bytes that are looked up in section
// Initial and written in front of the value; more than three such bytes match nothing.
const char *MatchChangeEntry(const uint8_t *text, const KeyTable *table, int index);

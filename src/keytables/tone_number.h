// The tone in which a syllable is spoken, by the rules of Lao: class of the initial, length of the
// vowel, kind of the final, tone mark. Rendering asks for tables that write it.
#pragma once

#include "text/syllable_parser.h"

// Writes the number as decimal text of one digit, 1 to 6, or 0 where there is none such tone; text
// has room for two bytes. The syllable has canonical codes, as rendering makes them.
void ToneNumberText(const SyllableParts *parts, char *text);

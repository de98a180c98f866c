// The fonts of a document's text, counted for the host.
#pragma once

#include <cstddef>

#include "orvel.h"

// Adds the characters of a UTF-8 text to its font's record, or a record where there is room. font
// may be none: nothing is counted.
void CountFontText(DocumentJob *job, const char *font, const char *text, size_t length);

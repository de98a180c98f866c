// The fast road of text: what one character of a legacy font becomes doesn't depend on its
// neighbours, so it is asked of ConvertTextNode once and remembered.
#pragma once

#include <cstddef>

#include "xmlconv/translate.h"

// Converts a text from elsewhere into the room: the bytes of the result, the same as from
// ConvertTextNode. 0 when that must do it: the room might be too small, or the text has characters
// that legacy text never has.
size_t ConvertTextFast(const TextRoom &room, const char *text, size_t length,
                       const FontMapEntry &entry);

// The fast road of text: what one character of a legacy font becomes doesn't depend on its
// neighbours, so it is asked of ConvertTextNode once and remembered. The part converter tries this
// road first; whatever is doubtful on it goes to ConvertTextNode itself.
#pragma once

#include <cstddef>
#include <cstdint>

#include "xmlconv/translate.h"

// What a character becomes.
struct KnownText {
    char bytes[7];   // UTF-8
    uint8_t length;  // of it; 0: not asked yet, or the result can't be kept here
};

// All characters of up to three bytes, by their value. A document uses few of them, most of code
// page 1252: the rest of the memory is zeroed by the system and never touched.
struct KnownCharacters {
    KnownText of[0x10000];
};

// The memory of a conversion, zeroed at first; it has its own block.
struct TextMemory {
    KnownCharacters ofType[4];  // by conversion type; all types without a translation share 1
};

// Converts a text, which doesn't stand in the room, into the room: the bytes of the result, the
// same as from ConvertTextNode. 0 when that must do it: the room might be too small, or the text
// has characters that legacy text never has.
size_t ConvertTextFast(TextMemory *memory, const TextRoom &room, const char *text, size_t length,
                       const FontMapEntry &entry);

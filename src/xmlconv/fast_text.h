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

// Bytes of a legacy font stand in a document as the characters that they are in code page 1252,
// which all lie in these ranges. The index is made of the bits of a character's UTF-8 behind those
// that its range has in common.
struct KnownCharacters {
    KnownText one[0x80];     // U+0000 on
    KnownText two[0x800];    // U+0000 on, from U+0080 used
    KnownText three[0x200];  // U+2000 on
    KnownText lao[0x80];     // U+0E80 on, which some put under legacy fonts
};

// The memory of a conversion, zeroed at first.
struct TextMemory {
    KnownCharacters ofType[4];  // by conversion type; all types without a translation share 1
};

// Converts a text, which doesn't stand in the room, into the room: the bytes of the result, the
// same as from ConvertTextNode. 0 when that must do it: the room might be too small, or the text
// has characters that legacy text never has.
size_t ConvertTextFast(TextMemory *memory, const TextRoom &room, const char *text, size_t length,
                       const FontMapEntry &entry);

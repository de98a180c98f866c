// Text of a legacy font to Unicode: out of UTF-8 come the bytes that the font was written in, and
// out of these, through the font's own code, Unicode Lao.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

#include "xmlconv/font_map.h"

// Code of a byte in a font of a conversion type: 0xA1 is KO, and so on, in all types.
uint8_t TranslateFontByte(uint8_t byte, int type);

// Room for one text: the text in front, in units of bytes, and as many 16-bit units of scratch
// space.
struct TextRoom {
    char *text;
    WCHAR *wide;
    size_t size;  // of each
};

// Converts the NUL-terminated UTF-8 text in place: the bytes of the result, 0 for an empty one; -1
// when it doesn't fit the room; -2 when the code pages fail for another reason.
enum { kTextTooLong = -1, kTextFailed = -2 };
long ConvertTextNode(const TextRoom &room, size_t length, const FontMapEntry &entry);

// Text of a legacy font to Unicode: out of UTF-8 come the bytes that the font was written in, and
// out of these, through the font's own code, Unicode Lao. This is the plain road of text, which the
// part converter takes where the fast one (fast_text.h) can't; both give the same.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

#include "xmlconv/font_map.h"

// Code of a byte in a font of a conversion type: 0xA1 is KO, and so on, in all types.
uint8_t TranslateFontByte(uint8_t byte, int type);

// The one or two code units that a byte in a font of a conversion type becomes: their number.
int UnitsOfFontByte(uint8_t byte, int type, WCHAR *units);

// Room for one converted text.
struct TextRoom {
    char *text;   // owned: receives the result
    WCHAR *wide;  // scratch space, in the same block
    size_t size;  // of text in bytes, and of wide in 16-bit units
};

// Converts a UTF-8 text of `length` bytes, at most the room's size, which doesn't stand in the
// room, and writes it to the room: the bytes of the result, 0 for an empty one; kTextTooLong when
// it doesn't fit the room; kTextFailed when the code pages fail for another reason.
enum { kTextTooLong = -1, kTextFailed = -2 };
long ConvertTextNode(const TextRoom &room, const char *text, size_t length,
                     const FontMapEntry &entry);

// UTF-8: lengths of characters, and writing of those that the library gives.
#include "utf8.h"

#include <cstdint>

// What the first byte promises; 0 for one that begins nothing.
static size_t PromisedSize(uint8_t first)
{
    return first < 0x80   ? 1
           : first < 0xC2 ? 0
           : first < 0xE0 ? 2
           : first < 0xF0 ? 3
           : first < 0xF5 ? 4
                          : 0;
}

// Overlong forms, surrogates and what lies above U+10FFFF show in the second byte.
static bool IsSecondByte(uint8_t first, uint8_t second)
{
    switch (first) {
    case 0xE0: return second >= 0xA0;
    case 0xED: return second < 0xA0;
    case 0xF0: return second >= 0x90;
    case 0xF4: return second < 0x90;
    default: return true;
    }
}

size_t CharacterSize(std::string_view text)
{
    size_t size = PromisedSize(uint8_t(text[0]));
    if (size < 2 || size > text.size() || !IsSecondByte(uint8_t(text[0]), uint8_t(text[1])))
        return 1;
    for (size_t i = 1; i < size; ++i)
        if (!IsContinuation(text[i]))
            return 1;
    return size;
}

size_t CountCharacters(std::string_view text)
{
    size_t count = 0;
    for (size_t i = 0; i < text.size(); i += CharacterSize(text.substr(i)))
        ++count;
    return count;
}

void AppendUtf8(std::string *text, char16_t character)
{
    if (character < 0x80) {
        *text += char(character);
        return;
    }
    if (character < 0x800) {
        *text += char(0xC0 | character >> 6);
    } else {
        *text += char(0xE0 | character >> 12);
        *text += char(0x80 | (character >> 6 & 63));
    }
    *text += char(0x80 | (character & 63));
}

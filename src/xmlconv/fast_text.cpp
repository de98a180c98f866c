// The memory of characters. Bytes of a legacy font stand in a document as the characters that they
// are in code page 1252, which all lie in the ranges below.
#include "xmlconv/fast_text.h"

#include <cstring>
#include <iterator>

#include "frame/strings.h"

constexpr size_t kLongestResult = 6;  // bytes: two code units of three

struct KnownText {
    char bytes[7];
    uint8_t length;  // 0: not asked yet
};

// By the bits of a character's UTF-8 behind its range.
struct KnownCharacters {
    KnownText one[0x80];     // U+0000 on
    KnownText two[0x800];    // U+0000 on, from U+0080 used
    KnownText three[0x200];  // U+2000 on
    KnownText lao[0x80];     // U+0E80 on, which some put under legacy fonts
};
static KnownCharacters gKnown[4];  // by kind of conversion

// All types without a translation are alike.
static KnownCharacters *KnownOfType(int type)
{
    return &gKnown[type == 0 || type == 2 || type == 3 ? type : 1];
}

// A character's place in the memory and its length in bytes; none outside of the ranges.
static KnownText *FindCharacter(KnownCharacters *known, const uint8_t *text, size_t left,
                                size_t *length)
{
    *length = 1;
    if (text[0] < 0x80)
        return &known->one[text[0]];
    *length = 2;
    if (text[0] >= 0xC2 && text[0] <= 0xDF && left >= 2 && (text[1] & 0xC0) == 0x80)
        return &known->two[(text[0] & 0x1F) << 6 | (text[1] & 0x3F)];
    *length = 3;
    if (text[0] == 0xE2 && left >= 3 && text[1] >= 0x80 && text[1] <= 0x87 &&
        (text[2] & 0xC0) == 0x80)
        return &known->three[(text[1] & 0x3F) << 6 | (text[2] & 0x3F)];
    if (text[0] == 0xE0 && left >= 3 && text[1] >= 0xBA && text[1] <= 0xBB &&
        (text[2] & 0xC0) == 0x80)
        return &known->lao[(text[1] & 1) << 6 | (text[2] & 0x3F)];
    return nullptr;
}

// A result that can't be had stays unknown.
static void AskCharacter(KnownText *known, const uint8_t *text, size_t length,
                         const FontMapEntry &entry)
{
    char bytes[16] = {};
    WCHAR wide[std::size(bytes)];
    memcpy(bytes, text, length);
    long converted = ConvertTextNode({bytes, wide, sizeof bytes}, length, entry);
    if (converted < 1 || converted > long(kLongestResult))
        return;
    memcpy(known->bytes, bytes, size_t(converted));
    known->length = uint8_t(converted);
}

size_t ConvertTextFast(const TextRoom &room, const char *text, size_t length,
                       const FontMapEntry &entry)
{
    if (length > (room.size - sizeof(KnownText)) / kLongestResult)
        return 0;
    KnownCharacters *characters = KnownOfType(entry.conversionType);
    const uint8_t *next = AsBytes(text), *end = next + length;
    char *output = room.text;
    for (size_t size; next < end; next += size) {
        KnownText *known = FindCharacter(characters, next, size_t(end - next), &size);
        if (!known)
            return 0;
        if (!known->length)
            AskCharacter(known, next, size, entry);
        if (!known->length)
            return 0;
        memcpy(output, known, sizeof *known);  // the length behind the bytes is overwritten or cut
        output += known->length;
    }
    return size_t(output - room.text);
}

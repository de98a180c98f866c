// The memory of characters at work: a character's value is its index, and the result is copied as
// bytes.
#include "xmlconv/fast_text.h"

#include <cassert>
#include <cstring>
#include <iterator>

#include "frame/strings.h"

constexpr size_t kLongestResult = 6;  // bytes: two code units of three each
static_assert(sizeof(KnownText) == 8 && kLongestResult < sizeof(KnownText));

static KnownCharacters *KnownOfType(TextMemory *memory, int type)
{
    return &memory->ofType[type == 0 || type == 2 || type == 3 ? type : 1];
}

static bool IsContinuation(uint8_t byte)
{
    return (byte & 0xC0) == 0x80;
}

// Whether three bytes are a character: in its shortest form, and no half of a pair.
static bool IsCharacter(const uint8_t *text)
{
    return IsContinuation(text[1]) && IsContinuation(text[2]) &&
           (text[0] != 0xE0 || text[1] >= 0xA0) && (text[0] != 0xED || text[1] < 0xA0);
}

// A character's place in the memory and its length in bytes; null for four bytes, and where the
// bytes are no whole character.
static KnownText *FindCharacter(KnownCharacters *known, const uint8_t *text, size_t left,
                                size_t *length)
{
    *length = 1;
    if (text[0] < 0x80)
        return &known->of[text[0]];
    *length = 2;
    if (text[0] >= 0xC2 && text[0] <= 0xDF && left >= 2 && IsContinuation(text[1]))
        return &known->of[(text[0] & 0x1F) << 6 | (text[1] & 0x3F)];
    *length = 3;
    if ((text[0] & 0xF0) == 0xE0 && left >= 3 && IsCharacter(text))
        return &known->of[(text[0] & 0x0F) << 12 | (text[1] & 0x3F) << 6 | (text[2] & 0x3F)];
    return nullptr;
}

// A result that can't be had stays unknown.
static void AskCharacter(KnownText *known, const char *text, size_t length,
                         const FontMapEntry &entry)
{
    char bytes[16] = {};
    WCHAR wide[std::size(bytes)];
    long converted = ConvertTextNode({bytes, wide, sizeof bytes}, text, length, entry);
    if (converted < 1 || converted > long(kLongestResult))
        return;
    memcpy(known->bytes, bytes, size_t(converted));
    known->length = uint8_t(converted);
}

// The room is measured once, for the longest result of each byte: no character has to be checked.
// The record behind the last result is copied whole, so one of them is left free at the end.
size_t ConvertTextFast(TextMemory *memory, const TextRoom &room, const char *text, size_t length,
                       const FontMapEntry &entry)
{
    if (room.size < sizeof(KnownText))
        return 0;
    if (length > (room.size - sizeof(KnownText)) / kLongestResult)
        return 0;
    KnownCharacters *characters = KnownOfType(memory, entry.conversionType);
    const uint8_t *next = AsBytes(text), *end = next + length;
    char *output = room.text;
    for (size_t size; next < end; next += size) {
        KnownText *known = FindCharacter(characters, next, size_t(end - next), &size);
        if (!known)
            return 0;
        if (!known->length)
            AskCharacter(known, reinterpret_cast<const char *>(next), size, entry);
        if (!known->length)
            return 0;
        memcpy(output, known, sizeof *known);  // the length behind the bytes is overwritten or cut
        output += known->length;
    }
    assert(size_t(output - room.text) <= room.size - sizeof(KnownText));
    return size_t(output - room.text);
}

// The byte pipeline of the document converter. The word processor stored the bytes of a legacy
// font's text as the characters that they are in code page 1252; a character without a place there
// becomes a break. The steps go between the two halves of the room: text to wide, wide to the bytes
// of the font, these to wide, wide to text.
#include "xmlconv/translate.h"

#include <cassert>
#include <climits>

#include "xmlconv/translate_tables.h"

enum { kTypeLao = 0, kType2000 = 2, kTypeLetters = 3 };
// Codes of the converter, but for the second hyphen, which is the internal code's.
enum : uint8_t { kBreak = 0x96, kHyphen = 0x2D, kHyphenOfLao = 0x8C, kNoBreakSpace = 0xA0 };
constexpr uint8_t kNoEquivalent = '?';

// The "Lao" fonts have the internal code, where the hyphen's byte is the break.
static uint8_t SwapHyphens(uint8_t byte)
{
    if (byte == kHyphen)
        return kBreak;
    return byte == kHyphenOfLao ? uint8_t(kHyphen) : byte;
}

uint8_t TranslateFontByte(uint8_t byte, int type)
{
    switch (type) {
    case kTypeLao: return SwapHyphens(byte);
    case kType2000: return byte < 0x80 ? byte : kBytesOf2000[byte - 0x80];
    case kTypeLetters:
        if (byte < 0x20 || byte == kNoBreakSpace)
            return byte;
        return byte < kNoBreakSpace ? kBytesOfLetters[byte - 0x20] : kNoEquivalent;
    default: return byte;
    }
}

static uint16_t SecondUnitOf(uint8_t code)
{
    for (const SecondUnit &row : kSecondUnits)
        if (code >= row.low && code <= row.high)
            return row.unit;
    return 0;
}

int UnitsOfFontByte(uint8_t byte, int type, WCHAR *units)
{
    uint8_t code = TranslateFontByte(byte, type);
    uint16_t first = code < 0x80 ? 0 : kFirstUnits[code - 0x80];
    units[0] = WCHAR(first ? first : code);
    units[1] = WCHAR(SecondUnitOf(code));
    return units[1] ? 2 : 1;
}

// Number of code units of the translated bytes, of which each gives one or two; kTextTooLong when
// two more would not fit.
static long ExpandBytes(const TextRoom &room, size_t length, int type)
{
    size_t count = 0;
    for (size_t i = 0; i < length; ++i) {
        WCHAR units[2];
        if (count + 2 > room.size)
            return kTextTooLong;
        int unitCount = UnitsOfFontByte(uint8_t(room.text[i]), type, units);
        room.wide[count++] = units[0];
        if (unitCount == 2)
            room.wide[count++] = units[1];
    }
    return long(count);
}

// The system says no more than 0; why it was is its last error.
static long FailureOfCodePages()
{
    return GetLastError() == ERROR_INSUFFICIENT_BUFFER ? kTextTooLong : kTextFailed;
}

long ConvertTextNode(const TextRoom &room, const char *text, size_t length,
                     const FontMapEntry &entry)
{
    assert(length <= room.size && room.size <= INT_MAX);
    if (length == 0)
        return 0;
    int size = int(room.size);
    const char standard = char(entry.conversionType == kTypeLao ? kHyphen : kBreak);
    int units = MultiByteToWideChar(CP_UTF8, 0, text, int(length), room.wide, size);
    if (units < 1)
        return FailureOfCodePages();
    int bytes = WideCharToMultiByte(1252, 0, room.wide, units, room.text, size, &standard, nullptr);
    if (bytes < 1)
        return FailureOfCodePages();
    long expanded = ExpandBytes(room, size_t(bytes), entry.conversionType);
    if (expanded < 1)
        return expanded;
    int result = WideCharToMultiByte(CP_UTF8, 0, room.wide, int(expanded), room.text, size, nullptr,
                                     nullptr);
    return result < 1 ? FailureOfCodePages() : result;
}

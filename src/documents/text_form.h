// How text stands in a part: how it is read into characters, and written again. A format brings its
// own forms; those of XML stand here.
#pragma once

#include <windows.h>

#include "documents/bytes.h"

// Code units of 16 bits.
struct Units {
    WCHAR *data;  // owned
    size_t length, room;
    bool failed;  // memory was short
};
void FreeUnits(Units *units);

// Room for so many more behind its length: where they go, or null.
WCHAR *MakeUnits(Units *units, size_t count);
void AppendUnit(Units *units, WCHAR unit);

// A byte of the source that has to come out as it came: one that is no UTF-8, the ampersand of a
// reference that nobody knows, a placeholder. As a unit it is half of a pair without the other
// half, which no text has.
constexpr WCHAR kKeptBytes = 0xDC00;
inline bool IsKeptByte(WCHAR unit)
{
    return unit >= kKeptBytes && unit <= kKeptBytes + 0xFF;
}

struct TextForm {
    void (*read)(std::string_view raw, Units *units);
    void (*write)(const WCHAR *units, size_t count, Bytes *bytes);
};
extern const TextForm kXmlText, kXmlValue, kCdataText, kPlainUtf8;

// What forms are made of: the next character of UTF-8, and a character as UTF-8. A unit that is
// half of a pair takes the other half along: the number of units.
void ReadUtf8(std::string_view *text, Units *units);
size_t WriteUtf8(const WCHAR *units, size_t count, Bytes *bytes);
void AppendCharacter(Units *units, unsigned long character);

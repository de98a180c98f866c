// The table of registered fonts: each ties a font's name to a font code, a substitute and a scale.
// It doesn't exist before CreateFontTable; every question then has the answer of an unknown font.
// The queries for hosts are declared in orvel.h.
#pragma once

#include <windows.h>

enum {
    kFontNameSize = 37,  // terminator included
    kFontRoom = 128,     // records of the block: the last is the working slot of an addition
    kMostFonts = 127,
    kMostFontCodes = 16,
    kFontCodeNameSize = 32,
    kLeastScale = 10,  // of a substitute, in percent
    kMostScale = 1000,
};

constexpr char kFieldEnds[] = ",\r\n\x1A";  // what a field of the list's file can't hold

struct FontRecord {
    char name[kFontNameSize];  // compared without regard to case
    char substitute[kFontNameSize];
    short code;      // 0 to 15
    short scale;     // of the substitute, in percent
    short extended;  // nonzero: private-use characters
};

struct FontTable {
    FontRecord *records;  // kFontRoom of them, null before the start
    WORD count;
    char codeNames[kMostFontCodes][kFontCodeNameSize];
    int codeCount;
};

extern FontTable gFonts;

// Takes the block and reads the list: 1 done, 0 without memory.
int CreateFontTable();

// The record behind an index, null when there is no such record.
FontRecord *FontAt(int index);

// Name of the first font of a code, or null.
const char *FirstFontOfCode(int code);

// Takes a record out of the table in memory: 1 done, 0 when there is none or it is the only one.
int RemoveFontRecord(int index);

// Whether the code's low four bits are those of the Unicode fonts, which alone carry `extended`.
inline bool CarriesExtended(const FontRecord &record)
{
    return (record.code & 15) == 1;
}

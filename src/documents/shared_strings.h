// The shared strings of a workbook. A string has no font: the cells that show it have, and two of
// them may show one string in a legacy font and in another one. The sheets are read first, so that
// it is known in which fonts each string is shown; the first stays where the string is, for each of
// the others it is put at the end of the list once more.
#pragma once

#include <cstdint>

#include "documents/bytes.h"

// One more form of a string.
struct StringCopy {
    int string, code;      // the string's place in the list, and the code of its text
    int font;              // the first one of that code in which it is shown
    int place;             // of the copy in the new list; kNoCopy: the string can't be copied
    size_t start, length;  // its text as it stands in the list
    int next;              // of the copies of one slot; -1: none
};
enum { kNoCopy = -1, kCopySlots = 1024 };

struct SharedStrings {
    int *fonts;  // owned: by place, the number of the font, and 1; 0: shown by no cell
    size_t count, room;
    StringCopy *copies;  // owned
    size_t copyCount, copyRoom;
    int slots[kCopySlots];  // the first copy of each, and 1; 0: none
    Bytes texts;
    size_t listed;    // strings of the list itself
    size_t added;     // and copies behind them
    char prefix[16];  // of the list's elements, with its colon; terminated
    bool failed;      // memory was short
};
void FreeSharedStrings(SharedStrings *strings);

// The font that the string in its place is shown in; kNoFont for one that no cell shows yet.
int FontOfString(const SharedStrings &strings, int string);
bool IsShown(const SharedStrings &strings, int string);

// A cell shows a string for the first time, or in a font of another code.
void ShowString(SharedStrings *strings, int string, int font);
void AddCopy(SharedStrings *strings, int string, int font, int code);

// The copy of a string in a code; null when there is none.
StringCopy *FindCopy(const SharedStrings &strings, int string, int code);

// Whether a string has copies: its text is wanted then.
bool HasCopies(const SharedStrings &strings, int string);

// The list has been read: its copies get their places, and their text. A string whose text isn't
// plain has none.
void KeepText(SharedStrings *strings, int string, std::string_view text);
void PlaceCopies(SharedStrings *strings, size_t listed);

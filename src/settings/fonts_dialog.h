// What the fonts dialog decides without its window: in which state it is, and what becomes of a
// font that was entered.
#pragma once

#include "fonts/font_table.h"

enum FontsMode {
    kShowingFonts = 1,
    kAddingFont = 2,
    kModifyingFont = 4,
};

// What the controls hold as OK is pressed.
struct FontEntry {
    char name[kFontNameSize - 1];  // the dialog takes a byte less than the table
    char substitute[kFontNameSize - 1];
    int code;         // the font code; -1: none is selected
    bool isExtended;  // the box is checked
    short scale;      // in percent, whatever was typed
};

// Name, code and flag: stored before the substitute is asked about, and kept whatever the answer.
void StoreFont(FontRecord *record, const FontEntry *entry);

// Whether a registered font of that font code has this name.
bool IsFontOfCode(const char *name, int code);

// Counts the record in the working slot, unless its name is registered: then the index of that one,
// and the record is dropped.
int CountAddedFont();

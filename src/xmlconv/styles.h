// What a streaming conversion keeps to know the font of a text: the document's styles, and what the
// current paragraph and run have said. Nothing here depends on where an element ends.
#pragma once

#include <string_view>

#include "xmlconv/tag.h"
#include "xmlconv/translate.h"

enum { kFontNameSlot = 64 };

// Which of its names is the font of a block.
enum FontHint { kNoHint = -1, kAsciiHint, kFarEastHint, kComplexHint };

struct RunFontBlock {
    char names[4][kFontNameSlot];  // ascii, far east, complex script, high ansi; the last is never
                                   // chosen
    int hint;
    bool isSet;
};

enum StyleType { kParagraphStyle, kCharacterStyle, kListStyle, kTableStyle };

struct StyleRecord {
    char name[kTagNameSize];
    char basedOnName[kTagNameSize];
    StyleRecord *basedOn;  // none until the body begins
    RunFontBlock *fonts;   // none without fonts of its own
    StyleType type;
};

struct StyleState {
    StyleRecord *table;
    StyleRecord **index;  // the first style of each name, by a hash of the name
    int capacity;         // grows, and stays so for later conversions
    int last;             // index of the style added last, -1 for none
    StyleRecord *normal, *paragraph,
        *run;  // the style "Normal", and those of the current paragraph and run
    RunFontBlock paragraphFonts, runFonts;
    RunFontBlock *activeParagraphFonts,
        *activeRunFonts;  // set by the current paragraph and run, or none
};
extern StyleState gStyles;

// A clean state and a table of `capacity` styles for a pass: 1, or 0 without memory.
int StartStyles();
void FreeStyles();

// Follows an opening tag, whose parent is set: 1, or 0 when it failed or the table is full.
int TrackTag(TagRecord *tag);

// Follows an opening tag by its name alone: false for one whose attributes count, and nothing has
// been done then.
bool TrackTagName(std::string_view name);

// The first style of a name, of which 63 bytes count, without regard to case; none for an empty
// name.
StyleRecord *FindStyle(const char *name);

// The font of a text at this moment, or none.
const char *ResolveTextFont();
const char *StyleFontName(const StyleRecord *runStyle, const StyleRecord *paragraphStyle);

// The font of a text under a tag, none where it isn't known or the tag isn't w:t: such text stays.
const char *FontOfText(const TagRecord *tag);

// Converts a text in place where its font is a legacy one: the bytes to write, or a failure of
// ConvertTextNode.
long ConvertTextIfLegacy(const TagRecord *tag, const TextRoom &room, size_t length);

// What a conversion keeps to know the font of a text: the document's styles, and what the current
// paragraph and run have said. The tag writer and the fast road of tags tell the tracker of each
// opening tag, the part converter asks it at each text. The one idea: a document is a stream, so
// the last word that was said counts, and nothing here depends on where an element ends.
#pragma once

#include <string_view>

#include "xmlconv/tag.h"

struct Conversion;

enum { kFontNameSlot = 64 };  // bytes of a font's name, terminator included

// Which of its names is the font of a block.
enum FontHint { kNoHint = -1, kAsciiHint, kFarEastHint, kComplexHint };

// What w:rFonts tags said of one style, paragraph or run.
struct RunFontBlock {
    char names[4][kFontNameSlot];  // ascii, far east, complex script, high ansi; the last is never
                                   // chosen
    int hint;                      // a FontHint; only a style's block can have kNoHint
    bool isSet;                    // a tag has been applied to it
};

enum StyleType { kParagraphStyle, kCharacterStyle, kListStyle, kTableStyle };

// Styles are named by their place in the table, which may move when it grows.
enum { kNoStyle = -1 };

struct StyleRecord {
    char name[kTagNameSize];         // the id that tags use; cut
    char basedOnName[kTagNameSize];  // of its base; cut; empty: none
    int basedOn;                     // that base; kNoStyle until the body begins
    RunFontBlock *fonts;             // owned; null without fonts of its own
    StyleType type;
};

struct StyleState {
    // Of the document. All its parts share them.
    StyleRecord *table;  // owned, in the order of the document
    int *index;          // owned, 2 * capacity: the first style of each name, by a hash of the name
    int capacity;        // of the table, in styles
    int last;            // the style added last
    int normal;          // the style "Normal"
    // Of the current paragraph and run.
    int paragraph, run;                                   // their styles
    RunFontBlock paragraphFonts, runFonts;                // go on from one to the next
    RunFontBlock *activeParagraphFonts, *activeRunFonts;  // the block above where it was set here;
                                                          // else null
};

// An empty table for `capacity` styles: 1, or 0 without memory.
int StartStyles(StyleState *styles, int capacity);
void FreeStyles(StyleState *styles);

// Forgets paragraph and run, as at the beginning of each part. The styles stay.
void ResetTextState(StyleState *styles);

// Follows an opening tag, whose parent is set: 1, or 0 with a failure that is reported.
int TrackTag(Conversion *conversion, TagRecord *tag);

// Follows an opening tag by its name alone: false for one whose attributes count, and nothing has
// been done then.
bool TrackTagName(Conversion *conversion, std::string_view name);

// The first style of a name, of which 63 bytes count, without regard to case; kNoStyle for an empty
// name, null and an unknown one.
int FindStyle(const StyleState *styles, const char *name);

// The font of a text at this moment, or null.
const char *ResolveTextFont(const StyleState *styles);

// The font of a text under a tag; null where it isn't known or the tag isn't w:t: such text stays.
const char *FontOfText(const StyleState *styles, const TagRecord *tag);

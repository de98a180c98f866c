// One part of a document on its way through: read piece by piece, and given out again as it is
// asked for. A format says in tables what its elements mean; the walk keeps the open elements, and
// what each has said of fonts goes on to what stands inside of it and ends with it.
#pragma once

#include "documents/document.h"
#include "documents/names.h"
#include "documents/paragraph.h"

struct Walk;

// A tag at work. Changes are noted and made when the tag goes out; all other bytes of it stay.
struct Tag {
    std::string_view raw;  // as it stands; in the scanner's window
    bool isEmpty;          // <a/>
};

enum CellType : uint8_t { kOtherCell, kSharedString, kFormulaString };

// What the open elements have said. An element has that of the one around it at first.
struct TextState {
    int fonts[kFontSlots];                     // of a run, or of whatever has fonts in a format
    int runStyle, paragraphStyle, tableStyle;  // numbers of FontStyles
    int style;                         // the one that is being defined; kNoFontStyle elsewhere
    int texts[3];                      // held texts that wait for their fonts; kNotHeld elsewhere
    const struct ElementRow *textRow;  // of the element whose text stands here; null: none does
    const FontMapEntry *wantsComplex;  // a legacy font that still lacks one for complex script
    int stringPlace;                   // in the list of shared strings
    CellType cellType;
    uint8_t level;   // of a paragraph in a list, from 0
    bool isComplex;  // the run is in complex script
    bool prefersEastAsian;
    uint8_t twins;       // of run properties: those of complex script that stand here, by bits
    bool isInParagraph;  // with no table in between
    bool isRenamed;      // the font that is described here has another name now
    bool isDropped;      // what stands here doesn't go out
};

typedef bool (*TagWork)(Walk *walk, Tag *tag);

enum ElementKind : uint8_t {
    kPlain,      // text goes on over it
    kApart,      // text inside of it, before and behind it don't go on into one another
    kParagraph,  // the same, and all that is held is done at both ends of it
};

struct ElementRow {
    std::string_view name;  // with the prefix of names.cpp
    ElementKind kind = kPlain;
    TagWork open = nullptr;                   // what its tag says; null: nothing. False: a failure
    bool (*close)(Walk *walk) = nullptr;      // the same at its end, while it is still open
    FontPair (*fonts)(Walk *walk) = nullptr;  // of the text in it, and in what stands in it; null:
                                              // it has none of its own
    // Called for each element that opens directly in it, in front of that one's tag.
    void (*child)(Walk *walk, const ElementRow *row) = nullptr;
    // What is done with such text, in both readings; null: it is put where it stands.
    void (*text)(Walk *walk, const TextForm *form, std::string_view raw) = nullptr;
};

// The elements of all formats that may meet in one document.
struct Vocabulary {
    const ElementRow *rows;
    size_t count;
};

// Rows by name, for a quick look-up; owned by whoever walks.
struct ElementIndex {
    const ElementRow **slots;  // owned
    size_t size;
};
bool MakeElementIndex(ElementIndex *index, const Vocabulary *vocabularies, size_t count);
void FreeElementIndex(ElementIndex *index);

struct OpenElement {
    const ElementRow *row;  // null: no vocabulary has it
    TextState state;
};

// A change to the tag at work.
struct TagEdit {
    size_t start, end;        // bytes of the tag that go
    size_t text, textLength;  // what comes in their place, in the block of texts
    const TextForm *form;     // not null: the bytes are text themselves
    FontPair fonts;           // of that text
    bool isSpace;             // nothing changes here, but it is where xml:space could stand
    int *held;                // receives its number where its fonts come later; else null
};
enum { kMostEdits = 24 };

// Columns of a sheet that have one style, up to the column `end`.
struct ColumnGroup {
    int end, style;
};
enum { kMostColumnGroups = 256, kMostColumns = 1024 * 1024 };

struct Walk {
    Document *document;            // not owned
    const ElementIndex *elements;  // not owned
    Scanner scanner;
    Prefixes prefixes;
    OpenElement *open;  // owned: from the outermost on; the first stands for the part itself
    size_t depth, room;
    Paragraph paragraph;
    Bytes output;  // what is ready
    size_t given;  // of it, bytes
    Bytes editTexts;
    TagEdit edits[kMostEdits];
    int editCount;
    bool hasChanged;     // a tag came out otherwise than it came
    bool stopsAtChange;  // whether anything changes is all that is asked
    bool isDone;         // at the end, or where a reading for styles has seen enough
    int part, folder;    // tell styles of parts apart where a format has it so
    ColumnGroup columns[kMostColumnGroups];  // of the sheet that is open
    int columnCount, column;                 // how many they are; the next cell's
    // The shape that is open: the place of the layout that it fills, and the fonts of its list.
    char placeType[16], placeNumber[16];
    bool hasPlace;
    int listFonts[9];
    char drawingPrefix[16];  // of its elements, with the colon
    // A property of a run whose twin for complex script may follow: its place in a table and 1, the
    // value, and the tag's prefix with its colon.
    int twin;
    char twinValue[16], twinPrefix[16];
};

// Begins a part. StopWalk frees all in either case. False without memory, which is reported.
bool StartWalk(Walk *walk, Document *document, const ElementIndex *elements,
               const DocumentSource &source);
void StopWalk(Walk *walk);

// Whether the part has changed so far.
bool HasChanged(const Walk *walk);

// Bytes of the new part, at most `size`; 0 at the end and at a failure.
size_t ReadWalk(Walk *walk, char *buffer, size_t size);

// ---- for the works of elements ----

// The open element that stands `above` others around the one at work, itself with 0. Above the part
// there is an element without a row.
OpenElement *ElementAbove(Walk *walk, size_t above);
inline TextState *StateOf(Walk *walk)
{
    return &ElementAbove(walk, 0)->state;
}
bool IsInside(Walk *walk, size_t above, std::string_view name);

// The attribute of a written name: false when the tag lacks it.
bool FindAttribute(Walk *walk, const Tag *tag, std::string_view name, Attribute *attribute);

// Its value; no data when the tag lacks it. Values of numbers: `standard` for what is no number.
std::string_view ValueOf(Walk *walk, const Tag *tag, std::string_view name);
int NumberOf(Walk *walk, const Tag *tag, std::string_view name, int standard);

// Changes of the tag at work, in the order of its bytes. Texts are plain: markup in them is written
// as references.
void ReplaceValue(Walk *walk, const Attribute &attribute, std::string_view text);
void RemoveAttribute(Walk *walk, const Attribute &attribute);
void AddAttribute(Walk *walk, const Tag *tag, std::string_view local, std::string_view text);

// The value of an attribute is text of the document in itself. Where its fonts come later, its
// number goes to one of the texts of an open element, and SetFontsOfTexts gives all of these their
// fonts before that is closed.
void TakeValueAsText(Walk *walk, const Attribute &attribute, const TextForm *form, FontPair fonts);
void TakeValueLater(Walk *walk, const Attribute &attribute, const TextForm *form, int *held);
void SetFontsOfTexts(Walk *walk, FontPair fonts);

// Marks the place of the tag where it could say that blanks at the ends of its text count, unless
// it says so already.
void MarkSpace(Walk *walk, const Tag *tag);

// What goes out at this place: as it came, other than it came, and text.
void PutRaw(Walk *walk, std::string_view raw);
void PutChanged(Walk *walk, std::string_view bytes);
void PutChangedValue(Walk *walk, std::string_view text);  // as the value of an attribute
void PutTextHere(Walk *walk, const TextForm *form, std::string_view raw, FontPair fonts);

// Renames a font where it is a legacy one: its row of the font map; null for any other.
const FontMapEntry *RenameFont(Walk *walk, const Attribute &attribute);

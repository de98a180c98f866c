// The text of a paragraph with the markup in between, held until its end. What is done to text
// needs more than one run of it: a syllable may be cut across two, a word across five. So runs are
// put here with their fonts, markup goes along, and at the paragraph's end the text is converted,
// joined, divided, and all is written in its old order. Where there is nothing to do, nothing is
// held.
#pragma once

#include "documents/font_names.h"
#include "documents/text_form.h"

// The fonts of a text: one for ASCII and one for all other characters; often the same.
struct FontPair {
    int low, high;
};

struct HeldText {
    size_t start, length;  // as it stands in the part, in the held bytes
    const TextForm *form;
    FontPair fonts;
    const FontMapEntry *low, *high;  // how its characters are converted; null: not at all
    size_t first, count;             // its characters, in the paragraph's units
    size_t space;     // where its element could say that blanks at its ends count, in
                      // the held bytes; 0: nowhere
    bool isApart;     // it doesn't go on with what stands in front of it
    bool isVerbatim;  // no breaks are wanted in it
    bool hasChanged;
};

struct Paragraph {
    Bytes held;
    HeldText *texts;  // owned
    size_t count, room;
    int firstNumber;  // of the first of them; numbers go on from paragraph to paragraph
    bool isHolding;   // what comes now is held
    bool isApart;     // of the next text
    size_t space;     // the same
    bool isVerbatim;  // the same: no breaks are wanted in it
    bool hasChanged;  // some text of the part came out otherwise than it came
    Units units;      // the characters of all texts while the paragraph ends, a blank between
                      // those that stand apart
    Units spare;      // the next form of them
};

struct Document;

void FreeParagraph(Paragraph *paragraph);

// Text of a part. It is held when something may have to be done to it; else it goes out at once.
// The number of the held text, kNotHeld else.
enum { kNotHeld = -1 };
int PutText(Document *document, Paragraph *paragraph, const TextForm *form, std::string_view raw,
            FontPair fonts, Bytes *output);

// Text whose fonts aren't known yet is held in any case; SetFonts says them before the end. Of a
// text that has gone out since, as it came, they don't count any more.
int PutTextOfUnknownFont(Paragraph *paragraph, const TextForm *form, std::string_view raw);
void SetFonts(Document *document, Paragraph *paragraph, int number, FontPair fonts);

// Everything else goes to the output, or is held behind the text.
void PutMarkup(Paragraph *paragraph, std::string_view raw, Bytes *output);

// The text that comes now doesn't go on with what came before.
inline void SetApart(Paragraph *paragraph)
{
    paragraph->isApart = true;
}

// Whether text in these fonts is held.
bool NeedsWork(const Document *document, FontPair fonts);

// What comes from here on is held.
inline void HoldAll(Paragraph *paragraph)
{
    paragraph->isHolding = true;
}

// Does what is held of a long paragraph, as one with a picture in it is: between two pieces of it.
// False without memory.
bool BoundParagraph(Document *document, Paragraph *paragraph, Bytes *output);

// Does what is to be done and writes all that is held. False without memory.
bool EndParagraph(Document *document, Paragraph *paragraph, Bytes *output);

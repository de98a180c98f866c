// What the parts of a made-up document share while it is written.
#pragma once

#include "document.h"
#include "document_text.h"

enum { kNoFace = -1, kNoStyle = -1 };

struct Face {
    std::string name, unicodeName;  // the same for a font that stays
    int type;                       // of its code, kUnicodeType for a font without a code
    bool isLegacy;
};
enum { kUnicodeType = -1 };

// A style as it is made: the font that its text gets, through its bases too, is known then.
struct MadeStyle {
    std::string id;
    const char *type;
    int base, ownFace, face;
};

// Word processors set one slot of a font block, or say by a hint which one is meant. A block of a
// paragraph or run goes on where the last one of its kind ended, so its hint is kept here.
enum FontsOwner { kOfStyle, kOfParagraph, kOfRun };

struct DocumentWriter {
    MadeDocument made;
    uint32_t seed;
    bool isTidy;
    std::vector<Face> faces;  // legacy ones first
    unsigned legacyFaces, nextFace;
    std::vector<std::string> phrases;
    std::vector<MadeStyle> styles;
    unsigned paragraphStyles, characterStyles;  // their numbers; they stand first, in this order
    int hints[3];                               // by owner
    // Of the paragraph that is written.
    int paragraphStyle, paragraphFace;
    bool isLost;  // another paragraph stood inside it, and the text's font has to stand in its run
};

inline unsigned Random(DocumentWriter *writer, unsigned below)
{
    return NextRandom(&writer->seed, below);
}

// Writes a piece that stays as it is, or one that doesn't.
void Put(DocumentWriter *writer, const std::string &piece);
void PutChanged(DocumentWriter *writer, const std::string &source, const std::string &converted);

// Writes a tag that isn't in normal form, but in a tidy document.
void PutUntidy(DocumentWriter *writer, const std::string &source, const std::string &normal);

// A legacy font, each in turn, or now and then another one.
int AnyFace(DocumentWriter *writer);

// A w:rFonts that sets its owner's text in a font; one that nobody's text is set in.
void PutFonts(DocumentWriter *writer, int face, FontsOwner owner);
void PutUnusedFonts(DocumentWriter *writer, int face);

// A tag that names one font in an attribute: "<w:font w:name=", "/>".
void PutFontName(DocumentWriter *writer, const char *before, int face, const char *behind);

void MakeFaces(DocumentWriter *writer, bool isPlain);

// All that stands before the body; makes the styles.
void PutHead(DocumentWriter *writer);

// A paragraph; `depth` 0 may hold notes and text boxes with paragraphs of their own.
void PutParagraph(DocumentWriter *writer, int depth);

// The input of a part, cut into what XML is made of: tags, texts and what is neither. Nothing is
// changed and nothing left out: the pieces in their order are the part. HTML is cut by the same
// scanner, since its tags look the same from outside.
#pragma once

#include <cstdint>

#include "documents/bytes.h"
#include "orvel.h"
#include "xmlconv/reader.h"

enum PieceKind : uint8_t {
    kEndPiece,      // nothing comes any more
    kTextPiece,     // up to the next tag; a long text comes as several
    kOpeningPiece,  // <a …>
    kClosingPiece,  // </a>
    kEmptyPiece,    // <a …/>
    kCdataPiece,    // <![CDATA[ … ]]>
    kOtherPiece     // comments, declarations, instructions
};

// A piece points into the scanner's window, until the next one is asked for.
struct Piece {
    PieceKind kind;
    std::string_view raw;   // as it stands
    std::string_view name;  // of a tag, prefix included
};

struct Scanner {
    DocumentSource source;
    Bytes window;  // what was read and isn't given out yet stands in it from `used` on
    size_t used;
    uint64_t position;  // bytes of the part that were given out
    bool hasEnded;      // the source has no more
    bool isHtml;        // a bracket that begins no tag is text
    ConversionFailure failure;
};

void StartScanning(Scanner *scanner, const DocumentSource &source, bool isHtml);
void StopScanning(Scanner *scanner);

// The next piece. False when there is none that could be read, with the failure's number.
bool NextPiece(Scanner *scanner, Piece *piece);

// Everything up to the closing tag of this name, as one text piece or several: what stands in an
// HTML script is no markup. At the closing tag, and at the end, it is empty.
bool NextRawText(Scanner *scanner, std::string_view name, Piece *piece);

struct Attribute {
    std::string_view name, value;  // as they stand; without a value it is empty
    size_t start, end;             // of all of it in the tag
    size_t valueStart;             // of the value in the tag, quotes not counted
};

// The next attribute of an opening or empty tag from *place on, 0 at first. False behind the last.
bool NextAttribute(std::string_view tag, size_t *place, Attribute *attribute);

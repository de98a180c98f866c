// RTF cut into what it is made of. As with XML nothing is left out: the tokens in their order are
// the document.
#pragma once

#include "documents/bytes.h"
#include "orvel.h"
#include "xmlconv/reader.h"

enum RtfKind : unsigned char {
    kRtfEnd,
    kRtfOpen,     // {
    kRtfClose,    // }
    kRtfWord,     // \word, with its number and its blank
    kRtfSign,     // \~ and the like; \'hh, whose byte is the number
    kRtfLetters,  // letters of a text, on one line
    kRtfLine,     // line ends, which say nothing
    kRtfBinary    // bytes of a picture
};

struct RtfToken {
    RtfKind kind;
    std::string_view raw;   // as it stands; valid until the next token
    std::string_view word;  // of a word, without its backslash; of a sign the character
    int number;
    bool hasNumber;
};

struct RtfScanner {
    DocumentSource source;
    Bytes window;  // what was read and isn't given out yet stands in it from `used` on
    size_t used;
    size_t binary;  // bytes of a picture that are still to come
    bool hasEnded;
    ConversionFailure failure;
};

void StartRtf(RtfScanner *scanner, const DocumentSource &source);
void StopRtf(RtfScanner *scanner);

// The next token. False when there is none that could be read, with the failure's number.
bool NextToken(RtfScanner *scanner, RtfToken *token);

// The same out of a text in memory, which the token is taken off of: false at its end.
bool TakeToken(std::string_view *text, RtfToken *token);

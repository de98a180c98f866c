// The open elements of a page. Pages leave ends out and let elements overlap; what is open where is
// said here as browsers have it, as far as fonts go.
#pragma once

#include <string_view>

#include "documents/bytes.h"

enum HtmlKind : unsigned char {
    kInline,      // of no consequence for others
    kFormatting,  // goes on where the element around it ends: <font>, <b>
    kBlock,       // ends an open paragraph
    kCell,        // what formats ends with it
    kVoid,        // has no end: <br>
    kRawText      // what stands in it is no markup: <script>
};

struct HtmlElement {
    char name[12];  // in small letters, terminated; longer ones are cut
    HtmlKind kind;
    int font;         // the number of its own; 0: none
    bool isVerbatim;  // its text is a program's, or stands as it was typed
};

struct HtmlTree {
    HtmlElement *open;  // owned, from the outermost on
    size_t count, room;
    bool failed;  // memory was short, or elements stand in one another without end
};
void FreeHtmlTree(HtmlTree *tree);

// What an element is, by its name in whatever capitals.
HtmlElement ElementOfName(std::string_view name);

// Opens an element: those that it ends are closed first.
void OpenHtmlElement(HtmlTree *tree, const HtmlElement &element);

// Closes the nearest element of a name, and what it takes along.
void CloseHtmlElement(HtmlTree *tree, std::string_view name);

// The font at this place; 0: none has been named.
int FontHere(const HtmlTree &tree);
bool IsVerbatimHere(const HtmlTree &tree);

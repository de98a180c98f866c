// Formats are told by what they begin with. XML is told apart by its first element; one that nobody
// knows is read as WordprocessingML, of which pieces go around, and comes out as it came.
#include "documents/format.h"

#include <cstring>
#include <iterator>

#include "documents/names.h"
#include "frame/strings.h"

struct Beginning {
    std::string_view bytes;
    DocumentFormat format;
};
using namespace std::literals;
constexpr Beginning kBeginnings[] = {{"PK\3\4"sv, kDocx}, {"{\\rtf"sv, kRtf}};

struct FirstElement {
    std::string_view name;
    DocumentFormat format;
};
constexpr FirstElement kFirstElements[] = {{"pkg:package", kFlatOpc},
                                           {"office:document", kFlatOpenDocument}};

// Elements with which pages begin, declared or not.
constexpr std::string_view kHtmlElements[] = {"html", "head",   "body", "title", "meta",
                                              "font", "p",      "div",  "table", "h1",
                                              "h2",   "center", "b",    "br"};

struct HeadSource {
    std::string_view left;
};

static size_t ReadHead(void *context, char *buffer, size_t size)
{
    std::string_view *left = &static_cast<HeadSource *>(context)->left;
    size_t count = left->size() < size ? left->size() : size;
    memcpy(buffer, left->data(), count);
    left->remove_prefix(count);
    return count;
}

static DocumentFormat FormatOfElement(Prefixes *prefixes, const Piece &piece)
{
    DeclarePrefixes(prefixes, piece.raw, 1);
    KnownName name = NameOfTag(prefixes, piece.name);
    for (const FirstElement &row : kFirstElements)
        if (IsName(name, row.name))
            return row.format;
    for (std::string_view html : kHtmlElements)
        if (EqualNoCase(piece.name, html))
            return kHtml;
    return kWordXml2003;
}

static bool IsHtmlDeclaration(std::string_view piece)
{
    constexpr std::string_view kDeclaration = "<!doctype html";
    return EqualNoCase(piece.substr(0, kDeclaration.size()), kDeclaration);
}

// The scanner of pages takes what XML doesn't know too.
static DocumentFormat FormatOfMarkup(std::string_view head)
{
    HeadSource source = {head};
    Scanner scanner;
    Prefixes prefixes = {};
    Piece piece;
    DocumentFormat format = kNoFormat;
    StartScanning(&scanner, {ReadHead, &source, 0}, true);
    while (format == kNoFormat && NextPiece(&scanner, &piece) && piece.kind != kEndPiece) {
        bool isTag = piece.kind == kOpeningPiece || piece.kind == kEmptyPiece;
        if (piece.kind == kOtherPiece && IsHtmlDeclaration(piece.raw))
            format = kHtml;
        else if (isTag)
            format = FormatOfElement(&prefixes, piece);
    }
    StopScanning(&scanner);
    FreePrefixes(&prefixes);
    return format;
}

DocumentFormat FormatOfHead(std::string_view head)
{
    for (const Beginning &row : kBeginnings)
        if (head.starts_with(row.bytes))
            return row.format;
    if (head.starts_with("\xEF\xBB\xBF"))
        head.remove_prefix(3);
    size_t start = head.find_first_not_of(" \t\r\n");
    if (start == head.npos || head[start] != '<')
        return kNoFormat;
    return FormatOfMarkup(head.substr(start));
}

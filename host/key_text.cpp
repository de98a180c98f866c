// Text for the key table operations. The stand-in is a byte that stands for no sign and can't be a
// part of UTF-8, so that a table's own texts, which may be UTF-8, never hold it.
#include "key_text.h"

#include <cctype>

#include "utf8.h"

constexpr char kStandIn = '\xFF';
constexpr char kBreakMark = 45, kHiddenBreak = 31, kRealHyphen = '\x8C';

// Follows coded text, so that a hyphen that ends a syllable can be told from one that is text.
struct CodedPlace {
    bool inBrackets, inSyllable;
};

static bool IsAsciiLetter(char c)
{
    return c > 0 && isalpha(c);
}

static bool GoesOnSyllable(char c)
{
    return c > 0 && (isalnum(c) || c == '*' || c == '#' || c == '&' || c == '\'');
}

static void Follow(CodedPlace *place, char c)
{
    if (place->inBrackets) {
        place->inBrackets = c != ']';
        return;
    }
    place->inBrackets = c == '[';
    place->inSyllable = IsAsciiLetter(c) || (place->inSyllable && GoesOnSyllable(c));
}

// Line ends and tabs are text; other control bytes mean something to the library.
static bool IsPlainAscii(char c)
{
    return (c >= ' ' && c < 127) || c == '\n' || c == '\r' || c == '\t';
}

static void AddForeign(KeyText *text, std::string_view piece)
{
    if (text->code.empty() || text->code.back() != kStandIn) {
        text->code += kStandIn;
        text->foreign.emplace_back();
    }
    text->foreign.back() += piece;
}

static void AddAscii(KeyText *text, char c, Hyphens hyphens, CodedPlace *place)
{
    bool isText =
        c == '-' && (hyphens == Hyphens::kText || place->inBrackets || !place->inSyllable);
    if (isText || !IsPlainAscii(c))
        AddForeign(text, std::string_view(&c, 1));
    else
        text->code += c;
    Follow(place, c);
}

void ReadKeyText(const CodeTrace &trace, std::string_view source, Hyphens hyphens, bool inBrackets,
                 KeyText *text)
{
    CodedPlace place = {inBrackets, false};
    text->code.clear();
    text->foreign.clear();
    for (size_t i = 0; i < source.size();) {
        size_t size = CharacterSize(source.substr(i));
        std::string_view piece = source.substr(i, size);
        i += size;
        char code = size == 3 && IsLaoAt(piece.data(), 3)
                        ? char(trace.codes[LaoAt(piece.data()) & 127])
                        : 0;
        if (IsLaoCode(code))
            text->code += code;
        else if (size == 1)
            AddAscii(text, piece[0], hyphens, &place);
        else if (piece != kZeroWidthSpace)  // old breaks go
            AddForeign(text, piece);
        if (size > 1)
            place.inSyllable = false;
    }
}

std::string WriteKeyText(const CodeTrace &trace, const KeyText &text, Hyphens hyphens)
{
    std::string output, lao;
    size_t foreign = 0;
    auto flush = [&] {
        output += Utf8FromCode(trace, lao);
        lao.clear();
    };
    for (const char *c = text.result.data(); *c; ++c) {
        bool isDecoded = hyphens == Hyphens::kSeparators;
        if (isDecoded && (IsLaoCode(*c) || *c == kBreakMark)) {
            lao += *c;
            continue;
        }
        flush();
        if (*c == kStandIn)
            output += foreign < text.foreign.size() ? text.foreign[foreign++] : "";
        else if (*c == kHiddenBreak)
            output += kZeroWidthSpace;
        else
            output += *c == kRealHyphen ? '-' : *c;
    }
    flush();
    return output;
}

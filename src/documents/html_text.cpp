// References are read as browsers do: those of the first standards also without their semicolon,
// and numbers from 128 to 159 as the bytes of code page 1252 that people meant.
#include "documents/html_text.h"

#include <cstdint>
#include <cstring>
#include <iterator>

#include "documents/code_page.h"
#include "frame/strings.h"

// clang-format off
// Characters from U+00A0 to U+00FF by name, in their order.
constexpr std::string_view kLatinNames[96] = {
    "nbsp", "iexcl", "cent", "pound", "curren", "yen", "brvbar", "sect", "uml", "copy", "ordf", "laquo", "not", "shy", "reg", "macr",
    "deg", "plusmn", "sup2", "sup3", "acute", "micro", "para", "middot", "cedil", "sup1", "ordm", "raquo", "frac14", "frac12", "frac34", "iquest",
    "Agrave", "Aacute", "Acirc", "Atilde", "Auml", "Aring", "AElig", "Ccedil", "Egrave", "Eacute", "Ecirc", "Euml", "Igrave", "Iacute", "Icirc", "Iuml",
    "ETH", "Ntilde", "Ograve", "Oacute", "Ocirc", "Otilde", "Ouml", "times", "Oslash", "Ugrave", "Uacute", "Ucirc", "Uuml", "Yacute", "THORN", "szlig",
    "agrave", "aacute", "acirc", "atilde", "auml", "aring", "aelig", "ccedil", "egrave", "eacute", "ecirc", "euml", "igrave", "iacute", "icirc", "iuml",
    "eth", "ntilde", "ograve", "oacute", "ocirc", "otilde", "ouml", "divide", "oslash", "ugrave", "uacute", "ucirc", "uuml", "yacute", "thorn", "yuml",
};
// clang-format on

struct NamedCharacter {
    std::string_view name;
    WCHAR character;
};
constexpr NamedCharacter kNamed[] = {
    {"amp", '&'},       {"lt", '<'},        {"gt", '>'},        {"quot", '"'},
    {"euro", 0x20AC},   {"sbquo", 0x201A},  {"fnof", 0x0192},   {"bdquo", 0x201E},
    {"hellip", 0x2026}, {"dagger", 0x2020}, {"Dagger", 0x2021}, {"circ", 0x02C6},
    {"permil", 0x2030}, {"Scaron", 0x0160}, {"lsaquo", 0x2039}, {"OElig", 0x0152},
    {"lsquo", 0x2018},  {"rsquo", 0x2019},  {"ldquo", 0x201C},  {"rdquo", 0x201D},
    {"bull", 0x2022},   {"ndash", 0x2013},  {"mdash", 0x2014},  {"tilde", 0x02DC},
    {"trade", 0x2122},  {"scaron", 0x0161}, {"rsaquo", 0x203A}, {"oelig", 0x0153},
    {"Yuml", 0x0178},
};

// ---- references ----

static bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

static bool IsHexDigit(char c)
{
    return IsDigit(c) || ((c | 32) >= 'a' && (c | 32) <= 'f');
}

static bool IsNameSign(char c)
{
    return IsDigit(c) || ((c | 32) >= 'a' && (c | 32) <= 'z');
}

// A number behind "&#", of which `length` bytes are read; 0: it is none.
static unsigned long ReadNumber(std::string_view text, size_t *length)
{
    bool isHex = text.size() > 2 && (text[2] | 32) == 'x';
    unsigned long number = 0;
    size_t start = isHex ? 3 : 2, at = start;
    for (; at < text.size() && (isHex ? IsHexDigit(text[at]) : IsDigit(text[at])); ++at) {
        unsigned digit =
            IsDigit(text[at]) ? unsigned(text[at] - '0') : unsigned((text[at] | 32) - 'a') + 10;
        number = number < 0x200000 ? number * (isHex ? 16 : 10) + digit : number;
    }
    *length = at + (at < text.size() && text[at] == ';');
    bool isCharacter = at > start && number <= 0x10FFFF && (number & ~0x7FFUL) != 0xD800;
    return isCharacter ? number : 0;
}

static WCHAR CharacterOfName(std::string_view name, bool isEnded)
{
    for (size_t i = 0; i < std::size(kLatinNames); ++i)
        if (kLatinNames[i] == name)
            return WCHAR(0xA0 + i);
    for (size_t i = 0; i < std::size(kNamed); ++i)
        if (kNamed[i].name == name && (isEnded || i < 4))
            return kNamed[i].character;
    return 0;
}

// The character of a reference at the beginning of a text; 0: there is none.
static unsigned long ReadHtmlReference(std::string_view text, size_t *length)
{
    if (text.size() > 2 && text[1] == '#') {
        unsigned long number = ReadNumber(text, length);
        return number >= 0x80 && number <= 0x9F ? CharacterOf1252(uint8_t(number)) : number;
    }
    size_t end = 1;
    while (end < text.size() && end < 10 && IsNameSign(text[end]))
        ++end;
    bool isEnded = end < text.size() && text[end] == ';';
    *length = end + isEnded;
    return CharacterOfName(text.substr(1, end - 1), isEnded);
}

// ---- the forms ----

static void ReadHtml(std::string_view raw, bool isUtf8, Units *units)
{
    while (!raw.empty()) {
        size_t length = 1;
        unsigned long character = raw[0] == '&' ? ReadHtmlReference(raw, &length) : 0;
        if (character) {
            AppendCharacter(units, character);
        } else if (raw[0] == '&') {  // of nothing that is known: it is itself
            AppendUnit(units, '&');
            length = 1;
        } else if (isUtf8) {
            ReadUtf8(&raw, units);
            continue;
        } else {
            AppendUnit(units, CharacterOf1252(uint8_t(raw[0])));
        }
        raw.remove_prefix(length);
    }
}

static std::string_view ReferenceFor(WCHAR unit, bool usesWbr)
{
    switch (unit) {
    case '&': return "&amp;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    case 0xA0: return "&nbsp;";
    case 0x200B: return usesWbr ? "<wbr>" : "";
    default: return "";
    }
}

static void WriteHtml(const WCHAR *units, size_t count, bool usesWbr, Bytes *bytes)
{
    for (size_t i = 0; i < count;) {
        std::string_view reference = ReferenceFor(units[i], usesWbr);
        AppendBytes(bytes, reference);
        i += reference.empty() ? WriteUtf8(units + i, count - i, bytes) : 1;
    }
}

static void ReadHtmlUtf8(std::string_view raw, Units *units)
{
    ReadHtml(raw, true, units);
}

static void ReadHtml1252(std::string_view raw, Units *units)
{
    ReadHtml(raw, false, units);
}

static void WriteHtmlPlain(const WCHAR *units, size_t count, Bytes *bytes)
{
    WriteHtml(units, count, false, bytes);
}

static void WriteHtmlWbr(const WCHAR *units, size_t count, Bytes *bytes)
{
    WriteHtml(units, count, true, bytes);
}

static bool IsLao(unsigned long character)
{
    return (character >= 0x0E80 && character <= 0x0EFF) || character == 0x200B;
}

static void ReadKept(std::string_view raw, Units *units)
{
    while (!raw.empty()) {
        size_t length = 1;
        unsigned long character = raw[0] == '&' ? ReadHtmlReference(raw, &length) : 0;
        if (raw[0] != '&') {
            ReadUtf8(&raw, units);
            continue;
        }
        if (IsLao(character))
            AppendCharacter(units, character);
        for (size_t i = 0; i < length && !IsLao(character); ++i)
            AppendUnit(units, WCHAR(kKeptBytes + uint8_t(raw[i])));
        raw.remove_prefix(length);
    }
}

static void WriteKept(const WCHAR *units, size_t count, bool usesWbr, Bytes *bytes)
{
    for (size_t i = 0; i < count;) {
        bool isWbr = usesWbr && units[i] == 0x200B;
        if (isWbr)
            AppendBytes(bytes, "<wbr>");
        i += isWbr ? 1 : WriteUtf8(units + i, count - i, bytes);
    }
}

static void WriteKeptPlain(const WCHAR *units, size_t count, Bytes *bytes)
{
    WriteKept(units, count, false, bytes);
}

static void WriteKeptWbr(const WCHAR *units, size_t count, Bytes *bytes)
{
    WriteKept(units, count, true, bytes);
}

const TextForm kHtmlKept = {ReadKept, WriteKeptPlain};
const TextForm kHtmlKeptWbr = {ReadKept, WriteKeptWbr};
const TextForm kHtmlUtf8 = {ReadHtmlUtf8, WriteHtmlPlain};
const TextForm kHtml1252 = {ReadHtml1252, WriteHtmlPlain};
const TextForm kHtmlUtf8Wbr = {ReadHtmlUtf8, WriteHtmlWbr};
const TextForm kHtml1252Wbr = {ReadHtml1252, WriteHtmlWbr};

// ---- encodings ----

struct EncodingName {
    std::string_view name;
    HtmlEncoding encoding;
};
// To browsers all of the second kind are code page 1252. The user's own encoding was how pages in
// fonts of one's own were declared.
constexpr EncodingName kEncodings[] = {
    {"utf-8", kHtmlIsUtf8},      {"utf8", kHtmlIsUtf8},      {"windows-1252", kHtmlIs1252},
    {"iso-8859-1", kHtmlIs1252}, {"iso8859-1", kHtmlIs1252}, {"latin1", kHtmlIs1252},
    {"us-ascii", kHtmlIs1252},   {"ascii", kHtmlIs1252},     {"x-user-defined", kHtmlIs1252},
    {"cp1252", kHtmlIs1252},     {"x-sbcs", kHtmlIs1252},
};

HtmlEncoding EncodingOfName(std::string_view name)
{
    for (const EncodingName &row : kEncodings)
        if (EqualNoCase(row.name, name))
            return row.encoding;
    return name.empty() ? kHtmlUnknown : kHtmlOther;
}

bool LooksLikeUtf8(std::string_view bytes)
{
    Units units = {};
    bool hasMore = false, isGood = true;
    size_t most = bytes.size();
    while (!bytes.empty() && isGood && !units.failed) {
        bool isCut = bytes.size() < 4 && most > 1000;  // the last character may be there in part
        units.length = 0;
        hasMore = hasMore || (bytes[0] & 0x80);
        ReadUtf8(&bytes, &units);
        isGood = isCut || (units.length && !IsKeptByte(units.data[units.length - 1])) ||
                 units.length == 2;
    }
    FreeUnits(&units);
    return hasMore && isGood;
}

void AppendAsUtf8(std::string_view bytes, Bytes *output)
{
    for (char byte : bytes) {
        WCHAR character = CharacterOf1252(uint8_t(byte));
        WriteUtf8(&character, 1, output);
    }
}

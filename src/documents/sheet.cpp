// Where fonts and text stand in SpreadsheetML. A cell names the format that it has by number, the
// format a font by number, and the text of most cells is a number in the list of shared strings.
#include "documents/sheet.h"

#include <cstdio>
#include <iterator>

#include "documents/shared_strings.h"

// Styles whose names are their numbers, and the names of columns, which are in the font of their
// cell.
enum SheetFamily { kSheetFonts = 1, kCellFormats, kColumnNames };

// ---- the fonts and formats of the workbook ----

struct Decimal {
    char text[16];
};
static Decimal ToDecimal(int number)
{
    Decimal decimal;
    snprintf(decimal.text, sizeof decimal.text, "%d", number);
    return decimal;
}

static bool OpenList(Walk *walk, Tag *)
{
    walk->column = 0;
    return true;
}

static bool OpenFont(Walk *walk, Tag *)
{
    if (!walk->document->isRewriting && IsInside(walk, 1, "x:fonts"))
        StateOf(walk)->style =
            AddFontStyle(&walk->document->styles, kSheetFonts, ToDecimal(walk->column++).text);
    return true;
}

static bool OpenFormat(Walk *walk, Tag *tag)
{
    FontStyles *styles = &walk->document->styles;
    if (walk->document->isRewriting || !IsInside(walk, 1, "x:cellXfs"))
        return true;
    int format = AddFontStyle(styles, kCellFormats, ToDecimal(walk->column++).text);
    SetBase(styles, format, kSheetFonts, ToDecimal(NumberOf(walk, tag, "fontId", 0)).text);
    return true;
}

static bool OpenFontName(Walk *walk, Tag *tag)
{
    Attribute value;
    int style = StateOf(walk)->style;
    if (!FindAttribute(walk, tag, "val", &value))
        return true;
    int font = FontNumber(&walk->document->fonts, value.value);
    if (!walk->document->isRewriting && style != kNoFontStyle)
        walk->document->styles.items[style].fonts[kAscii] = font;
    if (IsInside(walk, 1, "x:rPr") && IsInside(walk, 2, "x:r"))
        ElementAbove(walk, 2)->state.fonts[kAscii] = font;
    RenameFont(walk, value);
    return true;
}

// ---- cells ----

static FontPair FontsOfText(Walk *walk)
{
    int font = StateOf(walk)->fonts[kAscii];
    return {font, font};
}

static CellType TypeOfCell(std::string_view type)
{
    return type == "s" ? kSharedString : type == "str" ? kFormulaString : kOtherCell;
}

static bool OpenCell(Walk *walk, Tag *tag)
{
    TextState *state = StateOf(walk);
    FontStyles *styles = &walk->document->styles;
    std::string_view format = ValueOf(walk, tag, "s");
    int style = FindFontStyle(*styles, kCellFormats, format.data() ? format : "0");
    state->fonts[kAscii] = FontOfStyle(styles, style, kAscii);
    state->cellType = TypeOfCell(ValueOf(walk, tag, "t"));
    return true;
}

// How a text in a font is coded; fonts that aren't legacy ones have one code too.
static int CodeOfFont(const Document *document, int font)
{
    const FontMapEntry *entry = LegacyFont(document->fonts, font);
    return entry ? entry->conversionType : -1;
}

static int NumberIn(std::string_view digits)
{
    int number = 0;
    for (char c : digits) {
        if (c < '0' || c > '9' || number > 100000000)
            return -1;
        number = 10 * number + (c - '0');
    }
    return digits.empty() ? -1 : number;
}

// A cell whose text is in another code than the string's in its place shows a copy.
static void TakeStringNumber(Walk *walk, std::string_view raw)
{
    Document *document = walk->document;
    SharedStrings *strings = &document->strings;
    int string = NumberIn(raw), font = StateOf(walk)->fonts[kAscii],
        code = CodeOfFont(document, font);
    if (string < 0) {
        PutRaw(walk, raw);
        return;
    }
    bool isOther =
        IsShown(*strings, string) && CodeOfFont(document, FontOfString(*strings, string)) != code;
    const StringCopy *copy = isOther ? FindCopy(*strings, string, code) : nullptr;
    if (!document->isRewriting && !IsShown(*strings, string))
        ShowString(strings, string, font);
    else if (!document->isRewriting && isOther && !copy)
        AddCopy(strings, string, font, code);
    if (copy && copy->place != kNoCopy)
        PutChanged(walk, ToDecimal(copy->place).text);
    else
        PutRaw(walk, raw);
}

static void TakeValue(Walk *walk, const TextForm *form, std::string_view raw)
{
    CellType type = StateOf(walk)->cellType;
    if (type == kSharedString)
        TakeStringNumber(walk, raw);
    else if (type == kFormulaString)
        PutTextHere(walk, form, raw, FontsOfText(walk));
    else
        PutRaw(walk, raw);
}

// ---- formulas: what stands in quotes is text ----

// Where a quote stands, and behind it; the text's end where there is none.
static size_t FindQuote(std::string_view text, size_t *behind)
{
    constexpr std::string_view kReference = "&quot;";
    size_t sign = text.find('"'), reference = text.find(kReference);
    size_t at = sign < reference ? sign : reference;
    if (at == text.npos)
        at = text.size();
    *behind = at == text.size() ? at : at + (sign < reference ? 1 : kReference.size());
    return at;
}

static void KeepBytes(std::string_view raw, Units *units)
{
    for (char byte : raw)
        AppendUnit(units, WCHAR(kKeptBytes + uint8_t(byte)));
}

static void ReadFormula(std::string_view raw, Units *units)
{
    bool isText = false;
    while (!raw.empty()) {
        size_t behind, quote = FindQuote(raw, &behind);
        if (isText)
            kXmlText.read(raw.substr(0, quote), units);
        else
            KeepBytes(raw.substr(0, quote), units);
        KeepBytes(raw.substr(quote, behind - quote), units);
        raw.remove_prefix(behind);
        isText = !isText;
    }
}

static void WriteFormula(const WCHAR *units, size_t count, Bytes *bytes)
{
    kXmlText.write(units, count, bytes);
}

static constexpr TextForm kFormula = {ReadFormula, WriteFormula};

static void TakeFormula(Walk *walk, const TextForm *, std::string_view raw)
{
    PutTextHere(walk, &kFormula, raw, FontsOfText(walk));
}

// ---- shared strings ----

static bool OpenString(Walk *walk, Tag *)
{
    Document *document = walk->document;
    StateOf(walk)->fonts[kAscii] = FontOfString(document->strings, walk->column);
    StateOf(walk)->stringPlace = walk->column++;
    return true;
}

// A column of a table is called what its first cell shows, and has to go on so.
static void NoteColumnName(Walk *walk, std::string_view text)
{
    FontStyles *styles = &walk->document->styles;
    int name = FindFontStyle(*styles, kColumnNames, text);
    int font = StateOf(walk)->fonts[kAscii];
    if (name != kNoFontStyle && LegacyFont(walk->document->fonts, font))
        styles->items[name].fonts[kAscii] = font;
}

static bool OpenColumn(Walk *walk, Tag *tag)
{
    Attribute name;
    FontStyles *styles = &walk->document->styles;
    if (!FindAttribute(walk, tag, "name", &name))
        return true;
    if (!walk->document->isRewriting) {
        AddFontStyle(styles, kColumnNames, name.value);
        return true;
    }
    int font = FontOfStyle(styles, FindFontStyle(*styles, kColumnNames, name.value), kAscii);
    if (font)
        TakeValueAsText(walk, name, &kXmlValue, {font, font});
    return true;
}

// A string in runs has the fonts of these, and isn't copied.
static void TakeString(Walk *walk, const TextForm *form, std::string_view raw)
{
    Document *document = walk->document;
    int place = ElementAbove(walk, 1)->state.stringPlace;
    if (!document->isRewriting && IsInside(walk, 1, "x:si"))
        NoteColumnName(walk, raw);
    if (!document->isRewriting && IsInside(walk, 1, "x:si") && HasCopies(document->strings, place))
        KeepText(&document->strings, place, raw);
    PutTextHere(walk, form, raw, FontsOfText(walk));
}

static void CountStrings(Walk *walk, Tag *tag, std::string_view name, size_t more)
{
    Attribute attribute;
    if (more && FindAttribute(walk, tag, name, &attribute))
        ReplaceValue(walk, attribute, ToDecimal(NumberIn(attribute.value) + int(more)).text);
}

static bool OpenStrings(Walk *walk, Tag *tag)
{
    SharedStrings *strings = &walk->document->strings;
    size_t prefix = tag->raw.substr(0, tag->raw.find_first_of(" \t\r\n/>")).find(':');
    walk->column = 0;
    snprintf(strings->prefix, sizeof strings->prefix, "%.*s",
             prefix == tag->raw.npos ? 0 : int(prefix), tag->raw.data() + 1);
    CountStrings(walk, tag, "uniqueCount", walk->document->strings.added);
    return true;
}

static bool CloseStrings(Walk *walk)
{
    SharedStrings *strings = &walk->document->strings;
    if (!walk->document->isRewriting) {
        PlaceCopies(strings, size_t(walk->column));
        return true;
    }
    for (size_t i = 0; i < strings->copyCount; ++i) {
        const StringCopy &copy = strings->copies[i];
        if (copy.place == kNoCopy)
            continue;
        const char *prefix = strings->prefix;
        char tags[2 * sizeof strings->prefix + 40];
        snprintf(tags, sizeof tags, "<%ssi><%st xml:space=\"preserve\">", prefix, prefix);
        PutChanged(walk, tags);
        PutTextHere(walk, &kXmlText, TextOf(strings->texts).substr(copy.start, copy.length),
                    {copy.font, copy.font});
        snprintf(tags, sizeof tags, "</%st></%ssi>", prefix, prefix);
        PutChanged(walk, tags);
    }
    return true;
}

// ---- headers and footers: fonts stand in the text as codes ----

// One code behind an ampersand: how long it is, and the font that it names.
static size_t LengthOfCode(std::string_view text, std::string_view *font)
{
    constexpr std::string_view kReference = "&quot;";
    bool isReference = text.starts_with(kReference);
    if (!isReference && !text.starts_with('"')) {
        size_t end = 0;
        while (end < text.size() && text[end] >= '0' && text[end] <= '9')
            ++end;
        return end ? end : text.starts_with('K') ? 7 : 1;
    }
    size_t quote = isReference ? kReference.size() : 1;
    size_t end = isReference ? text.find(kReference, quote) : text.find('"', quote);
    if (end == text.npos)
        return quote;
    *font = text.substr(quote, end - quote);
    return end + quote;
}

// "Font,Style"; a hyphen stands for the font that is there.
static void TakeFontOfCode(Walk *walk, std::string_view code)
{
    std::string_view name = code.substr(0, code.find(','));
    FontNames *fonts = &walk->document->fonts;
    int font = FontNumber(fonts, name);
    if (name != "-")
        StateOf(walk)->fonts[kAscii] = font;
    if (!LegacyFont(*fonts, font)) {
        PutRaw(walk, code);
        return;
    }
    PutChanged(walk, LegacyFont(*fonts, font)->unicodeName);
    PutRaw(walk, code.substr(name.size()));
}

// The ampersand of a code is a reference in XML.
static void TakeHeader(Walk *walk, const TextForm *form, std::string_view raw)
{
    constexpr std::string_view kCode = "&amp;";
    while (!raw.empty()) {
        size_t code = raw.find(kCode);
        PutTextHere(walk, form, raw.substr(0, code), FontsOfText(walk));
        if (code == raw.npos)
            return;
        std::string_view font, behind = raw.substr(code + kCode.size());
        size_t length = LengthOfCode(behind, &font);
        length = length < behind.size() ? length : behind.size();
        if (behind.starts_with('L') || behind.starts_with('C') || behind.starts_with('R'))
            StateOf(walk)->fonts[kAscii] = kNoFont;  // each third begins as the first did
        size_t before = font.data() ? size_t(font.data() - behind.data()) : length;
        PutRaw(walk, raw.substr(code, kCode.size()));
        PutRaw(walk, behind.substr(0, before));
        if (font.data()) {
            TakeFontOfCode(walk, font);
            PutRaw(walk, behind.substr(before + font.size(), length - before - font.size()));
        }
        raw = behind.substr(length);
    }
}

// clang-format off
static constexpr ElementRow kRows[] = {
    // element          kind        open         close    fonts of its text child    its text
    {"x:fonts",       kPlain,     OpenList},
    {"x:font",        kPlain,     OpenFont},
    {"x:cellXfs",     kPlain,     OpenList},
    {"x:xf",          kPlain,     OpenFormat},
    {"x:name",        kPlain,     OpenFontName},
    {"x:rFont",       kPlain,     OpenFontName},
    {"x:r"},
    {"x:rPr"},
    {"x:c",           kParagraph, OpenCell},
    {"x:v",           kPlain,     nullptr,     nullptr, FontsOfText, nullptr, TakeValue},
    {"x:f",           kPlain,     nullptr,     nullptr, FontsOfText, nullptr, TakeFormula},
    {"x:sst",         kParagraph, OpenStrings, CloseStrings},
    {"x:si",          kParagraph, OpenString},
    {"x:tableColumn", kPlain,     OpenColumn},
    {"x:comment",     kParagraph},
    {"x:t",           kPlain,     nullptr,     nullptr, FontsOfText, nullptr, TakeString},
    {"x:oddHeader",   kParagraph, nullptr,     nullptr, FontsOfText, nullptr, TakeHeader},
    {"x:oddFooter",   kParagraph, nullptr,     nullptr, FontsOfText, nullptr, TakeHeader},
    {"x:evenHeader",  kParagraph, nullptr,     nullptr, FontsOfText, nullptr, TakeHeader},
    {"x:evenFooter",  kParagraph, nullptr,     nullptr, FontsOfText, nullptr, TakeHeader},
    {"x:firstHeader", kParagraph, nullptr,     nullptr, FontsOfText, nullptr, TakeHeader},
    {"x:firstFooter", kParagraph, nullptr,     nullptr, FontsOfText, nullptr, TakeHeader},
};
// clang-format on

const Vocabulary kSheetElements = {kRows, std::size(kRows)};

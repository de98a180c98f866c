// Where fonts, styles and text stand in WordprocessingML. The order of the search for a font is
// that of word processors: what a run says itself, its style, its paragraph's style, its table's
// style, the defaults of the document; for each of a run's four fonts by itself. A name that points
// into the theme stands in a style's or run's fonts as a number of its own.
#include "documents/word.h"

#include <cstdio>
#include <iterator>

enum WordFamily { kParagraphStyles = 1, kRunStyles, kTableStyles, kListStyles, kDefaults };

constexpr std::string_view kDefaultName = "\1default";  // as the name of a family's default style

// ---- fonts of the theme: -1 and below, by what the attribute says ----

struct ThemeName {
    std::string_view value;
    ThemeFont font;
    int slot;
};
constexpr ThemeName kThemeNames[] = {
    {"majorAscii", kMajorFonts, kAscii},       {"majorHAnsi", kMajorFonts, kHighAnsi},
    {"majorEastAsia", kMajorFonts, kEastAsia}, {"majorBidi", kMajorFonts, kComplex},
    {"minorAscii", kMinorFonts, kAscii},       {"minorHAnsi", kMinorFonts, kHighAnsi},
    {"minorEastAsia", kMinorFonts, kEastAsia}, {"minorBidi", kMinorFonts, kComplex},
};

static int NumberOfTheme(std::string_view value)
{
    for (size_t i = 0; i < std::size(kThemeNames); ++i)
        if (kThemeNames[i].value == value)
            return -1 - int(i);
    return kNoFont;
}

static int FontOfNumber(const Document *document, int number)
{
    if (number >= 0)
        return number;
    const ThemeName &name = kThemeNames[-1 - number];
    return document->themeFonts[name.font][name.slot];
}

// ---- styles ----

struct StyleKind {
    std::string_view type;
    WordFamily family;
};
constexpr StyleKind kStyleKinds[] = {{"paragraph", kParagraphStyles},
                                     {"character", kRunStyles},
                                     {"table", kTableStyles},
                                     {"numbering", kListStyles},
                                     {"list", kListStyles}};

static WordFamily FamilyOf(std::string_view type)
{
    for (const StyleKind &kind : kStyleKinds)
        if (kind.type == type)
            return kind.family;
    return kParagraphStyles;
}

static bool IsOn(Walk *walk, const Tag *tag, std::string_view name)
{
    std::string_view value = ValueOf(walk, tag, name);
    return value != "0" && value != "false" && value != "off";
}

// The id of WordprocessingML 2003 is written otherwise.
static std::string_view StyleIdOf(Walk *walk, const Tag *tag)
{
    std::string_view id = ValueOf(walk, tag, "w:styleId");
    return id.data() ? id : ValueOf(walk, tag, "w:styleid");
}

// The default style of a family stands for elements that name none. It is entered under a name that
// no document has, with the style that the document calls the default as its base. Where it calls
// none so, "Normal" is the one of paragraphs.
static bool OpenStyle(Walk *walk, Tag *tag)
{
    FontStyles *styles = &walk->document->styles;
    WordFamily family = FamilyOf(ValueOf(walk, tag, "w:type"));
    std::string_view id = StyleIdOf(walk, tag);
    if (walk->document->isRewriting) {
        StateOf(walk)->style = FindFontStyle(*styles, family, id);
        return true;
    }
    StateOf(walk)->style = AddFontStyle(styles, family, id);
    bool isDefault = ValueOf(walk, tag, "w:default").data() && IsOn(walk, tag, "w:default");
    bool isNormal = family == kParagraphStyles && id == "Normal" &&
                    FindFontStyle(*styles, family, kDefaultName) == kNoFontStyle;
    if (isDefault || isNormal)
        SetBase(styles, AddFontStyle(styles, family, kDefaultName), family, id);
    return true;
}

static bool OpenBasedOn(Walk *walk, Tag *tag)
{
    const TextState *state = StateOf(walk);
    FontStyles *styles = &walk->document->styles;
    if (state->style != kNoFontStyle && IsInside(walk, 1, "w:style"))
        SetBase(styles, state->style, styles->items[state->style].family,
                ValueOf(walk, tag, "w:val"));
    return true;
}

static bool OpenDefaults(Walk *walk, Tag *)
{
    if (!walk->document->isRewriting)
        StateOf(walk)->style = AddFontStyle(&walk->document->styles, kDefaults, kDefaultName);
    return true;
}

// Fonts of the parts of a table count for these alone, which a run can't be told to stand in.
static bool OpenTablePart(Walk *walk, Tag *)
{
    StateOf(walk)->style = kNoFontStyle;
    return true;
}

// ---- the fonts of a text ----

static int StyleOrDefault(Walk *walk, int style, WordFamily family)
{
    return style != kNoFontStyle ? style
                                 : FindFontStyle(walk->document->styles, family, kDefaultName);
}

// In the order of the search.
static int FindFont(Walk *walk, const TextState &state, int slot)
{
    FontStyles *styles = &walk->document->styles;
    int font = state.fonts[slot];
    if (!font)
        font = FontOfStyle(styles, state.runStyle, slot);
    if (!font)
        font =
            FontOfStyle(styles, StyleOrDefault(walk, state.paragraphStyle, kParagraphStyles), slot);
    if (!font)
        font = FontOfStyle(styles, StyleOrDefault(walk, state.tableStyle, kTableStyles), slot);
    if (!font)
        font = FontOfStyle(styles, FindFontStyle(*styles, kDefaults, kDefaultName), slot);
    return FontOfNumber(walk->document, font);
}

static FontPair FindFonts(Walk *walk, const TextState &state)
{
    if (state.isComplex) {
        int font = FindFont(walk, state, kComplex);
        return {font, font};
    }
    int high = state.prefersEastAsian ? FindFont(walk, state, kEastAsia) : kNoFont;
    return {FindFont(walk, state, kAscii), high ? high : FindFont(walk, state, kHighAnsi)};
}

static FontPair FontsOfRun(Walk *walk)
{
    return FindFonts(walk, *StateOf(walk));
}

// Signs may go to the run in front, and leave a blank in front.
static bool OpenText(Walk *walk, Tag *tag)
{
    if (NeedsWork(walk->document, FontsOfRun(walk)))
        MarkSpace(walk, tag);
    return true;
}

// ---- w:rFonts and other names of fonts ----

struct FontAttribute {
    std::string_view name;
    int slot;
    bool isTheme;
};
constexpr FontAttribute kFontAttributes[] = {
    {"w:ascii", kAscii, false},           {"w:hAnsi", kHighAnsi, false},
    {"w:h-ansi", kHighAnsi, false},       {"w:eastAsia", kEastAsia, false},
    {"w:fareast", kEastAsia, false},      {"w:cs", kComplex, false},
    {"w:asciiTheme", kAscii, true},       {"w:hAnsiTheme", kHighAnsi, true},
    {"w:eastAsiaTheme", kEastAsia, true}, {"w:cstheme", kComplex, true},
};

static const FontAttribute *FindFontAttribute(const KnownName &name)
{
    for (const FontAttribute &row : kFontAttributes)
        if (IsName(name, row.name))
            return &row;
    return nullptr;
}

// What a w:rFonts tag says.
struct SaidFonts {
    int fonts[kFontSlots];            // numbers; 0: nothing
    const FontMapEntry *legacy;       // of the names for ASCII and other letters; null: none
    Attribute complex, complexTheme;  // without a name where they aren't there
};

// A font of the theme wins over a name. Where a tag has a font for ASCII alone, it was made by a
// program that knows of one font, and means it for all.
static SaidFonts ReadFonts(Walk *walk, Tag *tag)
{
    SaidFonts said = {};
    FontNames *fonts = &walk->document->fonts;
    Attribute attribute;
    int legacySlot = kFontSlots;
    for (size_t place = 0; NextAttribute(tag->raw, &place, &attribute);) {
        const FontAttribute *row =
            FindFontAttribute(NameOfAttribute(&walk->prefixes, attribute.name));
        if (!row)
            continue;
        int number =
            row->isTheme ? NumberOfTheme(attribute.value) : FontNumber(fonts, attribute.value);
        if (row->slot == kComplex)
            (row->isTheme ? said.complexTheme : said.complex) = attribute;
        if (said.fonts[row->slot] >= 0)
            said.fonts[row->slot] = number;
        const FontMapEntry *entry = LegacyFont(*fonts, FontOfNumber(walk->document, number));
        bool isBetter = !said.legacy || row->slot < legacySlot;  // ASCII first, then other letters
        if (entry && row->slot != kComplex && isBetter) {
            said.legacy = entry;
            legacySlot = row->slot;
        }
        if (entry && !row->isTheme && row->slot != kComplex)
            ReplaceValue(walk, attribute, entry->unicodeName);
    }
    if (!said.fonts[kHighAnsi])
        said.fonts[kHighAnsi] = said.fonts[kAscii];
    return said;
}

// Lao in Unicode is complex script to a word processor, which shows it in the font for that.
static void SetComplexFont(Walk *walk, Tag *tag, const SaidFonts &said)
{
    bool isNamed = !said.complex.name.empty(), isOfTheme = !said.complexTheme.name.empty();
    if (!said.legacy) {
        if (isNamed)
            RenameFont(walk, said.complex);
        return;
    }
    if (isOfTheme)
        RemoveAttribute(walk, said.complexTheme);
    if (isNamed)
        ReplaceValue(walk, said.complex, said.legacy->unicodeName);
    else
        AddAttribute(walk, tag, "cs", said.legacy->unicodeName);
}

static void SetFontsOfState(Walk *walk, TextState *state, const Tag *tag, const SaidFonts &said)
{
    for (int slot = 0; slot < kFontSlots; ++slot)
        if (said.fonts[slot])
            state->fonts[slot] = said.fonts[slot];
    std::string_view hint = ValueOf(walk, tag, "w:hint");
    if (hint.data())
        state->prefersEastAsian = hint == "eastAsia" || hint == "fareast";
}

// The names are replaced wherever they stand; whom they count for says what the properties stand
// in.
static bool OpenFonts(Walk *walk, Tag *tag)
{
    SaidFonts said = ReadFonts(walk, tag);
    SetComplexFont(walk, tag, said);
    bool isOfRun =
        IsInside(walk, 1, "w:rPr") &&
        (IsInside(walk, 2, "w:r") || IsInside(walk, 2, "m:r") || IsInside(walk, 2, "w:lvl"));
    int style = StateOf(walk)->style;
    if (isOfRun)
        SetFontsOfState(walk, &ElementAbove(walk, 2)->state, tag, said);
    if (style == kNoFontStyle || walk->document->isRewriting)
        return true;
    for (int slot = 0; slot < kFontSlots; ++slot)
        if (said.fonts[slot])
            walk->document->styles.items[style].fonts[slot] = said.fonts[slot];
    return true;
}

// WordprocessingML 2003 has the defaults in its list of fonts.
static bool OpenDefaultFonts(Walk *walk, Tag *tag)
{
    return OpenDefaults(walk, tag) && OpenFonts(walk, tag);
}

static bool RenameNamed(Walk *walk, Tag *tag, std::string_view name)
{
    Attribute attribute;
    return FindAttribute(walk, tag, name, &attribute) && RenameFont(walk, attribute);
}

// The file of an embedded font has the old signs: what refers to it goes with the old name.
static bool OpenFontEntry(Walk *walk, Tag *tag)
{
    StateOf(walk)->isRenamed = RenameNamed(walk, tag, "w:name");
    return true;
}

static bool OpenEmbeddedFont(Walk *walk, Tag *)
{
    TextState *state = StateOf(walk);
    state->isDropped = state->isDropped || state->isRenamed;
    return true;
}

static bool OpenAuxiliaryFont(Walk *walk, Tag *tag)
{
    RenameNamed(walk, tag, "wx:val");
    return true;
}

// ---- paragraphs, runs and tables ----

static void ClearRun(TextState *state)
{
    state->runStyle = kNoFontStyle;
    state->isComplex = state->prefersEastAsian = false;
    for (int &font : state->fonts)
        font = kNoFont;
}

static bool OpenRun(Walk *walk, Tag *)
{
    ClearRun(StateOf(walk));
    return true;
}

// A paragraph in another one, of a note or a text box, isn't in the table that that one is in.
static bool OpenParagraph(Walk *walk, Tag *)
{
    TextState *state = StateOf(walk);
    ClearRun(state);
    state->paragraphStyle = kNoFontStyle;
    if (state->isInParagraph)
        state->tableStyle = kNoFontStyle;
    state->isInParagraph = true;
    return true;
}

static bool OpenTable(Walk *walk, Tag *)
{
    StateOf(walk)->tableStyle = kNoFontStyle;
    StateOf(walk)->isInParagraph = false;
    return true;
}

// Where the style counts: the element around the properties that name it.
static bool SetStyle(Walk *walk, const Tag *tag, std::string_view owner, WordFamily family,
                     int TextState::*style)
{
    if (IsInside(walk, 2, owner))
        ElementAbove(walk, 2)->state.*style =
            FindFontStyle(walk->document->styles, family, ValueOf(walk, tag, "w:val"));
    return true;
}

static bool OpenParagraphStyle(Walk *walk, Tag *tag)
{
    return SetStyle(walk, tag, "w:p", kParagraphStyles, &TextState::paragraphStyle);
}

static bool OpenRunStyle(Walk *walk, Tag *tag)
{
    return SetStyle(walk, tag, "w:r", kRunStyles, &TextState::runStyle);
}

static bool OpenTableStyle(Walk *walk, Tag *tag)
{
    return SetStyle(walk, tag, "w:tbl", kTableStyles, &TextState::tableStyle);
}

// The run is in complex script, whatever its characters are.
static bool OpenComplex(Walk *walk, Tag *tag)
{
    if (IsInside(walk, 1, "w:rPr") && IsInside(walk, 2, "w:r"))
        ElementAbove(walk, 2)->state.isComplex |= IsOn(walk, tag, "w:val");
    return true;
}

// ---- numbers of lists: their fonts stand behind their text ----

// "%1" stands for a number.
static void ReadLevelText(std::string_view raw, Units *units)
{
    for (size_t at = 0; at < raw.size();) {
        bool isNumber =
            raw[at] == '%' && at + 1 < raw.size() && raw[at + 1] >= '1' && raw[at + 1] <= '9';
        size_t end = isNumber ? at + 2 : raw.find('%', at + 1);
        end = end < raw.size() ? end : raw.size();
        if (isNumber) {
            AppendUnit(units, WCHAR(kKeptBytes + '%'));
            AppendUnit(units, WCHAR(kKeptBytes + raw[at + 1]));
        } else {
            kXmlValue.read(raw.substr(at, end - at), units);
        }
        at = end;
    }
}

static void WriteLevelText(const WCHAR *units, size_t count, Bytes *bytes)
{
    kXmlValue.write(units, count, bytes);
}

static constexpr TextForm kLevelText = {ReadLevelText, WriteLevelText};

static bool OpenLevel(Walk *walk, Tag *)
{
    TextState *state = StateOf(walk);
    ClearRun(state);
    state->paragraphStyle = kNoFontStyle;
    return true;
}

static bool OpenLevelText(Walk *walk, Tag *tag)
{
    Attribute value;
    if (IsInside(walk, 1, "w:lvl") && FindAttribute(walk, tag, "w:val", &value))
        TakeValueLater(walk, value, &kLevelText, &ElementAbove(walk, 1)->state.texts[0]);
    return true;
}

static bool CloseLevel(Walk *walk)
{
    SetFontsOfTexts(walk, FindFonts(walk, *StateOf(walk)));
    return true;
}

// Documents of 2003 have their styles, and the names of their fonts, in front of the body. Those of
// today may have them anywhere.
static bool OpenBody(Walk *walk, Tag *)
{
    const Document *document = walk->document;
    bool isKnown = document->job->format == kWordXml2003 && document->fonts.hasLegacy;
    walk->isDone = !document->isRewriting && isKnown;
    return true;
}

// ---- properties that complex script has of its own ----

// Lao in Unicode is complex script to a word processor, whose size, weight and slant are other
// properties than those of the legacy text. So each gets its twin, where the document has legacy
// fonts.
struct TwinRow {
    std::string_view name, twin;
    const char *local, *localOf2003;
};
constexpr TwinRow kTwins[] = {{"w:b", "w:bCs", "bCs", "b-cs"},
                              {"w:i", "w:iCs", "iCs", "i-cs"},
                              {"w:sz", "w:szCs", "szCs", "sz-cs"}};
constexpr std::string_view kTwinsOf2003[] = {"w:b-cs", "w:i-cs", "w:sz-cs"};

// The place of a twin in the table, and 1; 0 for every other element.
static int NumberOfTwin(std::string_view name)
{
    for (size_t i = 0; i < std::size(kTwins); ++i)
        if (kTwins[i].twin == name || kTwinsOf2003[i] == name)
            return int(i) + 1;
    return 0;
}

// Whether text with the properties of the element at work is legacy text.
static bool IsLegacyHere(Walk *walk)
{
    const Document *document = walk->document;
    TextState owner = ElementAbove(walk, 2)->state;
    bool isOfText = IsInside(walk, 2, "w:r") || IsInside(walk, 2, "w:lvl");
    if (!isOfText && owner.style != kNoFontStyle) {
        bool isOfRuns = document->styles.items[owner.style].family == kRunStyles;
        ClearRun(&owner);
        (isOfRuns ? owner.runStyle : owner.paragraphStyle) = owner.style;
    }
    return LegacyFont(document->fonts, FindFonts(walk, owner).low);
}

static void PutTwin(Walk *walk)
{
    if (!walk->twin)
        return;
    const TwinRow &row = kTwins[walk->twin - 1];
    bool isOf2003 = walk->document->job->format == kWordXml2003;
    char tag[96], value[48] = "";
    if (*walk->twinValue)
        snprintf(value, sizeof value, " %sval=\"%s\"", walk->twinPrefix, walk->twinValue);
    snprintf(tag, sizeof tag, "<%s%s%s/>", walk->twinPrefix, isOf2003 ? row.localOf2003 : row.local,
             value);
    walk->twin = 0;
    PutChanged(walk, tag);
}

static void PassProperty(Walk *walk, const ElementRow *row)
{
    if (walk->twin && (!row || NumberOfTwin(row->name) != walk->twin))
        PutTwin(walk);
}

static bool OpenProperties(Walk *walk, Tag *)
{
    StateOf(walk)->twins = 0;
    return true;
}

static bool CloseProperties(Walk *walk)
{
    PutTwin(walk);
    return true;
}

static bool OpenProperty(Walk *walk, Tag *tag)
{
    const ElementRow *row = ElementAbove(walk, 0)->row;
    std::string_view value = ValueOf(walk, tag, "w:val");
    size_t prefix = tag->raw.find(':') + 1;
    bool isWanted = walk->document->isRewriting && walk->document->fonts.hasLegacy &&
                    IsInside(walk, 1, "w:rPr") && value.size() < sizeof walk->twinValue &&
                    prefix > 1 && prefix <= sizeof walk->twinPrefix;
    for (size_t i = 0; isWanted && i < std::size(kTwins); ++i) {
        if (row->name != kTwins[i].name || ElementAbove(walk, 1)->state.twins & 1 << i)
            continue;
        walk->twin = int(i) + 1;
        snprintf(walk->twinValue, sizeof walk->twinValue, "%.*s", int(value.size()),
                 value.data() ? value.data() : "");
        snprintf(walk->twinPrefix, sizeof walk->twinPrefix, "%.*s", int(prefix - 1),
                 tag->raw.data() + 1);
    }
    return true;
}

// Where the text is legacy text the twin says what the property in front of it says.
static bool OpenTwin(Walk *walk, Tag *tag)
{
    int twin = NumberOfTwin(ElementAbove(walk, 0)->row->name);
    Attribute value;
    ElementAbove(walk, 1)->state.twins |= uint8_t(1 << (twin - 1));
    if (walk->twin != twin)
        return true;
    walk->twin = 0;
    if (!IsLegacyHere(walk))
        return true;
    if (FindAttribute(walk, tag, "w:val", &value))
        ReplaceValue(walk, value, *walk->twinValue ? walk->twinValue : "1");
    else if (*walk->twinValue)
        AddAttribute(walk, tag, "val", walk->twinValue);
    return true;
}

// ---- signs that are elements ----

// As text such a sign is the same, and can be converted like any other: it stands in a w:t in place
// of the element that is called `name`.
static void PutAsText(Walk *walk, const Tag *tag, const char *name, std::string_view reference,
                      FontPair fonts)
{
    char text[64];
    std::string_view prefix = tag->raw.substr(1, tag->raw.find(name) - 1);
    int length = snprintf(text, sizeof text, "/%.*st>",
                          int(prefix.size() < 40 ? prefix.size() : 40), prefix.data());
    PutChanged(walk, "<");
    PutChanged(walk, {text + 1, size_t(length) - 1});
    PutTextHere(walk, &kXmlText, reference, fonts);
    PutChanged(walk, "<");
    PutChanged(walk, {text, size_t(length)});
    StateOf(walk)->isDropped = true;
}

// A sign by its number in a font.
static bool OpenSymbol(Walk *walk, Tag *tag)
{
    FontNames *fonts = &walk->document->fonts;
    std::string_view digits = ValueOf(walk, tag, "w:char");
    int font = FontNumber(fonts, ValueOf(walk, tag, "w:font"));
    char reference[16];
    if (!LegacyFont(*fonts, font) || !walk->document->isRewriting || digits.empty() ||
        digits.size() > 4)
        return true;
    snprintf(reference, sizeof reference, "&#x%.*s;", int(digits.size()), digits.data());
    PutAsText(walk, tag, "sym", reference, {font, font});
    return true;
}

// A word processor takes the byte of a letter for the hyphen that code page 1252 has there.
static bool OpenSoftHyphen(Walk *walk, Tag *tag)
{
    FontPair fonts = FontsOfRun(walk);
    if (LegacyFont(walk->document->fonts, fonts.high) && walk->document->isRewriting)
        PutAsText(walk, tag, "softHyphen", "&#xAD;", fonts);
    return true;
}

// clang-format off
static constexpr ElementRow kRows[] = {
    // element                kind        open            close            fonts of its text child
    {"w:style",             kPlain,     OpenStyle},
    {"w:basedOn",           kPlain,     OpenBasedOn},
    {"w:rPrDefault",        kPlain,     OpenDefaults},
    {"w:tblStylePr",        kPlain,     OpenTablePart},
    {"w:tStylePr",          kPlain,     OpenTablePart},
    {"w:rFonts",            kPlain,     OpenFonts},
    {"w:defaultFonts",      kPlain,     OpenDefaultFonts},
    {"w:font",              kPlain,     OpenFontEntry},
    {"w:embedRegular",      kPlain,     OpenEmbeddedFont},
    {"w:embedBold",         kPlain,     OpenEmbeddedFont},
    {"w:embedItalic",       kPlain,     OpenEmbeddedFont},
    {"w:embedBoldItalic",   kPlain,     OpenEmbeddedFont},
    {"wx:font",             kPlain,     OpenAuxiliaryFont},
    {"w:body",              kPlain,     OpenBody},
    {"w:p",                 kParagraph, OpenParagraph},
    {"w:r",                 kPlain,     OpenRun},
    {"m:r",                 kPlain,     OpenRun},
    {"w:tbl",               kParagraph, OpenTable},
    {"w:pPr"},
    {"w:rPr",               kPlain,     OpenProperties, CloseProperties, nullptr, PassProperty},
    {"w:b",                 kPlain,     OpenProperty},
    {"w:i",                 kPlain,     OpenProperty},
    {"w:sz",                kPlain,     OpenProperty},
    {"w:bCs",               kPlain,     OpenTwin},
    {"w:iCs",               kPlain,     OpenTwin},
    {"w:szCs",              kPlain,     OpenTwin},
    {"w:b-cs",              kPlain,     OpenTwin},
    {"w:i-cs",              kPlain,     OpenTwin},
    {"w:sz-cs",             kPlain,     OpenTwin},
    {"w:pStyle",            kPlain,     OpenParagraphStyle},
    {"w:rStyle",            kPlain,     OpenRunStyle},
    {"w:tblStyle",          kPlain,     OpenTableStyle},
    {"w:cs",                kPlain,     OpenComplex},
    {"w:rtl",               kPlain,     OpenComplex},
    {"w:t",                 kPlain,     OpenText,       nullptr,         FontsOfRun},
    {"w:delText",           kPlain,     OpenText,       nullptr,         FontsOfRun},
    {"m:t",                 kPlain,     nullptr,        nullptr,         FontsOfRun},
    {"w:sym",               kPlain,     OpenSymbol},
    {"w:softHyphen",        kPlain,     OpenSoftHyphen},
    {"w:lvl",               kParagraph, OpenLevel,      CloseLevel},
    {"w:lvlText",           kPlain,     OpenLevelText},
    // Text in front of these and behind them doesn't go on in one word.
    {"w:tab",               kApart},
    {"w:br",                kApart},
    {"w:cr",                kApart},
    {"w:noBreakHyphen",     kApart},
    {"w:footnoteReference", kApart},
    {"w:endnoteReference",  kApart},
    {"w:fldChar",           kApart},
    {"w:drawing",           kApart},
    {"w:pict",              kApart},
    {"w:object",            kApart},
    // What is deleted or put in may go or stay by itself.
    {"w:del",               kApart},
    {"w:ins",               kApart},
    {"w:moveFrom",          kApart},
    {"w:moveTo",            kApart},
};
// clang-format on

const Vocabulary kWordElements = {kRows, std::size(kRows)};

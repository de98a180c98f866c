// Where fonts, styles and text stand in OpenDocument. Fonts come with the styles of spans,
// paragraphs and what is around them; a style names a font face, which names the font. Automatic
// styles are of the part that they stand in, and hide common ones of their name.
#include "documents/opendocument.h"

#include <cstdio>
#include <iterator>

// ---- styles ----

enum { kFontFaces = 1, kFirstFamily = 2, kFamiliesOfScope = 32 };  // families of names in a scope

constexpr std::string_view kFamilies[] = {"paragraph",    "text",  "table-cell", "graphic",
                                          "presentation", "chart", "list-level"};
static_assert(kFirstFamily + std::size(kFamilies) < kFamiliesOfScope);
constexpr std::string_view kDefaultName = "\1default";  // of a family's default style

// The number of a family, by its name; 0 for one without text.
static int FamilyOf(std::string_view name)
{
    for (size_t i = 0; i < std::size(kFamilies); ++i)
        if (kFamilies[i] == name)
            return kFirstFamily + int(i);
    return 0;
}

static int CommonScope(const Walk *walk, int family)
{
    return family + 2 * walk->folder * kFamiliesOfScope;
}

static int OwnScope(const Walk *walk, int family)
{
    return family + (2 * walk->part + 1) * kFamiliesOfScope;
}

static int FindAnywhere(Walk *walk, std::string_view family, std::string_view name)
{
    const FontStyles &styles = walk->document->styles;
    if (!name.data())
        return kNoFontStyle;
    int own = FindFontStyle(styles, OwnScope(walk, FamilyOf(family)), name);
    return own != kNoFontStyle ? own
                               : FindFontStyle(styles, CommonScope(walk, FamilyOf(family)), name);
}

static int FontFrom(Walk *walk, int style, int slot)
{
    return FontOfStyle(&walk->document->styles, style, slot);
}

static int FontOfDefault(Walk *walk, std::string_view family, int slot)
{
    const FontStyles &styles = walk->document->styles;
    return FontFrom(walk, FindFontStyle(styles, CommonScope(walk, FamilyOf(family)), kDefaultName),
                    slot);
}

static int FindStyleHere(Walk *walk, int family, std::string_view name)
{
    bool isAutomatic = IsInside(walk, 1, "office:automatic-styles");
    int scope = isAutomatic ? OwnScope(walk, family) : CommonScope(walk, family);
    return FindFontStyle(walk->document->styles, scope, name);
}

static bool OpenStyle(Walk *walk, Tag *tag)
{
    std::string_view name = ValueOf(walk, tag, "style:name");
    std::string_view parent = ValueOf(walk, tag, "style:parent-style-name");
    FontStyles *styles = &walk->document->styles;
    int family = FamilyOf(ValueOf(walk, tag, "style:family"));
    if (!family || !name.data())
        return true;
    if (walk->document->isRewriting) {
        StateOf(walk)->style = FindStyleHere(walk, family, name);
        return true;
    }
    bool isAutomatic = IsInside(walk, 1, "office:automatic-styles");
    int style = AddFontStyle(
        styles, isAutomatic ? OwnScope(walk, family) : CommonScope(walk, family), name);
    StateOf(walk)->style = style;
    if (parent.data())  // the bases of all styles are common ones
        SetBase(styles, style, CommonScope(walk, family), parent);
    return true;
}

static bool OpenDefaultStyle(Walk *walk, Tag *tag)
{
    int family = FamilyOf(ValueOf(walk, tag, "style:family"));
    if (walk->document->isRewriting)
        StateOf(walk)->style = FindStyleHere(walk, family, kDefaultName);
    else if (family)
        StateOf(walk)->style =
            AddFontStyle(&walk->document->styles, CommonScope(walk, family), kDefaultName);
    return true;
}

// ---- fonts ----

// A family may stand in quotes, and others may follow it for where it isn't there.
static std::string_view FirstFamily(std::string_view families)
{
    constexpr std::string_view kQuote = "&apos;";
    families.remove_prefix(families.starts_with(' '));
    if (families.starts_with(kQuote)) {
        families.remove_prefix(kQuote.size());
        return families.substr(0, families.find(kQuote));
    }
    bool isQuoted = families.starts_with('\'');
    families.remove_prefix(isQuoted);
    families = families.substr(0, families.find(isQuoted ? '\'' : ','));
    return families.substr(0, families.find_last_not_of(' ') + 1);
}

static const FontMapEntry *LegacyOf(Walk *walk, int number)
{
    return LegacyFont(walk->document->fonts, number);
}

// A family that is a legacy font is replaced, with all that was to be shown in its place. Its
// number.
static int TakeFamily(Walk *walk, const Attribute &attribute)
{
    int number = FontNumber(&walk->document->fonts, FirstFamily(attribute.value));
    const FontMapEntry *entry = LegacyOf(walk, number);
    char quoted[kMapNameSize + 2];
    if (entry &&
        size_t(snprintf(quoted, sizeof quoted, "'%s'", entry->unicodeName)) < sizeof quoted)
        ReplaceValue(walk, attribute, quoted);
    return number;
}

// The names of faces stay as they are: what refers to them is right as it stands.
static bool OpenFontFace(Walk *walk, Tag *tag)
{
    Attribute attribute;
    FontStyles *styles = &walk->document->styles;
    std::string_view name = ValueOf(walk, tag, "style:name");
    if (!name.data() || !FindAttribute(walk, tag, "svg:font-family", &attribute))
        return true;
    int number = TakeFamily(walk, attribute);
    StateOf(walk)->isRenamed = LegacyOf(walk, number) != nullptr;
    if (walk->document->isRewriting)
        return true;
    int face = AddFontStyle(styles, OwnScope(walk, kFontFaces), name);
    if (face != kNoFontStyle)
        styles->items[face].fonts[kAscii] = number;
    return true;
}

// The file of an embedded font has the old signs.
static bool OpenFaceSource(Walk *walk, Tag *)
{
    TextState *state = StateOf(walk);
    state->isDropped = state->isDropped || state->isRenamed;
    return true;
}

struct FontAttribute {
    std::string_view name;
    int slot;
    bool isFace;  // it names a face, not a family
};
constexpr FontAttribute kFontAttributes[] = {
    {"style:font-name", kAscii, true},           {"fo:font-family", kAscii, false},
    {"style:font-name-asian", kEastAsia, true},  {"style:font-family-asian", kEastAsia, false},
    {"style:font-name-complex", kComplex, true}, {"style:font-family-complex", kComplex, false},
};

static const FontAttribute *FindFontAttribute(const KnownName &name)
{
    for (const FontAttribute &row : kFontAttributes)
        if (IsName(name, row.name))
            return &row;
    return nullptr;
}

static int FontOfFace(Walk *walk, std::string_view name)
{
    return FontFrom(walk, FindFontStyle(walk->document->styles, OwnScope(walk, kFontFaces), name),
                    kAscii);
}

// A face that isn't declared is a font's own name.
static int TakeFace(Walk *walk, const Attribute &attribute)
{
    int number = FontOfFace(walk, attribute.value);
    if (number)
        return number;
    RenameFont(walk, attribute);
    return FontNumber(&walk->document->fonts, attribute.value);
}

// What a tag of text properties says.
struct SaidFonts {
    int fonts[kFontSlots];  // numbers; 0: nothing
    Attribute legacy;       // the attribute with a legacy font; without a name: none
    const FontMapEntry *entry;
    bool isFace;  // it names a face
};

// A face wins over a family.
static SaidFonts ReadFonts(Walk *walk, Tag *tag)
{
    SaidFonts said = {};
    Attribute attribute;
    for (size_t place = 0; NextAttribute(tag->raw, &place, &attribute);) {
        const FontAttribute *row =
            FindFontAttribute(NameOfAttribute(&walk->prefixes, attribute.name));
        if (!row)
            continue;
        int number = row->isFace ? TakeFace(walk, attribute) : TakeFamily(walk, attribute);
        if (row->isFace || !said.fonts[row->slot])
            said.fonts[row->slot] = number;
        if (row->slot == kAscii && LegacyOf(walk, number) && (row->isFace || !said.entry)) {
            said.legacy = attribute;
            said.entry = LegacyOf(walk, number);
            said.isFace = row->isFace;
        }
    }
    return said;
}

// Lao in Unicode is complex script to an office program, which shows it in the font for that.
static void SetComplexFont(Walk *walk, Tag *tag, const SaidFonts &said)
{
    constexpr std::string_view kFace = "style:font-name-complex",
                               kFamily = "style:font-family-complex";
    std::string_view name = said.isFace ? kFace : kFamily;
    std::string_view value = said.isFace && FontOfFace(walk, said.legacy.value)
                                 ? said.legacy.value
                                 : said.entry->unicodeName;
    Attribute there;
    if (FindAttribute(walk, tag, name, &there))
        ReplaceValue(walk, there, value);
    else
        AddAttribute(walk, tag, name.substr(name.find(':') + 1), value);
}

// Of a style, its bases, or the default of its family.
static int FontOfStyleHere(Walk *walk)
{
    int style = StateOf(walk)->style, font = FontFrom(walk, style, kAscii);
    if (font || style == kNoFontStyle)
        return font;
    int family = walk->document->styles.items[style].family % kFamiliesOfScope - kFirstFamily;
    return FontOfDefault(walk, kFamilies[family], kAscii);
}

struct TwinRow {
    std::string_view name, twin;
};
constexpr TwinRow kTwins[] = {{"fo:font-size", "style:font-size-complex"},
                              {"fo:font-weight", "style:font-weight-complex"},
                              {"fo:font-style", "style:font-style-complex"}};

// Size, weight and slant of Lao in Unicode are attributes of their own, too: they say the same as
// those of legacy text, and stay as they are where the text isn't.
static void SetTwins(Walk *walk, Tag *tag, bool isLegacy)
{
    Attribute attribute, twin;
    for (const TwinRow &row : kTwins) {
        if (!FindAttribute(walk, tag, row.name, &attribute))
            continue;
        if (!FindAttribute(walk, tag, row.twin, &twin))
            AddAttribute(walk, tag, row.twin.substr(row.twin.find(':') + 1), attribute.value);
        else if (isLegacy)
            ReplaceValue(walk, twin, attribute.value);
    }
}

static bool OpenTextProperties(Walk *walk, Tag *tag)
{
    SaidFonts said = ReadFonts(walk, tag);
    if (walk->document->isRewriting && walk->document->fonts.hasLegacy)
        SetTwins(walk, tag, said.entry || LegacyOf(walk, FontOfStyleHere(walk)));
    TextState *around = &ElementAbove(walk, 1)->state;
    int style = walk->document->isRewriting ? kNoFontStyle : StateOf(walk)->style;
    if (said.entry)
        SetComplexFont(walk, tag, said);
    for (int slot = 0; slot < kFontSlots; ++slot) {
        if (!said.fonts[slot])
            continue;
        around->fonts[slot] = said.fonts[slot];
        if (style != kNoFontStyle)
            walk->document->styles.items[style].fonts[slot] = said.fonts[slot];
    }
    return true;
}

// ---- text ----

static FontPair FontsOfText(Walk *walk)
{
    int font = StateOf(walk)->fonts[kAscii];
    return {font, font};
}

// The style's fonts, and what is there already where it has none.
static void ApplyStyle(Walk *walk, std::string_view family, std::string_view name)
{
    int style = FindAnywhere(walk, family, name);
    for (int slot = 0; slot < kFontSlots; ++slot)
        if (int font = FontFrom(walk, style, slot))
            StateOf(walk)->fonts[slot] = font;
}

static void ApplyDefault(Walk *walk, std::string_view family)
{
    for (int slot = 0; slot < kFontSlots; ++slot)
        if (!StateOf(walk)->fonts[slot])
            StateOf(walk)->fonts[slot] = FontOfDefault(walk, family, slot);
}

static bool OpenParagraph(Walk *walk, Tag *tag)
{
    ApplyStyle(walk, "paragraph", ValueOf(walk, tag, "text:style-name"));
    ApplyDefault(walk, "paragraph");
    return true;
}

static bool OpenSpan(Walk *walk, Tag *tag)
{
    ApplyStyle(walk, "text", ValueOf(walk, tag, "text:style-name"));
    return true;
}

// What stands in these is no part of the paragraph around them.
static bool OpenOther(Walk *walk, Tag *)
{
    TextState *state = StateOf(walk);
    for (int &font : state->fonts)
        font = kNoFont;
    state->textRow = nullptr;
    return true;
}

static bool OpenShape(Walk *walk, Tag *tag)
{
    OpenOther(walk, tag);
    ApplyStyle(walk, "presentation", ValueOf(walk, tag, "presentation:style-name"));
    ApplyStyle(walk, "graphic", ValueOf(walk, tag, "draw:style-name"));
    ApplyStyle(walk, "paragraph", ValueOf(walk, tag, "draw:text-style-name"));
    ApplyDefault(walk, "graphic");
    return true;
}

// ---- sheets: a cell without a style has that of its row or its column ----

static bool OpenTable(Walk *walk, Tag *tag)
{
    walk->columnCount = 0;
    return OpenOther(walk, tag);
}

static bool OpenColumn(Walk *walk, Tag *tag)
{
    int style =
        FindAnywhere(walk, "table-cell", ValueOf(walk, tag, "table:default-cell-style-name"));
    int count = NumberOf(walk, tag, "table:number-columns-repeated", 1);
    int last = walk->columnCount ? walk->columns[walk->columnCount - 1].end : 0;
    if (walk->columnCount < kMostColumnGroups && count > 0 && count <= kMostColumns)
        walk->columns[walk->columnCount++] = {last + count, style};
    return true;
}

static bool OpenRow(Walk *walk, Tag *tag)
{
    walk->column = 0;
    StateOf(walk)->tableStyle =
        FindAnywhere(walk, "table-cell", ValueOf(walk, tag, "table:default-cell-style-name"));
    return true;
}

static int StyleOfColumn(const Walk *walk)
{
    for (int i = 0; i < walk->columnCount; ++i)
        if (walk->column < walk->columns[i].end)
            return walk->columns[i].style;
    return kNoFontStyle;
}

static bool OpenCell(Walk *walk, Tag *tag)
{
    std::string_view name = ValueOf(walk, tag, "table:style-name");
    int style = FindAnywhere(walk, "table-cell", name), row = StateOf(walk)->tableStyle;
    Attribute value;
    if (!name.data())
        style = row != kNoFontStyle ? row : StyleOfColumn(walk);
    OpenOther(walk, tag);
    for (int slot = 0; slot < kFontSlots; ++slot)
        StateOf(walk)->fonts[slot] = FontFrom(walk, style, slot);
    ApplyDefault(walk, "table-cell");
    int count = NumberOf(walk, tag, "table:number-columns-repeated", 1);
    walk->column += count > 0 && count <= kMostColumns ? count : 1;
    if (FindAttribute(walk, tag, "office:string-value", &value))
        TakeValueAsText(walk, value, &kXmlValue, FontsOfText(walk));
    return true;
}

// ---- signs of lists: their fonts stand behind them ----

constexpr std::string_view kSigns[] = {"text:bullet-char", "style:num-prefix", "style:num-suffix"};

static bool OpenListLevel(Walk *walk, Tag *tag)
{
    TextState *state = StateOf(walk);
    Attribute attribute;
    OpenOther(walk, tag);
    ApplyStyle(walk, "text", ValueOf(walk, tag, "text:style-name"));
    for (size_t i = 0; i < std::size(kSigns); ++i)
        if (FindAttribute(walk, tag, kSigns[i], &attribute))
            TakeValueLater(walk, attribute, &kXmlValue, &state->texts[i]);
    return true;
}

static bool CloseListLevel(Walk *walk)
{
    SetFontsOfTexts(walk, FontsOfText(walk));
    return true;
}

// The styles of a part stand in front of its body.
static bool OpenBody(Walk *walk, Tag *)
{
    walk->isDone = !walk->document->isRewriting;
    return true;
}

// clang-format off
static constexpr ElementRow kRows[] = {
    // element                         kind        open           close    fonts of its text
    {"style:font-face",              kPlain,     OpenFontFace},
    {"svg:font-face-src",            kPlain,     OpenFaceSource},
    {"office:automatic-styles"},
    {"office:body",                  kPlain,     OpenBody},
    {"style:style",                  kPlain,     OpenStyle},
    {"style:default-style",          kPlain,     OpenDefaultStyle},
    {"style:text-properties",        kPlain,     OpenTextProperties},
    {"text:list-level-style-number", kParagraph, OpenListLevel, CloseListLevel},
    {"text:list-level-style-bullet", kParagraph, OpenListLevel, CloseListLevel},
    {"text:outline-level-style",     kParagraph, OpenListLevel, CloseListLevel},
    {"text:p",                       kParagraph, OpenParagraph, nullptr, FontsOfText},
    {"text:h",                       kParagraph, OpenParagraph, nullptr, FontsOfText},
    {"text:span",                    kPlain,     OpenSpan},
    {"text:a",                       kPlain,     OpenSpan},
    {"text:note",                    kApart,     OpenOther},
    {"office:annotation",            kApart,     OpenOther},
    {"text:tracked-changes",         kParagraph, OpenOther},
    {"text:ruby-text",               kApart},
    {"text:s",                       kApart},
    {"text:tab",                     kApart},
    {"text:line-break",              kApart},
    {"table:table",                  kParagraph, OpenTable},
    {"table:table-column",           kPlain,     OpenColumn},
    {"table:table-row",              kPlain,     OpenRow},
    {"table:table-cell",             kParagraph, OpenCell},
    {"table:covered-table-cell",     kParagraph, OpenCell},
    {"draw:frame",                   kApart,     OpenShape},
    {"draw:custom-shape",            kApart,     OpenShape},
    {"draw:rect",                    kApart,     OpenShape},
    {"draw:ellipse",                 kApart,     OpenShape},
    {"draw:circle",                  kApart,     OpenShape},
    {"draw:line",                    kApart,     OpenShape},
    {"draw:polyline",                kApart,     OpenShape},
    {"draw:polygon",                 kApart,     OpenShape},
    {"draw:path",                    kApart,     OpenShape},
    {"draw:connector",               kApart,     OpenShape},
    {"draw:caption",                 kApart,     OpenShape},
    {"draw:measure",                 kApart,     OpenShape},
    {"draw:g",                       kApart,     OpenOther},
};
// clang-format on

const Vocabulary kOpenDocumentElements = {kRows, std::size(kRows)};

// Where fonts and text stand in DrawingML. What a run doesn't say itself is said by the list of its
// shape for the paragraph's level; where the shape fills a place of the slide's layout, by that
// place there and in the master; then by the master's styles, the presentation's, and the theme's
// minor font. Lists of layouts and masters are styles whose names are the place and the level.
#include "documents/drawing.h"

#include <cstdio>
#include <iterator>

enum { kMostLevels = 9, kMostSteps = 8 };  // of lists; from a part up to what is above it

// Families of styles, one for each part.
static int FamilyOfPart(int part)
{
    return 1000 + part;
}

struct PlaceName {
    char text[80];
};

// kind: 'i' for a place by its number, 't' by its type, 's' for a style of the master, 'm' for the
// theme's fonts.
static PlaceName NameOfPlace(char kind, std::string_view name, int level)
{
    PlaceName place;
    int length = int(name.size() < 40 ? name.size() : 40);
    snprintf(place.text, sizeof place.text, "%c%.*s/%d", kind, length, name.data(), level);
    return place;
}

// ---- the theme ----

static int ThemeFontOfPart(Walk *walk, bool isMajor, int slot)
{
    Document *document = walk->document;
    std::string_view name = isMajor ? "major" : "minor";
    int part = walk->part;
    for (int steps = 0; part >= 0 && steps < kMostSteps; ++steps) {
        int style =
            FindFontStyle(document->styles, FamilyOfPart(part), NameOfPlace('m', name, 0).text);
        if (style != kNoFontStyle)
            return FontOfStyle(&document->styles, style, slot);
        part = PartAbove(document, part);
    }
    return document->themeFonts[isMajor ? kMajorFonts : kMinorFonts][slot];
}

static void SetThemeFont(Walk *walk, bool isMajor, int slot, int number)
{
    Document *document = walk->document;
    if (document->isRewriting)
        return;
    PlaceName name = NameOfPlace('m', isMajor ? "major" : "minor", 0);
    int style = AddFontStyle(&document->styles, FamilyOfPart(walk->part), name.text);
    int *fonts = document->themeFonts[isMajor ? kMajorFonts : kMinorFonts];
    fonts[slot] = number;
    if (slot == kAscii)
        fonts[kHighAnsi] = number;
    if (style != kNoFontStyle)
        document->styles.items[style].fonts[slot] = number;
}

// ---- places of layouts and masters, and lists ----

static bool OpenShape(Walk *walk, Tag *)
{
    walk->placeType[0] = walk->placeNumber[0] = 0;
    walk->hasPlace = false;
    for (int &font : walk->listFonts)
        font = kNoFont;
    return true;
}

static void CopyName(char (&target)[16], std::string_view name)
{
    snprintf(target, sizeof target, "%.*s", int(name.size() < sizeof target ? name.size() : 0),
             name.data());
}

static bool OpenPlace(Walk *walk, Tag *tag)
{
    std::string_view type = ValueOf(walk, tag, "type");
    CopyName(walk->placeType, type.data() ? type : "obj");
    CopyName(walk->placeNumber, ValueOf(walk, tag, "idx"));
    walk->hasPlace = true;
    return true;
}

// Which style of the master a place has.
static std::string_view StyleOfPlace(const Walk *walk)
{
    std::string_view type = walk->placeType;
    if (type == "title" || type == "ctrTitle")
        return "titleStyle";
    bool isSmall = type == "dt" || type == "ftr" || type == "sldNum" || type == "hdr";
    return isSmall ? "otherStyle" : "bodyStyle";
}

// Places of these types are one in the master.
static std::string_view TypeInMaster(std::string_view type)
{
    if (type == "ctrTitle")
        return "title";
    return type == "subTitle" || type == "obj" ? std::string_view("body") : type;
}

static bool OpenLevel(Walk *walk, Tag *tag)
{
    size_t name = tag->raw.find("lvl");
    char digit = name != tag->raw.npos ? tag->raw[name + 3] : 0;
    StateOf(walk)->level = digit >= '1' && digit <= '9' ? uint8_t(digit - '1') : 0;
    return true;
}

static void KeepFont(Walk *walk, const PlaceName &name, int slot, int font)
{
    FontStyles *styles = &walk->document->styles;
    int style = AddFontStyle(styles, FamilyOfPart(walk->part), name.text);
    if (style != kNoFontStyle)
        styles->items[style].fonts[slot] = font;
}

// What a list says for a level: of the shape that it stands in, or of the master and presentation.
static void SetFontOfLevel(Walk *walk, int slot, int font)
{
    constexpr std::string_view kStyles[] = {"p:titleStyle", "p:bodyStyle", "p:otherStyle",
                                            "p:notesStyle", "p:defaultTextStyle"};
    int level = ElementAbove(walk, 2)->state.level;
    bool isRewriting = walk->document->isRewriting;
    if (IsInside(walk, 3, "a:lstStyle") && slot == kAscii)
        walk->listFonts[level] = font;
    if (IsInside(walk, 3, "a:lstStyle") && walk->hasPlace && !isRewriting) {
        KeepFont(walk, NameOfPlace('i', walk->placeNumber, level), slot, font);
        KeepFont(walk, NameOfPlace('t', TypeInMaster(walk->placeType), level), slot, font);
    }
    for (std::string_view style : kStyles)
        if (!isRewriting && IsInside(walk, 3, style))
            KeepFont(walk, NameOfPlace('s', style.substr(2), level), slot, font);
}

// ---- fonts ----

static bool IsOfTheme(std::string_view typeface)
{
    return typeface.starts_with("+mj") || typeface.starts_with("+mn");
}

// A typeface that begins so is the theme's. In a list it stands for whatever the theme of the text
// is.
static int FontOfTypeface(Walk *walk, std::string_view typeface)
{
    if (!IsOfTheme(typeface))
        return FontNumber(&walk->document->fonts, typeface);
    int slot = typeface.ends_with("-ea")   ? kEastAsia
               : typeface.ends_with("-cs") ? kComplex
                                           : kAscii;
    return ThemeFontOfPart(walk, typeface.starts_with("+mj"), slot);
}

static void SetFont(Walk *walk, int slot, int font)
{
    bool isMajor = IsInside(walk, 1, "a:majorFont");
    if (isMajor || IsInside(walk, 1, "a:minorFont"))
        SetThemeFont(walk, isMajor, slot, font);
    else if (IsInside(walk, 1, "a:rPr"))
        ElementAbove(walk, 2)->state.fonts[slot] = font;
    else if (IsInside(walk, 1, "a:defRPr") && IsInside(walk, 2, "a:pPr"))
        ElementAbove(walk, 3)->state.fonts[slot] = font;
    else if (IsInside(walk, 1, "a:defRPr"))
        SetFontOfLevel(walk, slot, font);
}

static bool TakeTypeface(Walk *walk, Tag *tag, int slot, Attribute *attribute)
{
    if (!FindAttribute(walk, tag, "typeface", attribute))
        return false;
    SetFont(walk, slot, FontOfTypeface(walk, attribute->value));
    return true;
}

// Lao in Unicode is complex script to an office program: the font for that is set beside a legacy
// one, in its place in the order of the standard.
static bool OpenLatin(Walk *walk, Tag *tag)
{
    Attribute attribute;
    if (!TakeTypeface(walk, tag, kAscii, &attribute))
        return true;
    RenameFont(walk, attribute);
    const FontMapEntry *entry =
        LegacyFont(walk->document->fonts, FontOfTypeface(walk, attribute.value));
    ElementAbove(walk, 1)->state.wantsComplex = IsOfTheme(attribute.value) ? nullptr : entry;
    CopyName(walk->drawingPrefix, tag->raw.substr(1, tag->raw.find("latin") - 1));
    return true;
}

static bool OpenEastAsian(Walk *walk, Tag *tag)
{
    Attribute attribute;
    if (TakeTypeface(walk, tag, kEastAsia, &attribute))
        RenameFont(walk, attribute);
    return true;
}

static bool OpenComplex(Walk *walk, Tag *tag)
{
    Attribute attribute;
    const FontMapEntry **wanted = &ElementAbove(walk, 1)->state.wantsComplex;
    if (TakeTypeface(walk, tag, kComplex, &attribute)) {
        if (*wanted)
            ReplaceValue(walk, attribute, (*wanted)->unicodeName);
        else
            RenameFont(walk, attribute);
    }
    *wanted = nullptr;
    return true;
}

// No font for complex script has come.
static void PutComplex(Walk *walk, const FontMapEntry **wanted)
{
    if (!*wanted)
        return;
    char tag[32];
    snprintf(tag, sizeof tag, "<%scs typeface=\"", walk->drawingPrefix);
    PutChanged(walk, tag);
    PutChangedValue(walk, (*wanted)->unicodeName);
    PutChanged(walk, "\"/>");
    *wanted = nullptr;
}

constexpr std::string_view kFontElements[] = {"a:latin", "a:ea", "a:cs"};

// What comes behind the fonts in the order of the standard.
static void PassProperty(Walk *walk, const ElementRow *row)
{
    for (std::string_view font : kFontElements)
        if (row && row->name == font)
            return;
    PutComplex(walk, &StateOf(walk)->wantsComplex);
}

static bool OpenProperties(Walk *walk, Tag *)
{
    StateOf(walk)->wantsComplex = nullptr;
    return true;
}

static bool CloseProperties(Walk *walk)
{
    PutComplex(walk, &StateOf(walk)->wantsComplex);
    return true;
}

// ---- text ----

static int FontInPart(Walk *walk, int part, const PlaceName &name)
{
    FontStyles *styles = &walk->document->styles;
    return FontOfStyle(styles, FindFontStyle(*styles, FamilyOfPart(part), name.text), kAscii);
}

// What a part says of the open shape's text.
static int FontInPartAbove(Walk *walk, int part, int level)
{
    if (!walk->hasPlace)
        return FontInPart(walk, part, NameOfPlace('s', "defaultTextStyle", level));
    int font = kNoFont;
    if (walk->placeNumber[0])
        font = FontInPart(walk, part, NameOfPlace('i', walk->placeNumber, level));
    const PlaceName names[] = {NameOfPlace('t', TypeInMaster(walk->placeType), level),
                               NameOfPlace('s', StyleOfPlace(walk), level),
                               NameOfPlace('s', "notesStyle", level)};
    for (size_t i = 0; !font && i < std::size(names); ++i)
        font = FontInPart(walk, part, names[i]);
    return font;
}

// What the layout, the master and the presentation say, from the nearest on.
static int FontOfPlace(Walk *walk, int level)
{
    int part = PartAbove(walk->document, walk->part), font = kNoFont;
    for (int steps = 0; !font && part >= 0 && steps < kMostSteps; ++steps) {
        font = FontInPartAbove(walk, part, level);
        part = PartAbove(walk->document, part);
    }
    return font;
}

static FontPair FontsOfRun(Walk *walk)
{
    const TextState *state = StateOf(walk);
    int font = state->fonts[kAscii];
    if (!font)
        font = walk->listFonts[state->level];
    if (!font)
        font = FontOfPlace(walk, state->level);
    if (!font)
        font = ThemeFontOfPart(walk, false, kAscii);
    return {font, font};
}

static bool OpenParagraph(Walk *walk, Tag *)
{
    TextState *state = StateOf(walk);
    state->level = 0;
    for (int &font : state->fonts)
        font = kNoFont;
    return true;
}

static bool OpenParagraphProperties(Walk *walk, Tag *tag)
{
    int level = NumberOf(walk, tag, "lvl", 0);
    ElementAbove(walk, 1)->state.level = level < kMostLevels ? uint8_t(level) : 0;
    return true;
}

// clang-format off
static constexpr ElementRow kRows[] = {
    // element           kind        open            close            fonts of its text child
    {"p:sp",           kParagraph, OpenShape},
    {"p:graphicFrame", kParagraph, OpenShape},
    {"p:ph",           kPlain,     OpenPlace},
    {"p:titleStyle"},
    {"p:bodyStyle"},
    {"p:otherStyle"},
    {"p:notesStyle"},
    {"p:defaultTextStyle"},
    {"a:lstStyle"},
    {"a:lvl1pPr",      kPlain,     OpenLevel},
    {"a:lvl2pPr",      kPlain,     OpenLevel},
    {"a:lvl3pPr",      kPlain,     OpenLevel},
    {"a:lvl4pPr",      kPlain,     OpenLevel},
    {"a:lvl5pPr",      kPlain,     OpenLevel},
    {"a:lvl6pPr",      kPlain,     OpenLevel},
    {"a:lvl7pPr",      kPlain,     OpenLevel},
    {"a:lvl8pPr",      kPlain,     OpenLevel},
    {"a:lvl9pPr",      kPlain,     OpenLevel},
    {"a:majorFont",    kPlain,     OpenProperties},
    {"a:minorFont",    kPlain,     OpenProperties},
    {"a:latin",        kPlain,     OpenLatin},
    {"a:ea",           kPlain,     OpenEastAsian},
    {"a:cs",           kPlain,     OpenComplex},
    {"a:rPr",          kPlain,     OpenProperties, CloseProperties, nullptr, PassProperty},
    {"a:defRPr",       kPlain,     OpenProperties, CloseProperties, nullptr, PassProperty},
    {"a:endParaRPr",   kPlain,     OpenProperties, CloseProperties, nullptr, PassProperty},
    {"a:p",            kParagraph, OpenParagraph},
    {"a:pPr",          kPlain,     OpenParagraphProperties},
    {"a:r"},
    {"a:fld",          kApart},
    {"a:br",           kApart},
    {"a:t",            kPlain,     nullptr,        nullptr,         FontsOfRun},
};
// clang-format on

const Vocabulary kDrawingElements = {kRows, std::size(kRows)};

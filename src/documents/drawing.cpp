// Where fonts and text stand in DrawingML: each run says its fonts by elements.
#include "documents/drawing.h"

#include <iterator>

// ---- fonts ----

struct FontElement {
    std::string_view name;
    int slot;
};
constexpr FontElement kFontElements[] = {
    {"a:latin", kAscii}, {"a:ea", kEastAsia}, {"a:cs", kComplex}};

static int SlotOf(Walk *walk)
{
    for (const FontElement &row : kFontElements)
        if (IsInside(walk, 0, row.name))
            return row.slot;
    return kAscii;
}

// A typeface that begins so is the theme's.
static int FontOfTypeface(Walk *walk, std::string_view typeface)
{
    const Document *document = walk->document;
    bool isMajor = typeface.starts_with("+mj");
    if (!isMajor && !typeface.starts_with("+mn"))
        return FontNumber(&walk->document->fonts, typeface);
    int slot = typeface.ends_with("-ea")   ? kEastAsia
               : typeface.ends_with("-cs") ? kComplex
                                           : kAscii;
    return document->themeFonts[isMajor ? kMajorFonts : kMinorFonts][slot];
}

static void SetThemeFont(Walk *walk, ThemeFont font, int slot, int number)
{
    if (walk->document->isRewriting)
        return;
    int *fonts = walk->document->themeFonts[font];
    fonts[slot] = number;
    if (slot == kAscii)
        fonts[kHighAnsi] = number;
}

static bool OpenTypeface(Walk *walk, Tag *tag)
{
    Attribute attribute;
    if (!FindAttribute(walk, tag, "typeface", &attribute))
        return true;
    int number = FontOfTypeface(walk, attribute.value), slot = SlotOf(walk);
    if (IsInside(walk, 1, "a:majorFont") || IsInside(walk, 1, "a:minorFont"))
        SetThemeFont(walk, IsInside(walk, 1, "a:majorFont") ? kMajorFonts : kMinorFonts, slot,
                     number);
    if (IsInside(walk, 1, "a:rPr"))
        ElementAbove(walk, 2)->state.fonts[slot] = number;
    RenameFont(walk, attribute);
    return true;
}

static FontPair FontsOfRun(Walk *walk)
{
    int font = StateOf(walk)->fonts[kAscii];
    if (!font)
        font = walk->document->themeFonts[kMinorFonts][kAscii];
    return {font, font};
}

static bool OpenRun(Walk *walk, Tag *)
{
    for (int &font : StateOf(walk)->fonts)
        font = kNoFont;
    return true;
}

// clang-format off
static constexpr ElementRow kRows[] = {
    // element       kind        open          close    fonts of its text
    {"a:majorFont",  kPlain,     nullptr,      nullptr, nullptr,    nullptr},
    {"a:minorFont",  kPlain,     nullptr,      nullptr, nullptr,    nullptr},
    {"a:latin",      kPlain,     OpenTypeface, nullptr, nullptr,    nullptr},
    {"a:ea",         kPlain,     OpenTypeface, nullptr, nullptr,    nullptr},
    {"a:cs",         kPlain,     OpenTypeface, nullptr, nullptr,    nullptr},
    {"a:p",          kParagraph, OpenRun,      nullptr, nullptr,    nullptr},
    {"a:r",          kPlain,     OpenRun,      nullptr, nullptr,    nullptr},
    {"a:fld",        kApart,     OpenRun,      nullptr, nullptr,    nullptr},
    {"a:br",         kApart,     nullptr,      nullptr, nullptr,    nullptr},
    {"a:rPr",        kPlain,     nullptr,      nullptr, nullptr,    nullptr},
    {"a:t",          kPlain,     nullptr,      nullptr, FontsOfRun, nullptr},
};
// clang-format on

const Vocabulary kDrawingElements = {kRows, std::size(kRows)};

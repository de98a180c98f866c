// Style tracking. The order of the search for a font is that of word processors of the format's
// time: what a run says itself, its style, its paragraph's style, the paragraph's own fonts, the
// style "Normal". Each tag that says something of it has a row in the table of tracked tags; the
// operations of the rows stand above it.
#include "xmlconv/styles.h"

#include <cassert>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "frame/strings.h"
#include "xmlconv/conversion.h"

// ---- the table of styles ----

constexpr int kMostStyles = INT_MAX / 32;  // the bytes of an index still fit a 32-bit size

// Twice as many slots as styles: a search is short, and always ends at a free slot.
static size_t IndexSize(int capacity)
{
    return 2 * size_t(capacity);
}

// An index without a style; null without memory.
static int *NewIndex(int capacity)
{
    int *index = static_cast<int *>(malloc(IndexSize(capacity) * sizeof(int)));
    for (size_t i = 0; index && i < IndexSize(capacity); ++i)
        index[i] = kNoStyle;
    return index;
}

int StartStyles(StyleState *styles, int capacity)
{
    assert(capacity > 0);
    *styles = {};
    styles->last = styles->normal = kNoStyle;
    styles->capacity = capacity;
    styles->table = static_cast<StyleRecord *>(calloc(size_t(capacity), sizeof(StyleRecord)));
    styles->index = NewIndex(capacity);
    ResetTextState(styles);
    return styles->table && styles->index;
}

void FreeStyles(StyleState *styles)
{
    for (int i = 0; styles->table && i <= styles->last; ++i)
        free(styles->table[i].fonts);
    free(styles->table);
    free(styles->index);
    *styles = {};
}

void ResetTextState(StyleState *styles)
{
    styles->paragraph = styles->run = kNoStyle;
    styles->paragraphFonts = styles->runFonts = {};
    styles->activeParagraphFonts = styles->activeRunFonts = nullptr;
}

// The slot of the index that holds the first style of a name, or that is free for it.
static int *FindSlot(const StyleState *styles, std::string_view name)
{
    size_t size = IndexSize(styles->capacity), slot = HashNoCase(name) % size;
    while (styles->index[slot] != kNoStyle &&
           !EqualNoCase(styles->table[styles->index[slot]].name, name))
        slot = (slot + 1) % size;
    return &styles->index[slot];
}

int FindStyle(const StyleState *styles, const char *name)
{
    if (!name || !*name)
        return kNoStyle;
    return *FindSlot(styles, std::string_view(name, strnlen(name, kTagNameSize - 1)));
}

// Of styles of one name the first one is found.
static void EnterInIndex(StyleState *styles, int style)
{
    int *slot = FindSlot(styles, styles->table[style].name);
    if (*slot == kNoStyle)
        *slot = style;
}

// A table of twice the size, with the same styles; the old one stays without memory. Styles are
// named by number, so all that refers to them stays right, but the index goes by its size.
static int DoubleTable(StyleState *styles)
{
    if (styles->capacity > kMostStyles / 2)
        return 0;
    int capacity = 2 * styles->capacity;
    StyleRecord *table = static_cast<StyleRecord *>(calloc(size_t(capacity), sizeof(StyleRecord)));
    int *index = NewIndex(capacity);
    if (!table || !index) {
        free(table);
        free(index);
        return 0;
    }
    memcpy(table, styles->table, size_t(styles->last + 1) * sizeof(StyleRecord));
    free(styles->table);
    free(styles->index);
    styles->table = table;
    styles->index = index;
    styles->capacity = capacity;
    for (int i = 0; i <= styles->last; ++i)
        if (*table[i].name)
            EnterInIndex(styles, i);
    return 1;
}

// The document goes on where it was: nothing of the style that did not fit has been stored yet.
static int GrowStyles(Conversion *conversion)
{
    StyleState *styles = &conversion->styles;
    AddRestartNote(&conversion->report, "Restarted: styles buffer increased to %d styles",
                   2 * size_t(styles->capacity));
    return DoubleTable(styles) || SetConversionError(&conversion->report, 0, kFailMemory);
}

// Null for kNoStyle. Valid until the next style is added.
static StyleRecord *StyleAt(const StyleState *styles, int style)
{
    assert(style <= styles->last && styles->last < styles->capacity);
    return style == kNoStyle ? nullptr : &styles->table[style];
}

// ---- attributes ----

// The value of an attribute; null when the tag lacks it or it is a bare name.
static const char *ValueOf(TagRecord *tag, const char *name)
{
    const TagAttribute *attribute = FindTagAttribute(tag, name);
    return attribute ? attribute->value : nullptr;
}

struct NamedNumber {
    const char *name;  // a value in whatever capitals
    int number;
};

// The number of an attribute's value in a table, or what is there already.
static int NumberOf(TagRecord *tag, const char *name, const NamedNumber *rows, size_t count,
                    int standard)
{
    const TagAttribute *attribute = FindTagAttribute(tag, name);
    for (size_t i = 0; attribute && i < count; ++i)
        if (AttributeValueIs(attribute, rows[i].name))
            return rows[i].number;
    return standard;
}

constexpr NamedNumber kStyleTypes[] = {{"paragraph", kParagraphStyle},
                                       {"character", kCharacterStyle},
                                       {"list", kListStyle},
                                       {"table", kTableStyle}};

// ---- styles ----

// A w:style that stands elsewhere than in the style sheet is none. Its id may come again: the first
// one is found by its name, but the last "Normal" counts.
static int AddStyle(Conversion *conversion, TagRecord *tag)
{
    StyleState *styles = &conversion->styles;
    if (!tag->parent || !TagNameIs(tag->parent, "w:styles"))
        return 1;
    if (styles->last == styles->capacity - 1 && !GrowStyles(conversion))
        return 0;
    StyleRecord *style = StyleAt(styles, ++styles->last);
    style->basedOn = kNoStyle;
    const TagAttribute *id = FindTagAttribute(tag, "w:styleid");
    if (id && id->value) {
        CopyCut(style->name, sizeof style->name, id->value);
        EnterInIndex(styles, styles->last);
    }
    if (id && AttributeValueIs(id, "Normal"))
        styles->normal = styles->last;
    style->type =
        StyleType(NumberOf(tag, "w:type", kStyleTypes, std::size(kStyleTypes), kParagraphStyle));
    return 1;
}

// Tags inside a style that was none go to the style before it, as w:rFonts do.
static int SetBasedOnName(Conversion *conversion, TagRecord *tag)
{
    StyleRecord *style = StyleAt(&conversion->styles, conversion->styles.last);
    const char *value = ValueOf(tag, "w:val");
    if (style && value && tag->parent && TagNameIs(tag->parent, "w:style"))
        CopyCut(style->basedOnName, sizeof style->basedOnName, value);
    return 1;
}

// ---- fonts of styles, paragraphs and runs ----

constexpr NamedNumber kHints[] = {
    {"ascii", kAsciiHint}, {"h-ansi", kAsciiHint}, {"fareast", kFarEastHint}, {"cs", kComplexHint}};

struct FontSlot {
    std::string_view attribute;
    int slot, hint;  // the name it sets, and the hint where there is none yet
};
constexpr FontSlot kFontSlots[] = {{"w:ascii", 0, kAsciiHint},
                                   {"w:fareast", 1, kFarEastHint},
                                   {"w:h-ansi", 3, kAsciiHint},
                                   {"w:cs", 2, kComplexHint}};
enum { kAsciiSlot = 0, kComplexSlot = 2 };

// Without a hint the first name that a style's block gets decides which one is its font. The blocks
// of paragraphs and runs always have a hint, at first "ascii".
static void ApplyFontName(const TagAttribute &attribute, RunFontBlock *block)
{
    for (const FontSlot &row : kFontSlots) {
        if (!attribute.value || !AttributeNameIs(&attribute, row.attribute))
            continue;
        CopyCut(block->names[row.slot], kFontNameSlot, attribute.value);
        if (block->hint == kNoHint)
            block->hint = row.hint;
    }
}

// The block goes on holding legacy names, since the text that follows is in their code; the tag
// gets a name for complex script beside a legacy one, which is renamed with the others when it is
// written: Lao in a Unicode font is complex script to a word processor.
static int ApplyFontsTag(Conversion *conversion, TagRecord *tag, RunFontBlock *block)
{
    block->hint = NumberOf(tag, "w:hint", kHints, std::size(kHints), block->hint);
    for (int i = 0; i < tag->attributeCount; ++i)
        ApplyFontName(tag->attributes[i], block);
    block->isSet = true;
    const char *ascii = block->names[kAsciiSlot];
    if (!FindFontMapEntry(&conversion->fonts, ascii) || FindTagAttribute(tag, "w:cs"))
        return 1;
    if (!AddTagAttribute(&conversion->report, tag, "w:cs", ascii))
        return 0;
    CopyCut(block->names[kComplexSlot], kFontNameSlot, ascii);
    return 1;
}

static int ApplyToStyle(Conversion *conversion, TagRecord *tag)
{
    StyleRecord *style = StyleAt(&conversion->styles, conversion->styles.last);
    if (!style)
        return 1;
    if (!style->fonts) {
        style->fonts = static_cast<RunFontBlock *>(calloc(1, sizeof(RunFontBlock)));
        if (!style->fonts)
            return SetConversionError(&conversion->report, 0, kFailStyleMemory);
        style->fonts->hint = kNoHint;
    }
    return ApplyFontsTag(conversion, tag, style->fonts) ||
           SetConversionError(&conversion->report, 0, kFailStyleFonts);
}

// The block of a paragraph or run keeps the names of the one before, where the tag sets none.
static int ApplyToParagraph(Conversion *conversion, TagRecord *tag)
{
    StyleState *styles = &conversion->styles;
    styles->activeParagraphFonts = &styles->paragraphFonts;
    return ApplyFontsTag(conversion, tag, &styles->paragraphFonts) ||
           SetConversionError(&conversion->report, 0, kFailParagraphFonts);
}

static int ApplyToRun(Conversion *conversion, TagRecord *tag)
{
    StyleState *styles = &conversion->styles;
    styles->activeRunFonts = &styles->runFonts;
    return ApplyFontsTag(conversion, tag, &styles->runFonts) ||
           SetConversionError(&conversion->report, 0, kFailRunFonts);
}

static int Ignore(Conversion *, TagRecord *)
{
    return 1;
}

struct TagWork {
    const char *name;
    int (*work)(Conversion *conversion, TagRecord *tag);
};

// Whom the fonts of a w:rPr belong to.
constexpr TagWork kFontOwners[] = {
    {"w:style", ApplyToStyle}, {"w:pPr", ApplyToParagraph}, {"w:r", ApplyToRun}, {"w:lvl", Ignore}};

// Elsewhere the tag says nothing that is followed: its names are replaced all the same when it is
// written, and a note tells of text that may have stayed as it was.
static int TrackFontsTag(Conversion *conversion, TagRecord *tag)
{
    TagRecord *parent = tag->parent, *grandparent = parent ? parent->parent : nullptr;
    if (!grandparent)
        return 1;
    if (TagNameIs(parent, "w:rPr"))
        for (const TagWork &owner : kFontOwners)
            if (TagNameIs(grandparent, owner.name))
                return owner.work(conversion, tag);
    AddConversionNote(&conversion->report, "unprocessed %s tag,child of %s,of %s", tag->name,
                      parent->name, grandparent->name);
    return 1;
}

// ---- paragraphs and runs ----

// The style that a tag names, where it stands in parent and grandparent.
static void SetStyle(const StyleState *styles, TagRecord *tag, const char *parent,
                     const char *grandparent, int *style)
{
    const TagRecord *above = tag->parent, *top = above ? above->parent : nullptr;
    const char *value = ValueOf(tag, "w:val");
    if (top && value && EqualNoCase(above->name, parent) && EqualNoCase(top->name, grandparent))
        *style = FindStyle(styles, value);
}

static int SetParagraphStyle(Conversion *conversion, TagRecord *tag)
{
    StyleState *styles = &conversion->styles;
    SetStyle(styles, tag, "w:pPr", "w:p", &styles->paragraph);
    return 1;
}

static int SetRunStyle(Conversion *conversion, TagRecord *tag)
{
    StyleState *styles = &conversion->styles;
    SetStyle(styles, tag, "w:rPr", "w:r", &styles->run);
    return 1;
}

static int ResetRunState(Conversion *conversion, TagRecord *)
{
    conversion->styles.activeRunFonts = nullptr;
    conversion->styles.run = kNoStyle;
    return 1;
}

// Runs at the paragraph and again at its properties; a w:rPr in these clears the run alone.
static int ResetParagraphState(Conversion *conversion, TagRecord *tag)
{
    conversion->styles.activeParagraphFonts = nullptr;
    conversion->styles.paragraph = kNoStyle;
    return ResetRunState(conversion, tag);
}

// The style sheet is read to its end now, so that a base may stand behind its style.
static int LinkStyles(Conversion *conversion, TagRecord *)
{
    StyleState *styles = &conversion->styles;
    for (int i = 0; i <= styles->last; ++i)
        styles->table[i].basedOn = FindStyle(styles, styles->table[i].basedOnName);
    return 1;
}

struct TrackedTag {
    std::string_view name;
    int (*work)(Conversion *conversion, TagRecord *tag);
    bool needsAttributes;  // or the tag's parents; else the work may get a null tag
};

constexpr TrackedTag kTracked[] = {
    {"w:style", AddStyle, true},         {"w:basedOn", SetBasedOnName, true},
    {"w:rFonts", TrackFontsTag, true},   {"w:pStyle", SetParagraphStyle, true},
    {"w:p", ResetParagraphState, false}, {"w:pPr", ResetParagraphState, false},
    {"w:r", ResetRunState, false},       {"w:rPr", ResetRunState, false},
    {"w:rStyle", SetRunStyle, true},     {"w:body", LinkStyles, false},
};

static const TrackedTag *FindTracked(std::string_view name)
{
    for (const TrackedTag &row : kTracked)
        if (row.name == name)
            return &row;
    return nullptr;
}

int TrackTag(Conversion *conversion, TagRecord *tag)
{
    const TrackedTag *tracked = FindTracked(tag->name);
    return tracked ? tracked->work(conversion, tag) : 1;
}

bool TrackTagName(Conversion *conversion, std::string_view name)
{
    const TrackedTag *tracked = FindTracked(name);
    if (tracked && tracked->needsAttributes)
        return false;
    return !tracked || tracked->work(conversion, nullptr);
}

// ---- the font of a text ----

static const char *FontOfBlock(const RunFontBlock &block)
{
    assert(block.hint >= kAsciiHint && block.hint <= kComplexHint);
    return block.names[block.hint];
}

// The font of a style or the nearest of its bases that has one. A ring of bases ends after as many
// steps as there are styles; a block that names no font is passed over.
static const char *FontOfChain(const StyleState *styles, int number)
{
    const StyleRecord *style = StyleAt(styles, number);
    for (int steps = 0; style && steps <= styles->last; ++steps) {
        if (style->fonts && style->fonts->hint != kNoHint)
            return FontOfBlock(*style->fonts);
        style = StyleAt(styles, style->basedOn);
    }
    return nullptr;
}

// The bases of "Normal" itself are not asked.
static const char *FontOfNormal(const StyleState *styles)
{
    const StyleRecord *normal = StyleAt(styles, styles->normal);
    const RunFontBlock *block = normal ? normal->fonts : nullptr;
    return block && block->hint != kNoHint ? FontOfBlock(*block) : nullptr;
}

// "Normal" stands in for a paragraph's style, and for nothing where there is no such style.
static const char *StyleFontName(const StyleState *styles, int runStyle, int paragraphStyle)
{
    const char *font = FontOfChain(styles, runStyle);
    if (font || paragraphStyle == kNoStyle)
        return font;
    if (paragraphStyle != styles->normal)
        font = FontOfChain(styles, paragraphStyle);
    return font ? font : FontOfNormal(styles);
}

// The order of the search. A paragraph's own fonts count only where it names no style.
const char *ResolveTextFont(const StyleState *styles)
{
    if (styles->activeRunFonts)
        return FontOfBlock(*styles->activeRunFonts);
    if (styles->run != kNoStyle || styles->paragraph != kNoStyle)
        return StyleFontName(styles, styles->run, styles->paragraph);
    if (styles->activeParagraphFonts)
        return FontOfBlock(*styles->activeParagraphFonts);
    return FontOfNormal(styles);
}

const char *FontOfText(const StyleState *styles, const TagRecord *tag)
{
    return tag && EqualNoCase(tag->name, "w:t") ? ResolveTextFont(styles) : nullptr;
}

// Style tracking. The order of the search for a font is that of word processors of the format's
// time: what a run says itself, its style, its paragraph's style, the paragraph's own fonts, the
// style "Normal".
#include "xmlconv/styles.h"

#include <cstdlib>
#include <cstring>
#include <iterator>

#include "frame/strings.h"
#include "xmlconv/report.h"

enum { kFirstCapacity = 256 };

StyleState gStyles = {.table = nullptr,
                      .index = nullptr,
                      .capacity = kFirstCapacity,
                      .last = -1,
                      .normal = nullptr,
                      .paragraph = nullptr,
                      .run = nullptr,
                      .paragraphFonts = {},
                      .runFonts = {},
                      .activeParagraphFonts = nullptr,
                      .activeRunFonts = nullptr};

// Twice as many slots as styles, so that a search is short.
static size_t IndexSize()
{
    return 2 * size_t(gStyles.capacity);
}

static size_t HashNoCase(std::string_view name)
{
    uint32_t hash = 2166136261u;
    for (char c : name)
        hash = (hash ^ uint8_t(FoldLetter(c))) * 16777619u;
    return hash;
}

int StartStyles()
{
    int capacity = gStyles.capacity;
    FreeStyles();
    gStyles = {};
    gStyles.last = -1;
    gStyles.capacity = capacity;
    gStyles.table = static_cast<StyleRecord *>(calloc(size_t(capacity), sizeof(StyleRecord)));
    gStyles.index = static_cast<StyleRecord **>(calloc(IndexSize(), sizeof(StyleRecord *)));
    return gStyles.table && gStyles.index;
}

void FreeStyles()
{
    for (int i = 0; i <= gStyles.last; ++i)
        free(gStyles.table[i].fonts);
    free(gStyles.table);
    free(gStyles.index);
    gStyles.table = nullptr;
    gStyles.index = nullptr;
    gStyles.last = -1;
}

// The slot of the index that holds the first style of a name, or that is free for it.
static StyleRecord **FindSlot(std::string_view name)
{
    size_t slot = HashNoCase(name) % IndexSize();
    while (gStyles.index[slot] && !EqualNoCase(gStyles.index[slot]->name, name))
        slot = (slot + 1) % IndexSize();
    return &gStyles.index[slot];
}

StyleRecord *FindStyle(const char *name)
{
    return name && *name ? *FindSlot(std::string_view(name, strnlen(name, kTagNameSize - 1)))
                         : nullptr;
}

static void NameStyle(StyleRecord *style, const char *name)
{
    CopyCut(style->name, sizeof style->name, name);
    StyleRecord **slot = FindSlot(style->name);
    if (!*slot)
        *slot = style;
}

static StyleRecord *LastStyle()
{
    return gStyles.last < 0 ? nullptr : &gStyles.table[gStyles.last];
}

// The value of an attribute, none when the tag lacks it or it has none.
static const char *ValueOf(TagRecord *tag, const char *name)
{
    const TagAttribute *attribute = FindTagAttribute(tag, name);
    return attribute ? attribute->value : nullptr;
}

struct NamedNumber {
    const char *name;
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

static int AddStyle(TagRecord *tag)
{
    if (!tag->parent || !TagNameIs(tag->parent, "w:styles"))
        return 1;
    if (gStyles.last >= gStyles.capacity - 1) {
        gReport.restart = kStylesFull;
        return 0;
    }
    StyleRecord *style = &gStyles.table[++gStyles.last];
    const TagAttribute *id = FindTagAttribute(tag, "w:styleid");
    if (id && id->value)
        NameStyle(style, id->value);
    if (id && AttributeValueIs(id, "Normal"))
        gStyles.normal = style;
    style->type =
        StyleType(NumberOf(tag, "w:type", kStyleTypes, std::size(kStyleTypes), kParagraphStyle));
    return 1;
}

static int SetBasedOnName(TagRecord *tag)
{
    StyleRecord *style = LastStyle();
    const char *value = ValueOf(tag, "w:val");
    if (style && value && tag->parent && TagNameIs(tag->parent, "w:style"))
        CopyCut(style->basedOnName, sizeof style->basedOnName, value);
    return 1;
}

constexpr NamedNumber kHints[] = {
    {"ascii", kAsciiHint}, {"h-ansi", kAsciiHint}, {"fareast", kFarEastHint}, {"cs", kComplexHint}};

struct FontSlot {
    std::string_view attribute;
    int slot, hint;
};
constexpr FontSlot kFontSlots[] = {{"w:ascii", 0, kAsciiHint},
                                   {"w:fareast", 1, kFarEastHint},
                                   {"w:h-ansi", 3, kAsciiHint},
                                   {"w:cs", 2, kComplexHint}};
enum { kAsciiSlot = 0, kComplexSlot = 2 };

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
// written.
static int ApplyFontsTag(TagRecord *tag, RunFontBlock *block)
{
    block->hint = NumberOf(tag, "w:hint", kHints, std::size(kHints), block->hint);
    for (int i = 0; i < tag->attributeCount; ++i)
        ApplyFontName(tag->attributes[i], block);
    block->isSet = true;
    const char *ascii = block->names[kAsciiSlot];
    if (!FindFontMapEntry(ascii) || FindTagAttribute(tag, "w:cs"))
        return 1;
    if (!AddTagAttribute(tag, "w:cs", ascii))
        return 0;
    CopyCut(block->names[kComplexSlot], kFontNameSlot, ascii);
    return 1;
}

static int ApplyToStyle(TagRecord *tag)
{
    StyleRecord *style = LastStyle();
    if (!style)
        return 1;
    if (!style->fonts) {
        style->fonts = static_cast<RunFontBlock *>(calloc(1, sizeof(RunFontBlock)));
        if (!style->fonts)
            return SetConversionError(0, 506);
        style->fonts->hint = kNoHint;
    }
    return ApplyFontsTag(tag, style->fonts) ? 1 : SetConversionError(0, 509);
}

static int ApplyToParagraph(TagRecord *tag)
{
    gStyles.activeParagraphFonts = &gStyles.paragraphFonts;
    return ApplyFontsTag(tag, &gStyles.paragraphFonts) ? 1 : SetConversionError(0, 514);
}

static int ApplyToRun(TagRecord *tag)
{
    gStyles.activeRunFonts = &gStyles.runFonts;
    return ApplyFontsTag(tag, &gStyles.runFonts) ? 1 : SetConversionError(0, 519);
}

static int Ignore(TagRecord *)
{
    return 1;
}

struct TagWork {
    const char *name;
    int (*work)(TagRecord *tag);
};

// Whom the fonts of a w:rPr belong to.
constexpr TagWork kFontOwners[] = {
    {"w:style", ApplyToStyle}, {"w:pPr", ApplyToParagraph}, {"w:r", ApplyToRun}, {"w:lvl", Ignore}};

static int TrackFontsTag(TagRecord *tag)
{
    TagRecord *parent = tag->parent, *grandparent = parent ? parent->parent : nullptr;
    if (!grandparent)
        return 1;
    if (TagNameIs(parent, "w:rPr"))
        for (const TagWork &owner : kFontOwners)
            if (TagNameIs(grandparent, owner.name))
                return owner.work(tag);
    AddConversionNote("unprocessed %s tag,child of %s,of %s", tag->name, parent->name,
                      grandparent->name);
    return 1;
}

// The style that a tag names, where it stands in parent and grandparent.
static void SetStyle(TagRecord *tag, const char *parent, const char *grandparent,
                     StyleRecord **style)
{
    const TagRecord *above = tag->parent, *top = above ? above->parent : nullptr;
    const char *value = ValueOf(tag, "w:val");
    if (top && value && EqualNoCase(above->name, parent) && EqualNoCase(top->name, grandparent))
        *style = FindStyle(value);
}

static int SetParagraphStyle(TagRecord *tag)
{
    SetStyle(tag, "w:pPr", "w:p", &gStyles.paragraph);
    return 1;
}

static int SetRunStyle(TagRecord *tag)
{
    SetStyle(tag, "w:rPr", "w:r", &gStyles.run);
    return 1;
}

static int ResetRunState(TagRecord *)
{
    gStyles.activeRunFonts = nullptr;
    gStyles.run = nullptr;
    return 1;
}

static int ResetParagraphState(TagRecord *tag)
{
    gStyles.activeParagraphFonts = nullptr;
    gStyles.paragraph = nullptr;
    return ResetRunState(tag);
}

// The style sheet is read to its end now, so that a base may stand behind its style.
static int LinkStyles(TagRecord *)
{
    for (int i = 0; i <= gStyles.last; ++i)
        gStyles.table[i].basedOn = FindStyle(gStyles.table[i].basedOnName);
    return 1;
}

struct TrackedTag {
    std::string_view name;
    int (*work)(TagRecord *tag);
    bool needsAttributes;
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

int TrackTag(TagRecord *tag)
{
    const TrackedTag *tracked = FindTracked(tag->name);
    return tracked ? tracked->work(tag) : 1;
}

bool TrackTagName(std::string_view name)
{
    const TrackedTag *tracked = FindTracked(name);
    if (tracked && tracked->needsAttributes)
        return false;
    return !tracked || tracked->work(nullptr);
}

static const char *FontOfBlock(const RunFontBlock &block)
{
    return block.names[block.hint];
}

// The font of a style or the nearest of its bases that has one. A ring of bases ends after as many
// steps as there are styles; a block that names no font is none.
static const char *FontOfChain(const StyleRecord *style)
{
    for (int steps = 0; style && steps <= gStyles.last; ++steps, style = style->basedOn)
        if (style->fonts && style->fonts->hint != kNoHint)
            return FontOfBlock(*style->fonts);
    return nullptr;
}

const char *StyleFontName(const StyleRecord *runStyle, const StyleRecord *paragraphStyle)
{
    const char *font = FontOfChain(runStyle);
    if (font || !paragraphStyle)
        return font;
    if (paragraphStyle != gStyles.normal)
        font = FontOfChain(paragraphStyle);
    if (font || !gStyles.normal)
        return font;
    const RunFontBlock *block = gStyles.normal->fonts;
    return block && block->hint != kNoHint ? FontOfBlock(*block) : nullptr;
}

const char *ResolveTextFont()
{
    if (gStyles.activeRunFonts)
        return FontOfBlock(*gStyles.activeRunFonts);
    if (gStyles.run)
        return StyleFontName(gStyles.run, gStyles.paragraph);
    if (gStyles.paragraph)
        return StyleFontName(nullptr, gStyles.paragraph);
    if (gStyles.activeParagraphFonts)
        return FontOfBlock(*gStyles.activeParagraphFonts);
    return StyleFontName(nullptr, gStyles.normal);
}

const char *FontOfText(const TagRecord *tag)
{
    return tag && EqualNoCase(tag->name, "w:t") ? ResolveTextFont() : nullptr;
}

long ConvertTextIfLegacy(const TagRecord *tag, const TextRoom &room, size_t length)
{
    const FontMapEntry *entry = FindFontMapEntry(FontOfText(tag));
    return entry ? ConvertTextNode(room, length, *entry) : long(length);
}

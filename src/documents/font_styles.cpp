// The fonts of bases are found once for each style, so that a chain of any length costs each of its
// styles one step. Bases that go round in a ring end where a style comes again.
#include "documents/font_styles.h"

#include <cassert>
#include <cstdint>
#include <cstdlib>

constexpr size_t kFirstIndexSize = 256;  // slots; twice as many as styles at least

void FreeFontStyles(FontStyles *styles)
{
    FreeBytes(&styles->texts);
    free(styles->items);
    free(styles->index);
    *styles = {};
}

static size_t Hash(int family, std::string_view name)
{
    uint32_t hash = 2166136261u + uint32_t(family);
    for (char c : name)
        hash = (hash ^ uint8_t(c)) * 16777619u;
    return hash;
}

static bool IsStyle(const FontStyles &styles, const FontStyle &style, int family,
                    std::string_view name)
{
    return style.family == family &&
           TextOf(styles.texts).substr(style.name, style.nameLength) == name;
}

static int *FindSlot(const FontStyles &styles, int family, std::string_view name)
{
    size_t slot = Hash(family, name) % styles.indexSize;
    while (styles.index[slot] &&
           !IsStyle(styles, styles.items[styles.index[slot] - 1], family, name))
        slot = (slot + 1) % styles.indexSize;
    return &styles.index[slot];
}

static bool MakeIndex(FontStyles *styles, size_t size)
{
    int *index = static_cast<int *>(calloc(size, sizeof(int)));
    if (!index)
        return false;
    free(styles->index);
    styles->index = index;
    styles->indexSize = size;
    for (size_t i = 0; i < styles->count; ++i) {
        const FontStyle &style = styles->items[i];
        std::string_view name = TextOf(styles->texts).substr(style.name, style.nameLength);
        *FindSlot(*styles, style.family, name) = int(i + 1);
    }
    return true;
}

int FindFontStyle(const FontStyles &styles, int family, std::string_view name)
{
    return styles.indexSize ? *FindSlot(styles, family, name) - 1 : kNoFontStyle;
}

static size_t KeepText(FontStyles *styles, std::string_view text)
{
    size_t start = styles->texts.length;
    AppendBytes(&styles->texts, text);
    styles->failed = styles->failed || styles->texts.failed;
    return start;
}

int AddFontStyle(FontStyles *styles, int family, std::string_view name)
{
    void *items = styles->items;
    if (2 * (styles->count + 1) > styles->indexSize)
        styles->failed =
            styles->failed ||
            !MakeIndex(styles, styles->indexSize ? 2 * styles->indexSize : kFirstIndexSize);
    if (styles->failed)
        return kNoFontStyle;
    int *slot = FindSlot(*styles, family, name);
    if (*slot)
        return *slot - 1;
    bool hasRoom = GrowArray(&items, &styles->room, styles->count + 1, sizeof(FontStyle));
    styles->items = static_cast<FontStyle *>(items);
    size_t text = KeepText(styles, name);
    styles->failed = styles->failed || !hasRoom;
    if (styles->failed)
        return kNoFontStyle;
    FontStyle style = {};
    style.name = text;
    style.nameLength = name.size();
    style.family = family;
    style.baseStyle = kNoFontStyle;
    styles->items[styles->count++] = style;
    *slot = int(styles->count);
    return int(styles->count - 1);
}

void SetBase(FontStyles *styles, int style, int family, std::string_view name)
{
    if (style == kNoFontStyle)
        return;
    size_t text = KeepText(styles, name);
    if (styles->failed)
        return;
    styles->items[style].base = text;
    styles->items[style].baseLength = name.size();
    styles->items[style].baseFamily = family;
}

static int BaseOf(FontStyles *styles, const FontStyle &style)
{
    if (style.baseStyle != kNoFontStyle || style.baseLength == 0)
        return style.baseStyle;
    std::string_view name = TextOf(styles->texts).substr(style.base, style.baseLength);
    return FindFontStyle(*styles, style.baseFamily, name);
}

// Up to the first style whose fonts are found, a base that comes again or none; and down again.
static void FindFonts(FontStyles *styles, int style)
{
    int below = kNoFontStyle, at = style;
    for (; at != kNoFontStyle && !styles->items[at].isFound;) {
        FontStyle *item = &styles->items[at];
        item->isFound = true;  // a ring ends here
        item->below = below;
        below = at;
        at = BaseOf(styles, *item);
    }
    for (const FontStyle *base = at == kNoFontStyle ? nullptr : &styles->items[at];
         below != kNoFontStyle;) {
        FontStyle *item = &styles->items[below];
        for (int slot = 0; base && slot < kFontSlots; ++slot)
            if (!item->fonts[slot])
                item->fonts[slot] = base->fonts[slot];
        base = item;
        below = item->below;
    }
}

int FontOfStyle(FontStyles *styles, int style, int slot)
{
    if (style == kNoFontStyle)
        return 0;
    assert(size_t(style) < styles->count);
    if (!styles->items[style].isFound)
        FindFonts(styles, style);
    return styles->items[style].fonts[slot];
}

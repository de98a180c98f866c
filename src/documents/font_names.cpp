// Names stand one behind the other in a block and are found by a hash over small letters.
#include "documents/font_names.h"

#include <cassert>
#include <cstdlib>
#include <cstring>

#include "frame/strings.h"

constexpr size_t kFirstIndexSize = 256;  // slots; twice as many as names at least

std::string_view NameOfFont(const FontNames &fonts, int number)
{
    return TextOf(fonts.texts).substr(fonts.items[number].start, fonts.items[number].length);
}

// The slot that holds a name's number, or is free for it.
static int *FindSlot(const FontNames &fonts, std::string_view name)
{
    size_t slot = HashNoCase(name) % fonts.indexSize;
    while (fonts.index[slot] && !EqualNoCase(NameOfFont(fonts, fonts.index[slot]), name))
        slot = (slot + 1) % fonts.indexSize;
    return &fonts.index[slot];
}

static bool MakeIndex(FontNames *fonts, size_t size)
{
    int *index = static_cast<int *>(calloc(size, sizeof(int)));
    if (!index)
        return false;
    free(fonts->index);
    fonts->index = index;
    fonts->indexSize = size;
    for (size_t i = 1; i < fonts->count; ++i)
        *FindSlot(*fonts, NameOfFont(*fonts, int(i))) = int(i);
    return true;
}

bool StartFontNames(FontNames *fonts, FontMap *map)
{
    void *items = nullptr;
    *fonts = {};
    fonts->map = map;
    if (!GrowArray(&items, &fonts->room, 1, sizeof(FontName)))
        return false;
    fonts->items = static_cast<FontName *>(items);
    fonts->items[0] = {};
    fonts->count = 1;
    return MakeIndex(fonts, kFirstIndexSize);
}

void FreeFontNames(FontNames *fonts)
{
    FreeBytes(&fonts->texts);
    free(fonts->items);
    free(fonts->index);
    free(fonts->touched);
    *fonts = {};
}

static const FontMapEntry *EntryOf(FontMap *map, std::string_view name)
{
    char text[kMapNameSize];
    if (!map || name.size() >= sizeof text || memchr(name.data(), 0, name.size()))
        return nullptr;
    memcpy(text, name.data(), name.size());
    text[name.size()] = 0;
    return FindFontMapEntry(map, text);
}

int FontNumber(FontNames *fonts, std::string_view name)
{
    if (name.empty() || fonts->failed)
        return kNoFont;
    int *slot = FindSlot(*fonts, name);
    if (*slot)
        return *slot;
    void *items = fonts->items;
    bool hasRoom = GrowArray(&items, &fonts->room, fonts->count + 1, sizeof(FontName));
    fonts->items = static_cast<FontName *>(items);
    size_t start = fonts->texts.length;
    AppendBytes(&fonts->texts, name);
    fonts->failed = !hasRoom || fonts->texts.failed;
    if (fonts->failed)
        return kNoFont;
    int number = int(fonts->count++);
    fonts->items[number] = {start, name.size(), EntryOf(fonts->map, name), 0, 0, 0};
    fonts->hasLegacy = fonts->hasLegacy || fonts->items[number].entry;
    *slot = number;
    if (2 * fonts->count > fonts->indexSize)
        fonts->failed = !MakeIndex(fonts, 2 * fonts->indexSize);
    return number;
}

void CountCharacters(FontNames *fonts, int number, size_t characters)
{
    FontName *font = &fonts->items[number];
    if (number == kNoFont || characters == 0)
        return;
    if (font->pending == 0) {
        void *touched = fonts->touched;
        bool hasRoom =
            GrowArray(&touched, &fonts->touchedRoom, fonts->touchedCount + 1, sizeof(int));
        fonts->touched = static_cast<int *>(touched);
        fonts->failed = fonts->failed || !hasRoom;
        if (!hasRoom)
            return;
        fonts->touched[fonts->touchedCount++] = number;
    }
    font->pending += characters;
}

void EndCount(FontNames *fonts, bool counts)
{
    for (size_t i = 0; i < fonts->touchedCount; ++i) {
        FontName *font = &fonts->items[fonts->touched[i]];
        if (counts && !font->order)
            font->order = ++fonts->usedCount;
        font->characters += counts ? font->pending : 0;
        font->pending = 0;
    }
    fonts->touchedCount = 0;
}

void TellFonts(const FontNames &fonts, DocumentJob *job)
{
    for (size_t i = 1; job->fonts && i < fonts.count; ++i) {
        const FontName &font = fonts.items[i];
        if (!font.order || font.order > job->fontRoom)
            continue;
        DocumentFont *told = &job->fonts[font.order - 1];
        *told = {};
        char name[sizeof told->name] = {};
        memcpy(name, NameOfFont(fonts, int(i)).data(),
               font.length < sizeof name ? font.length : sizeof name - 1);
        CopyCut(told->name, sizeof told->name, name);
        CopyCut(told->unicodeName, sizeof told->unicodeName,
                font.entry ? font.entry->unicodeName : "");
        told->characters = DWORD(font.characters > 0xFFFFFFFF ? 0xFFFFFFFF : font.characters);
    }
    size_t told = fonts.usedCount < job->fontRoom ? fonts.usedCount : job->fontRoom;
    job->fontCount = job->fonts ? DWORD(told) : 0;
}

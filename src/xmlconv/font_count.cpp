// Fonts are counted by name without regard to case, as the font map finds them. A document has few,
// so they are searched from the first one.
#include "xmlconv/font_count.h"

#include <cassert>

#include "frame/strings.h"

static DocumentFont *FindOrAdd(DocumentJob *job, FontMap *map, const char *name)
{
    assert(job->fontCount <= job->fontRoom);
    for (DWORD i = 0; i < job->fontCount; ++i)
        if (EqualNoCase(job->fonts[i].name, name))
            return &job->fonts[i];
    if (job->fontCount == job->fontRoom)
        return nullptr;
    DocumentFont *font = &job->fonts[job->fontCount++];
    const FontMapEntry *entry = FindFontMapEntry(map, name);
    *font = {};
    CopyCut(font->name, sizeof font->name, name);
    CopyCut(font->unicodeName, sizeof font->unicodeName, entry ? entry->unicodeName : "");
    return font;
}

// All bytes of a UTF-8 character but the first have 10 as their highest bits.
static bool BeginsCharacter(char byte)
{
    return (byte & 0xC0) != 0x80;
}

void CountFontText(DocumentJob *job, FontMap *map, const char *font, const char *text,
                   size_t length)
{
    DocumentFont *counted = font && *font ? FindOrAdd(job, map, font) : nullptr;
    for (size_t i = 0; counted && i < length; ++i)
        counted->characters += BeginsCharacter(text[i]);
}

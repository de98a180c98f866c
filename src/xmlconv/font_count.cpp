// Fonts are counted by name without regard to case, as the font map finds them.
#include "xmlconv/font_count.h"

#include "frame/strings.h"
#include "xmlconv/font_map.h"

static DocumentFont *FindOrAdd(DocumentJob *job, const char *name)
{
    for (DWORD i = 0; i < job->fontCount; ++i)
        if (EqualNoCase(job->fonts[i].name, name))
            return &job->fonts[i];
    if (job->fontCount == job->fontRoom)
        return nullptr;
    DocumentFont *font = &job->fonts[job->fontCount++];
    const FontMapEntry *entry = FindFontMapEntry(name);
    *font = {};
    CopyCut(font->name, sizeof font->name, name);
    CopyCut(font->unicodeName, sizeof font->unicodeName, entry ? entry->unicodeName : "");
    return font;
}

static bool BeginsCharacter(char byte)
{
    return (byte & 0xC0) != 0x80;
}

void CountFontText(DocumentJob *job, const char *font, const char *text, size_t length)
{
    DocumentFont *counted = font && *font ? FindOrAdd(job, font) : nullptr;
    for (size_t i = 0; counted && i < length; ++i)
        counted->characters += BeginsCharacter(text[i]);
}

// Fonts are known in two lists: the map of the document converter, and the fonts that the user has
// registered with their codes.
#include "documents/text_font.h"

#include <cstring>

#include "documents/legacy_text.h"
#include "frame/strings.h"
#include "orvel.h"

struct CodeRow {
    int fontCode, conversionType;
};
constexpr CodeRow kCodes[] = {{0, 0}, {2, 2}, {3, 1}};

bool FindTextFont(FontMap *map, const char *name, FontMapEntry *entry)
{
    const FontMapEntry *row = FindFontMapEntry(map, name);
    if (row) {
        *entry = *row;
        return true;
    }
    int code = name && *name ? FontType(name) : -1;
    for (const CodeRow &known : kCodes) {
        if (known.fontCode != code)
            continue;
        *entry = {};
        CopyCut(entry->legacyName, sizeof entry->legacyName, name);
        entry->conversionType = known.conversionType;
        return true;
    }
    return false;
}

int WINAPI LegacyToUnicode(const char *text, WCHAR *characters, DWORD capacity, const char *font)
{
    FontMap map = {};
    FontMapEntry entry;
    DWORD count = 0;
    if (!text || !characters || !LoadFontMap(&map))
        return -1;
    bool done = FindTextFont(&map, font, &entry);
    for (const char *next = text; done && *next; ++next) {
        LegacySign sign = SignOfFont(WCHAR(static_cast<unsigned char>(*next)), entry);
        done = sign.count <= int(capacity - count);
        for (int i = 0; done && i < sign.count; ++i)
            characters[count++] = sign.units[i];
    }
    FreeFontMap(&map);
    return done ? int(count) : -1;
}

// The font map: reading FontList.ini, and the questions of the style tracker and the tag writer.
#include "xmlconv/font_map.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "frame/paths.h"
#include "frame/strings.h"
#include "runtime.h"
#include "xmlconv/font_map_table.h"

enum { kLineSize = 255 };

FontMap gFontMap;

constexpr const char *kFontTags[] = {"w:defaultFonts", "w:font", "w:rFonts", "wx:font"};
constexpr const char *kFontAttributes[] = {"w:name",   "w:ascii", "w:fareast",
                                           "w:h-ansi", "w:cs",    "wx:val"};

// The next field of a line, trimmed; commas in a row count as one. None behind the last field.
static char *TakeField(char **line)
{
    *line += strspn(*line, ",");
    if (!**line)
        return nullptr;
    char *field = *line;
    *line += strcspn(*line, ",");
    if (**line)
        *(*line)++ = 0;
    return TrimSpaces(field);
}

static bool ReadRow(char *line, FontMapEntry *row)
{
    char *legacy = TakeField(&line), *type = TakeField(&line), *unicode = TakeField(&line);
    if (!legacy || !type || !unicode)
        return false;
    CopyCut(row->legacyName, sizeof row->legacyName, legacy);
    row->conversionType = int(strtol(type, nullptr, 10));
    CopyCut(row->unicodeName, sizeof row->unicodeName, unicode);
    return true;
}

// Rows of the file, -1 without memory. They grow by doubling: a text stream can't be read twice
// everywhere.
static int ReadRows(FILE *file, FontMapEntry **rows)
{
    char line[kLineSize];
    int count = 0, room = 0;
    while (fgets(line, sizeof line, file)) {
        FontMapEntry row = {};
        if (!ReadRow(line, &row))
            continue;
        if (count == room) {
            room = room ? 2 * room : 64;
            void *grown = realloc(*rows, size_t(room) * sizeof row);
            if (!grown)
                return -1;
            *rows = static_cast<FontMapEntry *>(grown);
        }
        (*rows)[count++] = row;
    }
    return count;
}

int LoadFontMap()
{
    FreeFontMap();
    const char *path = DataFilePath("FontList.ini");
    FILE *file = path ? OpenDataFile(path, "rt") : nullptr;
    if (file) {
        gFontMap.count = ReadRows(file, &gFontMap.loaded);
        gFontMap.rows = gFontMap.loaded;
        fclose(file);
    }
    if (gFontMap.count < 0) {  // no memory: the conversion runs without legacy fonts
        FreeFontMap();
        return 0;
    }
    if (gFontMap.count == 0) {  // no file, or not one row in it
        FreeFontMap();
        gFontMap.rows = kBuiltInFontMap;
        gFontMap.count = int(std::size(kBuiltInFontMap));
    }
    return gFontMap.count;
}

void FreeFontMap()
{
    free(gFontMap.loaded);
    gFontMap = {};
}

const FontMapEntry *FindFontMapEntry(const char *name)
{
    for (int i = 0; name && i < gFontMap.count; ++i)
        if (CompareNoCase(gFontMap.rows[i].legacyName, name) == 0)
            return &gFontMap.rows[i];
    return nullptr;
}

static bool IsAmong(const char *const *names, size_t count, const char *name)
{
    for (size_t i = 0; i < count; ++i)
        if (CompareNoCase(names[i], name) == 0)
            return true;
    return false;
}

const char *RenameFontAttribute(const TagRecord *tag, const TagAttribute *attribute,
                                const char *value)
{
    if (!IsAmong(kFontTags, std::size(kFontTags), tag->name) ||
        !IsAmong(kFontAttributes, std::size(kFontAttributes), attribute->name))
        return value;
    const FontMapEntry *entry = FindFontMapEntry(value);
    return entry ? entry->unicodeName : value;
}

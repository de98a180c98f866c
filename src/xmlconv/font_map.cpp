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

// The row that was found for a name. A document asks for few names over and over.
struct FoundName {
    char name[kMapNameSize];  // empty: none yet
    const FontMapEntry *entry;
};
enum { kFoundNames = 16 };

struct FontMap {
    FontMapEntry *loaded;      // rows of a file, none: the built-in ones
    const FontMapEntry *rows;  // in force
    int count;
    FoundName found[kFoundNames];
};
static FontMap gFontMap;

constexpr std::string_view kFontTags[] = {"w:defaultFonts", "w:font", "w:rFonts", "wx:font"};
constexpr std::string_view kFontAttributes[] = {"w:name",   "w:ascii", "w:fareast",
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

// Some editors write a byte order mark in front of a text.
static char *SkipByteOrderMark(char *line)
{
    return strncmp(line, "\xEF\xBB\xBF", 3) == 0 ? line + 3 : line;
}

// Rows of the file, -1 without memory. They grow by doubling: a text stream can't be read twice
// everywhere.
static int ReadRows(FILE *file, FontMapEntry **rows)
{
    char line[kLineSize];
    int count = 0, room = 0;
    while (fgets(line, sizeof line, file)) {
        FontMapEntry row = {};
        if (!ReadRow(SkipByteOrderMark(line), &row))
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

int ReadFontMap(FILE *file)
{
    FreeFontMap();
    if (!file)
        return 0;
    int count = ReadRows(file, &gFontMap.loaded);
    fclose(file);
    if (count <= 0) {
        FreeFontMap();
        return count;
    }
    gFontMap.rows = gFontMap.loaded;
    gFontMap.count = count;
    return count;
}

int LoadFontMap()
{
    const char *path = DataFilePath("FontList.ini");
    int count = ReadFontMap(path ? OpenDataFile(path, "rt") : nullptr);
    if (count < 0)  // the conversion runs without legacy fonts
        return 0;
    if (count == 0) {  // no file, or not one row in it
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

static const FontMapEntry *SearchRows(const char *name)
{
    for (int i = 0; i < gFontMap.count; ++i)
        if (EqualNoCase(gFontMap.rows[i].legacyName, name))
            return &gFontMap.rows[i];
    return nullptr;
}

const FontMapEntry *FindFontMapEntry(const char *name)
{
    size_t length = name ? strlen(name) : 0;
    if (!name || length >= kMapNameSize)
        return nullptr;  // no row has such a name
    if (length == 0)
        return SearchRows(name);
    FoundName *found = &gFontMap.found[(length + uint8_t(name[length - 1])) % kFoundNames];
    if (strcmp(found->name, name) != 0) {
        strcpy(found->name, name);
        found->entry = SearchRows(name);
    }
    return found->entry;
}

static bool IsAmong(const std::string_view *names, size_t count, std::string_view name)
{
    for (size_t i = 0; i < count; ++i)
        if (EqualNoCase(names[i], name))
            return true;
    return false;
}

bool IsFontTag(std::string_view name)
{
    return IsAmong(kFontTags, std::size(kFontTags), name);
}

const char *RenameFontAttribute(const TagRecord *tag, const TagAttribute *attribute,
                                const char *value)
{
    if (!IsFontTag(tag->name) || !IsAmong(kFontAttributes, std::size(kFontAttributes),
                                          {attribute->name, attribute->nameLength}))
        return value;
    const FontMapEntry *entry = FindFontMapEntry(value);
    return entry ? entry->unicodeName : value;
}

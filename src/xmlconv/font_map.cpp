// The font map: reading its file, and the questions of the style tracker and the tag writer. A map
// is small and asked for each text, so it is searched from the top, and what was found for a name
// is remembered.
#include "xmlconv/font_map.h"

#include <windows.h>

#include <cassert>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "frame/paths.h"
#include "frame/strings.h"
#include "runtime.h"
#include "xmlconv/font_map_table.h"

enum { kLineSize = 255 };  // bytes, terminator included; a longer line counts as several

// Tags and attributes that name fonts. Any attribute of the second list
// counts on any tag of the first.
constexpr std::string_view kFontTags[] = {"w:defaultFonts", "w:font", "w:rFonts", "wx:font"};
constexpr std::string_view kFontAttributes[] = {"w:name",   "w:ascii", "w:fareast",
                                                "w:h-ansi", "w:cs",    "wx:val"};

// The next field of a line, trimmed; commas in a row count as one. Null behind the last field.
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

// Cuts a last character that is there in part, as CopyCut leaves it at the end of its room.
static void DropPartOfCharacter(char *text)
{
    size_t end = strlen(text), start = end;
    while (start > 0 && (text[start - 1] & 0xC0) == 0x80)
        --start;
    uint8_t lead = start > 0 ? uint8_t(text[start - 1]) : 0;
    size_t follow = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    if (end - start < follow)
        text[start - 1] = 0;
}

// What no XML document can hold, however it is written: bytes that aren't UTF-8, control characters
// and the two characters that are none.
static bool CanStandInDocument(const char *name)
{
    WCHAR wide[kMapNameSize];
    int count = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, name, -1, wide, kMapNameSize);
    bool holds = count > 0;
    for (int i = 0; i < count - 1; ++i)
        holds = holds && wide[i] >= ' ' && wide[i] < 0xFFFE;
    return holds;
}

static bool ReadRow(char *line, FontMapEntry *row)
{
    char *legacy = TakeField(&line), *type = TakeField(&line), *unicode = TakeField(&line);
    if (!legacy || !type || !unicode)
        return false;
    CopyCut(row->legacyName, sizeof row->legacyName, legacy);
    row->conversionType = int(strtol(type, nullptr, 10));
    CopyCut(row->unicodeName, sizeof row->unicodeName, unicode);
    if (strlen(unicode) >= sizeof row->unicodeName)
        DropPartOfCharacter(row->unicodeName);
    return CanStandInDocument(row->unicodeName);
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

int ReadFontMap(FontMap *map, FILE *file)
{
    FreeFontMap(map);
    if (!file)
        return 0;
    int count = ReadRows(file, &map->loaded);
    fclose(file);
    if (count <= 0) {
        FreeFontMap(map);
        return count;
    }
    map->rows = map->loaded;
    map->count = count;
    return count;
}

int LoadFontMap(FontMap *map)
{
    const char *path = DataFilePath("FontList.ini");
    int count = ReadFontMap(map, path ? OpenDataFile(path, "rt") : nullptr);
    if (count < 0)  // the conversion runs without legacy fonts
        return 0;
    if (count == 0) {  // no file, or not one row in it
        map->rows = kBuiltInFontMap;
        map->count = int(std::size(kBuiltInFontMap));
    }
    return map->count;
}

void FreeFontMap(FontMap *map)
{
    free(map->loaded);
    *map = {};
}

static const FontMapEntry *SearchRows(const FontMap *map, const char *name)
{
    assert(map->rows || map->count == 0);
    for (int i = 0; i < map->count; ++i)
        if (EqualNoCase(map->rows[i].legacyName, name))
            return &map->rows[i];
    return nullptr;
}

// Families of fonts differ near their ends, as "Alice1 95" and "Alice2 95" do.
static size_t HashName(const char *name, size_t length)
{
    size_t nearEnd = length > 3 ? length - 4 : 0;
    return length + uint8_t(name[0]) + 3 * size_t(uint8_t(name[length / 2])) +
           5 * size_t(uint8_t(name[nearEnd])) + 7 * size_t(uint8_t(name[length - 1]));
}

// Names that share a place in the memory push each other out; that costs time and nothing else.
const FontMapEntry *FindFontMapEntry(FontMap *map, const char *name)
{
    size_t length = name ? strlen(name) : 0;
    if (!name || length >= kMapNameSize)
        return nullptr;  // no row has such a name
    if (length == 0)
        return SearchRows(map, name);
    FoundName *found = &map->found[HashName(name, length) % kFoundNames];
    if (strcmp(found->name, name) != 0) {
        strcpy(found->name, name);
        found->entry = SearchRows(map, name);
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

const FontMapEntry *FindRenamedFont(FontMap *map, const TagAttribute *attribute)
{
    bool namesFont = IsAmong(kFontAttributes, std::size(kFontAttributes),
                             {attribute->name, attribute->nameLength});
    return namesFont ? FindFontMapEntry(map, attribute->value) : nullptr;
}

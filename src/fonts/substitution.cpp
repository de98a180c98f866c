// Which font replaces another one, and at which size: hosts ask when a document names a font that
// isn't theirs. The answers stand in the font table's records. Changes stay in memory until
// WriteFontList.
#include <cstdint>
#include <cstring>

#include "fonts/font_table.h"
#include "frame/strings.h"
#include "orvel.h"

constexpr int kLeastLikeness = 2;  // letters: one in common is no likeness
static_assert(kMostScale <= INT16_MAX);

int WINAPI GetDefaultFontName(char *buffer, DWORD size, int code)
{
    const char *name = FirstFontOfCode(code);
    return buffer && name ? CopyWhole(buffer, size, name) : 0;
}

// A record whose substitute doesn't fit is passed over: another one of that name may do.
int WINAPI GetReplacementFontName(const char *name, char *buffer, DWORD size)
{
    if (!name || !buffer)
        return 0;
    for (int i = 0; i < gFonts.count; ++i) {
        const FontRecord &record = gFonts.records[i];
        if (!EqualNoCase(record.name, name) || strlen(record.substitute) >= size)
            continue;
        CopyWhole(buffer, size, record.substitute);  // empty ones count
        return 1;
    }
    return 0;
}

int WINAPI SetReplacementFontName(const char *name, const char *substitute)
{
    FontRecord *record = FontAt(FontIndex(name));
    if (!record || !substitute)
        return 0;
    CopyCut(record->substitute, sizeof record->substitute, substitute);
    return 1;
}

int WINAPI GetReplacementFontSize(const char *name)
{
    const FontRecord *record = FontAt(FontIndex(name));
    return record && record->scale >= 1 ? record->scale : 100;
}

int WINAPI SetReplacementFontSize(const char *name, int scale)
{
    FontRecord *record = FontAt(FontIndex(name));
    if (!record || scale < kLeastScale || scale > kMostScale)
        return 0;
    record->scale = short(scale);
    return 1;
}

// How many leading characters agree; case counts.
static int CommonPrefixLength(const char *first, const char *second)
{
    int length = 0;
    while (first[length] && first[length] == second[length])
        ++length;
    return length;
}

// Of the fonts of a code the first of those with the longest common beginning, where there is a
// likeness.
static const char *FindMostAlike(const char *name, int code)
{
    int best = kLeastLikeness - 1;
    const char *found = nullptr;
    for (int i = 0; i < gFonts.count; ++i) {
        const FontRecord &record = gFonts.records[i];
        int length = record.code == code ? CommonPrefixLength(name, record.name) : 0;
        if (length <= best)
            continue;
        best = length;
        found = record.name;
    }
    return found;
}

int WINAPI UpdateReplacementFont(const char *name)
{
    FontRecord *record = FontAt(FontIndex(name));
    if (!record)
        return 0;
    int code = int(LaoMode(0, 0) & 15);
    const char *source = FindMostAlike(name, code);
    if (!source)
        source = FirstFontOfCode(code);
    if (!source)
        return 0;
    char chosen[kFontNameSize];  // the source can be the record's own name
    CopyCut(chosen, sizeof chosen, source);
    return SetReplacementFontName(name, chosen);
}

int WINAPI GetFontExtended(const char *name)
{
    const FontRecord *record = FontAt(FontIndex(name));
    return record && record->extended;
}

int WINAPI SetFontExtended(const char *name, int extended)
{
    FontRecord *record = FontAt(FontIndex(name));
    if (!record || !CarriesExtended(*record))
        return 0;
    record->extended = extended != 0;
    return 1;
}

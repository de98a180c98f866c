// The table of fonts in memory. Records stand without gaps in the order of the file; of two records
// with one name the first one answers.
#include "fonts/font_table.h"

#include <cstring>

#include "frame/messages.h"
#include "frame/strings.h"
#include "orvel.h"

FontTable gFonts;

int CreateFontTable()
{
    if (!gFonts.records)
        gFonts.records =
            static_cast<FontRecord *>(CheckedGlobalAlloc(GPTR, kFontRoom * sizeof(FontRecord)));
    if (!gFonts.records)
        return 0;
    gFonts.count = WORD(ReadFontList());
    return 1;
}

FontRecord *FontAt(int index)
{
    return index >= 0 && index < gFonts.count ? &gFonts.records[index] : nullptr;
}

// As a rule the name comes in its own letters.
int WINAPI FontIndex(const char *name)
{
    for (int i = 0; name && i < gFonts.count; ++i)
        if (!strcmp(gFonts.records[i].name, name) || EqualNoCase(gFonts.records[i].name, name))
            return i;
    return -1;
}

int WINAPI FontType(const char *name)
{
    const FontRecord *record = FontAt(FontIndex(name));
    return record ? record->code : -1;
}

int WINAPI LaoFontType(const char *name)
{
    return FontType(name);
}
int WINAPI OldFontType(const char *name)
{
    return FontType(name);
}
int WINAPI ThaiFontType(const char *)
{
    return 0;
}

const char *FirstFontOfCode(int code)
{
    for (int i = 0; i < gFonts.count; ++i)
        if (gFonts.records[i].code == code)
            return gFonts.records[i].name;
    return nullptr;
}

static const char *ChooseSubstitute(const char *wanted)
{
    if (wanted && *wanted && FontType(wanted) >= 0)
        return wanted;
    const char *standard = FirstFontOfCode(int(LaoMode(0, 0) & 15));
    return standard ? standard : "";
}

// The list's file has no quoting, and blanks around a field don't count there: a name that it would
// give back otherwise is none to be added.
static bool CanBeListed(const char *name)
{
    char trimmed[kFontNameSize];
    CopyCut(trimmed, sizeof trimmed, name);
    TrimSpaces(trimmed);
    return !name[strcspn(name, kFieldEnds)] && !strcmp(trimmed, name);
}

int WINAPI AddFontToList(const char *name, const char *substitute, WORD code, short scale,
                         WORD extended)
{
    FontRecord added = {};
    if (!gFonts.records || !name || gFonts.count + 1 >= kFontRoom || code >= gFonts.codeCount)
        return 0;
    CopyCut(added.name, sizeof added.name, name);
    if (strlen(name) >= sizeof added.name)
        TrimSpaces(added.name);  // the cut may have left a blank at its end
    if (FontIndex(added.name) >= 0 || !CanBeListed(added.name))
        return 0;
    CopyCut(added.substitute, sizeof added.substitute, ChooseSubstitute(substitute));
    added.code = short(code);
    added.scale = scale < 1 ? 100 : scale;
    added.extended = short(extended);
    gFonts.records[gFonts.count++] = added;
    return WriteFontList();
}

int RemoveFontRecord(int index)
{
    if (!FontAt(index) || gFonts.count < 2)
        return 0;
    FontRecord *removed = &gFonts.records[index];
    size_t behind = size_t(gFonts.count - index - 1);
    memmove(removed, removed + 1, behind * sizeof *removed);
    --gFonts.count;
    return 1;
}

static void PutBack(int index, const FontRecord &record)
{
    FontRecord *place = &gFonts.records[index];
    memmove(place + 1, place, size_t(gFonts.count - index) * sizeof *place);
    *place = record;
    ++gFonts.count;
}

int WINAPI RemoveFontFromList(const char *name)
{
    int index = FontIndex(name);
    if (index < 0)
        return 0;
    FontRecord removed = *FontAt(index);
    if (!RemoveFontRecord(index))
        return 0;
    if (WriteFontList())
        return 1;
    PutBack(index, removed);
    return 0;
}

int WINAPI GetLaoFontInfo(char *name, char *substitute, DWORD size, int *scale, int number)
{
    const FontRecord *record = number > 0 ? FontAt(number - 1) : nullptr;
    if (!record || !name || !substitute)
        return -1;
    strncpy(name, record->name, size);
    strncpy(substitute, record->substitute, size);
    if (scale)
        *scale = record->scale;
    return record->code;
}

int WINAPI GetFontCodeName(char *buffer, DWORD size, int code)
{
    if (!buffer || code < 0 || code >= gFonts.codeCount)
        return 0;
    return CopyWhole(buffer, size, gFonts.codeNames[code]);
}

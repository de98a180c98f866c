// The list of fonts as a text file, LaoFonts.dat in the data folder: a record a line, fields by
// position between commas,
//     name,font code's name,substitute,scale
// and behind it, for a Unicode font, the flag of the private-use characters. There is no quoting. A
// line that breaks off behind its code is a record with the defaults for the rest; one without a
// known code is none.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "fonts/font_table.h"
#include "frame/companion.h"
#include "frame/messages.h"
#include "frame/paths.h"
#include "frame/strings.h"
#include "orvel.h"
#include "runtime.h"

enum { kLineSize = 255, kTokenSize = 64 };

static const FontRecord kDefaultRecord = {"Saysettha Lao", "", 1, 100, 0};

static void ReadFontCodeNames()
{
    gFonts.codeCount = 0;
    memset(gFonts.codeNames, 0, sizeof gFonts.codeNames);
    for (int code = 0; code < kMostFontCodes; ++code) {
        FontCodeRecord record = {};
        if (!FontCodeData(code, &record))
            return;
        memcpy(gFonts.codeNames[code], record.name, sizeof record.name);
        gFonts.codeCount = code + 1;
    }
}

static int FindFontCode(const char *name)
{
    for (int code = 0; code < gFonts.codeCount; ++code)
        if (EqualNoCase(gFonts.codeNames[code], name))
            return code;
    return -1;
}

// Takes the field at *line, moves *line behind its comma (null behind the last field) and stores
// it, trimmed, in token. False when there is no field left or it is too long.
static bool TakeField(const char **line, char *token)
{
    if (!*line)
        return false;
    size_t length = strcspn(*line, ",\r\n");
    bool fits = length < kTokenSize;
    if (fits) {
        memcpy(token, *line, length);
        token[length] = 0;
        TrimSpaces(token);
    }
    *line = (*line)[length] == ',' ? *line + length + 1 : nullptr;
    return fits;
}

// The fields behind the code refine a record that is complete without them.
static void ReadRefinements(const char *line, FontRecord *record)
{
    char token[kTokenSize];
    if (!TakeField(&line, token))
        return;
    CopyCut(record->substitute, sizeof record->substitute, token);
    if (!line)
        return;
    char *end;
    long scale = strtol(line, &end, 10);  // a number ends by itself
    line = strchr(end, ',');
    if (scale < kLeastScale || scale > kMostScale)
        return;
    record->scale = short(scale);
    if (CarriesExtended(*record) && line)
        record->extended = strtol(line + 1, nullptr, 10) > 0;
}

static bool ReadRecord(const char *line, FontRecord *record)
{
    char token[kTokenSize];
    *record = {};
    if (!TakeField(&line, token) || !*token)
        return false;
    CopyCut(record->name, sizeof record->name, token);
    if (!TakeField(&line, token))
        return false;
    int code = FindFontCode(token);
    if (code < 0)
        return false;
    record->code = short(code);
    record->scale = 100;
    ReadRefinements(line, record);
    return true;
}

static int ReadRecords(FILE *file)
{
    char line[kLineSize];
    int count = 0;
    while (count < kMostFonts && fgets(line, sizeof line, file)) {
        FontRecord record;
        if (ReadRecord(line, &record))
            gFonts.records[count++] = record;
    }
    return count;
}

int WINAPI ReadFontList(void)
{
    if (!gFonts.records)
        return 0;
    ReadFontCodeNames();
    const char *path = DataFilePath("LaoFonts.dat");
    FILE *file = path ? OpenDataFile(path, "rt") : nullptr;
    int count = 0;
    if (file) {
        count = ReadRecords(file);
        fclose(file);
    }
    if (count == 0)  // no file, or none of its lines is of use
        gFonts.records[count++] = kDefaultRecord;
    return count;
}

// A substitute can be any text that a host has set; what the file can't hold of it must not make
// another field or record.
static void WriteRecord(FILE *file, const FontRecord &record)
{
    fprintf(file, "%s,%s,%.*s,%d", record.name, gFonts.codeNames[record.code & 15],
            int(strcspn(record.substitute, kFieldEnds)), record.substitute, record.scale);
    if (CarriesExtended(record))
        fprintf(file, ",%d", record.extended);
    fputc('\n', file);
}

static int WriteRecords(const char *path)
{
    FILE *file = BeginReplaceFile(path);
    if (!file)
        return 0;
    for (int i = 0; i < gFonts.count; ++i)
        if (gFonts.records[i].name[0])
            WriteRecord(file, gFonts.records[i]);
    return EndReplaceFile(file, 1);
}

// Without the names of the font codes every line would lose its code: the file then stays as it is.
int WINAPI WriteFontList(void)
{
    if (!gFonts.records)
        return 0;
    const char *path = gFonts.codeCount ? DataFilePath("LaoFonts.dat") : nullptr;
    if (!path || !WriteRecords(path))
        return WarningBox("Unable to save modified font list");
    return 1;
}

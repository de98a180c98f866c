// Romanization: Lao text in Latin letters, by the built-in table or by a control file of the
// host's. What is exported here prepares the text; the conversion does the work.
#include <cstring>

#include "frame/companion.h"
#include "frame/records.h"
#include "frame/strings.h"
#include "keytables/builtin_tables.h"
#include "keytables/control_file.h"
#include "keytables/convert.h"
#include "keytables/work_table.h"
#include "orvel.h"

// The table in force; it lives until a host names another file.
struct RomanState {
    WorkTable work;
};
static RomanState gRoman = {{{"Empty", {}, {}, 0, 0, kRomanTable, {}, 0}, {}}};

// The built-in table has a font too.
static void FillRomanTable()
{
    if (FillWorkTable(&gRoman.work, &kBuiltInRomanTable))
        SetRomanFontName("Arial");
}

// A control file may rule the separator; else the option does, at each call.
static void ChooseSeparator(KeyTable *table)
{
    if (table->separator == kNoRomanBreak || table->separator == kHiddenRomanBreak ||
        table->separator == kVisibleRomanBreak)
        table->separator = uint8_t(gProcess.options->romanBreak);
}

int WINAPI Romanize(const char *text, char *output, DWORD size, const char *font)
{
    if (!text || !output || strlen(text) >= size)
        return 0;
    memmove(output, text, strlen(text) + 1);
    FillRomanTable();
    int code = FontType(font);
    if (code < 0)
        return 1;  // not Lao text
    ChooseSeparator(&gRoman.work.table);
    RecodeString(output, size, code);
    PackLao(output);
    return ConvertByKeyTable(output, size, &gRoman.work.table);
}

// The empty text loads the table, so that a bad file is told now.
int WINAPI SetRomanKey(char *file)
{
    char output[4];
    NameControlFile(&gRoman.work, file);
    return Romanize("", output, sizeof output, "Arial");
}

int WINAPI LoadRomanKey(const char *content, DWORD size)
{
    if (!content)
        return 0;
    int isGood = LoadWorkTable(&gRoman.work, content, size, &kBuiltInRomanTable);
    if (!isGood)
        SetRomanFontName("Arial");
    return isGood;
}

void WINAPI GetRomanFont(char *buffer, DWORD size)
{
    if (buffer && size)
        CopyCut(buffer, size, RomanFontName());
}

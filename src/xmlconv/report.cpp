// Reports of a conversion. A failure's number has one site and never changes: users quote it.
#include "xmlconv/report.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

ConversionReport gReport;

int SetConversionError(int result, int number)
{
    gReport.error = number;
    return result;
}

void AddConversionNote(const char *format, ...)
{
    char note[kNotesSize];
    if (!format)
        return;
    va_list arguments;
    va_start(arguments, format);
    int length = vsnprintf(note, sizeof note, format, arguments);
    va_end(arguments);
    if (!gReport.notes)
        gReport.notes = static_cast<char *>(calloc(kNotesSize, 1));
    if (!gReport.notes || length < 0)
        return;
    size_t used = strlen(gReport.notes);
    const char *separator = used ? "\r\n" : "";
    if (used + strlen(separator) + size_t(length) >= kNotesSize)
        return;
    strcpy(gReport.notes + used, separator);
    strcat(gReport.notes + used, note);
}

void FreeConversionNotes()
{
    free(gReport.notes);
    gReport.notes = nullptr;
}

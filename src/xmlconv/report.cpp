// The report of a conversion. A failure's number has one site and never changes: users quote
// it. The notes are one text in a block of
// fixed size, which bounds what a hostile document can make the user read.
#include "xmlconv/report.h"

#include <cassert>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

constexpr char kLineEnd[] = "\r\n";

int SetConversionError(ConversionReport *report, int result, ConversionFailure number)
{
    report->error = number;
    return result;
}

// A log that can't be had loses its notes; the conversion goes on.
static void AppendNote(ConversionReport *report, const char *note, size_t length)
{
    if (!report->notes)
        report->notes = static_cast<char *>(calloc(kNotesSize, 1));
    if (!report->notes)
        return;
    size_t used = strlen(report->notes);
    size_t separator = used ? strlen(kLineEnd) : 0;
    assert(used < kNotesSize);
    if (used + separator + length >= kNotesSize)
        return;
    memcpy(report->notes + used, kLineEnd, separator);
    memcpy(report->notes + used + separator, note, length);
    report->notes[used + separator + length] = 0;
}

void AddConversionNote(ConversionReport *report, const char *format, ...)
{
    char note[kNotesSize];
    if (!format)
        return;
    va_list arguments;
    va_start(arguments, format);
    int length = vsnprintf(note, sizeof note, format, arguments);
    va_end(arguments);
    if (length >= 0 && length < kNotesSize)
        AppendNote(report, note, size_t(length));
}

// The notes of the reading so far stand again behind the note of the restart, each that still fits
// whole. Notes that did not fit the first time don't fit now either, since the log only grows: so
// what the log holds of them is all that has to be said again.
void AddRestartNote(ConversionReport *report, const char *format, size_t size)
{
    char earlier[kNotesSize] = "";
    if (report->notes)
        strcpy(earlier, report->notes + report->notesOfReading);
    char note[80];
    int length = snprintf(note, sizeof note, format, int(size));
    AppendNote(report, note, size_t(length));
    if (!report->notes)
        return;
    report->notesOfReading = strlen(report->notes);
    for (const char *line = earlier; *line;) {
        const char *end = strstr(line, kLineEnd);
        size_t lineLength = end ? size_t(end - line) : strlen(line);
        if (lineLength > 0)  // the line end in front of the first note is no note
            AppendNote(report, line, lineLength);
        line += lineLength + (end ? strlen(kLineEnd) : 0);
    }
}

void FreeConversionNotes(ConversionReport *report)
{
    free(report->notes);
    report->notes = nullptr;
    report->notesOfReading = 0;
}

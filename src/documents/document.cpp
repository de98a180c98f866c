// Parts, failures and notes of a document. The first failure is the one that counts: those behind
// it come of it.
#include "documents/document.h"

#include <cstdarg>
#include <cstdio>

constexpr size_t kLongestNote = 1024;  // bytes

int PartAbove(const Document *document, int part)
{
    return part >= 0 && size_t(part) < document->partCount ? document->partsAbove[part] : -1;
}

bool FailDocument(Document *document, ConversionFailure failure)
{
    if (!document->report.error)
        document->report.error = failure;
    return false;
}

void EndReading(Document *document, bool counts)
{
    document->convertedCharacters += counts ? document->pendingCharacters : 0;
    document->pendingCharacters = 0;
    EndCount(&document->fonts, counts);
}

void NoteOfDocument(Document *document, const char *format, ...)
{
    char note[kLongestNote];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(note, sizeof note, format, arguments);
    va_end(arguments);
    if (document->job->hearNote)
        document->job->hearNote(document->job->context, note);
    else
        AddConversionNote(&document->report, "%s", note);
}

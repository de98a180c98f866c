// The marks that are there are taken out first; then DivideText says where chunks begin, and the
// paragraph's units are written anew with a mark in front of each of them.
#include "documents/breaks.h"

#include <cstdlib>

#include "documents/document.h"

constexpr WCHAR kMark = 0x200B;

static bool IsLao(WCHAR unit)
{
    return unit >= 0x0E80 && unit <= 0x0EFF;
}

// A mark between characters of another script is that script's own.
static bool IsMarkOfLao(const Units &units, size_t at)
{
    size_t before = at, behind = at;
    if (units.data[at] != kMark)
        return false;
    while (before > 0 && units.data[before - 1] == kMark)
        --before;
    while (behind < units.length && units.data[behind] == kMark)
        ++behind;
    return (before > 0 && IsLao(units.data[before - 1])) ||
           (behind < units.length && IsLao(units.data[behind]));
}

// What a step makes of one unit: appends it to the result, or something else, or nothing.
typedef bool (*UnitStep)(const Units &units, size_t at, Units *result, const void *context);

static bool DropMark(const Units &units, size_t at, Units *result, const void *)
{
    if (IsMarkOfLao(units, at))
        return true;
    AppendUnit(result, units.data[at]);
    return false;
}

static bool PutMark(const Units &units, size_t at, Units *result, const void *context)
{
    bool isMarked = static_cast<const bool *>(context)[at];
    if (isMarked)
        AppendUnit(result, kMark);
    AppendUnit(result, units.data[at]);
    return isMarked;
}

// Makes the units anew, and with them each text's stretch.
static void RemakeUnits(Paragraph *paragraph, UnitStep step, const void *context)
{
    const Units units = paragraph->units;
    Units *result = &paragraph->spare;
    size_t at = 0;
    result->length = 0;
    for (size_t i = 0; i < paragraph->count; ++i) {
        HeldText *text = &paragraph->texts[i];
        size_t end = text->first + text->count;
        for (; at < text->first; ++at)  // what stands between texts
            AppendUnit(result, units.data[at]);
        text->first = result->length;
        for (; at < end; ++at) {
            if (text->isVerbatim)
                AppendUnit(result, units.data[at]);
            else
                text->hasChanged |= step(units, at, result, context);
        }
        text->count = result->length - text->first;
    }
    paragraph->units = *result;
    paragraph->spare = units;
}

static bool MarkChunks(const Units &units, DWORD where, LaoChunk *chunks, bool *marks)
{
    DWORD length = DWORD(units.length);
    int count = DivideText(units.data, length, chunks, length, kInsertBreaks | where);
    for (int i = 0; i < count; ++i)
        marks[chunks[i].start] = chunks[i].hasBreak;
    return count >= 0 || length == 0;
}

static bool PutMarks(Paragraph *paragraph, DWORD where)
{
    size_t length = paragraph->units.length;
    LaoChunk *chunks = static_cast<LaoChunk *>(calloc(length + 1, sizeof(LaoChunk)));
    bool *marks = static_cast<bool *>(calloc(length + 1, sizeof(bool)));
    bool done = chunks && marks && MarkChunks(paragraph->units, where, chunks, marks);
    if (done)
        RemakeUnits(paragraph, PutMark, marks);
    free(chunks);
    free(marks);
    return done;
}

bool DivideTexts(Document *document, Paragraph *paragraph)
{
    DWORD flags = document->job->flags;
    if (flags & (kWriteBreaks | kTakeBreaks))
        RemakeUnits(paragraph, DropMark, nullptr);
    DWORD where = flags & kBreaksByOption ? 0 : kWordBreaks;
    bool done = !(flags & kWriteBreaks) || PutMarks(paragraph, where);
    return done && !paragraph->units.failed && !paragraph->spare.failed;
}

// A document is read twice: for its styles, which may stand behind the text that they are of, and
// to be rewritten. A file that is one part is done here, packages in a file of their own.
#include "documents/rewrite.h"

#include <iterator>

#include "documents/drawing.h"
#include "documents/format.h"
#include "documents/html.h"
#include "documents/opendocument.h"
#include "documents/package.h"
#include "documents/plain_text.h"
#include "documents/rtf.h"
#include "documents/sheet.h"
#include "documents/word.h"

constexpr size_t kWriteSize = 64 * 1024;  // bytes at a time

bool GoOn(Document *document, uint64_t done, uint64_t all)
{
    DocumentJob *job = document->job;
    DWORD percent = all ? DWORD(done * 100 / all) : 0;
    if (job->shallStop && job->shallStop(job->context))
        return FailDocument(document, kFailStopped);
    if (percent <= document->shownPercent || percent > 100)
        return true;
    document->shownPercent = percent;
    if (job->showPercent)
        job->showPercent(job->context, percent);
    else
        UpdateOrvelMeter(percent);
    return true;
}

bool MakeElementsOf(Document *document, DocumentFormat format, ElementIndex *elements)
{
    const Vocabulary office[] = {kWordElements, kDrawingElements, kSheetElements};
    bool isOpenDocument = format == kOpenDocument || format == kFlatOpenDocument;
    bool done = isOpenDocument ? MakeElementIndex(elements, &kOpenDocumentElements, 1)
                               : MakeElementIndex(elements, office, std::size(office));
    return done || FailDocument(document, kFailMemory);
}

bool WalkThrough(Walk *walk, FILE *output)
{
    char buffer[kWriteSize];
    Document *document = walk->document;
    while (size_t count = ReadWalk(walk, buffer, sizeof buffer))
        if (output && fwrite(buffer, 1, count, output) != count)
            return FailDocument(document, kFailWrite);
    return !document->report.error;
}

bool WriteReady(Document *document, Bytes *output, FILE *target, size_t least)
{
    if (output->length < least || output->length == 0)
        return true;
    bool done = !target || fwrite(output->data, 1, output->length, target) == output->length;
    output->length = 0;
    return done || FailDocument(document, kFailWrite);
}

size_t ReadInput(void *context, char *buffer, size_t size)
{
    FileReader *reader = static_cast<FileReader *>(context);
    if (!GoOn(reader->document, reader->done, reader->all))
        return 0;
    size_t count = fread(buffer, 1, size, reader->file);
    reader->done += count;
    return count;
}

static bool WalkFile(FileReader *reader, const ElementIndex *elements, FILE *output)
{
    Walk walk;
    Document *document = reader->document;
    rewind(reader->file);
    bool done =
        StartWalk(&walk, document, elements, {ReadInput, reader, 0}) && WalkThrough(&walk, output);
    document->changedParts += done && HasChanged(&walk);
    StopWalk(&walk);
    return done;
}

static bool RewriteFile(Document *document, const RewriteFiles &files)
{
    FileReader reader = {document, files.input, 0, 2 * files.length};
    ElementIndex elements = {};
    bool done = MakeElementsOf(document, DocumentFormat(document->job->format), &elements) &&
                WalkFile(&reader, &elements, nullptr);
    document->isRewriting = true;
    done = done && WalkFile(&reader, &elements, files.output);
    FreeElementIndex(&elements);
    return done;
}

static DocumentFormat FindFormat(const RewriteFiles &files)
{
    char head[kHeadSize];
    size_t length = fread(head, 1, sizeof head, files.input);
    return FormatOfHead({head, length});
}

struct FormatRoad {
    DocumentFormat format;
    bool (*rewrite)(Document *document, const RewriteFiles &files);
};
constexpr FormatRoad kRoads[] = {
    {kWordXml2003, RewriteFile},      {kFlatOpc, RewriteFile}, {kDocx, RewritePackage},
    {kXlsx, RewritePackage},          {kPptx, RewritePackage}, {kOpenDocument, RewritePackage},
    {kFlatOpenDocument, RewriteFile}, {kHtml, RewriteHtml},    {kRtf, RewriteRtf},
    {kPlainText, RewritePlainText},
};

bool RewriteDocument(Document *document, const RewriteFiles &files)
{
    DocumentJob *job = document->job;
    DocumentFormat wanted = DocumentFormat(job->format);
    job->format = wanted == kNoFormat ? FindFormat(files) : wanted;
    if (job->format == kNoFormat && job->textFont)
        job->format = kPlainText;
    for (const FormatRoad &road : kRoads)
        if (road.format == DocumentFormat(job->format))
            return road.rewrite(document, files);
    return FailDocument(document, kFailFormat);
}

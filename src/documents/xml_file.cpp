// A document is read twice: for its styles, which may stand behind the text that they are of, and
// to be rewritten.
#include "documents/xml_file.h"

#include <iterator>

#include "documents/drawing.h"
#include "documents/opendocument.h"
#include "documents/sheet.h"
#include "documents/word.h"

constexpr size_t kWriteSize = 64 * 1024;  // bytes at a time

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

bool RewriteXmlFile(Document *document, const DocumentFiles &files)
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

// The roads of documents, by their formats.
#include "documents/rewrite.h"

#include "documents/format.h"
#include "documents/html.h"
#include "documents/package.h"
#include "documents/plain_text.h"
#include "documents/rtf.h"
#include "documents/xml_file.h"

static DocumentFormat FindFormat(const DocumentFiles &files)
{
    char head[kHeadSize];
    size_t length = fread(head, 1, sizeof head, files.input);
    return FormatOfHead({head, length});
}

struct FormatRoad {
    DocumentFormat format;
    bool (*rewrite)(Document *document, const DocumentFiles &files);
};
constexpr FormatRoad kRoads[] = {
    {kWordXml2003, RewriteXmlFile},
    {kFlatOpc, RewriteXmlFile},
    {kDocx, RewritePackage},
    {kXlsx, RewritePackage},
    {kPptx, RewritePackage},
    {kOpenDocument, RewritePackage},
    {kFlatOpenDocument, RewriteXmlFile},
    {kHtml, RewriteHtml},
    {kRtf, RewriteRtf},
    {kPlainText, RewritePlainText},
};

bool RewriteDocument(Document *document, const DocumentFiles &files)
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

// The exports that convert documents: a job's files and font map are brought to the road that it
// asks for, the one of old documents or that of all formats, and how it ended is shown. The new
// file stands beside its place until it is whole, so that a failure leaves what was there.
#include <cstddef>
#include <cstdio>
#include <cstring>

#include "documents/rewrite.h"
#include "orvel.h"
#include "runtime.h"
#include "xmlconv/convert.h"

constexpr char kCaption[] = "XML Font Substitution";
constexpr char kMeterLabel[] = "Convert XML document to Unicode";
enum { kUtf8PathSize = 4096 };  // bytes

// What lasts from one job to the next.
struct ExportState {
    bool isBusy;  // a conversion runs; what hears percentages could call in again
};
static ExportState gExport;

// What came before a job could be of any format; hosts of that time give this as its size.
constexpr DWORD kFirstJobSize = offsetof(DocumentJob, flags);

// A map that the job names must be there; else the built-in one serves where there is no file.
static bool HasFontMap(const DocumentJob *job, FontMap *map, ConversionReport *report)
{
    if (!job->fontMap) {
        LoadFontMap(map);
        return true;
    }
    return ReadFontMap(map, OpenDocument(job->fontMap)) > 0 ||
           SetConversionError(report, false, kFailFontMap);
}

// Notes come after a success as well. Nobody has to read that a conversion was stopped who stopped
// it.
static DWORD ShowReport(const ConversionReport *report)
{
    char text[64];
    if (report->notes)
        OrvelMsg(GetActiveWindow(), report->notes, kCaption, MB_ICONEXCLAMATION);
    if (report->error && report->error != kFailStopped) {
        snprintf(text, sizeof text, "Fatal conversion error at line %d", report->error);
        OrvelMsg(GetActiveWindow(), text, kCaption, MB_ICONSTOP);
    }
    return DWORD(report->error);
}

static void ShowMeter(const DocumentJob *job)
{
    if (!job->showPercent)
        StartOrvelMeter(GetDesktopWindow(), kMeterLabel);
}

static void HideMeter(const DocumentJob *job)
{
    if (!job->showPercent)
        CloseOrvelMeter();
}

// ---- documents of all formats ----

static uint64_t LengthOf(FILE *file)
{
    fseeko(file, 0, SEEK_END);
    off_t length = ftello(file);
    rewind(file);
    return length > 0 ? uint64_t(length) : 0;
}

static bool RewriteToPlace(Document *document, DocumentFiles files)
{
    const DocumentJob *job = document->job;
    bool isOnto = IsSameFile(job->source, job->destination);
    files.output = isOnto ? nullptr : BeginReplaceDocument(job->destination);
    if (!files.output)
        return FailDocument(document, kFailOpen);
    KeepLineEnds(files.output);
    bool done = RewriteDocument(document, files);
    if (EndReplaceFile(files.output, done) || !done)
        return done;
    return FailDocument(document, kFailWrite);
}

static bool RewriteSource(Document *document)
{
    const DocumentJob *job = document->job;
    FILE *input = OpenDocument(job->source);
    if (!input)
        return FailDocument(document, kFailOpen);
    DocumentFiles files = {job->source, input, nullptr, LengthOf(input)};
    bool done =
        job->destination ? RewriteToPlace(document, files) : RewriteDocument(document, files);
    fclose(input);
    return done;
}

static bool RewriteWithFonts(Document *document)
{
    DocumentJob *job = document->job;
    FontMap *map = job->flags & kKeepFonts ? nullptr : &document->map;
    if (!StartFontNames(&document->fonts, map))
        return FailDocument(document, kFailMemory);
    ShowMeter(job);
    bool done = RewriteSource(document);
    HideMeter(job);
    EndReading(document, !document->report.error);
    job->convertedCharacters = document->convertedCharacters;
    job->changedParts = document->changedParts;
    TellFonts(document->fonts, job);
    return done;
}

static DWORD RewriteAll(DocumentJob *job)
{
    Document document = {};
    document.job = job;
    if (HasFontMap(job, &document.map, &document.report))
        RewriteWithFonts(&document);
    DWORD failure = ShowReport(&document.report);
    FreeFontNames(&document.fonts);
    FreeFontStyles(&document.styles);
    FreeSharedStrings(&document.strings);
    FreeFontMap(&document.map);
    FreeConversionNotes(&document.report);
    return failure;
}

// ---- WordprocessingML 2003 as of old ----

static DWORD ConvertOld(DocumentJob *job)
{
    Conversion conversion = {};
    if (HasFontMap(job, &conversion.fonts, &conversion.report)) {
        ShowMeter(job);
        ConvertWordXml(&conversion, job);
        HideMeter(job);
    }
    DWORD failure = ShowReport(&conversion.report);
    EndConversion(&conversion);
    return failure;
}

// ---- exports ----

static DWORD RunJob(DocumentJob *job)
{
    job->fontCount = 0;
    return job->flags & kAllFormats ? RewriteAll(job) : ConvertOld(job);
}

// The fields that the host's record doesn't have are empty.
static DWORD RunFirstJob(DocumentJob *job)
{
    DocumentJob whole = {};
    memcpy(&whole, job, kFirstJobSize);
    DWORD failure = RunJob(&whole);
    job->fontCount = whole.fontCount;
    return failure;
}

DWORD WINAPI ConvertDocument(DocumentJob *job)
{
    if (gExport.isBusy)
        return kFailBusy;
    if (!Initialize())
        return kFailStart;
    if (job && job->size != sizeof *job && job->size != kFirstJobSize)
        return kFailJobSize;
    if (!job || !job->source)
        return kFailNoPath;
    gExport.isBusy = true;
    DWORD failure = job->size == kFirstJobSize ? RunFirstJob(job) : RunJob(job);
    gExport.isBusy = false;
    return failure;
}

DWORD WINAPI ConvertFile(const char *source, const char *destination)
{
    char sourcePath[kUtf8PathSize], destinationPath[kUtf8PathSize];
    DocumentJob job = {};
    job.size = sizeof job;
    if (!source || !destination)
        return ConvertDocument(&job);  // a job without a source
    // a path that can't be taken over is one that can't be opened
    if (!Utf8OfPath(source, sourcePath, sizeof sourcePath) ||
        !Utf8OfPath(destination, destinationPath, sizeof destinationPath))
        *sourcePath = *destinationPath = 0;
    job.source = sourcePath;
    job.destination = destinationPath;
    return ConvertDocument(&job);
}

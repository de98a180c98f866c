// The driver of a document conversion: a job's files and font map are brought to the part
// converter, and how it ended is shown. The new file stands beside its place until it is whole, so
// that a failure leaves what was there.
#include "xmlconv/convert.h"

#include <cstdio>
#include <cstdlib>

#include "orvel.h"
#include "runtime.h"
#include "xmlconv/part.h"

constexpr char kCaption[] = "XML Font Substitution";
constexpr char kMeterLabel[] = "Convert XML document to Unicode";
enum { kUtf8PathSize = 4096 };             // bytes
constexpr size_t kOutputSize = 64 * 1024;  // bytes of the output's buffer

ConverterState gConverter = {.isBusy = false, .sizes = kFirstSizes};

// ---- files as source and sink ----

static size_t ReadFromFile(void *context, char *buffer, size_t size)
{
    return ReadDocument(static_cast<FILE *>(context), buffer, size);
}

static bool WriteToFile(void *context, const char *bytes, size_t length)
{
    return fwrite(bytes, 1, length, static_cast<FILE *>(context)) == length;
}

// A stream that can't be positioned has no length, and its meter stands still.
static uint64_t LengthOf(FILE *file)
{
    long end = fseek(file, 0, SEEK_END) == 0 ? ftell(file) : 0;
    rewind(file);
    return end > 0 ? uint64_t(end) : 0;
}

// ---- a job ----

// A map that the job names must be there; else the built-in one serves where there is no file.
static bool HasFontMap(Conversion *conversion, const DocumentJob *job)
{
    if (!job->fontMap) {
        LoadFontMap(&conversion->fonts);
        return true;
    }
    return ReadFontMap(&conversion->fonts, OpenDocument(job->fontMap)) > 0 ||
           SetConversionError(&conversion->report, false, kFailFontMap);
}

// output may be null. What the document needed stays for the next one, also after a failure: then
// it is what could be had.
static bool ConvertInput(Conversion *conversion, DocumentJob *job, FILE *input, FILE *output)
{
    DocumentSource source = {ReadFromFile, input, LengthOf(input)};
    DocumentSink sink = {WriteToFile, output};
    bool done = StartConversion(conversion, job, gConverter.sizes) &&
                ConvertPart(conversion, source, output ? &sink : nullptr);
    gConverter.sizes = SizesOf(conversion);
    return done;
}

// The stream's buffer has to outlive it: the last bytes are written out of it as the stream is
// closed. Without memory for one the stream has its own.
static void ConvertToOutput(Conversion *conversion, DocumentJob *job, FILE *input, FILE *output)
{
    char *buffer = static_cast<char *>(malloc(kOutputSize));
    if (buffer)
        setvbuf(output, buffer, _IOFBF, kOutputSize);
    bool done = ConvertInput(conversion, job, input, output);
    if (!EndReplaceFile(output, done) && done)
        SetConversionError(&conversion->report, 0, kFailWrite);
    free(buffer);
}

static void ConvertFiles(Conversion *conversion, DocumentJob *job)
{
    const char *destination = job->destination;
    FILE *input = OpenDocument(job->source);
    bool writes = input && destination && !IsSameFile(job->source, destination);
    FILE *output = writes ? BeginReplaceDocument(destination) : nullptr;
    if (!input || (destination && !output))
        SetConversionError(&conversion->report, 0, kFailOpen);
    else if (output)
        ConvertToOutput(conversion, job, input, output);
    else
        ConvertInput(conversion, job, input, nullptr);
    if (input)
        fclose(input);
}

static void WorkWithMeter(Conversion *conversion, DocumentJob *job)
{
    if (!job->showPercent)
        StartOrvelMeter(GetDesktopWindow(), kMeterLabel);
    ConvertFiles(conversion, job);
    if (!job->showPercent)
        CloseOrvelMeter();
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

static DWORD RunJob(DocumentJob *job)
{
    Conversion conversion = {};
    job->fontCount = 0;
    if (HasFontMap(&conversion, job))
        WorkWithMeter(&conversion, job);
    DWORD failure = ShowReport(&conversion.report);
    EndConversion(&conversion);
    return failure;
}

DWORD WINAPI ConvertDocument(DocumentJob *job)
{
    if (gConverter.isBusy)
        return kFailBusy;
    if (!Initialize())
        return kFailStart;
    if (job && job->size != sizeof *job)
        return kFailJobSize;
    if (!job || !job->source)
        return kFailNoPath;
    gConverter.isBusy = true;
    DWORD failure = RunJob(job);
    gConverter.isBusy = false;
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

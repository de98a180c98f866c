// A WordprocessingML 2003 document from file to file, as hosts know the converter from of old: what
// is no such document is copied or fails with a number that people quote. The new file stands
// beside its place until it is whole, so that a failure leaves what was there.
#include "xmlconv/convert.h"

#include <cstdio>
#include <cstdlib>

#include "runtime.h"
#include "xmlconv/part.h"

constexpr size_t kOutputSize = 64 * 1024;  // bytes of the output's buffer

ConverterState gConverter = {.sizes = kFirstSizes};

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

void ConvertWordXml(Conversion *conversion, DocumentJob *job)
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

// The driver of a document conversion: one pass from the first byte to the last, which begins again
// with a larger size when one was too small. The output stands beside its place until it is whole.
#include "xmlconv/convert.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "orvel.h"
#include "runtime.h"
#include "xmlconv/font_map.h"
#include "xmlconv/reader.h"
#include "xmlconv/report.h"
#include "xmlconv/styles.h"
#include "xmlconv/tag_writer.h"

constexpr size_t kSpareBytes = 16;  // of a buffer that count as full
constexpr char kCaption[] = "XML Font Substitution";
constexpr char kMeterLabel[] = "Convert XML document to Unicode";

// Failures of the driver.
enum : DWORD {
    kNotStarted = 891,
    kNoPath = 920,
    kCannotOpen = 926,
    kNoMemory = 938,
    kEndsInsideTag = 1000,
    kTextNotConverted = 1001,
    kNotWritten = 1002,
};

ConversionSizes gConversionSizes = {1024, 128000};

struct Conversion {
    const char *source, *destination;
    FILE *input, *output;
    DocumentReader reader;
    char *tagBuffer;   // twice the size: the source of a tag, and the text to write
    char *textBuffer;  // three times the size: a text, and 16-bit units
    TagRecord *current;
    uint64_t length;      // of the input in bytes; 0: not known
    DWORD *shownPercent;  // goes on through all passes
};

static bool WriteBytes(Conversion *conversion, const char *bytes, size_t length)
{
    if (fwrite(bytes, 1, length, conversion->output) == length)
        return true;
    return SetConversionError(false, kNotWritten);
}

static bool AskForRestart(RestartReason reason)
{
    gReport.restart = reason;
    return false;
}

// A file that ends inside of a tag is copied as far as it goes, and is a failure.
static bool CopyCutTag(Conversion *conversion, size_t length)
{
    WriteBytes(conversion, conversion->tagBuffer, length);
    return SetConversionError(false, kEndsInsideTag);
}

static bool ConvertTag(Conversion *conversion)
{
    char *source = conversion->tagBuffer;
    TagRoom room = {source + gConversionSizes.tag, gConversionSizes.tag};
    size_t length;
    switch (
        ReadPiece(&conversion->reader, '>', source, gConversionSizes.tag - kSpareBytes, &length)) {
    case kPieceTooLong: return AskForRestart(kTagBufferFull);
    case kPieceEnded: return CopyCutTag(conversion, length);
    default: break;
    }
    SkipByte(&conversion->reader);  // the bracket
    strcpy(source + length, ">");
    conversion->current = ProcessTag(conversion->current, source, room);
    if (gReport.restart || gReport.error)
        return false;
    return WriteBytes(conversion, room.text, strlen(room.text));
}

static bool ConvertText(Conversion *conversion)
{
    size_t length;
    char *text = conversion->textBuffer;
    TextRoom room = {text, reinterpret_cast<WCHAR *>(text + gConversionSizes.text),
                     gConversionSizes.text};
    if (ReadPiece(&conversion->reader, '<', text, gConversionSizes.text - kSpareBytes, &length) ==
        kPieceTooLong)
        return AskForRestart(kTextBufferFull);
    long converted = ConvertTextIfLegacy(conversion->current, room, length);
    if (converted == kTextTooLong)
        return AskForRestart(kTextBufferFull);
    if (converted < 1)
        return SetConversionError(false, kTextNotConverted);
    return WriteBytes(conversion, text, size_t(converted));
}

// Only whole percentages above the last one: each costs the meter a painting.
static void ShowProgress(Conversion *conversion)
{
    uint64_t length = conversion->length;
    DWORD percent = length ? DWORD(conversion->reader.position * 100 / length) : 0;
    if (percent <= *conversion->shownPercent)
        return;
    *conversion->shownPercent = percent;
    UpdateOrvelMeter(percent);
}

static void ConvertPieces(Conversion *conversion)
{
    bool goesOn = true;
    for (int byte; goesOn && (byte = PeekByte(&conversion->reader)) >= 0;) {
        goesOn = byte == '<' ? ConvertTag(conversion) : ConvertText(conversion);
        if (goesOn)
            ShowProgress(conversion);
    }
}

// ---- one pass ----

static bool OpenFiles(Conversion *conversion)
{
    conversion->input = OpenDocument(conversion->source);
    conversion->output =
        conversion->input && !IsSameFile(conversion->source, conversion->destination)
            ? BeginReplaceFile(conversion->destination)
            : nullptr;
    return conversion->output || SetConversionError(false, kCannotOpen);
}

// A stream that can't be positioned has no length, and its meter stands still.
static uint64_t LengthOf(FILE *file)
{
    long end = fseek(file, 0, SEEK_END) == 0 ? ftell(file) : 0;
    rewind(file);
    return end > 0 ? uint64_t(end) : 0;
}

static bool TakeBuffers(Conversion *conversion)
{
    conversion->tagBuffer = static_cast<char *>(malloc(2 * gConversionSizes.tag));
    conversion->textBuffer = static_cast<char *>(malloc(3 * gConversionSizes.text));
    bool hasAll = conversion->tagBuffer && conversion->textBuffer && StartStyles() &&
                  StartReading(&conversion->reader, conversion->input);
    return hasAll || SetConversionError(false, kNoMemory);
}

static void ReleaseAll(Conversion *conversion)
{
    bool isWhole = !gReport.error && !gReport.restart;
    FreeTagStack(conversion->current);
    FreeStyles();
    StopReading(&conversion->reader);
    free(conversion->tagBuffer);
    free(conversion->textBuffer);
    if (conversion->input)
        fclose(conversion->input);
    if (conversion->output &&
        !EndReplaceFile(conversion->output, conversion->destination, isWhole) && isWhole)
        SetConversionError(0, kNotWritten);
}

static void RunPass(const char *source, const char *destination, DWORD *shownPercent)
{
    Conversion conversion = {};
    conversion.source = source;
    conversion.destination = destination;
    conversion.shownPercent = shownPercent;
    gReport.restart = kSound;
    if (OpenFiles(&conversion) && TakeBuffers(&conversion)) {
        conversion.length = LengthOf(conversion.input);
        ConvertPieces(&conversion);
    }
    ReleaseAll(&conversion);
}

// Doubles what was too small, and notes it.
static void Enlarge(RestartReason reason)
{
    switch (reason) {
    case kTagBufferFull:
        gConversionSizes.tag *= 2;
        AddConversionNote("Restarted: tag buffer increased to %d", int(gConversionSizes.tag));
        break;
    case kStylesFull:
        gStyles.capacity *= 2;
        AddConversionNote("Restarted: styles buffer increased to %d styles", gStyles.capacity);
        break;
    case kTextBufferFull:
        gConversionSizes.text *= 2;
        AddConversionNote("Restarted: text buffer increased to %d", int(gConversionSizes.text));
        break;
    case kSound: break;
    }
}

static void RunPasses(const char *source, const char *destination)
{
    DWORD shownPercent = 0;
    do {
        RunPass(source, destination, &shownPercent);
        Enlarge(gReport.restart);
    } while (gReport.restart);
}

static DWORD ShowReport()
{
    char text[64];
    DWORD error = DWORD(gReport.error);
    if (gReport.notes)
        OrvelMsg(GetActiveWindow(), gReport.notes, kCaption, MB_ICONEXCLAMATION);
    FreeConversionNotes();
    if (!error)
        return 0;
    snprintf(text, sizeof text, "Fatal conversion error at line %d", int(error));
    OrvelMsg(GetActiveWindow(), text, kCaption, MB_ICONSTOP);
    return error;
}

DWORD WINAPI ConvertFile(const char *source, const char *destination)
{
    gReport.error = 0;
    if (!Initialize())
        return kNotStarted;
    LoadFontMap();
    StartOrvelMeter(GetDesktopWindow(), kMeterLabel);
    bool hasPaths = source && destination;
    if (hasPaths)
        RunPasses(source, destination);
    CloseOrvelMeter();
    FreeFontMap();
    return hasPaths ? ShowReport() : DWORD(kNoPath);
}

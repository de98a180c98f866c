// A pass cuts the input into tags and texts. What stays as it is goes from the reader's block to
// the output in long stretches. What changes goes through the buffers, and so does a piece that
// lies across two blocks. The output stands beside its place until it is whole.
#include "xmlconv/pass.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "runtime.h"
#include "xmlconv/fast_text.h"
#include "xmlconv/font_count.h"
#include "xmlconv/normal_tag.h"
#include "xmlconv/reader.h"
#include "xmlconv/report.h"
#include "xmlconv/styles.h"
#include "xmlconv/tag_writer.h"

constexpr size_t kSpareBytes = 16;  // of a buffer that count as full
constexpr size_t kOutputSize = 64 * 1024;

// Failures of a pass.
enum {
    kCannotOpen = 926,
    kNoMemory = 938,
    kEndsInsideTag = 1000,
    kTextNotConverted = 1001,
    kNotWritten = 1002,
};

ConversionSizes gConversionSizes = {.tag = 1024, .text = 128000, .block = 256 * 1024};

struct Pass {
    DocumentJob *job;
    FILE *input, *output;  // no output: the fonts alone are counted
    DocumentReader reader;
    size_t kept;         // bytes of the block in front of the reader's place that are to be written
    char *tagBuffer;     // twice the size: the source of a tag, and the text to write
    TextRoom room;       // for a text
    char *outputBuffer;  // of the stream
    TagRecord *current;
    uint64_t length;     // of the input in bytes; 0: not known
    uint64_t nextShown;  // position at which there is a percentage to show
    DWORD *shownPercent;
};

// ---- output ----

static bool WriteBytes(Pass *pass, const char *bytes, size_t length)
{
    if (!pass->output || fwrite(bytes, 1, length, pass->output) == length)
        return true;
    return SetConversionError(false, kNotWritten);
}

static bool WriteKept(Pass *pass)
{
    size_t length = pass->kept;
    pass->kept = 0;
    return length == 0 || WriteBytes(pass, PlaceInBlock(&pass->reader) - length, length);
}

// ---- pieces through the buffers ----

static bool AskForRestart(RestartReason reason)
{
    gReport.restart = reason;
    return false;
}

// A file that ends inside of a tag is copied as far as it goes, and is a failure.
static bool CopyCutTag(Pass *pass, size_t length)
{
    WriteBytes(pass, pass->tagBuffer, length);
    return SetConversionError(false, kEndsInsideTag);
}

static bool ConvertTag(Pass *pass)
{
    size_t size = gConversionSizes.tag, length;
    char *source = pass->tagBuffer;
    TagRoom room = {source + size, size};
    switch (ReadPiece(&pass->reader, '>', source, size - kSpareBytes, &length)) {
    case kPieceTooLong: return AskForRestart(kTagBufferFull);
    case kPieceEnded: return CopyCutTag(pass, length);
    default: break;
    }
    SkipBytes(&pass->reader, 1);  // the bracket
    source[length] = 0;
    strcpy(source + strlen(source), ">");  // a zero byte ends a tag's text too
    pass->current = ProcessTag(pass->current, source, room);
    if (gReport.restart || gReport.error)
        return false;
    return WriteBytes(pass, room.text, strlen(room.text));
}

static bool ConvertText(Pass *pass)
{
    size_t length;
    if (ReadPiece(&pass->reader, '<', pass->room.text, pass->room.size - kSpareBytes, &length) ==
        kPieceTooLong)
        return AskForRestart(kTextBufferFull);
    if (pass->job->fonts)
        CountFontText(pass->job, FontOfText(pass->current), pass->room.text, length);
    long converted = ConvertTextIfLegacy(pass->current, pass->room, length);
    if (converted == kTextTooLong)
        return AskForRestart(kTextBufferFull);
    if (converted < 1)
        return SetConversionError(false, kTextNotConverted);
    return WriteBytes(pass, pass->room.text, size_t(converted));
}

// ---- pieces in the block: 1 done, 0 failed, kNotTaken when they must go through the buffers ----

enum { kNotTaken = -1 };

static int KeepPiece(Pass *pass, size_t length)
{
    SkipBytes(&pass->reader, length);
    pass->kept += length;
    return 1;
}

static int TakeTag(Pass *pass)
{
    size_t length = PieceInBlock(&pass->reader, '>');
    if (length == 0 || length > gConversionSizes.tag - kSpareBytes ||
        !FollowNormalTag(&pass->current, PlaceInBlock(&pass->reader), length + 1))
        return kNotTaken;
    return KeepPiece(pass, length + 1);
}

static int TakeText(Pass *pass)
{
    size_t length = PieceInBlock(&pass->reader, '<');
    if (length == 0 || length > pass->room.size - kSpareBytes)
        return kNotTaken;
    const char *text = PlaceInBlock(&pass->reader), *font = FontOfText(pass->current);
    const FontMapEntry *entry = FindFontMapEntry(font);
    size_t converted = entry ? ConvertTextFast(pass->room, text, length, *entry) : 0;
    if (entry && converted == 0)
        return kNotTaken;
    if (pass->job->fonts)
        CountFontText(pass->job, font, text, length);
    if (!entry)
        return KeepPiece(pass, length);
    int written = WriteKept(pass) && WriteBytes(pass, pass->room.text, converted);
    SkipBytes(&pass->reader, length);
    return written;
}

// ---- the whole input ----

// Only whole percentages above the last one: each costs the meter a painting.
static void ShowProgress(Pass *pass)
{
    uint64_t position = pass->reader.position;
    if (!pass->length || position < pass->nextShown)
        return;
    DWORD percent = DWORD(position * 100 / pass->length);
    pass->nextShown = ((percent + 1) * pass->length + 99) / 100;
    if (percent <= *pass->shownPercent)
        return;
    *pass->shownPercent = percent;
    if (pass->job->showPercent)
        pass->job->showPercent(percent);
    else
        UpdateOrvelMeter(percent);
}

static bool ConvertPiece(Pass *pass, int byte)
{
    int taken = byte == '<' ? TakeTag(pass) : TakeText(pass);
    if (taken != kNotTaken)
        return taken;
    return WriteKept(pass) && (byte == '<' ? ConvertTag(pass) : ConvertText(pass));
}

static void ConvertPieces(Pass *pass)
{
    for (;;) {
        if (IsBlockUsed(&pass->reader) && !WriteKept(pass))
            return;
        int byte = PeekByte(&pass->reader);
        if (byte < 0 || !ConvertPiece(pass, byte))
            return;
        ShowProgress(pass);
    }
}

// ---- what a pass needs ----

static bool OpenFiles(Pass *pass)
{
    const char *source = pass->job->source, *destination = pass->job->destination;
    pass->input = OpenDocument(source);
    if (pass->input && destination && !IsSameFile(source, destination))
        pass->output = BeginReplaceDocument(destination);
    bool areOpen = pass->input && (pass->output || !destination);
    return areOpen || SetConversionError(false, kCannotOpen);
}

// A stream that can't be positioned has no length, and its meter stands still.
static uint64_t LengthOf(FILE *file)
{
    long end = fseek(file, 0, SEEK_END) == 0 ? ftell(file) : 0;
    rewind(file);
    return end > 0 ? uint64_t(end) : 0;
}

static TextRoom TakeTextRoom(size_t size)
{
    size_t evenSize = size + size % 2;  // units stand at even addresses
    char *buffer = static_cast<char *>(malloc(evenSize + size * sizeof(WCHAR)));
    return {buffer, reinterpret_cast<WCHAR *>(buffer + evenSize), size};
}

static bool TakeBuffers(Pass *pass)
{
    pass->tagBuffer = static_cast<char *>(malloc(2 * gConversionSizes.tag));
    pass->room = TakeTextRoom(gConversionSizes.text);
    pass->outputBuffer = static_cast<char *>(malloc(kOutputSize));
    if (pass->output && pass->outputBuffer)
        setvbuf(pass->output, pass->outputBuffer, _IOFBF, kOutputSize);
    bool hasAll = pass->tagBuffer && pass->room.text && StartStyles() &&
                  StartReading(&pass->reader, pass->input, gConversionSizes.block);
    return hasAll || SetConversionError(false, kNoMemory);
}

static void ReleaseAll(Pass *pass)
{
    bool isWhole = !gReport.error && !gReport.restart;
    FreeTagStack(pass->current);
    FreeStyles();
    StopReading(&pass->reader);
    free(pass->tagBuffer);
    free(pass->room.text);
    if (pass->input)
        fclose(pass->input);
    if (pass->output && !EndReplaceFile(pass->output, pass->job->destination, isWhole) && isWhole)
        SetConversionError(0, kNotWritten);
    free(pass->outputBuffer);
}

void RunPass(DocumentJob *job, DWORD *shownPercent)
{
    Pass pass = {};
    pass.job = job;
    pass.shownPercent = shownPercent;
    job->fontCount = 0;
    gReport.restart = kSound;
    if (OpenFiles(&pass) && TakeBuffers(&pass)) {
        pass.length = LengthOf(pass.input);
        ConvertPieces(&pass);
    }
    ReleaseAll(&pass);
}

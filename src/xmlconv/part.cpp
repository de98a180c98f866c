// A part is cut into tags and texts. What stays as it is goes from the reader's block to the sink
// in long stretches: such pieces are only counted, and the stretch is written when a piece changes
// or the block ends. What changes goes through the conversion's buffers, and so does a piece that
// lies across two blocks. Each piece tries its fast road first.
#include "xmlconv/part.h"

#include <cassert>
#include <cstdint>
#include <cstring>

#include "orvel.h"
#include "xmlconv/font_count.h"
#include "xmlconv/normal_tag.h"
#include "xmlconv/tag_writer.h"

struct Part {
    Conversion *conversion;
    const DocumentSink *sink;  // null: nothing is written
    DocumentReader reader;
    size_t kept;         // bytes of the block in front of the reader's place that are to be written
    TagRecord *current;  // owned with its parents: the open tags; null: none is open
    uint64_t nextShown;  // position in bytes at which there is a percentage to show
};

static bool Fail(Part *part, ConversionFailure number)
{
    return SetConversionError(&part->conversion->report, false, number);
}

// ---- output ----

static bool WriteBytes(Part *part, const char *bytes, size_t length)
{
    if (!part->sink || part->sink->write(part->sink->context, bytes, length))
        return true;
    return Fail(part, kFailWrite);
}

// Has to come before anything else is written, and before the block is filled anew.
static bool WriteKept(Part *part)
{
    size_t length = part->kept;
    assert(length <= part->reader.used);
    part->kept = 0;
    return length == 0 || WriteBytes(part, PlaceInBlock(&part->reader) - length, length);
}

// ---- pieces through the buffers ----

// A document that ends inside of a tag is copied as far as it goes, and is a failure.
static bool CopyCutTag(Part *part, size_t length)
{
    WriteBytes(part, part->conversion->tagSource, length);
    return Fail(part, kFailCutTag);
}

// A tag's text is a C string from here on: a zero byte in it ends it, and what stood behind that
// byte up to the bracket is dropped.
static bool ConvertTag(Part *part)
{
    Conversion *conversion = part->conversion;
    size_t length = 0;
    PieceEnd end;
    while ((end = ReadPiece(&part->reader, '>', conversion->tagSource,
                            conversion->sizes.tag - kSpareBytes, &length)) == kPieceTooLong)
        if (!GrowTagBuffers(conversion))
            return false;
    if (end == kPieceEnded)
        return CopyCutTag(part, length);
    SkipBytes(&part->reader, 1);  // the bracket
    char *source = conversion->tagSource;
    source[length] = 0;
    strcpy(source + strlen(source), ">");  // a zero byte ends a tag's text too
    const char *text = ProcessTag(conversion, &part->current);
    return text && WriteBytes(part, text, strlen(text));
}

// The source is still there when the result did not fit, so it is converted again into more room.
static bool ConvertLegacyText(Part *part, size_t length, const FontMapEntry &entry)
{
    Conversion *conversion = part->conversion;
    long converted;
    while ((converted = ConvertTextNode(conversion->room, conversion->textSource, length, entry)) ==
           kTextTooLong)
        if (!GrowTextBuffers(conversion))
            return false;
    if (converted < 1)
        return Fail(part, kFailText);
    return WriteBytes(part, conversion->room.text, size_t(converted));
}

// A text ends at the next bracket or with the document: both are whole.
static bool ConvertText(Part *part)
{
    Conversion *conversion = part->conversion;
    size_t length = 0;
    while (ReadPiece(&part->reader, '<', conversion->textSource,
                     conversion->sizes.text - kSpareBytes, &length) == kPieceTooLong)
        if (!GrowTextBuffers(conversion))
            return false;
    const char *font = FontOfText(&conversion->styles, part->current);
    if (conversion->job->fonts)
        CountFontText(conversion->job, &conversion->fonts, font, conversion->textSource, length);
    const FontMapEntry *entry = FindFontMapEntry(&conversion->fonts, font);
    return entry ? ConvertLegacyText(part, length, *entry)
                 : WriteBytes(part, conversion->textSource, length);
}

// ---- pieces in the block: 1 done, 0 failed, kNotTaken when they must go through the buffers ----

enum { kNotTaken = -1 };

// The piece stays as it is: it lengthens the stretch that is written later.
static int KeepPiece(Part *part, size_t length)
{
    SkipBytes(&part->reader, length);
    part->kept += length;
    return 1;
}

// A piece that the buffers could not hold isn't taken either, so that what grows, and the notes of
// it, don't depend on where a block ends.
static int TakeTag(Part *part)
{
    Conversion *conversion = part->conversion;
    size_t length = 0;
    switch (FollowNormalTag(conversion, &part->current, PlaceInBlock(&part->reader), &length)) {
    case kTagFailed: return 0;
    case kTagLeft: return kNotTaken;
    case kTagStays: return KeepPiece(part, length);
    case kTagChanged: break;
    }
    int written =
        WriteKept(part) && WriteBytes(part, conversion->tagText, strlen(conversion->tagText));
    SkipBytes(&part->reader, length);
    return written;
}

// Text without a legacy font stays; legacy text is converted out of the block into the room.
static int TakeText(Part *part)
{
    Conversion *conversion = part->conversion;
    size_t length = PieceInBlock(&part->reader, '<');
    if (length == 0 || length > conversion->sizes.text - kSpareBytes)
        return kNotTaken;
    const char *text = PlaceInBlock(&part->reader);
    const char *font = FontOfText(&conversion->styles, part->current);
    const FontMapEntry *entry = FindFontMapEntry(&conversion->fonts, font);
    size_t converted =
        entry ? ConvertTextFast(conversion->memory, conversion->room, text, length, *entry) : 0;
    if (entry && converted == 0)
        return kNotTaken;
    if (conversion->job->fonts)
        CountFontText(conversion->job, &conversion->fonts, font, text, length);
    if (!entry)
        return KeepPiece(part, length);
    int written = WriteKept(part) && WriteBytes(part, conversion->room.text, converted);
    SkipBytes(&part->reader, length);
    return written;
}

// ---- the whole part ----

// Only whole percentages above the last one are told: each costs the meter a painting.
static void ShowProgress(Part *part)
{
    Conversion *conversion = part->conversion;
    uint64_t position = part->reader.position, length = part->reader.source.length;
    if (!length || position < part->nextShown)
        return;
    DWORD percent = DWORD(position * 100 / length);
    part->nextShown = ((percent + 1) * length + 99) / 100;
    if (percent <= conversion->shownPercent)
        return;
    conversion->shownPercent = percent;
    if (conversion->job->showPercent)
        conversion->job->showPercent(conversion->job->context, percent);
    else
        UpdateOrvelMeter(percent);
}

static bool IsStopped(Part *part)
{
    DocumentJob *job = part->conversion->job;
    if (!job->shallStop || !job->shallStop(job->context))
        return false;
    Fail(part, kFailStopped);
    return true;
}

// One tag or one text, by its fast road where that takes it.
static bool ConvertPiece(Part *part, int byte)
{
    int taken = byte == '<' ? TakeTag(part) : TakeText(part);
    if (taken != kNotTaken)
        return taken;
    return WriteKept(part) && (byte == '<' ? ConvertTag(part) : ConvertText(part));
}

// A host is asked in front of each block, and behind the last one, where a read that its stop has
// broken off looks like the end of the document.
static bool ConvertPieces(Part *part)
{
    for (;;) {
        if (IsBlockUsed(&part->reader) && (!WriteKept(part) || IsStopped(part)))
            return false;
        int byte = PeekByte(&part->reader);
        if (byte < 0)
            return !IsStopped(part);
        if (!ConvertPiece(part, byte))
            return false;
        ShowProgress(part);
    }
}

int ConvertPart(Conversion *conversion, const DocumentSource &source, const DocumentSink *sink)
{
    Part part = {};
    part.conversion = conversion;
    part.sink = sink;
    ResetTextState(&conversion->styles);
    if (!StartReading(&part.reader, source, conversion->sizes.block))
        return Fail(&part, kFailMemory);
    bool done = ConvertPieces(&part);
    FreeTagStack(part.current);
    StopReading(&part.reader);
    assert(done == !conversion->report.error);
    return done;
}

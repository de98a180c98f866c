// Text wrapping, which hosts call before they lay out a line, check spelling or convert by a key
// table: it takes old break marks out of a text, divides each run of Lao and writes a mark at each
// boundary inside it, and tells in the side buffer what starts where.
//
// Scoring writes a marker over each byte of a run. The markers are then merged into the text, one
// in front of each byte that starts something, and turned into marks in place; so the text grows
// once and no second buffer is needed for the result.
#include <cassert>
#include <cstdint>
#include <cstring>

#include "breaks/request.h"
#include "breaks/scoring.h"
#include "breaks/wrap.h"
#include "fonts/font_table.h"
#include "frame/companion.h"
#include "frame/messages.h"
#include "frame/strings.h"
#include "orvel.h"
#include "text/lao_code.h"

// A host can name a side buffer before a call whose parameters have none.
struct WrapState {
    BYTE *pendingSide;  // armed for the next WrapText
};
static WrapState gWrap;

// Work of one call: regions of one block, each for a text with its terminator.
struct WrapScratch {
    uint16_t *scores;  // twice the room, as scores are 16 bits
    uint8_t *markers;  // one for each byte of the whole text
    uint8_t *run;      // the current run, then the copy of the whole text
    uint8_t *marks;
};

static void RemoveBreakMarks(uint8_t *text)
{
    uint8_t *write = text;
    for (const uint8_t *read = text; *read; ++read)
        if (*read != kBreakMark && *read != kHiddenBreak)
            *write++ = *read;
    *write = 0;
}

// Scores a run and stores the markers of its bytes beside the whole text's.
static void MarkRun(const uint8_t *run, size_t length, uint8_t *markers, const WrapScratch &scratch,
                    DWORD flags)
{
    memcpy(scratch.run, run, length);
    scratch.run[length] = 0;
    MarkBreakPoints(scratch.run, scratch.scores, scratch.marks, flags);
    memcpy(markers, scratch.run, length);
    if (markers[0] < kOldWord)
        markers[0] = kInside;  // what stands before a run isn't Lao: no break is needed there
}

// A run of one byte has no boundary inside and is passed over.
static void MarkAllRuns(const uint8_t *text, const WrapScratch &scratch, DWORD flags)
{
    for (size_t start = 0; text[start];) {
        size_t end = start;
        while (IsLaoByte(text[end]))
            ++end;
        if (end - start >= 2)
            MarkRun(text + start, end - start, scratch.markers + start, scratch, flags);
        start = end > start ? end : start + 1;
    }
}

// Writes each marker as a byte in front of the byte that it marks. False when not all fits.
static bool MergeMarkers(uint8_t *buffer, size_t size, const uint8_t *text, const uint8_t *markers)
{
    size_t written = 0;
    bool fits = true;
    for (size_t i = 0; text[i]; ++i) {
        size_t needed = markers[i] ? 2 : 1;
        fits = written + needed < size;
        if (!fits)
            break;
        if (markers[i])
            buffer[written++] = markers[i];
        buffer[written++] = text[i];
    }
    buffer[written] = 0;
    return fits;
}

static bool IsMarker(uint8_t byte)
{
    return byte >= kSyllable && byte <= kBadStretch;
}

// Turns marker bytes into break marks, in place: a mark stands at most where its marker stood, so
// the markers are passed before it is written.
static void WriteBreaks(uint8_t *buffer, BYTE *side)
{
    size_t written = 0;
    for (const uint8_t *read = buffer; *read; ++read) {
        uint8_t marker = IsMarker(*read) ? *read : uint8_t(kInside);
        while (IsMarker(*read))
            ++read;
        if (marker && written && IsLaoByte(buffer[written - 1])) {
            if (side)
                side[written] = kInside;
            buffer[written++] = kBreakMark;
        }
        if (!*read)
            break;
        assert(buffer + written <= read);
        if (side)
            side[written] = marker;
        buffer[written++] = *read;
    }
    buffer[written] = 0;
}

// Regions of 2, 1, 1 and 1 times room behind each other; the 16-bit one is first, where the block's
// alignment serves it.
static WrapScratch DivideScratch(void *block, size_t room)
{
    uint8_t *bytes = static_cast<uint8_t *>(block);
    return {.scores = static_cast<uint16_t *>(block),
            .markers = bytes + 2 * room,
            .run = bytes + 3 * room,
            .marks = bytes + 4 * room};
}

// Inserts breaks into internal-code text. -1 when there is no memory, else whether all fitted.
static int InsertBreaks(uint8_t *buffer, size_t size, BYTE *side, DWORD flags)
{
    size_t room = strlen(reinterpret_cast<char *>(buffer)) + 1;
    void *block = CheckedGlobalAlloc(GPTR, room > SIZE_MAX / 5 ? SIZE_MAX : 5 * room);
    if (!block)
        return -1;
    WrapScratch scratch = DivideScratch(block, room);
    MarkAllRuns(buffer, scratch, flags);
    memcpy(scratch.run, buffer, room);
    bool fits = MergeMarkers(buffer, size, scratch.run, scratch.markers);
    GlobalFree(block);
    WriteBreaks(buffer, side);
    return fits;
}

// The text in the internal code from the first line on, in the font's own code again at the end.
static int WrapRecoded(char *buffer, DWORD size, BYTE *side, int code, DWORD flags)
{
    BreakRequest request = ReadBreakRequest(flags);
    RecodeString(buffer, size, code);
    RemoveBreakMarks(AsBytes(buffer));
    PackLao(buffer);
    if (!request.insert || strlen(buffer) < 2)
        return RecodeString(buffer, size, -code);
    int fits = InsertBreaks(AsBytes(buffer), size, side, request.flags);
    if (fits < 0)
        return 0;
    int recoded = RecodeString(buffer, size, -code);
    if (!fits || !recoded)
        return WarningBox("Cannot complete checking Lao text, selection is too large");
    return 1;
}

int WINAPI WrapText(const char *source, char *buffer, DWORD size, const char *font, DWORD flags)
{
    BYTE *side = gWrap.pendingSide;
    gWrap.pendingSide = nullptr;  // it serves this call, however it ends
    if (!source || !buffer)
        return 0;
    size_t length = strlen(source);
    if (size <= length)
        return WarningBox("Cannot process Lao text, selection too large");
    memcpy(buffer, source, length + 1);
    if (side)
        memset(side, kInside, length);
    int code = FontType(font);
    if (code < 0)
        return 1;  // not Lao text
    return WrapRecoded(buffer, size, side, code, flags);
}

int WINAPI WrapLaoEx(const char *source, char *buffer, BYTE *side, DWORD size, const char *font,
                     DWORD flags)
{
    gWrap.pendingSide = side;
    return WrapText(source, buffer, size, font, flags);
}

int WINAPI SetBreakBuf(BYTE *side)
{
    if (gWrap.pendingSide || !side)
        return 0;
    gWrap.pendingSide = side;
    return 1;
}

void DropSideBuffer()
{
    gWrap.pendingSide = nullptr;
}

int WINAPI GetBreakChar(const char *font)
{
    FontCodeRecord record = {};
    return FontCodeData(FontType(font), &record) ? record.breakCharacter : 0;
}

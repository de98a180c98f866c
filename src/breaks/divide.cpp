// DivideText and DivideUtf8: the chunks of a text that stays where it is. Hosts whose text is
// Unicode, and the command, draw their breaks from it. Each run of Lao is brought into the internal
// code and divided as WrapText divides it; then the chunks are traced back to the characters.
//
// Nearly every run is short and goes the quick road: its signs are joined as it is read, so that
// each byte knows its characters. What is longer, and all runs with a companion that doesn't tell
// what the quick road asks, goes through PackLao and MarkBreakPoints. PackLao doesn't say what it
// joins, so the trace back asks it again about the few bytes that changed.
#include <cassert>
#include <climits>
#include <cstring>

#include "breaks/dictionaries.h"
#include "breaks/request.h"
#include "breaks/run_text.h"
#include "breaks/scoring.h"
#include "breaks/short_run.h"
#include "frame/companion.h"
#include "frame/messages.h"
#include "frame/records.h"
#include "orvel.h"

// Work of long runs: regions of one block, each for the longest run so far and a terminator.
struct DivideScratch {
    size_t room;       // bytes of a run, terminator included; 0: there is no block
    DWORD *places;     // of each single byte, in the text; owned, and the block with it
    uint16_t *scores;  // of each packed byte, as MarkBreakPoints wants them
    uint8_t *single;   // the run, a byte for each character
    uint8_t *packed;   // the run as PackLao leaves it
    uint8_t *markers;  // what starts at each packed byte
    uint8_t *marks;
};

struct DivideCall {
    RunText text;
    BreakRequest request;
    DWORD dictionaries;      // to divide by; they are loaded
    const SignJoins *joins;  // null: the quick road is closed
    LaoChunk *chunks;        // the caller's
    DWORD room, count;
    DivideScratch scratch;
};

static void AddChunk(DivideCall *call, const LaoChunk &chunk)
{
    if (call->count < call->room)
        call->chunks[call->count] = chunk;
    ++call->count;
}

// ---- short runs ----

static int MarkShort(const DivideCall &call, const RunBytes &run, RunChunk *parts)
{
    int length = int(run.count);
    if (call.request.insert && length >= 2)
        return MarkShortRun(run.codes, length, call.dictionaries, call.request.flags, parts);
    parts[0] = {0, uint8_t(length), false, kInside};
    return 1;
}

static void DivideShort(DivideCall *call, const RunBytes &run)
{
    RunChunk parts[kLongestShortRun];
    int count = MarkShort(*call, run, parts);
    for (int i = 0; i < count; ++i) {
        const RunChunk &part = parts[i];
        DWORD last = run.lasts[part.start + part.length - 1];
        AddChunk(call, {run.starts[part.start], last + call->text.characterUnits, part.kind,
                        BYTE(i > 0)});
    }
}

// ---- long runs ----

// The widest regions come first, so that each begins at an address that suits its type.
constexpr size_t kBytesOfPlace = sizeof(DWORD) + sizeof(uint16_t) + 4;

static bool GrowScratch(DivideScratch *scratch, size_t room)
{
    if (room <= scratch->room)
        return true;
    if (scratch->room)
        GlobalFree(scratch->places);
    *scratch = {};
    bool fits = room <= SIZE_MAX / kBytesOfPlace;
    void *block = CheckedGlobalAlloc(0, fits ? kBytesOfPlace * room : SIZE_MAX);
    if (!block)
        return false;
    scratch->room = room;
    scratch->places = static_cast<DWORD *>(block);
    scratch->scores = reinterpret_cast<uint16_t *>(scratch->places + room);
    scratch->single = reinterpret_cast<uint8_t *>(scratch->scores + room);
    scratch->packed = scratch->single + room;
    scratch->markers = scratch->packed + room;
    scratch->marks = scratch->markers + room;
    return true;
}

// What PackLao makes of two bytes; 0 when it leaves them apart.
static uint8_t JoinBytes(uint8_t first, uint8_t second)
{
    char pair[] = {char(first), char(second), 0};
    PackLao(pair);
    return pair[1] ? 0 : uint8_t(pair[0]);
}

// How many single bytes became the packed one: 0 when no joining explains it.
static size_t CountJoined(const uint8_t *single, uint8_t packed)
{
    uint8_t made = single[0];
    size_t count = 1;
    while (made && made != packed && single[count])
        made = JoinBytes(made, single[count++]);
    return made == packed ? count : 0;
}

// Walks packed and single bytes together. What no joining explains, as a companion of another kind
// may give it, leaves the rest of the run to its last chunk.
static void TraceChunks(DivideCall *call, const RunBytes &run)
{
    const DivideScratch &scratch = call->scratch;
    DWORD width = call->text.characterUnits;
    LaoChunk chunk = {run.starts[0], 0, scratch.markers[0], 0};
    size_t single = 0;
    for (size_t i = 0; scratch.packed[i]; ++i) {
        if (i > 0 && scratch.markers[i]) {
            chunk.end = run.starts[single - 1] + width;
            AddChunk(call, chunk);
            chunk = {run.starts[single], 0, scratch.markers[i], 1};
        }
        size_t joined = CountJoined(run.codes + single, scratch.packed[i]);
        if (!joined)
            break;
        single += joined;
        assert(single <= run.count);
        if (single == run.count)
            break;
    }
    chunk.end = run.starts[run.count - 1] + width;
    AddChunk(call, chunk);
}

// A single byte is its run's only chunk, whatever it is.
static void MarkPackedRun(const BreakRequest &request, const DivideScratch &scratch)
{
    size_t length = strlen(reinterpret_cast<char *>(scratch.packed));
    memcpy(scratch.markers, scratch.packed, length + 1);
    if (request.insert && length >= 2)
        MarkBreakPoints(scratch.markers, scratch.scores, scratch.marks, request.flags);
    else
        memset(scratch.markers, kInside, length);
}

static size_t LengthOfRun(const RunText &text, DWORD start)
{
    uint8_t codes[kLongestShortRun + 1];
    DWORD starts[kLongestShortRun], lasts[kLongestShortRun];
    RunBytes run = {codes, starts, lasts, kLongestShortRun, 0, nullptr};
    size_t length = 0;
    do {
        run.count = 0;
        start = text.readRun(&text, start, &run);
        length += run.count;
    } while (run.count == run.room);
    return length;
}

// The place behind the run; false without memory.
static bool DivideLong(DivideCall *call, DWORD start, DWORD *end)
{
    size_t length = LengthOfRun(call->text, start);
    DivideScratch *scratch = &call->scratch;
    if (!GrowScratch(scratch, length + 1))
        return false;
    RunBytes run = {scratch->single, scratch->places, scratch->places, length, 0, nullptr};
    *end = call->text.readRun(&call->text, start, &run);
    memcpy(scratch->packed, run.codes, run.count + 1);
    PackLao(reinterpret_cast<char *>(scratch->packed));
    MarkPackedRun(call->request, *scratch);
    TraceChunks(call, run);
    return true;
}

// ---- calls ----

static bool DivideRun(DivideCall *call, DWORD start, DWORD *end)
{
    uint8_t codes[kLongestShortRun + 1];
    DWORD starts[kLongestShortRun], lasts[kLongestShortRun];
    RunBytes run = {codes, starts, lasts, kLongestShortRun, 0, call->joins};
    if (!call->joins)
        return DivideLong(call, start, end);
    *end = call->text.readRun(&call->text, start, &run);
    if (run.count == run.room)
        return DivideLong(call, start, end);
    DivideShort(call, run);
    return true;
}

// What a text without Lao doesn't need is left until its first run.
static void PrepareDividing(DivideCall *call)
{
    WordLengths ignored;
    if (call->request.flags & kWordBreaks)
        call->dictionaries = gProcess.options->dictionaries;
    LoadDictionaries(WORD(call->dictionaries));
    call->joins = FindWordLengths("", 0, &ignored) ? JoiningSigns() : nullptr;
}

static bool DivideRuns(DivideCall *call)
{
    const RunText &text = call->text;
    DWORD start = text.findRun(&text, 0);
    if (start < text.length)
        PrepareDividing(call);
    while (start < text.length) {
        if (!DivideRun(call, start, &start))
            return false;
        start = text.findRun(&text, start);
    }
    return true;
}

static int DivideAnyText(const RunText &text, LaoChunk *chunks, DWORD room, DWORD flags)
{
    if (!text.units || (!chunks && room) || !gProcess.started || text.length > INT_MAX)
        return -1;
    DivideCall call = {};
    call.text = text;
    call.request = ReadBreakRequest(flags);
    call.chunks = chunks;
    call.room = room;
    bool done = DivideRuns(&call);
    if (call.scratch.room)
        GlobalFree(call.scratch.places);
    return done ? int(call.count) : -1;
}

int WINAPI DivideText(const WCHAR *text, DWORD length, LaoChunk *chunks, DWORD room, DWORD flags)
{
    return DivideAnyText(RunTextOfCharacters(text, length), chunks, room, flags);
}

int WINAPI DivideUtf8(const char *text, DWORD length, LaoChunk *chunks, DWORD room, DWORD flags)
{
    return DivideAnyText(RunTextOfUtf8(text, length), chunks, room, flags);
}

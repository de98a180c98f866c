// DivideText: the chunks of a text that stays where it is. Hosts whose text is 16-bit characters,
// and the command, draw their breaks from it. Each run of Lao is brought into the internal code and
// divided as WrapText divides it; then the chunks are traced back to the characters. PackLao joins
// signs on the way in and doesn't tell which, so the trace asks it again about the few bytes that
// changed.
#include <cassert>
#include <climits>
#include <cstring>

#include "breaks/request.h"
#include "breaks/scoring.h"
#include "fonts/unicode.h"
#include "frame/messages.h"
#include "frame/records.h"
#include "frame/strings.h"
#include "orvel.h"
#include "text/lao_code.h"

constexpr WCHAR kZeroWidthSpace = 0x200B;

// Work of one call: regions of one block, each for the longest run and a terminator.
struct DivideScratch {
    DWORD *places;     // of each single byte, in the text
    uint16_t *scores;  // of each packed byte, as MarkBreakPoints wants them
    uint8_t *single;   // the run, a byte for each character
    uint8_t *packed;   // the run as PackLao leaves it
    uint8_t *markers;  // what starts at each packed byte
    uint8_t *marks;
};

// Where the chunks of a call go.
struct ChunkList {
    LaoChunk *chunks;  // the caller's
    DWORD room, count;
};

// The byte of a character that may stand in a run, else 0.
static uint8_t RunByte(WCHAR character)
{
    uint8_t byte = ByteOfCharacter(character, 0, false);
    return IsLaoByte(byte) ? byte : 0;
}

static bool GoesOnRun(WCHAR character)
{
    return character == kZeroWidthSpace || RunByte(character);
}

static DWORD RunEnd(const WCHAR *text, DWORD length, DWORD start)
{
    while (start < length && GoesOnRun(text[start]))
        ++start;
    return start;
}

static DWORD LongestRun(const WCHAR *text, DWORD length)
{
    DWORD longest = 0;
    for (DWORD i = 0; i < length;) {
        DWORD end = RunEnd(text, length, i);
        longest = end - i > longest ? end - i : longest;
        i = end + 1;
    }
    return longest;
}

// The widest regions come first, so that each begins at an address that suits its type.
constexpr size_t kBytesOfPlace = sizeof(DWORD) + sizeof(uint16_t) + 4;

static DivideScratch RegionsOf(void *block, size_t room)
{
    DivideScratch scratch;
    scratch.places = static_cast<DWORD *>(block);
    scratch.scores = reinterpret_cast<uint16_t *>(scratch.places + room);
    scratch.single = reinterpret_cast<uint8_t *>(scratch.scores + room);
    scratch.packed = scratch.single + room;
    scratch.markers = scratch.packed + room;
    scratch.marks = scratch.markers + room;
    return scratch;
}

// Fills the single bytes of a run and their places; the number of bytes.
static size_t ReadRun(const WCHAR *text, DWORD start, DWORD end, const DivideScratch &scratch)
{
    size_t count = 0;
    for (DWORD i = start; i < end; ++i)
        if (uint8_t byte = RunByte(text[i])) {
            scratch.places[count] = i;
            scratch.single[count++] = byte;
        }
    scratch.single[count] = 0;
    return count;
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

static void AddChunk(ChunkList *list, const LaoChunk &chunk)
{
    if (list->count < list->room)
        list->chunks[list->count] = chunk;
    ++list->count;
}

// Walks packed and single bytes together. What no joining explains, as a companion of another kind
// may give it, leaves the rest of the run to its last chunk.
static void TraceChunks(size_t count, const DivideScratch &scratch, ChunkList *list)
{
    LaoChunk chunk = {scratch.places[0], 0, scratch.markers[0], 0};
    size_t single = 0;
    for (size_t i = 0; scratch.packed[i]; ++i) {
        if (i > 0 && scratch.markers[i]) {
            chunk.end = scratch.places[single - 1] + 1;
            AddChunk(list, chunk);
            chunk = {scratch.places[single], 0, scratch.markers[i], 1};
        }
        size_t joined = CountJoined(scratch.single + single, scratch.packed[i]);
        if (!joined)
            break;
        single += joined;
        assert(single <= count);
        if (single == count)
            break;
    }
    chunk.end = scratch.places[count - 1] + 1;
    AddChunk(list, chunk);
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

static void DivideRun(const WCHAR *text, DWORD start, DWORD end, const BreakRequest &request,
                      const DivideScratch &scratch, ChunkList *list)
{
    size_t count = ReadRun(text, start, end, scratch);
    if (!count)
        return;  // break marks alone
    memcpy(scratch.packed, scratch.single, count + 1);
    PackLao(reinterpret_cast<char *>(scratch.packed));
    MarkPackedRun(request, scratch);
    TraceChunks(count, scratch, list);
}

int WINAPI DivideText(const WCHAR *text, DWORD length, LaoChunk *chunks, DWORD room, DWORD flags)
{
    if (!text || (!chunks && room) || !gProcess.started || length > INT_MAX)
        return -1;
    size_t scratchRoom = size_t(LongestRun(text, length)) + 1;
    bool fits = scratchRoom <= SIZE_MAX / kBytesOfPlace;
    void *block = CheckedGlobalAlloc(0, fits ? kBytesOfPlace * scratchRoom : SIZE_MAX);
    if (!block)
        return -1;
    DivideScratch scratch = RegionsOf(block, scratchRoom);
    BreakRequest request = ReadBreakRequest(flags);
    ChunkList list = {chunks, room, 0};
    for (DWORD i = 0; i < length;) {
        DWORD end = RunEnd(text, length, i);
        DivideRun(text, i, end, request, scratch, &list);
        i = end + 1;
    }
    GlobalFree(block);
    return int(list.count);
}

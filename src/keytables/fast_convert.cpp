// The fast road: what the plain one does in two passes of the break inserter over copies of the
// text, and in searches for each syllable, is done run by run. A run that has been seen lately is
// copied from memory; else it is divided by one walk, and its syllables, which are few, come from
// memory. No marks are written and taken out again.
//
// It gives the same results because a run's division and a syllable's text depend on their bytes
// and on what MemoBasis holds, and on nothing else. Three things reach over the border of a run and
// are seen to here: the repeat sign, the separator in front of a last chunk of one byte, and
// Change patterns, which must not.
#include "keytables/fast_convert.h"

#include <array>
#include <bit>
#include <cstring>

#include "breaks/dictionaries.h"
#include "breaks/short_run.h"
#include "breaks/wrap.h"
#include "frame/companion.h"
#include "frame/messages.h"
#include "frame/records.h"
#include "frame/strings.h"
#include "keytables/ascii_class.h"
#include "keytables/key_memo.h"
#include "orvel.h"
#include "text/lao_code.h"

// Room for a text without asking for memory, and zeros behind each text, which are read with it.
enum { kLocalRoom = 512, kPadding = 8 };
static_assert(int(kPadding) >= int(kMemoSyllable));

// What the copying of a text has to know of a byte.
enum ByteKind : uint8_t {
    kPassedOver = 1,  // a break of before
    kWorkByte = 2,    // means something to the break inserter or to the plain road
    kLaoByte = 4,
};

struct FastState {
    bool isClosed;     // by a test
    bool knowsLoaded;  // the next two are filled
    WORD loaded;       // dictionaries of the last loading
    DWORD revision;    // behind it
};
static FastState gFast;

// One call.
struct FastConversion {
    Conversion *conversion;
    const KeyMemo *memo;
    // of the current run
    bool canBeKept;                // its text depends on nothing outside of it
    RunMemory memory;              // of its chunks so far, to be remembered
    size_t wordStart, wordLength;  // in the output, of kBecomesWord
};

void CloseFastRoad(bool isClosed)
{
    gFast.isClosed = isClosed;
}

// ---- the text ----

constexpr std::array<uint8_t, 256> BuildByteKinds()
{
    std::array<uint8_t, 256> kinds = {};
    for (int byte = 0; byte < 256; ++byte)
        kinds[size_t(byte)] = IsLaoByte(byte) ? kLaoByte : 0;
    for (int byte : {1, 2, 3, 4, 5, 19, 20, 21, 22})
        kinds[size_t(byte)] = kWorkByte;
    kinds[kBreakMark] = kinds[kHiddenBreak] = kPassedOver;
    return kinds;
}
constexpr std::array<uint8_t, 256> kByteKinds = BuildByteKinds();
static_assert(kInside == 0 && kBadStretch == 5);  // bytes that mark divisions

// Copies text without its breaks and fills up with zeros; the kinds of its bytes.
static uint8_t CopyText(uint8_t *copy, const uint8_t *text)
{
    uint8_t kinds = 0;
    for (; *text; ++text) {
        uint8_t kind = kByteKinds[*text];
        kinds |= kind;
        *copy = *text;
        copy += kind != kPassedOver;
    }
    memset(copy, 0, kPadding);
    return kinds;
}

static size_t LaoLength(const uint8_t *text)
{
    size_t length = 0;
    while (IsLaoByte(text[length]))
        ++length;
    return length;
}

static bool HasLongRun(const uint8_t *text, size_t size)
{
    for (; size > kLongestShortRun && *text; ++text) {
        size_t length = LaoLength(text);
        if (length > kLongestShortRun)
            return true;
        text += length ? length - 1 : 0;
    }
    return false;
}

// The first bytes as numbers, zeros behind them.
static uint64_t ReadBytes(const uint8_t *bytes, size_t count)
{
    uint64_t number;
    memcpy(&number, bytes, sizeof number);
    return count < 8 ? number & ((uint64_t(1) << 8 * count) - 1) : number;
}
static_assert(std::endian::native == std::endian::little);

// ---- chunks ----

// Notes what is to be remembered of a chunk, if its text has been written: what is in the output
// can wait there until a repeat sign or the end of the run.
static void NoteChunk(FastConversion *fast, RunMemory memory, const char *text, size_t length)
{
    if (IsFull(fast->conversion)) {
        RememberRun(text, length, memory);
        fast->memory = kKeepsWord;
    } else if (memory != kKeepsWord) {
        fast->memory = memory;
        fast->wordStart = fast->conversion->length - 1 - length;
        fast->wordLength = length;
    }
}

static void RememberChunk(const FastConversion *fast)
{
    RememberRun(fast->conversion->output + fast->wordStart, fast->wordLength, fast->memory);
}

static void WriteCell(FastConversion *fast, const SyllableCell *cell)
{
    Conversion *conversion = fast->conversion;
    size_t start = conversion->length - 1;
    if (start + sizeof cell->text < conversion->size) {
        memcpy(conversion->output + start, cell->text, sizeof cell->text);
        conversion->length += cell->length;
    } else {
        WriteBytes(conversion, cell->text, cell->length);
    }
    NoteChunk(fast, cell->memory, cell->text, cell->length);
}

static void KeepPiece(const FastConversion *fast, uint64_t bytes, const char *text,
                      RunMemory memory)
{
    size_t length = strlen(text);
    if (length >= kSyllableTextRoom)
        return;
    SyllableCell cell = {bytes, fast->memo->epoch, uint8_t(length), memory, {}};
    memcpy(cell.text, text, length);
    KeepSyllable(cell);
}

// Renders count bytes of a chunk that hold no word sign.
static void RenderPiece(FastConversion *fast, const uint8_t *piece, size_t count)
{
    uint8_t run[kLongestShortRun + 1];
    char text[kRunRoom];
    memcpy(run, piece, count);
    run[count] = 0;
    RunMemory memory = RenderRun(fast->conversion, run, int(count), text);
    WriteText(fast->conversion, text);
    NoteChunk(fast, memory, text, strlen(text));
    if (count <= kMemoSyllable)
        KeepPiece(fast, ReadBytes(piece, count), text, memory);
}

// Word signs have texts of their own, which may be that of the syllable in front of the run.
static void ConvertPieces(FastConversion *fast, const uint8_t *chunk, size_t count)
{
    const uint8_t *end = chunk + count;
    while (chunk < end && !IsFull(fast->conversion)) {
        const uint8_t *sign = chunk;
        while (sign < end && !IsWordSign(*sign))
            ++sign;
        if (sign > chunk) {
            RenderPiece(fast, chunk, size_t(sign - chunk));
        } else {
            RememberChunk(fast);
            fast->memory = kKeepsWord;
            fast->canBeKept = false;
            WriteWordSign(fast->conversion, *sign++ == kRepeatSign);
        }
        chunk = sign;
    }
}

static void ConvertChunk(FastConversion *fast, const uint8_t *chunk, size_t count)
{
    const SyllableCell *cell =
        count <= kMemoSyllable ? FindSyllable(fast->memo, ReadBytes(chunk, count)) : nullptr;
    if (cell)
        WriteCell(fast, cell);
    else
        ConvertPieces(fast, chunk, count);
}

// ---- runs ----

// In front of a chunk; punctuation one byte behind its first byte takes the separator away.
static bool Separates(FastConversion *fast, const RunChunk &chunk, const uint8_t *run, int length)
{
    const KeyTable *table = fast->conversion->table;
    if (chunk.start == 0 || !table->separator || !(chunk.startsWord || table->type == kEmailTable))
        return false;
    if (chunk.start + 1 < length)
        return true;
    fast->canBeKept = false;
    char behind = char(run[length]);
    return behind && !IsAsciiPunctuation(behind);
}

static void ConvertChunks(FastConversion *fast, const uint8_t *run, int length)
{
    RunChunk chunks[kLongestShortRun];
    const MemoBasis *basis = &fast->memo->basis;
    int count = DivideShortRun(run, length, basis->dictionaries, basis->byWords, chunks);
    for (int i = 0; i < count && !IsFull(fast->conversion); ++i) {
        if (Separates(fast, chunks[i], run, length))
            WriteSeparator(fast->conversion);
        ConvertChunk(fast, run + chunks[i].start, chunks[i].length);
    }
}

static void WriteKept(Conversion *conversion, const KeptRun *kept)
{
    const char *text = TextOfRun(kept);
    memcpy(conversion->output + conversion->length - 1, text, kept->textLength + 1u);
    conversion->length += kept->textLength;
    RememberRun(text + kept->wordStart, kept->wordLength, kept->memory);
}

// start: of the run's text in the output.
static void KeepConverted(const FastConversion *fast, uint64_t hash, const uint8_t *run,
                          size_t length, size_t start)
{
    const Conversion *conversion = fast->conversion;
    size_t written = conversion->length - 1 - start;
    if (IsFull(conversion) || !fast->canBeKept || written >= kRunTextRoom)
        return;
    KeptRun kept = {uint16_t(written), 0, 0, uint8_t(length), fast->memory};
    if (fast->memory == kBecomesWord) {
        kept.wordStart = uint16_t(fast->wordStart - start);
        kept.wordLength = uint8_t(fast->wordLength);
    }
    KeepRun(fast->memo, hash, kept, run, conversion->output + start);
}

static void ConvertRun(FastConversion *fast, const uint8_t *run, size_t length)
{
    Conversion *conversion = fast->conversion;
    size_t start = conversion->length - 1;
    uint64_t hash = HashRun(fast->memo, run, length);
    const KeptRun *kept = FindRun(fast->memo, hash, run, length);
    if (kept && conversion->length + kept->textLength < conversion->size) {
        WriteKept(conversion, kept);
        return;
    }
    fast->canBeKept = true;
    fast->memory = kKeepsWord;
    fast->wordStart = fast->wordLength = 0;
    ConvertChunks(fast, run, int(length));
    RememberChunk(fast);
    KeepConverted(fast, hash, run, length, start);
}

static void ConvertCopy(FastConversion *fast, const uint8_t *text)
{
    fast->conversion->output[0] = 0;
    while (*text && !IsFull(fast->conversion)) {
        size_t length = LaoLength(text);
        if (length)
            ConvertRun(fast, text, length);
        else
            WritePlainByte(fast->conversion, char(*text));
        text += length ? length : 1;
    }
}

// ---- the road ----

// Loads what the options ask for, unless that is known to be there; the revision of the words.
static DWORD LoadWords(DWORD revision)
{
    WORD wanted = gProcess.options->dictionaries;
    if (gFast.knowsLoaded && gFast.loaded == wanted && gFast.revision == revision)
        return revision;
    LoadDictionaries(wanted);
    DictionariesRevision(&revision);
    gFast.knowsLoaded = true;
    gFast.loaded = wanted;
    gFast.revision = revision;
    return revision;
}

// Text of these codes is the internal code for the break inserter; and marks, three bytes at most
// for each one of text while the plain road has them, must be sure to fit.
static bool CanGoFast(const Conversion *conversion, size_t length)
{
    int code = FontType(kWorkFont);
    return !gFast.isClosed && !conversion->table->replacementBreak && (code == 0 || code == 1) &&
           length < conversion->size / 4;
}

// copy has room for the text and its padding.
static int ConvertThroughCopy(Conversion *conversion, uint8_t *copy, size_t length, DWORD revision)
{
    uint8_t kinds = CopyText(copy, AsBytes(conversion->output));
    if (kinds & kPassedOver)
        PackLao(reinterpret_cast<char *>(copy));  // breaks may have stood between signs
    if (kinds & kWorkByte || HasLongRun(copy, length))
        return kNoFastRoad;
    if (kinds & kLaoByte && NeedsWords(conversion->table))
        revision = LoadWords(revision);
    FastConversion fast = {conversion, MemoOf(conversion, revision), false, kKeepsWord, 0, 0};
    if (!fast.memo->staysInside)
        return kNoFastRoad;
    DropSideBuffer();
    ConvertCopy(&fast, copy);
    return EndConversion(conversion);
}

int ConvertFast(Conversion *conversion)
{
    uint8_t local[kLocalRoom];
    DWORD revision;
    size_t length = strlen(conversion->output), room = length + kPadding;
    if (!CanGoFast(conversion, length) || !DictionariesRevision(&revision))
        return kNoFastRoad;
    if (room <= sizeof local)
        return ConvertThroughCopy(conversion, local, length, revision);
    void *copy = CheckedGlobalAlloc(0, room);
    if (!copy)
        return 0;
    int done = ConvertThroughCopy(conversion, static_cast<uint8_t *>(copy), length, revision);
    GlobalFree(copy);
    return done;
}

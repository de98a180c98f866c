// The memory of conversions: a table of syllables and a ring of runs, both of fixed size, in which
// whatever comes later takes the place of what was there. Forgetting is a new number, so that it
// costs nothing however often a host changes its settings.
#include "keytables/key_memo.h"

#include <cassert>
#include <cstring>

#include "frame/records.h"
#include "text/lao_code.h"

enum { kSyllableBits = 14, kRunBits = 15, kTableTypes = kEmailTable + 1 };
enum { kRingSize = 1 << 20 };  // in bytes

// Where a run stands in the ring, counted from the first run ever; it is there while no more than
// the ring's size was written behind it.
struct RunCell {
    uint32_t hash;  // of its bits those that don't choose the cell
    uint32_t epoch;
    uint64_t place;
};

struct MemoState {
    uint32_t epochs;  // given so far
    KeyMemo memos[kTableTypes];
    alignas(64) SyllableCell syllables[1 << kSyllableBits];  // 512 KB
    alignas(64) RunCell runs[1 << kRunBits];                 // 512 KB
    uint64_t ringEnd;                                        // the next run's place
    alignas(KeptRun) char ring[kRingSize];                   // 1 MB
};
static MemoState gMemo;

static bool IsLaoText(const char *text)
{
    for (; *text; ++text)
        if (!IsLaoByte(*text))
            return false;
    return true;
}

static bool IsLaoPattern(const char *pattern)
{
    for (; *pattern; ++pattern)
        if (!strchr("#?*", *pattern) && !IsLaoByte(*pattern))
            return false;
    return true;
}

// Whether no pattern of the table can match more than a run has: what stands behind a run isn't
// Lao, and neither a pattern's own bytes nor the initials for its captured ones can be that.
static bool PatternsStayInside(const KeyTable *table)
{
    EntryRange changes = EntriesOf(table, kChangeSection);
    EntryRange initials = EntriesOf(table, kInitialSection);
    for (int i = changes.begin; i < changes.end; ++i)
        if (!IsLaoPattern(table->entries[i].key))
            return false;
    for (int i = initials.begin; changes.begin < changes.end && i < initials.end; ++i)
        if (!IsLaoText(table->entries[i].key))
            return false;
    return true;
}

static MemoBasis BasisOf(const Conversion *conversion, DWORD revision)
{
    const KeyTable *table = conversion->table;
    MemoBasis basis = {table->filling,   revision,          gProcess.options->dictionaries, {},
                       table->separator, NeedsWords(table), conversion->showsFailures};
    memcpy(basis.sequence, table->sequence, sizeof basis.sequence);
    return basis;
}

// ORDER MemoBasis
static bool IsSameBasis(const MemoBasis &one, const MemoBasis &other)
{
    return one.filling == other.filling && one.revision == other.revision &&
           one.dictionaries == other.dictionaries &&
           memcmp(one.sequence, other.sequence, sizeof one.sequence) == 0 &&
           one.separator == other.separator && one.byWords == other.byWords &&
           one.showsFailures == other.showsFailures;
}

const KeyMemo *MemoOf(const Conversion *conversion, DWORD revision)
{
    KeyMemo *memo = &gMemo.memos[conversion->table->type];
    MemoBasis basis = BasisOf(conversion, revision);
    if (memo->epoch && IsSameBasis(memo->basis, basis))
        return memo;
    *memo = {basis, ++gMemo.epochs, PatternsStayInside(conversion->table)};
    return memo;
}

static uint64_t Mix(uint64_t bytes)
{
    return bytes * 0x9E3779B97F4A7C15u;
}

// A syllable has two places, as a run has, so that two of one number don't drive each other out;
// and others for each table.
static SyllableCell *PlacesOf(uint32_t epoch, uint64_t bytes)
{
    return &gMemo.syllables[2 * (Mix(bytes ^ Mix(epoch)) >> (65 - kSyllableBits))];
}

const SyllableCell *FindSyllable(const KeyMemo *memo, uint64_t bytes)
{
    const SyllableCell *cell = PlacesOf(memo->epoch, bytes);
    for (int i = 0; i < 2; ++i, ++cell)
        if (cell->bytes == bytes && cell->epoch == memo->epoch)
            return cell;
    return nullptr;
}

void KeepSyllable(const SyllableCell &cell)
{
    SyllableCell *places = PlacesOf(cell.epoch, cell.bytes);
    places[1] = places[0];
    places[0] = cell;
}

uint64_t HashRun(const KeyMemo *memo, const uint8_t *run, size_t length)
{
    uint64_t hash = Mix(memo->epoch) ^ length, bytes;
    for (; length > 8; length -= 8, run += 8) {
        memcpy(&bytes, run, sizeof bytes);
        hash = Mix(hash ^ bytes);
        hash ^= hash >> 32;
    }
    memcpy(&bytes, run, sizeof bytes);
    return Mix(hash ^ bytes << (64 - 8 * length));
}

static RunCell *RunCellsOf(uint64_t hash)
{
    return &gMemo.runs[2 * (hash >> (65 - kRunBits))];
}

// The run that a cell leads to, or null.
static const KeptRun *RunAt(const RunCell *cell, const KeyMemo *memo, uint64_t hash)
{
    bool isThere = cell->hash == uint32_t(hash >> 16) && cell->epoch == memo->epoch &&
                   gMemo.ringEnd - cell->place <= kRingSize;
    return isThere ? reinterpret_cast<KeptRun *>(gMemo.ring + cell->place % kRingSize) : nullptr;
}

const KeptRun *FindRun(const KeyMemo *memo, uint64_t hash, const uint8_t *run, size_t length)
{
    const RunCell *cell = RunCellsOf(hash);
    for (int i = 0; i < 2; ++i, ++cell) {
        const KeptRun *kept = RunAt(cell, memo, hash);
        if (kept && kept->runLength == length && memcmp(kept + 1, run, length) == 0)
            return kept;
    }
    return nullptr;
}

const char *TextOfRun(const KeptRun *kept)
{
    return reinterpret_cast<const char *>(kept + 1) + kept->runLength;
}

// A run stands in one piece: one that would reach over the ring's end begins anew.
static uint64_t TakePlace(size_t size)
{
    constexpr size_t kUnit = alignof(KeptRun);
    uint64_t place = gMemo.ringEnd;
    if (place % kRingSize + size > kRingSize)
        place += kRingSize - place % kRingSize;
    gMemo.ringEnd = place + (size + kUnit - 1) / kUnit * kUnit;
    return place;
}

void KeepRun(const KeyMemo *memo, uint64_t hash, const KeptRun &kept, const uint8_t *run,
             const char *text)
{
    assert(kept.textLength < kRunTextRoom);
    uint64_t place = TakePlace(sizeof kept + kept.runLength + kept.textLength + 1u);
    char *bytes = gMemo.ring + place % kRingSize;
    memcpy(bytes, &kept, sizeof kept);
    memcpy(bytes + sizeof kept, run, kept.runLength);
    memcpy(bytes + sizeof kept + kept.runLength, text, kept.textLength + 1u);
    RunCell *cells = RunCellsOf(hash);
    cells[1] = cells[0];
    cells[0] = {uint32_t(hash >> 16), memo->epoch, place};
}

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
    RunCell runs[1 << kRunBits];                             // 512 KB
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
    MemoBasis basis = {};
    basis.filling = table->filling;
    basis.revision = revision;
    basis.dictionaries = gProcess.options->dictionaries;
    memcpy(basis.sequence, table->sequence, sizeof basis.sequence);
    basis.separator = table->separator;
    basis.byWords = NeedsWords(table);
    basis.showsFailures = conversion->showsFailures;
    return basis;
}

const KeyMemo *MemoOf(const Conversion *conversion, DWORD revision)
{
    KeyMemo *memo = &gMemo.memos[conversion->table->type];
    MemoBasis basis = BasisOf(conversion, revision);
    if (memo->epoch && memcmp(&memo->basis, &basis, sizeof basis) == 0)
        return memo;
    *memo = {basis, ++gMemo.epochs, PatternsStayInside(conversion->table)};
    return memo;
}

static uint64_t Mix(uint64_t bytes)
{
    return bytes * 0x9E3779B97F4A7C15u;
}

// A syllable has two places, so that two of one number don't drive each other out.
static SyllableCell *PlacesOf(uint64_t bytes)
{
    return &gMemo.syllables[2 * (Mix(bytes) >> (65 - kSyllableBits))];
}

const SyllableCell *FindSyllable(const KeyMemo *memo, uint64_t bytes)
{
    const SyllableCell *cell = PlacesOf(bytes);
    for (int i = 0; i < 2; ++i, ++cell)
        if (cell->bytes == bytes && cell->epoch == memo->epoch)
            return cell;
    return nullptr;
}

void KeepSyllable(const SyllableCell &cell)
{
    SyllableCell *places = PlacesOf(cell.bytes);
    places[1] = places[0];
    places[0] = cell;
}

uint64_t HashRun(const uint8_t *run, size_t length)
{
    uint64_t hash = length, bytes;
    for (; length > 8; length -= 8, run += 8) {
        memcpy(&bytes, run, sizeof bytes);
        hash = Mix(hash ^ bytes);
        hash ^= hash >> 32;
    }
    memcpy(&bytes, run, sizeof bytes);
    return Mix(hash ^ bytes << (64 - 8 * length));
}

static RunCell *RunCellOf(uint64_t hash)
{
    return &gMemo.runs[hash >> (64 - kRunBits)];
}

const KeptRun *FindRun(const KeyMemo *memo, uint64_t hash, const uint8_t *run, size_t length)
{
    const RunCell *cell = RunCellOf(hash);
    if (cell->epoch != memo->epoch || cell->hash != uint32_t(hash >> 16) ||
        gMemo.ringEnd - cell->place > kRingSize)
        return nullptr;
    const KeptRun *kept = reinterpret_cast<KeptRun *>(gMemo.ring + cell->place % kRingSize);
    return kept->runLength == length && memcmp(kept + 1, run, length) == 0 ? kept : nullptr;
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
    *RunCellOf(hash) = {uint32_t(hash >> 16), memo->epoch, place};
}

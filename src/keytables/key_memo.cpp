// The memory of conversions: two tables of fixed size, in which whatever comes later takes the
// place of what was there. Forgetting is a new number, so that it costs nothing however often a
// host changes its settings.
#include "keytables/key_memo.h"

#include <cstring>

#include "frame/records.h"
#include "text/lao_code.h"

enum { kSyllableBits = 12, kRunBits = 13, kTableTypes = kEmailTable + 1 };

struct MemoState {
    uint32_t epochs;  // given so far
    KeyMemo memos[kTableTypes];
    SyllableCell syllables[1 << kSyllableBits];  // 128 KB
    RunCell runs[1 << kRunBits];                 // 512 KB
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

SyllableCell *SyllableCellOf(uint64_t bytes)
{
    return &gMemo.syllables[Mix(bytes) >> (64 - kSyllableBits)];
}

RunCell *RunCellOf(const uint64_t *bytes)
{
    uint64_t second = Mix(bytes[1]);
    return &gMemo.runs[Mix(bytes[0] ^ second >> 32 ^ second) >> (64 - kRunBits)];
}

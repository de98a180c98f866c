// Lookup in the sections of a key table, which rendering does for each piece of each syllable:
// linear, over a few dozen entries, which costs less than the parsing in front of it.
#include "keytables/key_table.h"

#include <cstring>

#include "frame/strings.h"

EntryRange EntriesOf(const KeyTable *table, KeySection section)
{
    int begin = table->first[section], end = table->first[section + 1];
    int total = table->first[kSectionCount];
    bool isSound = begin >= 0 && begin <= end && end <= total && total <= kMostEntries;
    return isSound ? EntryRange{begin, end} : EntryRange{0, 0};
}

// Keys are compared with what fills them up, as one number each.
static const KeyTableEntry *FindEntry(const char *key, const KeyTable *table, EntryRange range)
{
    char wanted[kTokenRoom] = {};
    if (!CopyWhole(wanted, sizeof wanted, key))
        return nullptr;
    for (int i = range.begin; i < range.end; ++i)
        if (memcmp(table->entries[i].key, wanted, sizeof wanted) == 0)
            return &table->entries[i];
    return nullptr;
}

int LookupSection(const char *key, char *destination, size_t size, const KeyTable *table,
                  KeySection section)
{
    EntryRange range = EntriesOf(table, section);
    destination[0] = 0;
    if (range.begin == range.end)
        return 0;
    const KeyTableEntry *standard = &table->entries[range.begin];
    const KeyTableEntry *found = key && *key ? FindEntry(key, table, range) : standard;
    CopyCut(destination, size, (found ? found : standard)->value);
    return found != nullptr;
}

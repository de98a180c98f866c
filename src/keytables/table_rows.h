// Rows of data to key tables, at compile time. A name, key or value that is too long does not
// compile.
#pragma once

#include "keytables/key_table.h"

struct KeyRow {
    uint8_t key[kTokenRoom];  // codes; none for the default
    const char *value;
};

struct KeyRows {
    const KeyRow *rows;
    int count;
};

struct TableRows {
    const char *name;
    TableType type;
    const char *sequence;
    uint8_t separator;
    KeyRows sections[kSectionCount];
};

constexpr void CopyText(char *target, const char *text)
{
    while (*text)
        *target++ = *text++;
    *target = 0;
}

constexpr KeyTableEntry MakeEntry(const KeyRow &row)
{
    KeyTableEntry entry = {};
    for (int i = 0; row.key[i]; ++i)
        entry.key[i] = char(row.key[i]);
    CopyText(entry.value, row.value);
    return entry;
}

constexpr KeyTable MakeKeyTable(const TableRows &source)
{
    KeyTable table = {};
    CopyText(table.name, source.name);
    CopyText(table.sequence, source.sequence);
    table.separator = source.separator;
    table.type = source.type;
    int16_t total = 0;
    for (int section = 0; section < kSectionCount; ++section) {
        table.first[section] = total;
        for (int i = 0; i < source.sections[section].count; ++i)
            table.entries[total++] = MakeEntry(source.sections[section].rows[i]);
    }
    table.first[kSectionCount] = total;
    return table;
}

// Whether the sections begin where the chart says.
constexpr bool HasIndexes(const KeyTable &table, const int (&indexes)[kSectionCount + 1])
{
    for (int i = 0; i <= kSectionCount; ++i)
        if (table.first[i] != indexes[i])
            return false;
    return true;
}

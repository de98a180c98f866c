// The record behind sort keys, romanization and e-mail coding: which text stands for each piece of
// a syllable, and in which order the pieces are written. Keys are Lao in the internal code.
#pragma once

#include <cstddef>
#include <cstdint>

enum KeySection : int {  // ORDER KeySection
    kInitialSection,
    kClusterSection,
    kVowelSection,
    kFinalSection,
    kToneSection,
    kChangeSection,
    kNumberSection,
    kSectionCount
};

enum TableType : uint8_t { kSortTable, kRomanTable, kEmailTable };

enum { kMostEntries = 200, kTokenRoom = 8, kTableNameRoom = 16, kSequenceRoom = 9 };

struct KeyTableEntry {
    char key[kTokenRoom];    // filled up with zeros; empty: the section's default
    char value[kTokenRoom];  // may be empty
};

struct KeyTable {
    char name[kTableNameRoom];         // "Empty" (in any case) while it isn't loaded
    int16_t first[kSectionCount + 1];  // entry at which each section begins; last, the total
    char sequence[kSequenceRoom];      // one letter for each piece, in the order of output
    uint8_t separator;                 // between units of output; 0 for none
    uint8_t replacementBreak;          // marks the breaks of a text to convert; 0 for none
    TableType type;
    KeyTableEntry entries[kMostEntries];  // the first of each section is its default
    uint32_t filling;  // which filling of a work table this is; 0 for a table that never changes
};

// A section's entries, from begin up to end.
struct EntryRange {
    int begin, end;
};

// Index fields that are out of order or beyond the total make an empty section.
EntryRange EntriesOf(const KeyTable *table, KeySection section);

// Copies the value that belongs to key, or the section's default, to destination (size bytes; what
// is longer is cut): 1 found, also for a key that is null or empty; 0 not found. Of equal keys the
// first counts. A section without entries gives an empty text and 0.
int LookupSection(const char *key, char *destination, size_t size, const KeyTable *table,
                  KeySection section);

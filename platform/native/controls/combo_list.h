// The entries of a combo box: texts, each with a number of the program's, in the order in which
// they were added or sorted. A plain list: no window and no message is known here.
#ifndef ORVEL_PLATFORM_NATIVE_CONTROLS_COMBO_LIST_H
#define ORVEL_PLATFORM_NATIVE_CONTROLS_COMBO_LIST_H

#include <windows.h>

struct ComboEntry {
    char *text;   // owned
    LPARAM data;  // the program's
};

// Zeroed: empty. Whoever keeps one empties it at the end.
struct ComboList {
    ComboEntry *entries;  // owned, `capacity` of them, the first `count` in use
    int count, capacity;
};

// Adds a copy of the text, at the end or, sorted, behind those that aren't greater. Its index, or
// CB_ERRSPACE when there is no memory.
int AddEntry(ComboList *list, const char *text, bool isSorted);

void EmptyList(ComboList *list);

// Null for an index that the list doesn't have.
ComboEntry *EntryAt(const ComboList *list, WPARAM index);

// The next entry that is the text, or begins with it, in any case: behind `start` (-1: from the
// first on), round to `start` itself. CB_ERR when there is none.
int FindEntry(const ComboList *list, int start, const char *text, bool isWhole);

#endif

// The entries of a combo box in one block that doubles when it is full, so that a dictionary of
// 65,535 words is there at once. A sorted list finds the place of a new entry by halving.
#include "controls/combo_list.h"

#include <assert.h>
#include <stdlib.h>
#include <string.h>

#include "runtime.h"

constexpr int kFirstCapacity = 16;

// Signs come before digits and these before letters, as the system sorts; each kind by its code.
static int RankOf(BYTE byte)
{
    bool isLetter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte >= 0x80;
    bool isDigit = byte >= '0' && byte <= '9';
    BYTE folded = byte >= 'A' && byte <= 'Z' ? BYTE(byte + ('a' - 'A')) : byte;
    return (isLetter ? 0x200 : isDigit ? 0x100 : 0) + (byte ? folded : 0);
}

static bool IsGreater(const char *left, const char *right)
{
    while (*left && RankOf(BYTE(*left)) == RankOf(BYTE(*right))) {
        ++left;
        ++right;
    }
    return RankOf(BYTE(*left)) > RankOf(BYTE(*right));
}

// Behind all that aren't greater, so that equal ones keep the order in which they came.
static int PlaceFor(const ComboList *list, const char *text)
{
    int low = 0, high = list->count;
    while (low < high) {
        int middle = low + (high - low) / 2;
        if (IsGreater(list->entries[middle].text, text))
            high = middle;
        else
            low = middle + 1;
    }
    return low;
}

static bool MakeRoom(ComboList *list)
{
    if (list->count < list->capacity)
        return true;
    int capacity = list->capacity ? list->capacity * 2 : kFirstCapacity;
    void *grown = realloc(list->entries, size_t(capacity) * sizeof *list->entries);
    if (!grown)
        return false;
    list->entries = static_cast<ComboEntry *>(grown);
    list->capacity = capacity;
    return true;
}

int AddEntry(ComboList *list, const char *text, bool isSorted)
{
    size_t size = strlen(text) + 1;
    char *copy = MakeRoom(list) ? static_cast<char *>(malloc(size)) : nullptr;
    if (!copy)
        return CB_ERRSPACE;
    memcpy(copy, text, size);
    int index = isSorted ? PlaceFor(list, text) : list->count;
    ComboEntry *place = list->entries + index;
    memmove(place + 1, place, size_t(list->count - index) * sizeof *place);
    *place = {copy, 0};
    ++list->count;
    assert(list->count <= list->capacity);
    return index;
}

void EmptyList(ComboList *list)
{
    for (int i = 0; i < list->count; ++i)
        free(list->entries[i].text);
    free(list->entries);
    *list = {};
}

ComboEntry *EntryAt(const ComboList *list, WPARAM index)
{
    return index < WPARAM(list->count) ? &list->entries[index] : nullptr;
}

static bool Matches(const char *entry, const char *text, bool isWhole)
{
    while (*text && RankOf(BYTE(*entry)) == RankOf(BYTE(*text))) {
        ++entry;
        ++text;
    }
    return !*text && (!isWhole || !*entry);
}

int FindEntry(const ComboList *list, int start, const char *text, bool isWhole)
{
    int before = start >= 0 && start < list->count ? start : list->count - 1;
    for (int i = 1; i <= list->count; ++i) {
        int index = (before + i) % list->count;
        if (Matches(list->entries[index].text, text, isWhole))
            return index;
    }
    return CB_ERR;
}

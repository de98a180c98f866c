// What the sort dialog hands out. ShowLaoSortDialog is declared in orvel.h.
#pragma once

#include "orvel.h"

constexpr int kSortKeys = 3;

struct SortKey {
    short column;  // from 1; 0: no key
    short type;    // the first key's from 0, the others' from -1
    short order;   // 0 ascending, 1 descending
};

// The key behind the positions in its three lists (-1: nothing is selected).
SortKey ChosenSortKey(bool isFirst, int column, int type, int order);

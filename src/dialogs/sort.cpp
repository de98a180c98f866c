// The sort dialog: up to three keys, each a column with a type and an order. It sorts nothing. What
// was chosen last stays for the next opening, and whether the keys are to be kept stays in the
// registry.
#include <cstdio>
#include <iterator>

#include "frame/controls.h"
#include "frame/help.h"
#include "frame/library.h"
#include "orvel.h"
#include "settings/registry.h"

constexpr int kSortKeys = 3;

struct SortKey {
    short column;  // from 1; 0: no key
    short type;    // the first key's from 0, the others' from -1
    short order;   // 0 ascending, 1 descending
};

struct SortState {
    short columns;  // how many there are to choose from
    SortKey keys[kSortKeys];
    DWORD keepKeys, skipHeader;  // as of the last OK, 0 or 1
};
static SortState gSort;

constexpr int kFreePercent = 12;  // of a list's width, which its group box leaves beside it
constexpr char kKeepKeysValue[] = "KeepSortKeys";

struct SortKeyLists {
    int column, type, order;  // ids
};

static constexpr SortKeyLists kLists[kSortKeys] = {
    {ID_SORT_COLUMN1, ID_SORT_TYPE1, ID_SORT_ORDER1},
    {ID_SORT_COLUMN2, ID_SORT_TYPE2, ID_SORT_ORDER2},
    {ID_SORT_COLUMN3, ID_SORT_TYPE3, ID_SORT_ORDER3},
};

// The key behind the positions in its three lists (-1: nothing is selected). A key that needn't be
// has "(none)" before its columns, so its positions are the columns' numbers. Its types come out
// one less than the first key's: hosts know them so.
static SortKey ChosenSortKey(bool isFirst, int column, int type, int order)
{
    if (isFirst)
        return {short(column + 1), short(type), short(order)};
    if (column <= 0)
        return {0, 0, 0};
    return {short(column), short(type - 1), short(order)};
}

static constexpr const char *kTypes[] = {"Lao order", "Alphabetic", "Numeric", "Date"};
static constexpr const char *kOrders[] = {"Ascending", "Descending"};

static void FillList(HWND dialog, int list, const char *const *items, size_t count)
{
    EmptyList(dialog, list);
    for (size_t i = 0; i < count; ++i)
        AddListItem(dialog, list, items[i]);
    SelectItem(dialog, list, 0);
}

static void FillSortKeyGroup(HWND dialog, const SortKeyLists &lists, bool withNone)
{
    EmptyList(dialog, lists.column);
    if (withNone)
        AddListItem(dialog, lists.column, "(none)");
    for (int column = 1; column <= gSort.columns; ++column) {
        char name[32];
        snprintf(name, sizeof name, "Column %d", column);
        AddListItem(dialog, lists.column, name);
    }
    SelectItem(dialog, lists.column, 0);
    FillList(dialog, lists.type, kTypes, std::size(kTypes));
    FillList(dialog, lists.order, kOrders, std::size(kOrders));
    WidenList(dialog, lists.column, kFreePercent);
    WidenList(dialog, lists.type, kFreePercent);
    WidenList(dialog, lists.order, kFreePercent);
}

static INT_PTR InitSort(HWND dialog)
{
    CheckBox(dialog, ID_SORT_KEEP_KEYS, gSort.keepKeys);
    for (const SortKeyLists &lists : kLists)
        FillSortKeyGroup(dialog, lists, &lists != kLists);
    if (gSort.keys[0].column > 0 && gSort.keys[0].column <= gSort.columns)
        SelectItem(dialog, ID_SORT_COLUMN1, gSort.keys[0].column - 1);
    return 1;
}

static void ReadSort(HWND dialog)
{
    gSort.keepKeys = IsChecked(dialog, ID_SORT_KEEP_KEYS);
    gSort.skipHeader = IsChecked(dialog, ID_SORT_SKIP_HEADER);
    for (int i = 0; i < kSortKeys; ++i)
        gSort.keys[i] = ChosenSortKey(i == 0, SelectedItem(dialog, kLists[i].column),
                                      SelectedItem(dialog, kLists[i].type),
                                      SelectedItem(dialog, kLists[i].order));
}

static INT_PTR SortCommand(HWND dialog, int id)
{
    switch (id) {
    case ID_OK:
        ReadSort(dialog);
        EndDialog(dialog, 1);
        return 1;
    case ID_CANCEL: EndDialog(dialog, 0); return 1;
    case ID_HELP: ShowHelpTopic(dialog, "src/word/sorting_lao.html"); return 1;
    }
    return 0;
}

static INT_PTR CALLBACK SortDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    switch (message) {
    case WM_INITDIALOG: return InitSort(dialog);
    case WM_COMMAND: return SortCommand(dialog, LOWORD(wParam));
    case WM_CLOSE: EndDialog(dialog, 0); break;
    }
    return 0;
}

// A column to begin with is the caller's, else that of the last time.
static void PrepareSort(short columns, short firstColumn)
{
    gSort.keepKeys = ReadUserNumber(kKeepKeysValue, gSort.keepKeys);
    gSort.columns = columns;
    if (firstColumn > 0)
        gSort.keys[0].column = firstColumn;
}

int WINAPI ShowLaoSortDialog(HWND owner, short columns, short *keys, short *types, short *orders,
                             short *keepKeys, short *skipHeader)
{
    if (!keys || !types || !orders || !keepKeys || !skipHeader)
        return 0;
    PrepareSort(columns, keys[0]);
    if (DialogBoxParamA(gProcess.instance, "Sorting", owner, SortDialogProc, 0) <= 0)
        return 0;
    for (int i = 0; i < kSortKeys; ++i) {
        keys[i] = gSort.keys[i].column;
        types[i] = gSort.keys[i].type;
        orders[i] = gSort.keys[i].order;
    }
    *keepKeys = short(gSort.keepKeys);
    *skipHeader = short(gSort.skipHeader);
    KeepUserNumber(kKeepKeysValue, gSort.keepKeys);
    return 1;
}

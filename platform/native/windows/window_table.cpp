// Slots for window records. A handle is generation << 16 | slot + 1 << 1: even, never 0, and within
// 32 bits as on Windows. A slot's generation goes up each time it is given out, so a handle comes
// again only after 32,767 windows in the same slot.
#include "windows/window_table.h"

#include <assert.h>
#include <stdlib.h>
#include <string.h>

// Pixels of a screen that nobody sees; templates and centred dialogs are placed in it.
constexpr int kScreenWidth = 1024;
constexpr int kScreenHeight = 768;
constexpr int kMaxWindows = 4096;
constexpr unsigned kGenerations = 0x7fff;
static_assert(((kMaxWindows + 1) << 1) <= 0x10000);  // the slot's half of a handle holds them all
static const HWND kRootHandle =
    reinterpret_cast<HWND>(ULONG_PTR(2));  // generation 0, which no slot has

struct WindowSlot {
    WindowRecord *record;  // owned; null: the slot is free
    unsigned generation;   // of the last window that had it, 1 to kGenerations; 0: none yet
};

struct WindowTable {
    WindowSlot slots[kMaxWindows];
    WindowRecord root;  // the screen: in no slot, and never freed
};
static WindowTable gTable;

// Of the window that has the slot now.
static HWND HandleOf(unsigned slot)
{
    return reinterpret_cast<HWND>(
        ULONG_PTR((gTable.slots[slot].generation << 16) | ((slot + 1) << 1)));
}

static ULONG_PTR SlotOf(HWND window)
{
    return ((reinterpret_cast<ULONG_PTR>(window) & 0xffff) >> 1) - 1;  // a 0 becomes huge
}

// It has no procedure: it hears nothing.
WindowRecord *RootWindow()
{
    if (!gTable.root.handle) {
        gTable.root.handle = kRootHandle;
        gTable.root.style = WS_POPUP | WS_VISIBLE;
        gTable.root.rect = {0, 0, kScreenWidth, kScreenHeight};
    }
    return &gTable.root;
}

WindowRecord *FindWindowRecord(HWND window)
{
    ULONG_PTR slot = SlotOf(window);
    if (slot < kMaxWindows && gTable.slots[slot].record && HandleOf(unsigned(slot)) == window)
        return gTable.slots[slot].record;
    if (window == kRootHandle)
        return RootWindow();
    SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return nullptr;
}

// The record with its class's data, or neither.
static WindowRecord *AllocateRecord(WindowClass *windowClass)
{
    WindowRecord *record = static_cast<WindowRecord *>(calloc(1, sizeof *record));
    if (!record)
        return nullptr;
    record->windowClass = windowClass;
    record->procedure = windowClass->procedure;
    if (!windowClass->dataSize)
        return record;
    record->classData = calloc(1, windowClass->dataSize);
    if (record->classData)
        return record;
    free(record);
    return nullptr;
}

WindowRecord *NewWindowRecord(WindowClass *windowClass)
{
    for (unsigned i = 0; i < kMaxWindows; ++i) {
        WindowSlot *slot = &gTable.slots[i];
        if (slot->record)
            continue;
        slot->record = AllocateRecord(windowClass);
        if (!slot->record)
            break;
        slot->generation = slot->generation % kGenerations + 1;
        slot->record->handle = HandleOf(i);
        ++windowClass->windows;
        return slot->record;
    }
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

// The generation stays in the slot, so that the next window there gets another handle.
void FreeWindowRecord(WindowRecord *window)
{
    WindowSlot *slot = &gTable.slots[SlotOf(window->handle)];
    assert(slot->record == window && !window->firstChild && !window->next);
    assert(window->windowClass->windows > 0);
    slot->record = nullptr;
    --window->windowClass->windows;
    free(window->classData);
    free(window->text);
    free(window);
}

void *ClassData(const WindowRecord *window, WNDPROC procedure)
{
    const WindowClass *windowClass = window->windowClass;
    return windowClass && windowClass->procedure == procedure ? window->classData : nullptr;
}

bool IsChildRecord(const WindowRecord *window)
{
    return (window->style & (WS_CHILD | WS_POPUP)) == WS_CHILD;
}

HWND TopLevelOf(const WindowRecord *window)
{
    while (window->parent && window->parent != RootWindow())
        window = window->parent;
    return window->handle;
}

// The old text stays until the new one is there: a failure changes nothing.
bool StoreWindowText(WindowRecord *window, const char *text)
{
    size_t length = text ? strlen(text) : 0;
    char *copy = length ? static_cast<char *>(malloc(length + 1)) : nullptr;
    if (length && !copy)
        return false;
    if (copy)
        memcpy(copy, text, length + 1);
    free(window->text);
    window->text = copy;
    return true;
}

DWORD CountWindows()
{
    DWORD count = 0;
    for (const WindowSlot &slot : gTable.slots)
        count += slot.record != nullptr;
    return count;
}

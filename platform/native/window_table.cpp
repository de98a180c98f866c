// Slots for window records and the classes that they belong to. A handle is
// generation << 16 | slot + 1 << 1: even, never 0, and within 32 bits as on Windows.
#include "window_table.h"
#include "window_slots.h"
#include "atoms.h"
#include "controls.h"

#include <stdlib.h>
#include <string.h>

constexpr int kScreenWidth = 1024;
constexpr int kScreenHeight = 768;
constexpr int kMaxWindows = 4096;
constexpr unsigned kGenerations = 0x7fff;
static const HWND kRootHandle = (HWND)(ULONG_PTR)2;  // generation 0, which no slot has

struct WindowSlot {
    WindowRecord *record;  // none: free
    unsigned generation;
};

struct WindowTable {
    WindowSlot slots[kMaxWindows];
    WindowRecord root;
    WindowClass *classes;
};
static WindowTable gTable;

static HWND HandleOf(unsigned slot)
{
    return (HWND)(ULONG_PTR)((gTable.slots[slot].generation << 16) | ((slot + 1) << 1));
}

WindowRecord *RootWindow()
{
    if (!gTable.root.handle) {
        gTable.root.handle = kRootHandle;
        gTable.root.procedure = DefWindowProcA;
        gTable.root.style = WS_POPUP | WS_VISIBLE;
        gTable.root.rect = {0, 0, kScreenWidth, kScreenHeight};
    }
    return &gTable.root;
}

WindowRecord *FindWindowRecord(HWND window)
{
    ULONG_PTR value = (ULONG_PTR)window;
    ULONG_PTR slot = ((value & 0xffff) >> 1) - 1;  // a 0 becomes huge
    if (slot < kMaxWindows && gTable.slots[slot].record && HandleOf((unsigned)slot) == window)
        return gTable.slots[slot].record;
    if (window == kRootHandle)
        return RootWindow();
    SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return nullptr;
}

int IsChildRecord(const WindowRecord *window)
{
    return (window->style & (WS_CHILD | WS_POPUP)) == WS_CHILD;
}

HWND TopLevelOf(const WindowRecord *window)
{
    while (window->parent && window->parent != RootWindow())
        window = window->parent;
    return window->handle;
}

WindowRecord *NewWindowRecord()
{
    for (unsigned i = 0; i < kMaxWindows; i++) {
        WindowSlot *slot = &gTable.slots[i];
        if (slot->record)
            continue;
        slot->record = (WindowRecord *)calloc(1, sizeof *slot->record);
        if (!slot->record)
            break;
        slot->generation = slot->generation % kGenerations + 1;
        slot->record->handle = HandleOf(i);
        return slot->record;
    }
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

void FreeWindowRecord(WindowRecord *window)
{
    WindowSlot *slot = &gTable.slots[(((ULONG_PTR)window->handle & 0xffff) >> 1) - 1];
    slot->record = nullptr;
    free(window->text);
    free(window);
}

int StoreWindowText(WindowRecord *window, const char *text)
{
    size_t length = text ? strlen(text) : 0;
    char *copy = length ? (char *)malloc(length + 1) : nullptr;
    if (length && !copy)
        return 0;
    if (copy)
        memcpy(copy, text, length + 1);
    free(window->text);
    window->text = copy;
    return 1;
}

static WindowClass *FindWindowClass(const char *nameOrAtom, HINSTANCE instance)
{
    ATOM atom = FindAtom(nameOrAtom);
    for (WindowClass *found = gTable.classes; found; found = found->next) {
        if (atom && found->atom == atom && found->instance == instance)
            return found;
    }
    return instance ? FindWindowClass(nameOrAtom, nullptr) : nullptr;
}

static WindowClass *AddClass(ATOM atom, HINSTANCE instance, WNDPROC procedure)
{
    WindowClass *added = (WindowClass *)malloc(sizeof *added);
    if (!added) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    *added = {gTable.classes, atom, instance, procedure, 0};
    gTable.classes = added;
    return added;
}

// A module may have a class of the same name as one of the layer's.
static int HasOwnClass(const char *name, HINSTANCE instance)
{
    WindowClass *found = FindWindowClass(name, instance);
    return found && found->instance == instance;
}

WindowClass *FindOrMakeClass(const char *nameOrAtom, HINSTANCE instance)
{
    WindowClass *found = FindWindowClass(nameOrAtom, instance);
    if (found || (ULONG_PTR)nameOrAtom <= 0xffff)
        return found;
    WNDPROC procedure = ControlProcedure(nameOrAtom);
    return procedure ? AddClass(AtomOfName(nameOrAtom), nullptr, procedure) : nullptr;
}

ATOM WINAPI RegisterClassA(const WNDCLASSA *windowClass)
{
    HINSTANCE instance = InstanceOrProgram(windowClass->hInstance);
    ATOM atom = windowClass->lpfnWndProc ? AtomOfName(windowClass->lpszClassName) : 0;
    if (!atom) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    if (HasOwnClass(windowClass->lpszClassName, instance)) {
        SetLastError(ERROR_CLASS_ALREADY_EXISTS);
        return 0;
    }
    return AddClass(atom, instance, windowClass->lpfnWndProc) ? atom : 0;
}

BOOL WINAPI UnregisterClassA(LPCSTR className, HINSTANCE instance)
{
    WindowClass *gone = FindWindowClass(className, InstanceOrProgram(instance));
    if (gone && !gone->instance)
        gone = nullptr;
    if (!gone || gone->windows > 0) {
        SetLastError(gone ? ERROR_CLASS_HAS_WINDOWS : ERROR_CLASS_DOES_NOT_EXIST);
        return FALSE;
    }
    WindowClass **link = &gTable.classes;
    while (*link != gone)
        link = &(*link)->next;
    *link = gone->next;
    free(gone);
    return TRUE;
}

DWORD CountWindows()
{
    DWORD count = 0;
    for (const WindowSlot &slot : gTable.slots)
        count += slot.record != nullptr;
    return count;
}

HINSTANCE InstanceOrProgram(HINSTANCE instance)
{
    return instance ? instance : GetModuleHandleA(nullptr);
}

// The message queue of the thread. A message is sought in the system's order: posted ones first,
// then the end of the program, then keys, which pass the keyboard hooks as they are taken out and
// go to the window that has the focus at that moment, and windows to be painted at last. Called by
// the loops of hosts and of modal dialogs. There is nobody at the screen: with nothing in it a
// queue stays empty, and GetMessageA says so instead of waiting.
#include <assert.h>
#include <stdlib.h>

#include "windows/hooks.h"
#include "windows/window_table.h"

constexpr int kMaxQueued = 10000;
constexpr LPARAM kKeyIsUp = LPARAM(0x80000000);
constexpr LPARAM kKeyWasDown = 0x40000000;

struct Entry {
    Entry *next;
    MSG message;
};

struct EntryList {
    Entry *first;  // owned, as all behind it
    Entry **end;   // where the next one is linked; means nothing while the list is empty
    int count;
};

struct QueueState {
    EntryList posted, keys;
    bool hasQuit;       // PostQuitMessage was called, and no loop has heard of it yet
    int quitCode;       // that it was called with
    BYTE isDown[256];   // keys, as of the last keybd_event
    BYTE wasDown[256];  // keys, as of the last one that was taken out
};
static QueueState gQueue;

static bool Append(EntryList *list, const MSG *message)
{
    Entry *added = list->count < kMaxQueued ? static_cast<Entry *>(malloc(sizeof *added)) : nullptr;
    if (!added) {
        SetLastError(ERROR_NOT_ENOUGH_QUOTA);
        return false;
    }
    *added = {nullptr, *message};
    *(list->first ? list->end : &list->first) = added;
    list->end = &added->next;
    ++list->count;
    return true;
}

// Takes the entry out that this link leads to; `end` follows when it was the last.
static void Remove(EntryList *list, Entry **link)
{
    Entry *gone = *link;
    assert(gone && list->count > 0);
    *link = gone->next;
    if (!gone->next)
        list->end = link;
    --list->count;
    free(gone);
}

// A message for no window is the thread's own.
BOOL WINAPI PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    MSG posted = {window, message, wParam, lParam, GetTickCount(), {0, 0}};
    return (!window || FindWindowRecord(window)) && Append(&gQueue.posted, &posted);
}

// No entry but a mark: it comes when nothing that was posted is left.
void WINAPI PostQuitMessage(int code)
{
    gQueue.hasQuit = true;
    gQueue.quitCode = code;
}

// For whom the key is, is asked when it is taken out.
void WINAPI keybd_event(BYTE key, BYTE scan, DWORD flags, ULONG_PTR)
{
    bool isUp = (flags & KEYEVENTF_KEYUP) != 0;
    LPARAM data = 1 | LPARAM(scan) << 16;
    if (isUp || gQueue.isDown[key])
        data |= kKeyWasDown;
    if (isUp)
        data |= kKeyIsUp;
    gQueue.isDown[key] = !isUp;
    MSG message = {nullptr, UINT(isUp ? WM_KEYUP : WM_KEYDOWN), key, data, GetTickCount(), {0, 0}};
    Append(&gQueue.keys, &message);
}

SHORT WINAPI GetAsyncKeyState(int key)
{
    return key >= 0 && key < 256 && gQueue.isDown[key] ? SHORT(0x8000) : 0;
}

SHORT WINAPI GetKeyState(int key)
{
    return key >= 0 && key < 256 && gQueue.wasDown[key] ? SHORT(0x8000) : 0;
}

// What a caller asks for.
struct Wanted {
    HWND window;       // and those that stand in it; null: any
    UINT first, last;  // both 0: all
    bool remove;
};

static bool IsInRange(const Wanted *wanted, UINT message)
{
    return (!wanted->first && !wanted->last) ||
           (message >= wanted->first && message <= wanted->last);
}

// Whether the message's window is the one asked for or stands in it.
static bool IsFor(const Wanted *wanted, HWND window)
{
    if (!wanted->window || wanted->window == window)
        return true;
    WindowRecord *record = window ? FindWindowRecord(window) : nullptr;
    for (; record; record = record->parent) {
        if (record->handle == wanted->window)
            return true;
    }
    return false;
}

// Messages to windows that are gone by now are dropped.
static bool TakePosted(const Wanted *wanted, MSG *message)
{
    for (Entry **link = &gQueue.posted.first; *link;) {
        HWND window = (*link)->message.hwnd;
        if (window && !IsWindow(window)) {
            Remove(&gQueue.posted, link);
            continue;
        }
        if (IsFor(wanted, window) && IsInRange(wanted, (*link)->message.message)) {
            *message = (*link)->message;
            if (wanted->remove)
                Remove(&gQueue.posted, link);
            return true;
        }
        link = &(*link)->next;
    }
    return false;
}

// Whatever the caller asks for: a program that is to end must hear of it.
static bool TakeQuit(const Wanted *wanted, MSG *message)
{
    if (!gQueue.hasQuit)
        return false;
    *message = {nullptr, WM_QUIT, WPARAM(gQueue.quitCode), 0, GetTickCount(), {0, 0}};
    if (wanted->remove)
        gQueue.hasQuit = false;
    return true;
}

// A key for nobody, or one that a hook swallows, is lost.
static bool TakeKey(const Wanted *wanted, MSG *message)
{
    while (gQueue.keys.first) {
        MSG key = gQueue.keys.first->message;
        key.hwnd = GetFocus() ? GetFocus() : GetActiveWindow();
        if (key.hwnd && (!IsFor(wanted, key.hwnd) || !IsInRange(wanted, key.message)))
            return false;
        if (wanted->remove || !key.hwnd) {
            gQueue.wasDown[key.wParam] = key.message == WM_KEYDOWN;
            Remove(&gQueue.keys, &gQueue.keys.first);
        }
        if (!key.hwnd)
            continue;
        *message = key;
        bool isSwallowed = CallKeyboardHooks(wanted->remove ? HC_ACTION : HC_NOREMOVE, key.wParam,
                                             key.lParam) != 0;
        if (!isSwallowed)
            return true;
        if (!wanted->remove)
            return false;
    }
    return false;
}

// The first window, from this one down, that can be seen and has to be painted. The window itself
// comes before those that stand in it, as they are painted over it.
static WindowRecord *FindUnpainted(WindowRecord *window)
{
    if (!(window->style & WS_VISIBLE))
        return nullptr;
    if (window->needsPaint)
        return window;
    for (WindowRecord *child = window->firstChild; child; child = child->next) {
        if (WindowRecord *found = FindUnpainted(child))
            return found;
    }
    return nullptr;
}

// Of the window that was asked for and those in it; what other windows wait for doesn't count.
static bool TakePaint(const Wanted *wanted, MSG *message)
{
    HWND top = wanted->window ? wanted->window : GetDesktopWindow();
    if (!IsInRange(wanted, WM_PAINT) || !IsWindowVisible(top))
        return false;
    WindowRecord *window = FindUnpainted(FindWindowRecord(top));
    if (!window)
        return false;
    *message = {window->handle, WM_PAINT, 0, 0, GetTickCount(), {0, 0}};
    return true;
}

// A hook may post: what it posted comes before the key it saw only at the next call.
BOOL WINAPI PeekMessageA(LPMSG message, HWND window, UINT first, UINT last, UINT flags)
{
    Wanted wanted = {window, first, last, (flags & PM_REMOVE) != 0};
    return TakePosted(&wanted, message) || TakeQuit(&wanted, message) ||
           TakeKey(&wanted, message) || TakePaint(&wanted, message);
}

BOOL WINAPI GetMessageA(LPMSG message, HWND window, UINT first, UINT last)
{
    if (!PeekMessageA(message, window, first, last, PM_REMOVE))
        return -1;
    return message->message != WM_QUIT;
}

// The characters of a plain keyboard, as far as one key makes one.
static char CharacterOf(WPARAM key)
{
    if (key >= 'A' && key <= 'Z')
        return char(key + (gQueue.wasDown[VK_SHIFT] ? 0 : 'a' - 'A'));
    bool isPlain = (key >= '0' && key <= '9') || key == VK_SPACE || key == VK_TAB ||
                   key == VK_RETURN || key == VK_ESCAPE || key == VK_BACK;
    return isPlain ? char(key) : '\0';
}

// The character is posted, so it comes behind what the queue has already, as on Windows.
BOOL WINAPI TranslateMessage(const MSG *message)
{
    if (message->message != WM_KEYDOWN)
        return message->message == WM_KEYUP;
    char character = CharacterOf(message->wParam);
    if (character)
        PostMessageA(message->hwnd, WM_CHAR, WPARAM(BYTE(character)), message->lParam);
    return TRUE;
}

LRESULT WINAPI DispatchMessageA(const MSG *message)
{
    return message->hwnd
               ? SendMessageA(message->hwnd, message->message, message->wParam, message->lParam)
               : 0;
}

// Keyboard hooks of the thread, for dialogs that a host's message loop knows nothing of. Each has a
// serial number that never comes again; the newest hears a key first, and "the next" is the one
// with the highest number below, so that a hook may remove itself or another while it runs.
#include "windows/hooks.h"

#include <assert.h>

constexpr int kMaxHooks = 32;

struct Hook {
    HOOKPROC procedure;
    ULONG_PTR serial;  // 0: a free place
};

struct HookState {
    Hook hooks[kMaxHooks];
    ULONG_PTR lastSerial;
    ULONG_PTR running;  // the one that is being called; 0: none
};
static HookState gHooks;

static Hook *HookBelow(ULONG_PTR serial)
{
    Hook *found = nullptr;
    for (Hook &hook : gHooks.hooks) {
        if (hook.serial && hook.serial < serial && (!found || hook.serial > found->serial))
            found = &hook;
    }
    return found;
}

// The hooks call each other down the chain, so the running one is remembered and put back.
static LRESULT CallHookBelow(ULONG_PTR serial, int code, WPARAM wParam, LPARAM lParam)
{
    Hook *hook = HookBelow(serial);
    if (!hook)
        return 0;
    assert(hook->procedure);
    ULONG_PTR before = gHooks.running;
    gHooks.running = hook->serial;
    LRESULT result = hook->procedure(code, wParam, lParam);
    gHooks.running = before;
    return result;
}

LRESULT CallKeyboardHooks(int code, WPARAM key, LPARAM keyData)
{
    return CallHookBelow(~ULONG_PTR(0), code, key, keyData);
}

DWORD CountHooks()
{
    DWORD count = 0;
    for (const Hook &hook : gHooks.hooks)
        count += hook.serial != 0;
    return count;
}

HHOOK WINAPI SetWindowsHookExA(int type, HOOKPROC procedure, HINSTANCE, DWORD thread)
{
    if (type != WH_KEYBOARD || !procedure || thread != GetCurrentThreadId()) {
        SetLastError(type != WH_KEYBOARD || !procedure ? ERROR_INVALID_HOOK_FILTER
                                                       : ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    for (Hook &hook : gHooks.hooks) {
        if (hook.serial)
            continue;
        hook = {procedure, ++gHooks.lastSerial};
        return reinterpret_cast<HHOOK>(hook.serial);
    }
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

// Its place is free at once; its serial number never comes again, so a stale handle finds nothing.
BOOL WINAPI UnhookWindowsHookEx(HHOOK handle)
{
    for (Hook &hook : gHooks.hooks) {
        if (!hook.serial || reinterpret_cast<HHOOK>(hook.serial) != handle)
            continue;
        hook = {};
        return TRUE;
    }
    SetLastError(ERROR_INVALID_HOOK_HANDLE);
    return FALSE;
}

// The system knows which hook is asking; the handle isn't looked at.
LRESULT WINAPI CallNextHookEx(HHOOK, int code, WPARAM wParam, LPARAM lParam)
{
    return gHooks.running ? CallHookBelow(gHooks.running, code, wParam, lParam) : 0;
}

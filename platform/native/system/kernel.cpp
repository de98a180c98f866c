// The few calls of the system that stand on the C library directly: memory, time, the thread and
// its last error. The library calls them, and every other file of the layer sets the last error
// here.
#include <stdlib.h>
#include <time.h>
#include <unistd.h>

#include "runtime.h"

// Set by a call that fails, left alone by one that succeeds, as on Windows.
static thread_local DWORD gLastError;

DWORD WINAPI GetLastError()
{
    return gLastError;
}

void WINAPI SetLastError(DWORD code)
{
    gLastError = code;
}

// No handle that is ever closed, but the number that stands for the caller, as on Windows.
HANDLE WINAPI GetCurrentProcess()
{
    return reinterpret_cast<HANDLE>(LONG_PTR(-1));
}

DWORD WINAPI GetCurrentThreadId()
{
    return DWORD(gettid());
}

// Milliseconds; begins again at 0 after 49 days, so only differences mean anything.
DWORD WINAPI GetTickCount()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return DWORD(uint64_t(now.tv_sec) * 1000 + uint64_t(now.tv_nsec) / 1000000);
}

void WINAPI Sleep(DWORD milliseconds)
{
    timespec left = {static_cast<time_t>(milliseconds / 1000),
                     static_cast<long>(milliseconds % 1000) * 1000000};
    while (nanosleep(&left, &left) != 0)
        ;  // a signal came in between: the rest is slept too
}

// A block of no size is a block too: it has an address, and is freed.
HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T size)
{
    void *block = nullptr;
    if (size < PTRDIFF_MAX)
        block = flags & GMEM_ZEROINIT ? calloc(1, size ? size : 1) : malloc(size ? size : 1);
    if (!block)
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return block;
}

HGLOBAL WINAPI GlobalFree(HGLOBAL block)
{
    free(block);
    return nullptr;
}

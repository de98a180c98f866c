// Memory, time, the thread and its last error.
#include <runtime.h>
#include <stdlib.h>
#include <time.h>
#include <unistd.h>

static thread_local DWORD gLastError;

struct AllocationState {
    int failAfter = -1;  // allocations until the one that fails; negative: none does
};
static AllocationState gAllocation;

DWORD WINAPI GetLastError(void)
{
    return gLastError;
}

void WINAPI SetLastError(DWORD code)
{
    gLastError = code;
}

HANDLE WINAPI GetCurrentProcess(void)
{
    return (HANDLE)(LONG_PTR)-1;
}

DWORD WINAPI GetCurrentThreadId(void)
{
    return (DWORD)gettid();
}

DWORD WINAPI GetTickCount(void)
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return (DWORD)((uint64_t)now.tv_sec * 1000 + (uint64_t)now.tv_nsec / 1000000);
}

void WINAPI Sleep(DWORD milliseconds)
{
    timespec left = {(time_t)(milliseconds / 1000), (long)(milliseconds % 1000) * 1000000};
    while (nanosleep(&left, &left) != 0)
        ;  // a signal came in between: the rest is slept too
}

int FailAllocationAfter(int count)
{
    gAllocation.failAfter = count;
    return 1;
}

static int MustFailNow()
{
    if (gAllocation.failAfter < 0)
        return 0;
    return gAllocation.failAfter-- == 0;
}

HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T size)
{
    void *block = nullptr;
    if (!MustFailNow() && size < PTRDIFF_MAX)
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

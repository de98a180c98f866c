// A module for the loader's tests: it remembers what its entry point was told.
#include <windows.h>

static HINSTANCE gEntered;
static int *gLeft;  // counted up when the module goes

extern "C" __attribute__((visibility("default"))) HINSTANCE WINAPI ProbeHandle(int *left)
{
    gLeft = left;
    return gEntered;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID)
{
#ifdef PROBE_REFUSES
    return reason != DLL_PROCESS_ATTACH || !module;
#endif
    if (reason == DLL_PROCESS_ATTACH)
        gEntered = module;
    if (reason == DLL_PROCESS_DETACH && gLeft)
        ++*gLeft;
    return TRUE;
}

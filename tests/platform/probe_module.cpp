// A module for the loader's tests: it remembers what its entry point was told.
#include <windows.h>

struct ProbeState {
    HINSTANCE entered;
    int *left;  // counted up when the module goes
};
static ProbeState gProbe;

#define PROBE_EXPORT extern "C" __attribute__((visibility("default")))

PROBE_EXPORT HINSTANCE WINAPI ProbeHandle()
{
    return gProbe.entered;
}

PROBE_EXPORT void WINAPI ProbeLeaving(int *left)
{
    gProbe.left = left;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID)
{
#ifdef PROBE_REFUSES
    return reason != DLL_PROCESS_ATTACH || !module;
#endif
    if (reason == DLL_PROCESS_ATTACH)
        gProbe.entered = module;
    if (reason == DLL_PROCESS_DETACH && gProbe.left)
        ++*gProbe.left;
    return TRUE;
}

// Compiled into every native module: calls the module's DllMain when it is loaded and unloaded,
// with the handle that LoadLibraryA and GetModuleHandleA give for it.
#include "system/modules.h"

extern "C" __attribute__((visibility("hidden"))) BOOL WINAPI DllMain(HINSTANCE module, DWORD reason,
                                                                     LPVOID reserved);

static const char kInsideThisModule = 0;

// A constructor can't fail: it leaves a note for LoadLibraryA, which unloads the module again.
__attribute__((constructor)) static void EnterModule()
{
    HMODULE module = ModuleOfAddress(&kInsideThisModule);
    if (!DllMain(module, DLL_PROCESS_ATTACH, nullptr))
        RefuseModule(module);
}

__attribute__((destructor)) static void LeaveModule()
{
    DllMain(ModuleOfAddress(&kInsideThisModule), DLL_PROCESS_DETACH, nullptr);
}

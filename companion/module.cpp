// The module's entry, its mode word and its about box. The mode word has the current font code in
// bits 0 to 3 and the Lao keyboard in bit 4; library and keyboard manager agree by it on what is
// typed. It is one for the process and lasts as long as the module is loaded.
#include "module.h"
#include "dictionary.h"
#include "user_words.h"
#include "vesk.h"

constexpr DWORD kKeyboardBit = 16;

// Lives from load to unload.
struct ModuleState {
    HINSTANCE instance;
    DWORD modeWord;
};
static ModuleState gModule = {nullptr, 1};

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID)
{
    if (reason == DLL_PROCESS_ATTACH)
        gModule.instance = instance;
    if (reason == DLL_PROCESS_DETACH)
        UnloadDictionaries();
    return TRUE;
}

HINSTANCE ModuleInstance()
{
    return gModule.instance;
}

DWORD WINAPI UnloadDictionaries()
{
    ForgetUserOrder();
    ForgetDictionaries();
    return 1;
}

DWORD WINAPI LaoMode(DWORD value, DWORD mask)
{
    DWORD before = gModule.modeWord;
    gModule.modeWord = (before & ~mask) | (value & mask);
    return before;
}

DWORD WINAPI LaoOn(LONG value)
{
    return LaoMode(value ? kKeyboardBit : 0, kKeyboardBit);
}

DWORD WINAPI Options()
{
    return 0;
}

void WINAPI AboutOrvel(DWORD)
{
    MessageBoxA(nullptr, "Orvel companion module, version " VESK_VERSION, "Orvel",
                MB_OK | MB_ICONINFORMATION);
}

// Loading and starting. The library looks for the keyboard manager's window before it takes a
// companion module; without a manager the program makes one itself, and brings the companion too.
#include "library.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>

constexpr char kManagerClass[] = "KerrinDLL";

Library gOrvel;

struct Export {
    const char *name;
    size_t member;  // where in the record its address belongs
};
constexpr Export kExports[] = {
#define ORVEL_ROW(name) {#name, offsetof(Library, name)},
    ORVEL_EXPORTS(ORVEL_ROW)
#undef ORVEL_ROW
};

static bool BindExports(HMODULE module)
{
    for (const Export &row : kExports) {
        FARPROC address = GetProcAddress(module, row.name);
        if (!address)
            return false;
        memcpy(reinterpret_cast<char *>(&gOrvel) + row.member, &address, sizeof address);
    }
    return true;
}

static void ShowManagerWindow()
{
    if (FindWindowA(kManagerClass, nullptr))
        return;
    WNDCLASSA manager = {};
    manager.lpfnWndProc = DefWindowProcA;
    manager.hInstance = GetModuleHandleA(nullptr);
    manager.lpszClassName = kManagerClass;
    RegisterClassA(&manager);
    CreateWindowExA(0, kManagerClass, "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, manager.hInstance,
                    nullptr);
}

const wchar_t *StartOrvel()
{
    HMODULE module = LoadLibraryA("orvel.dll");
    if (!module)
        return L"orvel.dll can't be loaded. It has to stand beside this program.";
    if (!BindExports(module))
        return L"This orvel.dll is older than this program: it lacks a function.";
    char path[MAX_PATH];
    DWORD length = GetModuleFileNameA(module, path, sizeof path);
    std::string folder(path, length < sizeof path ? length : 0);
    folder.resize(std::min(folder.size(), folder.find_last_of('\\')));
    ShowManagerWindow();
    if (!gOrvel.InitializeFrom(folder.c_str()))
        return L"The library can't be started. Vesk.dll has to stand beside it.";
    return nullptr;
}

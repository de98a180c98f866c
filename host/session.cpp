// Start-up as a host. No set-up is asked of the person: the window that stands for the keyboard
// manager is made here, and the folder of the library becomes the install folder where none is
// registered, or where the registered one holds no companion module any more.
#include "session.h"

#include <cstdio>

#include "orvel.h"
#include "progress.h"
#include "runtime.h"

constexpr char kManagerClass[] = "KerrinDLL";
constexpr char kInstallKey[] = "Software\\Orvel\\Orvel7";
constexpr int kLongestName = 37;

MessagePlace gMessages;

static int WriteMessage(HWND, const char *text, const char *, UINT)
{
    ++gMessages.count;
    if (gMessages.heldBack)
        return IDOK;
    HideProgress();
    if (gMessages.line)
        fprintf(stderr, "%s:%zu: %s\n", gMessages.file.c_str(), gMessages.line, text);
    else
        fprintf(stderr, "%s: %s\n", gMessages.file.empty() ? "orvel" : gMessages.file.c_str(),
                text);
    return IDOK;
}

static bool ShowManagerWindow()
{
    if (FindWindowA(kManagerClass, nullptr))
        return true;
    HINSTANCE instance = GetModuleHandleA(nullptr);
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = kManagerClass;
    RegisterClassA(&windowClass);
    return CreateWindowExA(0, kManagerClass, "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, instance,
                           nullptr) != nullptr;
}

static std::string LibraryFolder()
{
    char path[MAX_PATH];
    DWORD length = GetModuleFileNameA(GetModuleHandleA(ORVEL_LIBRARY), path, sizeof path);
    std::string folder(path, length < sizeof path ? length : 0);
    return folder.substr(0, folder.find_last_of('\\'));
}

static bool HoldsCompanion(const char *folder)
{
    std::string path = std::string(folder) + "\\Vesk.dll";
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

static bool RegisterFolder(const std::string &folder)
{
    HKEY key;
    char noClass[] = "";
    if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, kInstallKey, 0, noClass, 0, KEY_WRITE, nullptr, &key,
                        nullptr))
        return false;
    LONG failure =
        RegSetValueExA(key, "Install", 0, REG_SZ, reinterpret_cast<const BYTE *>(folder.c_str()),
                       DWORD(folder.size() + 1));
    RegCloseKey(key);
    return !failure;
}

static bool EnsureInstallFolder()
{
    char registered[MAX_PATH];
    if (GetOrvelAppDir(registered, sizeof registered) && HoldsCompanion(registered))
        return true;
    std::string folder = LibraryFolder();
    if (HoldsCompanion(folder.c_str()) && RegisterFolder(folder))
        return true;
    fprintf(stderr, "orvel: the install folder %s can't be registered, or holds no Vesk.dll\n",
            folder.c_str());
    return false;
}

bool StartLibrary()
{
    SetMessageBoxAnswerer(WriteMessage);
    if (!ShowManagerWindow() || !EnsureInstallFolder())
        return false;
    if (Initialize())
        return true;
    fprintf(stderr, "orvel: the library can't be started: Vesk.dll could not be loaded\n");
    return false;
}

bool FindTextFont(TextFont *font)
{
    char name[kLongestName], substitute[kLongestName];
    for (int number = 1;; ++number) {
        int code = GetLaoFontInfo(name, substitute, sizeof name, nullptr, number);
        if (code < 0)
            break;
        if (code > 1)
            continue;
        *font = {name, number - 1};
        return true;
    }
    fprintf(stderr, "orvel: no font with Unicode text is registered; "
                    "add one: orvel fonts add \"Saysettha Lao\" --code Unicode\n");
    return false;
}

// Start-up. The window that stands for the keyboard manager is made here; it is of this process and
// goes with it.
#include "session.h"

#include <algorithm>
#include <filesystem>

#include "orvel.h"
#include "runtime.h"

constexpr char kManagerClass[] = "KerrinDLL";
constexpr char kSettingsMutex[] = "OrvelSettings";
constexpr DWORD kSettingsWait = 10000;  // milliseconds; a change takes a few
constexpr size_t kNameSize = 37;        // of a font's name, terminator included

struct SessionState {
    std::vector<std::string> messages;  // since the last TakeMessages
    HANDLE settings;                    // the mutex, null while this process doesn't hold it
};
static SessionState gSession;

static int KeepMessage(HWND, const char *text, const char *, UINT)
{
    gSession.messages.push_back(text);
    return IDOK;
}

std::vector<std::string> TakeMessages()
{
    std::vector<std::string> taken;
    taken.swap(gSession.messages);
    return taken;
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

static bool HoldsCompanion(const std::string &folder)
{
    std::string path = folder + "\\Vesk.dll";
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// A registered folder comes first: it may hold another companion, which the user has chosen.
static bool InitializeHere(const std::string &own)
{
    char registered[MAX_PATH];
    if (GetOrvelAppDir(registered, sizeof registered) && HoldsCompanion(registered) && Initialize())
        return true;
    return InitializeFrom(own.c_str());
}

std::string StartLibrary()
{
    SetMessageBoxAnswerer(KeepMessage);
    if (!ShowManagerWindow())
        return "no window can be made in this session, and the library needs one to start";
    std::string folder = LibraryFolder();
    if (InitializeHere(folder))
        return {};
    return "the library can't be started: " + folder + "\\Vesk.dll " +
           (HoldsCompanion(folder) ? "can't be loaded" : "isn't there");
}

std::string FindTextFont()
{
    char name[kNameSize], substitute[kNameSize];
    for (int number = 1;; ++number) {
        int code = GetLaoFontInfo(name, substitute, sizeof name, nullptr, number);
        if (code < 0)
            return {};
        if (code <= 1)
            return name;
    }
}

std::string SystemPath(std::string path)
{
    if (std::filesystem::path::preferred_separator == '/')
        std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::string DescribeUnsaved(const char *fileName)
{
    char folder[MAX_PATH];
    if (GetOrvelDataDir(folder, sizeof folder))
        return SystemPath(std::string(folder) + "\\" + fileName) + " can't be written";
    return std::string(fileName) + " has no place: there is no data folder that can be written to";
}

std::string DescribeUnsavedOptions()
{
    char place[4096];
    if (NameRegistry(place, sizeof place))
        return std::string(place) + " can't be written";
    return "options have no place: there is no folder for them";
}

void LockSettings()
{
    if (gSession.settings)
        return;
    gSession.settings = CreateMutexA(nullptr, FALSE, kSettingsMutex);
    if (gSession.settings)
        WaitForSingleObject(gSession.settings, kSettingsWait);
}

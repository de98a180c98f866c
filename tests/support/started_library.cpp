// The started library of the tests.
#include "support/started_library.h"

#include "fonts/font_table.h"
#include "frame/companion.h"
#include "frame/records.h"
#include "testing/testing.h"

static HWND gManager;

void ShowKeyboardManager()
{
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszClassName = "KerrinDLL";
    RegisterClassA(&windowClass);
    if (!gManager)
        gManager = CreateWindowExA(0, "KerrinDLL", "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                   windowClass.hInstance, nullptr);
}

void HideKeyboardManager()
{
    if (gManager)
        DestroyWindow(gManager);
    gManager = nullptr;
}

std::string ProgramFolder()
{
    char path[MAX_PATH];
    std::string whole(path, GetModuleFileNameA(nullptr, path, sizeof path));
    return whole.substr(0, whole.find_last_of('\\'));
}

void RegisterInstallFolder(const std::string &folder)
{
    StoreRegistryValue(HKEY_LOCAL_MACHINE, kRegistryKey, "Install", REG_SZ, folder + '\0');
}

int ReplaceFonts(const std::string &lines)
{
    WriteDataFile("LaoFonts.dat", lines);
    gFonts.count = WORD(ReadFontList());
    return gFonts.count;
}

void ReplaceDictionary(const char *name, const std::string &lines)
{
    WriteDataFile(name, lines);
    UnloadDictionaries();
}

static void RemoveAllData()
{
    for (const char *name : {"LaoFonts.dat", "MainDict.dat", "UserDict.dat", "OldDict.dat"})
        RemoveDataFile(name);
    UnloadDictionaries();
}

static void SetOptions(const OptionsRecord &options)
{
    *gProcess.options = options;
}

void StartedLibrary::SetUp()
{
    ShowKeyboardManager();
    RemoveRegistryKey(HKEY_CURRENT_USER, kRegistryKey);
    RegisterInstallFolder(ProgramFolder());
    RemoveAllData();
    ASSERT_EQ(Initialize(), 1);
    LaoMode(1, ~DWORD(0));  // as a companion begins
    gFonts.count = WORD(ReadFontList());
    SetOptions({.optionF = 0,
                .breakMode = 12,
                .dictionaries = 1,
                .oldSpelling = 0,
                .romanBreak = 32,
                .sortMode = 0,
                .optionI = 64,
                .optionE = 12,
                .fontSubstitution = 0});
}

void StartedLibrary::TearDown()
{
    RemoveAllData();
}

// Attach, start-up and detach. Attach touches neither the companion nor the registry nor a file: a
// host may load the library long before the keyboard manager runs.
#include "frame/library.h"

#include <commctrl.h>
#include <cstddef>
#include <iterator>

#include "fonts/font_table.h"
#include "frame/companion.h"
#include "frame/paths.h"
#include "orvel.h"
#include "settings/options.h"

// What the record holds until the first load; two values differ from the stored defaults, as hosts
// that ask before Initialize know them.
static OptionsRecord gStartOptions = {
    .optionF = 0,
    .breakMode = kBothBreaks,
    .dictionaries = kMainDictionary,
    .oldSpelling = kKeepOldSpelling,
    .romanBreak = 2,
    .sortMode = kVowelsLastSort,
    .optionI = 64,
    .optionE = 72,
    .fontSubstitution = 0,
};

ProcessState gProcess = {.instance = nullptr,
                         .options = &gStartOptions,
                         .messages = {},
                         .userDictionaryWindow = nullptr,
                         .spellingWindow = nullptr,
                         .findWindow = nullptr,
                         .userWordCount = 0,
                         .started = 0};

constexpr const char *kMessageNames[] = {
    // ORDER DialogMessage
    "ORVEL_ShowLao",  "ORVEL_ListFonts",   "ORVEL_ListCodes", "ORVEL_FontDataChange",
    "ORVEL_SetFind",  "ORVEL_SetReplace",  "ORVEL_SetLabel",  "ORVEL_StartWait",
    "ORVEL_StopWait", "ORVEL_SpecialKeys", "ORVEL_MenuKeys",
};
static_assert(std::size(kMessageNames) == kMessageCount);

static void Attach(HINSTANCE instance)
{
    gProcess.instance = instance;
    gProcess.spellingWindow = nullptr;
    gProcess.findWindow = nullptr;
    for (size_t i = 0; i < kMessageCount; ++i)
        gProcess.messages[i] = RegisterWindowMessageA(kMessageNames[i]);
}

static void CloseWindowIfOpen(HWND *window)
{
    if (*window && IsWindow(*window))
        DestroyWindow(*window);
    *window = nullptr;
}

// The dictionaries go while the module that holds them is still loaded.
static void Detach()
{
    CloseWindowIfOpen(&gProcess.userDictionaryWindow);
    CloseWindowIfOpen(&gProcess.spellingWindow);
    CloseWindowIfOpen(&gProcess.findWindow);
    UnloadDictionaries();
    UnbindCompanion();
}

int WINAPI LibMain(HINSTANCE instance, DWORD reason, void *)
{
    switch (reason) {
    case DLL_PROCESS_ATTACH: Attach(instance); break;
    case DLL_PROCESS_DETACH: Detach(); break;
    }
    return 1;
}

// The name under which the system calls the entry point.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void *reserved)
{
    return LibMain(instance, reason, reserved);
}

int WINAPI Initialize(void)
{
    if (gProcess.started)
        return 1;
    if (!BindCompanion())
        return 0;
    LoadOptions();
    if (!CreateFontTable())
        return 0;
    InitCommonControls();
    gProcess.started = 1;
    return 1;
}

int WINAPI InitializeFrom(const char *folder)
{
    return gProcess.started || (folder && GiveInstallFolder(folder) && Initialize());
}

void WINAPI SetLaoDefaultFont(const char *) {}

// The help viewer, reached through the one entry of the system's help control.
#include "frame/help.h"

#include <cstdio>
#include <cstring>

#include "frame/paths.h"
#include "frame/strings.h"

typedef HWND(WINAPI *HelpEntry)(HWND, const char *, UINT, DWORD_PTR);

constexpr UINT_PTR kHelpOrdinal = 14;  // HtmlHelpA

struct HelpState {
    HMODULE library;
    HelpEntry entry;
    int failed;  // a latch
};
static HelpState gHelp;

int FindHelpLibrary(char *buffer)
{
    HKEY key;
    if (RegOpenKeyExA(HKEY_CLASSES_ROOT,
                      "CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32", 0, KEY_READ,
                      &key))
        return 0;
    DWORD length = kPathSize;
    LONG failure = RegQueryValueExA(key, "", nullptr, nullptr, AsBytes(buffer), &length);
    RegCloseKey(key);
    return !failure && TerminateText(buffer, kPathSize, length);
}

static HMODULE LoadHelpLibrary()
{
    char path[kPathSize];
    HMODULE library = FindHelpLibrary(path) ? LoadLibraryA(path) : nullptr;
    return library ? library : LoadLibraryA("hhctrl.ocx");
}

static void FindHelpEntry()
{
    if (!gHelp.library)
        gHelp.library = LoadHelpLibrary();
    if (gHelp.library) {
        FARPROC entry = GetProcAddress(gHelp.library, reinterpret_cast<const char *>(kHelpOrdinal));
        memcpy(&gHelp.entry, &entry, sizeof entry);
    }
    gHelp.failed = !gHelp.entry;
}

HWND ShowHelp(HWND window, const char *path, UINT command, DWORD_PTR data)
{
    if (!gHelp.entry && !gHelp.failed)
        FindHelpEntry();
    return gHelp.entry ? gHelp.entry(window, path, command, data) : nullptr;
}

void ShowHelpTopic(HWND window, const char *topic)
{
    char name[kPathSize];
    snprintf(name, sizeof name, "Orvel.chm::/%s", topic);
    const char *path = InstallFilePath(name);
    if (path)
        ShowHelp(window, path, 0, 0);
}

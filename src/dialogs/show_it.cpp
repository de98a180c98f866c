// Commands are told to a monitor, a program of developers: any top-level window with the mark in
// its title. It is sought when there is something to tell and the one from before is gone, so that
// it can be started at any time and costs next to nothing where there is none.
#include "dialogs/show_it.h"

#include <cstring>

constexpr UINT kShowItMessage = 0x5F3;
constexpr char kShowItMark[] = "--- Show It ---";
constexpr int kTitleSize = 257;  // 256 characters are looked at

struct ShowItState {
    HWND window;  // the monitor that was found last
};
static ShowItState gShowIt;

static bool IsMonitor(HWND window)
{
    char title[kTitleSize] = "";
    GetWindowTextA(window, title, sizeof title);
    return strstr(title, kShowItMark) != nullptr;
}

static HWND FindMonitor()
{
    HWND window = GetWindow(GetDesktopWindow(), GW_CHILD);
    while (window && !IsMonitor(window))
        window = GetWindow(window, GW_HWNDNEXT);
    return window;
}

void ShowItTrace(WPARAM first, LPARAM second)
{
    if (!IsWindow(gShowIt.window))
        gShowIt.window = FindMonitor();
    if (gShowIt.window)
        SendMessageA(gShowIt.window, kShowItMessage, first, second);
}

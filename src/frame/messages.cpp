// Message boxes, the checked allocation and window placement: what all folders share towards the
// user.
#include "frame/messages.h"

#include <cstdarg>
#include <cstdio>

#include "orvel.h"

constexpr UINT kTaskModalInFront = MB_TASKMODAL | MB_SETFOREGROUND;
constexpr UINT kWarningInFront = MB_ICONEXCLAMATION | MB_SETFOREGROUND;
static_assert(kTaskModalInFront == 0x12000 && kWarningInFront == 0x10030);

int WINAPI OrvelMsg(HWND window, const char *text, const char *caption, UINT flags)
{
    if (!window)
        flags |= kTaskModalInFront;
    return MessageBoxA(window, text, caption ? caption : "Orvel", flags);
}

int WarningBox(const char *format, ...)
{
    char text[2000] = "Warning";
    if (format) {
        va_list arguments;
        va_start(arguments, format);
        vsnprintf(text, sizeof text, format, arguments);
        va_end(arguments);
    }
    MessageBoxA(GetActiveWindow(), text, "Orvel", kWarningInFront);
    return 0;
}

void *CheckedGlobalAlloc(UINT flags, size_t size)
{
    void *block = GlobalAlloc(flags, size);
    if (!block)
        WarningBox("Out of memory. If using Word, save file, exit and restart, "
                   "then select smaller blocks to process.");
    return block;
}

BOOL WINAPI CenterWindow(HWND window)
{
    RECT place;
    if (!GetWindowRect(window, &place))
        return FALSE;
    int left = GetSystemMetrics(SM_CXSCREEN) / 2 - (place.right - place.left) / 2;
    int top = GetSystemMetrics(SM_CYSCREEN) / 2 - (place.bottom - place.top) / 2;
    return SetWindowPos(window, HWND_TOPMOST, left, top, 0, 0, SWP_NOSIZE);
}

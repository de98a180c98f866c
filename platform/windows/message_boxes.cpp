// Answers the message boxes of the calling thread. A hook sees every window that is made or
// activated in it; a window that user32 itself runs as a dialog is a message box. Its caption, text
// and buttons are read from the real window. A box that is never activated is found by a timer, so
// that none can wait for a person who isn't there.
#include <runtime.h>

#include <string.h>

constexpr int kMaxBoxText = 4096;
constexpr UINT kTimerPeriod = 100;  // milliseconds
constexpr int kTextId = 0xFFFF;

struct BoxState {
    MessageBoxAnswerer answerer;
    HHOOK hook;
    UINT_PTR timer;
    HWND answered;  // the box that has its answer and is about to go
    char text[kMaxBoxText];
    char caption[kMaxBoxText];
};
static thread_local BoxState gBox;

struct BoxButtons {
    UINT type;
    int count;
    int ids[3];
};

// clang-format off
static constexpr BoxButtons kBoxButtons[] = {  // those with more buttons first
    {MB_ABORTRETRYIGNORE,  3, {IDABORT, IDRETRY, IDIGNORE}},
    {MB_YESNOCANCEL,       3, {IDYES, IDNO, IDCANCEL}},
    {MB_CANCELTRYCONTINUE, 3, {IDCANCEL, IDTRYAGAIN, IDCONTINUE}},
    {MB_OKCANCEL,          2, {IDOK, IDCANCEL, 0}},
    {MB_YESNO,             2, {IDYES, IDNO, 0}},
    {MB_RETRYCANCEL,       2, {IDRETRY, IDCANCEL, 0}},
};
// clang-format on

// Whether the dialog's procedure lies in user32: then nobody but MessageBox made it.
static bool IsMessageBox(HWND window)
{
    char className[16];
    HMODULE module = nullptr;
    if (!GetClassNameA(window, className, sizeof className) || strcmp(className, "#32770") != 0)
        return false;
    LONG_PTR procedure = GetWindowLongPtrW(window, DWLP_DLGPROC);
    const DWORD flags =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    return procedure && GetModuleHandleExA(flags, (LPCSTR)procedure, &module) &&
           module == GetModuleHandleA("user32.dll");
}

static bool HasButtons(HWND box, const BoxButtons &buttons)
{
    for (int i = 0; i < buttons.count; i++) {
        if (!GetDlgItem(box, buttons.ids[i]))
            return false;
    }
    return true;
}

// The type and the default button, as far as the box's buttons tell them.
static UINT ReadFlags(HWND box)
{
    LRESULT answer = SendMessageA(box, DM_GETDEFID, 0, 0);
    int defaultId = HIWORD(answer) == DC_HASDEFID ? LOWORD(answer) : 0;
    for (const BoxButtons &buttons : kBoxButtons) {
        if (!HasButtons(box, buttons))
            continue;
        for (int i = 1; i < buttons.count; i++) {
            if (buttons.ids[i] == defaultId)
                return buttons.type | (UINT)i << 8;
        }
        return buttons.type;
    }
    return MB_OK;
}

static void Answer(HWND box)
{
    if (!gBox.answerer || gBox.answered == box || !IsMessageBox(box))
        return;
    gBox.answered = box;
    gBox.text[0] = gBox.caption[0] = '\0';
    GetWindowTextA(box, gBox.caption, kMaxBoxText);
    GetDlgItemTextA(box, kTextId, gBox.text, kMaxBoxText);
    HWND owner = GetWindow(box, GW_OWNER);
    EndDialog(box, gBox.answerer(owner, gBox.text, gBox.caption, ReadFlags(box)));
}

static BOOL CALLBACK AnswerLeftOver(HWND window, LPARAM)
{
    if (IsWindowVisible(window))
        Answer(window);
    return TRUE;
}

static void CALLBACK LookForBoxes(HWND, UINT, UINT_PTR, DWORD)
{
    EnumThreadWindows(GetCurrentThreadId(), AnswerLeftOver, 0);
}

static LRESULT CALLBACK WatchWindows(int code, WPARAM wParam, LPARAM lParam)
{
    HWND window = (HWND)wParam;
    if (code == HCBT_ACTIVATE)
        Answer(window);
    if (code == HCBT_CREATEWND && !gBox.timer)
        gBox.timer = SetTimer(nullptr, 0, kTimerPeriod, LookForBoxes);
    if (code == HCBT_DESTROYWND && gBox.answered == window)
        gBox.answered = nullptr;
    return CallNextHookEx(gBox.hook, code, wParam, lParam);
}

static void StopWatching()
{
    if (gBox.hook)
        UnhookWindowsHookEx(gBox.hook);
    if (gBox.timer)
        KillTimer(nullptr, gBox.timer);
    gBox.hook = nullptr;
    gBox.timer = 0;
}

MessageBoxAnswerer SetMessageBoxAnswerer(MessageBoxAnswerer answerer)
{
    MessageBoxAnswerer before = gBox.answerer;
    gBox.answerer = answerer;
    if (!answerer)
        StopWatching();
    else if (!gBox.hook)
        gBox.hook = SetWindowsHookExA(WH_CBT, WatchWindows, nullptr, GetCurrentThreadId());
    return before;
}

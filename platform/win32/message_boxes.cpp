// Answers the message boxes of the calling thread. A hook sees every dialog that is made in it;
// while there is one, a timer looks for message boxes: it ticks in the box's own loop, when the box
// is complete, whether it was ever activated or not. A dialog that user32 itself runs is a message
// box. Its caption, text and buttons are read from the real window.
#include <string.h>

#include "runtime.h"

constexpr int kMaxBoxText = 4096;
constexpr UINT kTimerPeriod = 10;              // milliseconds
constexpr char kAnswered[] = "OrvelAnswered";  // a property of boxes that have their answer
constexpr int kTextId = 0xFFFF;

struct BoxState {
    MessageBoxAnswerer answerer;  // null: the person answers
    HHOOK hook;                   // while there is an answerer
    UINT_PTR timer;               // while there are dialogs; 0: none
    int dialogs;                  // how many of this thread there are
};
static thread_local BoxState gBox;

struct BoxButtons {
    UINT type;   // MB_OK and so on
    int count;   // of the buttons
    int ids[3];  // in their order
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

static bool IsDialog(HWND window)
{
    char className[16];
    return GetClassNameA(window, className, sizeof className) && strcmp(className, "#32770") == 0;
}

// Whether the dialog's procedure lies in user32: then nobody but MessageBox made it.
static bool IsMessageBox(HWND window)
{
    HMODULE module = nullptr;
    if (!IsDialog(window))
        return false;
    LONG_PTR procedure = GetWindowLongPtrW(window, DWLP_DLGPROC);
    const DWORD flags =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    return procedure && GetModuleHandleExA(flags, (LPCSTR)procedure, &module) &&
           module == GetModuleHandleA("user32.dll");
}

static bool HasButtons(HWND box, const BoxButtons &buttons)
{
    for (int i = 0; i < buttons.count; ++i) {
        if (!GetDlgItem(box, buttons.ids[i]))
            return false;
    }
    return true;
}

// The button that Enter would press: a box gives the focus to its default button.
static int DefaultButton(HWND box)
{
    HWND focus = GetFocus();
    if (focus && IsChild(box, focus))
        return GetDlgCtrlID(focus);
    LRESULT answer = SendMessageA(box, DM_GETDEFID, 0, 0);
    return HIWORD(answer) == DC_HASDEFID ? LOWORD(answer) : 0;
}

// The type and the default button, as far as the box's buttons tell them.
static UINT ReadFlags(HWND box)
{
    int defaultId = DefaultButton(box);
    for (const BoxButtons &buttons : kBoxButtons) {
        if (!HasButtons(box, buttons))
            continue;
        for (int i = 1; i < buttons.count; ++i) {
            if (buttons.ids[i] == defaultId)
                return buttons.type | UINT(i) << 8;
        }
        return buttons.type;
    }
    return MB_OK;
}

// The answerer may show a box itself, so the texts are this call's own.
static void Answer(HWND box)
{
    char text[kMaxBoxText] = "";
    char caption[kMaxBoxText] = "";
    SetPropA(box, kAnswered, box);
    GetWindowTextA(box, caption, kMaxBoxText);
    GetDlgItemTextA(box, kTextId, text, kMaxBoxText);
    HWND owner = GetWindow(box, GW_OWNER);
    int answer = gBox.answerer(owner, text, caption, ReadFlags(box));
    RemovePropA(box, kAnswered);
    EndDialog(box, answer);
}

// One box at a time: its answer may change which windows there are.
static BOOL CALLBACK AnswerIfBox(HWND window, LPARAM)
{
    if (!gBox.answerer || !IsWindowVisible(window) || GetPropA(window, kAnswered) ||
        !IsMessageBox(window))
        return TRUE;
    Answer(window);
    return FALSE;
}

static void CALLBACK LookForBoxes(HWND, UINT, UINT_PTR, DWORD)
{
    EnumThreadWindows(GetCurrentThreadId(), AnswerIfBox, 0);
}

static void StopTimer()
{
    if (gBox.timer)
        KillTimer(nullptr, gBox.timer);
    gBox.timer = 0;
}

// Counts dialogs, and has the timer run as long as there are any.
static LRESULT CALLBACK WatchWindows(int code, WPARAM wParam, LPARAM lParam)
{
    bool isDialog = (code == HCBT_CREATEWND || code == HCBT_DESTROYWND) &&
                    IsDialog(reinterpret_cast<HWND>(wParam));
    if (isDialog && code == HCBT_CREATEWND) {
        ++gBox.dialogs;
        if (!gBox.timer)
            gBox.timer = SetTimer(nullptr, 0, kTimerPeriod, LookForBoxes);
    }
    if (isDialog && code == HCBT_DESTROYWND && --gBox.dialogs <= 0) {
        gBox.dialogs = 0;
        StopTimer();
    }
    return CallNextHookEx(gBox.hook, code, wParam, lParam);
}

static void StopWatching()
{
    if (gBox.hook)
        UnhookWindowsHookEx(gBox.hook);
    gBox.hook = nullptr;
    gBox.dialogs = 0;
    StopTimer();
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

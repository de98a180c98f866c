// Dialogs, the message queue and keyboard hooks. (What a host sees of a whole modeless dialog, its
// buttons, bar and keys, stands in tests/dialogs.)
#include <windows.h>
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/message_loop.h"

typedef std::vector<std::string> Heard;
static Heard gHeard;
static bool gRefusesFocus;

static void Hear(const char *what, WPARAM number)
{
    gHeard.push_back(what + std::to_string(number));
}

static INT_PTR CALLBACK TwoProc(HWND, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COMMAND)
        Hear("command ", wParam);
    if (message == WM_INITDIALOG) {
        Hear("focus ", WPARAM(GetDlgCtrlID(HWND(wParam))));
        Hear("init ", WPARAM(lParam));
        return !gRefusesFocus;
    }
    return message == WM_APP;
}

static HWND Make(DWORD style, HWND parent, WNDPROC procedure)
{
    HWND window = CreateWindowExA(0, "STATIC", "", style, 0, 0, 20, 20, parent, nullptr,
                                  GetModuleHandleA(nullptr), nullptr);
    SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
    return window;
}

static HWND Open(const char *name, HWND owner)
{
    return CreateDialogParamA(GetModuleHandleA(nullptr), name, owner, TwoProc, 5);
}

class Dialogs : public testing::Test
{
  protected:
    void SetUp() override
    {
        gRefusesFocus = false;
        host_ = Make(WS_POPUP | WS_VISIBLE, nullptr, DefWindowProcA);
        SetActiveWindow(host_);
        SetFocus(host_);
        DrainMessages();
        gHeard.clear();
    }
    void TearDown() override
    {
        DestroyWindow(host_);  // and the dialogs that it owns
        DrainMessages();
    }
    HWND host_ = nullptr;
};

TEST_F(Dialogs, FocusGoesToTheFirstStopUnlessTheProcedureSaysNo)
{
    HWND dialog = Open("two", host_);
    EXPECT_EQ(gHeard, (Heard{"focus 11", "init 5"}));
    EXPECT_EQ(GetFocus(), GetDlgItem(dialog, 11));
    EXPECT_EQ(SendMessageA(dialog, DM_GETDEFID, 0, 0), MAKELONG(14, DC_HASDEFID));
    SetFocus(GetDlgItem(dialog, 14));
    SetActiveWindow(host_);
    EXPECT_EQ(GetFocus(), host_);
    SetActiveWindow(dialog);
    EXPECT_EQ(GetFocus(), GetDlgItem(dialog, 14)) << "the one that it was left with";
    EXPECT_FALSE(SetFocus(GetDlgItem(dialog, 13))) << "disabled";
    EXPECT_EQ(SendMessageA(dialog, WM_APP, 0, 0), 0) << "the answer isn't the result";
    DestroyWindow(dialog);
    EXPECT_EQ(GetActiveWindow(), host_);
    gRefusesFocus = true;
    Open("two", host_);
    EXPECT_EQ(GetFocus(), host_);
    for (const char *name : {"three", "TW", "twofold", "broken", (const char *)8})
        EXPECT_FALSE(Open(name, host_));
    EXPECT_FALSE(Open("two", HWND(LONG_PTR(12345))));
}

TEST_F(Dialogs, StopsFollowEachOtherInARing)
{
    HWND dialog = Open("two", host_);
    struct Row {
        int from;  // 0: none, 1: the dialog
        BOOL previous;
        int to;
    } const rows[] = {{0, FALSE, 11},  {0, TRUE, 0},   {1, FALSE, 11}, {11, FALSE, 14},
                      {14, FALSE, 11}, {11, TRUE, 14}, {14, TRUE, 11}, {10, FALSE, 11},
                      {15, FALSE, 11}, {12, FALSE, 14}};
    for (const Row &row : rows) {
        HWND from = row.from == 1 ? dialog : row.from ? GetDlgItem(dialog, row.from) : nullptr;
        HWND to = GetNextDlgTabItem(dialog, from, row.previous);
        EXPECT_EQ(to ? GetDlgCtrlID(to) : 0, row.to) << row.from << " " << row.previous;
    }
}

TEST_F(Dialogs, ClosingPressesCancelUnlessItIsDisabled)
{
    HWND dialog = Open(reinterpret_cast<const char *>(7), host_);
    EXPECT_EQ(SendMessageA(dialog, DM_GETDEFID, 0, 0), MAKELONG(IDOK, DC_HASDEFID));
    gHeard.clear();
    for (const Heard &heard : {Heard{}, Heard{"command 2"}}) {
        SendMessageA(dialog, WM_CLOSE, 0, 0);
        DrainMessages();
        EXPECT_EQ(gHeard, heard);
        EnableWindow(GetDlgItem(dialog, IDCANCEL), TRUE);
    }
}

// ---- the queue and keyboard hooks ----

static LRESULT CALLBACK Note(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_KEYDOWN: Hear("down ", wParam); break;
    case WM_KEYUP: Hear("up ", wParam); break;
    case WM_CHAR: Hear("char ", wParam); break;
    case WM_APP: Hear("", wParam); break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

TEST_F(Dialogs, QueueKeepsTheOrderAndDropsWhatIsForTheDead)
{
    SetWindowLongPtrA(host_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Note));
    HWND dead = Make(WS_POPUP, nullptr, Note);
    MSG message;
    PostQuitMessage(3);
    PostMessageA(host_, WM_APP, 1, 0);
    PostMessageA(dead, WM_APP, 2, 0);
    PostMessageA(host_, WM_APP, 3, 0);
    PostMessageA(host_, WM_APP + 1, 4, 0);
    DestroyWindow(dead);
    EXPECT_FALSE(PostMessageA(dead, WM_APP, 4, 0));
    EXPECT_TRUE(PeekMessageA(&message, host_, WM_APP + 1, WM_APP + 1, PM_NOREMOVE));
    EXPECT_EQ(message.wParam, 4U);
    while (GetMessageA(&message, nullptr, 0, 0) > 0)
        DispatchMessageA(&message);
    EXPECT_EQ(message.wParam, 3U) << "the end, behind what was posted";
    EXPECT_EQ(gHeard, (Heard{"1", "3"}));
}

// What another window waits for doesn't hide the one that is asked for.
TEST_F(Dialogs, UnpaintedWindowIsFoundAmongItsOwn)
{
    if (std::filesystem::path::preferred_separator == '\\')
        GTEST_SKIP() << "Wine looks at the first unpainted window alone";
    HWND other = Make(WS_CHILD | WS_VISIBLE, host_, DefWindowProcA);
    HWND asked = Make(WS_CHILD | WS_VISIBLE, host_, DefWindowProcA);
    HWND inner = Make(WS_CHILD | WS_VISIBLE, asked, DefWindowProcA);
    MSG message = {};
    for (HWND expected : {asked, inner, other}) {
        HWND filter = expected == other ? other : asked;
        ASSERT_TRUE(PeekMessageA(&message, filter, WM_PAINT, WM_PAINT, PM_REMOVE));
        EXPECT_EQ(message.hwnd, expected);
        DispatchMessageA(&message);
    }
    HWND hidden = Make(WS_CHILD | WS_VISIBLE, host_, DefWindowProcA);
    ShowWindow(hidden, SW_HIDE);
    EXPECT_FALSE(PeekMessageA(&message, hidden, WM_PAINT, WM_PAINT, PM_REMOVE));
}

static LRESULT gHookAnswer;
static HHOOK gSelf;

static LRESULT CALLBACK OuterHook(int code, WPARAM key, LPARAM data)
{
    Hear("outer ", key);
    return CallNextHookEx(nullptr, code, key, data);
}

static LRESULT CALLBACK InnerHook(int code, WPARAM key, LPARAM data)
{
    Hear(data & 0x80000000 ? "inner up " : "inner ", key);
    if (gSelf)
        UnhookWindowsHookEx(gSelf);
    return gHookAnswer ? gHookAnswer : CallNextHookEx(nullptr, code, key, data);
}

TEST_F(Dialogs, KeysPassTheHooksNewestFirstAndReachTheFocus)
{
    SetWindowLongPtrA(host_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Note));
    HHOOK outer = SetWindowsHookExA(WH_KEYBOARD, OuterHook, nullptr, GetCurrentThreadId());
    HHOOK inner = SetWindowsHookExA(WH_KEYBOARD, InnerHook, nullptr, GetCurrentThreadId());
    ASSERT_TRUE(outer && inner);
    PressKey(VK_SPACE);
    EXPECT_EQ(gHeard, (Heard{"inner 32", "outer 32", "down 32", "char 32", "inner up 32",
                             "outer 32", "up 32"}));
    gHeard.clear();
    gHookAnswer = 1;
    PressKey(VK_RETURN);
    CallNextHookEx(nullptr, HC_ACTION, VK_RETURN, 0);
    EXPECT_EQ(gHeard, (Heard{"inner 13", "inner up 13"})) << "swallowed, and no hook runs now";
    gHeard.clear();
    gHookAnswer = 0;
    gSelf = inner;
    PressKey(VK_TAB);
    EXPECT_EQ(gHeard[0], "inner 9");
    EXPECT_EQ(std::count(gHeard.begin(), gHeard.end(), "inner up 9"), 0) << "removed itself";
    EXPECT_FALSE(UnhookWindowsHookEx(inner));
    EXPECT_TRUE(UnhookWindowsHookEx(outer));
    EXPECT_FALSE(SetWindowsHookExA(99, OuterHook, nullptr, GetCurrentThreadId()));
    EXPECT_FALSE(SetWindowsHookExA(WH_KEYBOARD, nullptr, nullptr, GetCurrentThreadId()));
}

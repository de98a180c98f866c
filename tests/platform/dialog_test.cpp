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

static INT_PTR CALLBACK TwoProc(HWND, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG:
        gHeard.push_back("init " + std::to_string(GetDlgCtrlID(HWND(wParam))) + " " +
                         std::to_string(lParam));
        return !gRefusesFocus;
    case WM_COMMAND: gHeard.push_back("command " + std::to_string(wParam)); break;
    case WM_APP: return 42;
    case WM_DESTROY: gHeard.push_back("destroy"); break;
    }
    return 0;
}

static HWND Make(const char *className, DWORD style, HWND parent = nullptr)
{
    return CreateWindowExA(0, className, "", style, 0, 0, 20, 20, parent, nullptr,
                           GetModuleHandleA(nullptr), nullptr);
}

class Dialogs : public testing::Test
{
  protected:
    void SetUp() override
    {
        gHeard.clear();
        gRefusesFocus = false;
        host_ = Make("STATIC", WS_POPUP | WS_VISIBLE);
        ASSERT_TRUE(host_);
    }
    void TearDown() override
    {
        DestroyWindow(host_);
        DrainMessages();
    }
    HWND Open(const char *name, HWND owner)
    {
        return CreateDialogParamA(GetModuleHandleA(nullptr), name, owner, TwoProc, 5);
    }
    HWND host_ = nullptr;
};

TEST_F(Dialogs, AreMadeFromTheirTemplate)
{
    HWND dialog = Open("two", host_);
    ASSERT_TRUE(dialog);
    EXPECT_EQ(gHeard, Heard{"init 11 5"});
    char text[20];
    GetWindowTextA(dialog, text, sizeof text);
    EXPECT_STREQ(text, "Two \xE9");
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), host_);
    EXPECT_FALSE(IsWindowVisible(dialog));
    GetDlgItemTextA(dialog, 10, text, sizeof text);
    EXPECT_STREQ(text, "label");
    RECT first, second;
    GetWindowRect(GetDlgItem(dialog, 11), &first);
    GetWindowRect(GetDlgItem(dialog, 14), &second);
    EXPECT_EQ(first.left, second.left);
    EXPECT_EQ(second.top - first.top, first.bottom - first.top) << "both 16 units";
    EXPECT_EQ(SendMessageA(dialog, WM_APP, 0, 0), 0) << "the answer isn't the result";
    EXPECT_TRUE(DestroyWindow(dialog));
    EXPECT_EQ(gHeard.back(), "destroy");
    for (const char *name : {"three", "TW", "twofold", "broken", (const char *)8})
        EXPECT_FALSE(Open(name, host_));
    EXPECT_FALSE(Open("two", HWND(LONG_PTR(12345))));
}

TEST_F(Dialogs, FocusGoesToTheFirstStopUnlessTheProcedureSaysNo)
{
    HWND dialog = Open("two", host_);
    EXPECT_EQ(GetFocus(), GetDlgItem(dialog, 11));
    EXPECT_EQ(GetActiveWindow(), dialog);
    SetFocus(GetDlgItem(dialog, 14));
    SetActiveWindow(host_);
    EXPECT_EQ(GetFocus(), host_);
    SetActiveWindow(dialog);
    EXPECT_EQ(GetFocus(), GetDlgItem(dialog, 14)) << "the one that it was left with";
    EXPECT_FALSE(SetFocus(GetDlgItem(dialog, 13))) << "disabled";
    DestroyWindow(dialog);
    EXPECT_EQ(GetActiveWindow(), host_);
    gRefusesFocus = true;
    dialog = Open("two", host_);
    EXPECT_EQ(GetFocus(), host_);
    DestroyWindow(dialog);
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
    DestroyWindow(dialog);
}

TEST_F(Dialogs, DefaultButtonIsTheTemplatesAndCanBeChanged)
{
    HWND dialog = Open("two", host_);
    for (int id : {14, 11}) {  // the template's, then another
        EXPECT_EQ(SendMessageA(dialog, DM_GETDEFID, 0, 0), MAKELONG(id, DC_HASDEFID));
        EXPECT_TRUE(SendDlgItemMessageA(dialog, id, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON);
        int other = 25 - id;
        EXPECT_TRUE(SendDlgItemMessageA(dialog, other, WM_GETDLGCODE, 0, 0) & DLGC_UNDEFPUSHBUTTON);
        SendMessageA(dialog, DM_SETDEFID, WPARAM(other), 0);
    }
    DestroyWindow(dialog);
    dialog = Open(reinterpret_cast<const char *>(7), host_);
    EXPECT_EQ(SendMessageA(dialog, DM_GETDEFID, 0, 0), MAKELONG(IDOK, DC_HASDEFID));
    DestroyWindow(dialog);
}

// ---- modal dialogs: the owner acts when nothing is left in the queue, as a person would ----

static WPARAM gAct;  // what is sent at the owner's next turn; 0: nothing

static LRESULT CALLBACK ActWhenIdle(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_ENTERIDLE && wParam == MSGF_DIALOGBOX && gAct) {
        gHeard.push_back(IsWindowEnabled(window) ? "free" : "waits");
        PostMessageA(HWND(lParam), WM_COMMAND, gAct, 0);
        gAct = gAct == 14 ? 11 : 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

static INT_PTR CALLBACK ModalProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG && lParam == 9)
        EndDialog(dialog, 99);
    if (message == WM_COMMAND && wParam != 14)
        EndDialog(dialog, INT_PTR(wParam) + 100);
    return TwoProc(dialog, message, wParam, lParam);
}

TEST_F(Dialogs, ModalOneIsAnsweredByItsOwner)
{
    SetWindowLongPtrA(host_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ActWhenIdle));
    struct Row {
        const char *name;
        LPARAM parameter;
        WPARAM act;
        INT_PTR result;
        Heard heard;
    } const rows[] = {
        {"two", 5, 11, 111, {"init 11 5", "waits", "command 11", "destroy"}},
        {"two", 5, 14, 111, {"init 11 5", "waits", "command 14", "waits", "command 11", "destroy"}},
        {"two", 9, 0, 99, {"init 11 9", "destroy"}},
        {"broken", 5, 11, -1, {"destroy"}},
    };
    for (const Row &row : rows) {
        gHeard.clear();
        gAct = row.act;
        EXPECT_EQ(
            DialogBoxParamA(GetModuleHandleA(nullptr), row.name, host_, ModalProc, row.parameter),
            row.result);
        EXPECT_EQ(gHeard, row.heard) << row.name << row.parameter;
        EXPECT_TRUE(IsWindowEnabled(host_));
    }
    EXPECT_FALSE(EndDialog(HWND(LONG_PTR(12345)), 1));
}

// ---- the queue ----

static LRESULT CALLBACK Note(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const char *name = message == WM_KEYDOWN ? "down " : message == WM_KEYUP ? "up " : "char ";
    if (message >= WM_APP && message < WM_APP + 10)
        gHeard.push_back(std::to_string(message - WM_APP));
    if (message == WM_KEYDOWN || message == WM_KEYUP || message == WM_CHAR)
        gHeard.push_back(name + std::to_string(wParam));
    return DefWindowProcA(window, message, wParam, lParam);
}

class Queue : public Dialogs
{
  protected:
    void SetUp() override
    {
        Dialogs::SetUp();
        WNDCLASSA windowClass = {};
        windowClass.lpfnWndProc = Note;
        windowClass.hInstance = GetModuleHandleA(nullptr);
        windowClass.lpszClassName = "OrvelNote";
        ASSERT_TRUE(RegisterClassA(&windowClass));
        window_ = Make("OrvelNote", WS_POPUP | WS_VISIBLE);
        SetActiveWindow(window_);
        SetFocus(window_);
        DrainMessages();
        gHeard.clear();
    }
    void TearDown() override
    {
        DestroyWindow(window_);
        Dialogs::TearDown();
        EXPECT_TRUE(UnregisterClassA("OrvelNote", GetModuleHandleA(nullptr)));
    }
    HWND window_ = nullptr;
};

TEST_F(Queue, KeepsTheOrderAndDropsWhatIsForTheDead)
{
    HWND dead = Make("OrvelNote", WS_POPUP);
    MSG message;
    PostQuitMessage(3);
    PostMessageA(window_, WM_APP + 1, 0, 0);
    PostMessageA(dead, WM_APP + 2, 0, 0);
    PostMessageA(window_, WM_APP + 3, 0, 0);
    DestroyWindow(dead);
    EXPECT_FALSE(PostMessageA(dead, WM_APP + 4, 0, 0));
    EXPECT_TRUE(PeekMessageA(&message, window_, WM_APP + 3, WM_APP + 3, PM_NOREMOVE));
    EXPECT_TRUE(gHeard.empty());
    while (GetMessageA(&message, nullptr, 0, 0) > 0)
        DispatchMessageA(&message);
    EXPECT_EQ(message.message, UINT(WM_QUIT)) << "behind what was posted";
    EXPECT_EQ(message.wParam, 3U);
    EXPECT_EQ(gHeard, (Heard{"1", "3"}));
}

// What another window waits for doesn't hide the one that is asked for.
TEST_F(Queue, UnpaintedWindowIsFoundAmongItsOwn)
{
    if (std::filesystem::path::preferred_separator == '\\')
        GTEST_SKIP() << "Wine looks at the first unpainted window alone";
    HWND other = Make("OrvelNote", WS_CHILD | WS_VISIBLE, window_);
    HWND asked = Make("OrvelNote", WS_CHILD | WS_VISIBLE, window_);
    HWND inner = Make("OrvelNote", WS_CHILD | WS_VISIBLE, asked);
    MSG message = {};
    for (HWND expected : {asked, inner, other}) {
        HWND filter = expected == other ? other : asked;
        ASSERT_TRUE(PeekMessageA(&message, filter, WM_PAINT, WM_PAINT, PM_REMOVE));
        EXPECT_EQ(message.hwnd, expected);
        EXPECT_FALSE(PeekMessageA(&message, filter, WM_APP, WM_APP, PM_REMOVE));
        DispatchMessageA(&message);
    }
    HWND hidden = Make("OrvelNote", WS_CHILD | WS_VISIBLE, window_);
    ShowWindow(hidden, SW_HIDE);
    EXPECT_FALSE(PeekMessageA(&message, hidden, WM_PAINT, WM_PAINT, PM_REMOVE));
}

// ---- keyboard hooks ----

static LRESULT gHookAnswer;
static HHOOK gSelf;

static LRESULT CALLBACK OuterHook(int code, WPARAM key, LPARAM data)
{
    gHeard.push_back("outer " + std::to_string(key));
    return CallNextHookEx(nullptr, code, key, data);
}

static LRESULT CALLBACK InnerHook(int code, WPARAM key, LPARAM data)
{
    gHeard.push_back((data & 0x80000000 ? "inner up " : "inner ") + std::to_string(key));
    if (gSelf)
        UnhookWindowsHookEx(gSelf);
    return gHookAnswer ? gHookAnswer : CallNextHookEx(nullptr, code, key, data);
}

TEST_F(Queue, KeysPassTheHooksNewestFirstAndReachTheFocus)
{
    gHookAnswer = 0;
    gSelf = nullptr;
    HHOOK outer = SetWindowsHookExA(WH_KEYBOARD, OuterHook, nullptr, GetCurrentThreadId());
    HHOOK inner = SetWindowsHookExA(WH_KEYBOARD, InnerHook, nullptr, GetCurrentThreadId());
    ASSERT_TRUE(outer && inner);
    PressKey(VK_SPACE);
    EXPECT_EQ(gHeard, (Heard{"inner 32", "outer 32", "down 32", "char 32", "inner up 32",
                             "outer 32", "up 32"}));
    gHeard.clear();
    gHookAnswer = 1;
    PressKey(VK_RETURN);
    EXPECT_EQ(gHeard, (Heard{"inner 13", "inner up 13"})) << "swallowed";
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

// Focus, the message queue, keyboard hooks and modeless dialogs with their controls.
#include <algorithm>
#include <windows.h>
#include <commctrl.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/message_loop.h"

static std::vector<std::string> gHeard;
static bool gRefusesFocus;

static INT_PTR CALLBACK TwoProc(HWND, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG:
        gHeard.push_back("init " + std::to_string(GetDlgCtrlID(HWND(wParam))) + " " +
                         std::to_string(lParam));
        return !gRefusesFocus;
    case WM_COMMAND:
        gHeard.push_back("command " + std::to_string(LOWORD(wParam)) + " " +
                         std::to_string(HIWORD(wParam)));
        break;
    case WM_APP: return 42;
    case WM_DESTROY: gHeard.push_back("destroy"); break;
    }
    return 0;
}

class Dialogs : public testing::Test
{
  protected:
    void SetUp() override
    {
        InitCommonControls();
        gHeard.clear();
        gRefusesFocus = false;
        host_ = CreateWindowExA(0, "STATIC", "host", WS_POPUP | WS_VISIBLE, 0, 0, 300, 300, nullptr,
                                nullptr, GetModuleHandleA(nullptr), nullptr);
        ASSERT_TRUE(host_);
    }
    void TearDown() override
    {
        DestroyWindow(host_);
        DrainMessages();
    }
    HWND Open(const char *name, LPARAM parameter = 5)
    {
        return CreateDialogParamA(GetModuleHandleA(nullptr), name, host_, TwoProc, parameter);
    }
    HWND host_ = nullptr;
};

TEST_F(Dialogs, AreMadeFromTheirTemplate)
{
    HWND dialog = Open("two");
    ASSERT_TRUE(dialog);
    EXPECT_EQ(gHeard, (std::vector<std::string>{"init 11 5"}));
    char text[20];
    GetWindowTextA(dialog, text, sizeof text);
    EXPECT_STREQ(text, "Two \xE9");
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), host_);
    EXPECT_FALSE(IsWindowVisible(dialog));
    struct Row {
        int id;
        const char *text;
        LRESULT code;
    } const rows[] = {{10, "label", DLGC_STATIC},
                      {11, "first", DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON},
                      {14, "second", DLGC_BUTTON | DLGC_DEFPUSHBUTTON}};
    for (const Row &row : rows) {
        GetDlgItemTextA(dialog, row.id, text, sizeof text);
        EXPECT_STREQ(text, row.text);
        EXPECT_EQ(SendDlgItemMessageA(dialog, row.id, WM_GETDLGCODE, 0, 0), row.code) << row.text;
    }
    RECT first, second;
    GetWindowRect(GetDlgItem(dialog, 11), &first);
    GetWindowRect(GetDlgItem(dialog, 14), &second);
    EXPECT_EQ(first.left, second.left);
    EXPECT_EQ(second.top - first.top, first.bottom - first.top) << "both 16 units";
    EXPECT_EQ(SendMessageA(dialog, WM_APP, 0, 0), 0) << "the answer isn't the result";
    EXPECT_TRUE(DestroyWindow(dialog));
    EXPECT_EQ(gHeard.back(), "destroy");
}

TEST_F(Dialogs, NamesThatAreNotThereAndTemplatesThatFail)
{
    EXPECT_FALSE(Open("three"));
    EXPECT_FALSE(Open("TW"));
    EXPECT_FALSE(Open("twofold"));
    EXPECT_FALSE(Open(reinterpret_cast<const char *>(8)));
    EXPECT_FALSE(Open("broken"));
    EXPECT_FALSE(
        CreateDialogParamA(GetModuleHandleA(nullptr), "two", HWND(LONG_PTR(12345)), TwoProc, 0));
    HWND dialog = Open(reinterpret_cast<const char *>(7));
    EXPECT_TRUE(dialog);
    DestroyWindow(dialog);
}

TEST_F(Dialogs, FocusGoesToTheFirstStopUnlessTheProcedureSaysNo)
{
    HWND dialog = Open("two");
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
    dialog = Open("two");
    EXPECT_EQ(GetFocus(), host_);
    DestroyWindow(dialog);
}

TEST_F(Dialogs, StopsFollowEachOtherInARing)
{
    HWND dialog = Open("two");
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
    HWND dialog = Open("two");
    EXPECT_EQ(SendMessageA(dialog, DM_GETDEFID, 0, 0), MAKELONG(14, DC_HASDEFID));
    SendMessageA(dialog, DM_SETDEFID, 11, 0);
    EXPECT_EQ(SendMessageA(dialog, DM_GETDEFID, 0, 0), MAKELONG(11, DC_HASDEFID));
    EXPECT_TRUE(SendDlgItemMessageA(dialog, 11, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON);
    EXPECT_TRUE(SendDlgItemMessageA(dialog, 14, WM_GETDLGCODE, 0, 0) & DLGC_UNDEFPUSHBUTTON);
    DestroyWindow(dialog);
    dialog = Open(reinterpret_cast<const char *>(7));
    EXPECT_EQ(SendMessageA(dialog, DM_GETDEFID, 0, 0), MAKELONG(IDOK, DC_HASDEFID));
    DestroyWindow(dialog);
}

TEST_F(Dialogs, ButtonsTellTheDialogOnceForEachClick)
{
    HWND dialog = Open("two");
    ShowWindow(dialog, SW_SHOW);
    gHeard.clear();
    SendDlgItemMessageA(dialog, 14, BM_CLICK, 0, 0);
    EXPECT_EQ(GetFocus(), GetDlgItem(dialog, 14));
    SendDlgItemMessageA(dialog, 14, WM_KEYDOWN, VK_SPACE, 1);
    SendDlgItemMessageA(dialog, 14, WM_KEYUP, VK_SPACE, 1);
    SendDlgItemMessageA(dialog, 14, WM_KEYUP, VK_SPACE, 1);
    EXPECT_EQ(gHeard, (std::vector<std::string>{"command 14 0", "command 14 0"}));
    DestroyWindow(dialog);
}

TEST_F(Dialogs, ProgressStaysWithinItsRange)
{
    HWND dialog = Open("two");
    HWND bar = GetDlgItem(dialog, 15);
    for (auto [set, shown] : {std::pair{40, 40}, {250, 100}, {-3, 0}, {100, 100}}) {
        SendMessageA(bar, PBM_SETPOS, WPARAM(set), 0);
        EXPECT_EQ(SendMessageA(bar, PBM_GETPOS, 0, 0), shown);
    }
    SendMessageA(bar, PBM_SETRANGE, 0, MAKELPARAM(10, 20));
    EXPECT_EQ(SendMessageA(bar, PBM_GETPOS, 0, 0), 20);
    EXPECT_EQ(SendMessageA(bar, PBM_SETPOS, 15, 0), 20) << "the one from before";
    DestroyWindow(dialog);
}

TEST_F(Dialogs, CloseAsksForCancel)
{
    HWND dialog = Open("two");
    gHeard.clear();
    SendMessageA(dialog, WM_CLOSE, 0, 0);
    EXPECT_TRUE(gHeard.empty());
    DrainMessages();
    EXPECT_EQ(gHeard, (std::vector<std::string>{"command 2 0"}));
    EXPECT_TRUE(IsWindow(dialog));
    DestroyWindow(dialog);
}

// ---- modal dialogs: the owner acts when nothing is left in the queue, as a person would ----

static int gAct;  // the message's id to send at each turn of the owner; 0: none

static LRESULT CALLBACK ActWhenIdle(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_ENTERIDLE && wParam == MSGF_DIALOGBOX && gAct) {
        gHeard.push_back(IsWindowEnabled(window) ? "free" : "waits");
        PostMessageA(HWND(lParam), WM_COMMAND, WPARAM(gAct), 0);
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
        int act;
        INT_PTR result;
        std::vector<std::string> heard;
    } const rows[] = {
        {"two", 5, 11, 111, {"init 11 5", "waits", "command 11 0", "destroy"}},
        {"two",
         5,
         14,
         111,
         {"init 11 5", "waits", "command 14 0", "waits", "command 11 0", "destroy"}},
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
    if (message >= WM_APP && message < WM_APP + 10)
        gHeard.push_back(std::to_string(message - WM_APP));
    if (message == WM_KEYDOWN || message == WM_KEYUP || message == WM_CHAR)
        gHeard.push_back((message == WM_KEYDOWN ? "down "
                          : message == WM_KEYUP ? "up "
                                                : "char ") +
                         std::to_string(wParam));
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
        window_ = CreateWindowExA(0, "OrvelNote", "", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                  nullptr, windowClass.hInstance, nullptr);
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

static HWND MakeChild(HWND parent)
{
    return CreateWindowExA(0, "OrvelNote", "", WS_CHILD | WS_VISIBLE, 0, 0, 20, 20, parent, nullptr,
                           GetModuleHandleA(nullptr), nullptr);
}

TEST_F(Queue, KeepsTheOrderAndDropsWhatIsForTheDead)
{
    HWND dead = CreateWindowExA(0, "OrvelNote", "", WS_POPUP, 0, 0, 5, 5, nullptr, nullptr,
                                GetModuleHandleA(nullptr), nullptr);
    PostMessageA(window_, WM_APP + 1, 0, 0);
    PostMessageA(dead, WM_APP + 2, 0, 0);
    PostMessageA(window_, WM_APP + 3, 0, 0);
    DestroyWindow(dead);
    EXPECT_FALSE(PostMessageA(dead, WM_APP + 4, 0, 0));
    EXPECT_TRUE(gHeard.empty());
    MSG message;
    EXPECT_TRUE(PeekMessageA(&message, window_, WM_APP + 3, WM_APP + 3, PM_NOREMOVE));
    DrainMessages();
    EXPECT_EQ(gHeard, (std::vector<std::string>{"1", "3"}));
}

TEST_F(Queue, QuitComesBehindWhatWasPosted)
{
    MSG message;
    PostQuitMessage(3);
    PostMessageA(window_, WM_APP + 1, 0, 0);
    while (GetMessageA(&message, nullptr, 0, 0) > 0)
        DispatchMessageA(&message);
    EXPECT_EQ(message.message, UINT(WM_QUIT));
    EXPECT_EQ(message.wParam, 3u);
    EXPECT_EQ(gHeard, (std::vector<std::string>{"1"}));
}

// What another window waits for doesn't hide the one that is asked for.
TEST_F(Queue, UnpaintedWindowIsFoundAmongItsOwn)
{
    HWND children[2], inner;
    for (HWND &child : children)
        child = MakeChild(window_);
    inner = MakeChild(children[1]);
    for (HWND expected : {children[1], inner, children[0]}) {
        HWND asked = expected == inner ? children[1] : expected;
        MSG message = {};
        ASSERT_TRUE(PeekMessageA(&message, asked, WM_PAINT, WM_PAINT, PM_REMOVE));
        EXPECT_EQ(message.hwnd, expected);
        EXPECT_FALSE(PeekMessageA(&message, asked, WM_APP, WM_APP, PM_REMOVE));
        DispatchMessageA(&message);
    }
    HWND hidden = MakeChild(window_);
    ShowWindow(hidden, SW_HIDE);
    MSG message;
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
    gHeard.push_back((data < 0 || (data & 0x80000000) ? "inner up " : "inner ") +
                     std::to_string(key));
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
    EXPECT_EQ(gHeard, (std::vector<std::string>{"inner 32", "outer 32", "down 32", "char 32",
                                                "inner up 32", "outer 32", "up 32"}));
    gHeard.clear();
    gHookAnswer = 1;
    PressKey(VK_RETURN);
    EXPECT_EQ(gHeard, (std::vector<std::string>{"inner 13", "inner up 13"})) << "swallowed";
    gHeard.clear();
    gHookAnswer = 0;
    gSelf = inner;
    PressKey(VK_TAB);
    EXPECT_EQ(gHeard[0], "inner 9");
    EXPECT_EQ(std::count(gHeard.begin(), gHeard.end(), "inner up 9"), 0) << "removed itself";
    EXPECT_FALSE(UnhookWindowsHookEx(inner));
    EXPECT_TRUE(UnhookWindowsHookEx(outer));
    gHeard.clear();
    PostMessageA(window_, WM_KEYDOWN, VK_ESCAPE, 1);
    DrainMessages();
    EXPECT_EQ(gHeard, (std::vector<std::string>{"down 27", "char 27"}));
}

TEST(Hooks, OnlyThisThreadsKeyboard)
{
    EXPECT_FALSE(SetWindowsHookExA(99, OuterHook, nullptr, GetCurrentThreadId()));
    EXPECT_FALSE(SetWindowsHookExA(WH_KEYBOARD, nullptr, nullptr, GetCurrentThreadId()));
    EXPECT_FALSE(UnhookWindowsHookEx(HHOOK(LONG_PTR(1234567))));
}

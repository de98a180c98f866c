// Windows, dialogs, the message queue and keyboard hooks: what each window is told, and that dead
// handles are known to be dead. (What a host sees of a whole dialog, its buttons, bar and keys,
// stands in tests/dialogs.)
#include <windows.h>
#include <algorithm>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/message_loop.h"

typedef std::vector<std::string> Heard;
static Heard gHeard;
static constexpr bool kIsNative = std::filesystem::path::preferred_separator == '/';
static UINT gRefused;  // this message of the creation says no

static void Hear(const char *what, WPARAM number)
{
    gHeard.push_back(what + std::to_string(number));
}

static LRESULT CALLBACK Listen(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    char name[16];
    switch (message) {
    case WM_NCCREATE:
    case WM_CREATE:
        gHeard.push_back((message == WM_CREATE ? "create " : "nccreate ") +
                         std::string(reinterpret_cast<CREATESTRUCTA *>(lParam)->lpszName));
        if (message == gRefused)
            return message == WM_CREATE ? -1 : 0;
        break;
    case WM_DESTROY:
    case WM_NCDESTROY:
        GetWindowTextA(window, name, sizeof name);
        gHeard.push_back((message == WM_DESTROY ? "destroy " : "ncdestroy ") + std::string(name));
        break;
    case WM_KEYDOWN: Hear("down ", wParam); break;
    case WM_KEYUP: Hear("up ", wParam); break;
    case WM_CHAR: Hear("char ", wParam); break;
    case WM_APP: Hear("", wParam); return 1;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

static HWND Make(const char *name, DWORD style, HWND parent = nullptr,
                 const char *className = "OrvelTestWindow")
{
    return CreateWindowExA(0, className, name, style, 10, 20, 100, 50, parent, nullptr,
                           GetModuleHandleA(nullptr), nullptr);
}

// Each test has a window of a host's that is active and has the focus.
class Windows : public testing::Test
{
  protected:
    void SetUp() override
    {
        class_.lpfnWndProc = Listen;
        class_.hInstance = GetModuleHandleA(nullptr);
        class_.lpszClassName = "OrvelTestWindow";
        ASSERT_TRUE(RegisterClassA(&class_));
        gRefused = 0;
        host_ = Make("host", WS_POPUP | WS_VISIBLE);
        SetActiveWindow(host_);
        SetFocus(host_);
        DrainMessages();
        gHeard.clear();
    }
    void TearDown() override
    {
        DestroyWindow(host_);  // and what it owns
        DrainMessages();
        EXPECT_TRUE(UnregisterClassA("OrvelTestWindow", class_.hInstance));
    }
    WNDCLASSA class_ = {};
    HWND host_ = nullptr;
};

TEST_F(Windows, DestructionGoesDownAndComesUpAgain)
{
    HWND outer = Make("outer", WS_POPUP);
    HWND first = Make("first", WS_CHILD, outer);
    Make("inner", WS_CHILD, first);
    Make("second", WS_CHILD, outer);
    HWND owned = Make("owned", WS_POPUP, outer);
    gHeard.clear();
    EXPECT_TRUE(DestroyWindow(outer));
    EXPECT_EQ(gHeard, (Heard{"destroy owned", "ncdestroy owned", "destroy outer", "destroy first",
                             "destroy inner", "destroy second", "ncdestroy inner",
                             "ncdestroy first", "ncdestroy second", "ncdestroy outer"}));
    EXPECT_FALSE(IsWindow(outer) || IsWindow(first) || IsWindow(owned));
}

TEST_F(Windows, CreationCanBeRefused)
{
    for (UINT refused : {WM_CREATE, WM_NCCREATE}) {
        gRefused = refused;
        gHeard.clear();
        EXPECT_FALSE(Make("w", WS_POPUP));
        EXPECT_EQ(gHeard.at(0), "nccreate w");  // the second window never was
        EXPECT_TRUE(refused == WM_NCCREATE || gHeard.back() == "ncdestroy w");
        EXPECT_FALSE(FindWindowA("OrvelTestWindow", "w"));
    }
}

TEST_F(Windows, DeadHandlesAreRefusedEverywhere)
{
    HWND dead = Make("dead", WS_POPUP);
    ASSERT_TRUE(DestroyWindow(dead));
    HWND other = Make("other", WS_POPUP);  // may get the same slot, never the same handle
    EXPECT_NE(dead, other);
    RECT rect;
    for (HWND window : {dead, (HWND) nullptr, (HWND)(LONG_PTR)12345, (HWND)(LONG_PTR)-77}) {
        EXPECT_FALSE(IsWindow(window));
        EXPECT_FALSE(DestroyWindow(window));
        EXPECT_EQ(SendMessageA(window, WM_APP, 1, 1), 0);
        EXPECT_FALSE(GetWindowRect(window, &rect));
        EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_WINDOW_HANDLE));
        EXPECT_FALSE(SetWindowTextA(window, "x"));
        EXPECT_FALSE(GetDlgItem(window, 1));
    }
    EXPECT_FALSE(Make("child", WS_CHILD, dead) || Make("child", WS_CHILD));
    DestroyWindow(other);
}

TEST_F(Windows, TextIsCutToItsRoom)
{
    for (int size : {20, 5, 4, 1}) {
        char text[21];
        memset(text, '#', sizeof text);
        EXPECT_EQ(GetWindowTextA(host_, text, size), size > 4 ? 4 : size - 1);
        EXPECT_EQ(std::string(text), std::string("host").substr(0, size_t(size) - 1));
        EXPECT_EQ(text[size], '#');
    }
    EXPECT_TRUE(SetWindowTextA(host_, nullptr) && !SendMessageA(host_, WM_GETTEXTLENGTH, 0, 0));
    SendMessageA(host_, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(host_));
}

TEST_F(Windows, ClassesBelongToOneName)
{
    class_.lpszClassName = "ORVELTESTWINDOW";
    EXPECT_FALSE(RegisterClassA(&class_));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_CLASS_ALREADY_EXISTS));
    EXPECT_FALSE(UnregisterClassA("OrvelTestWindow", class_.hInstance)) << "it has a window";
    EXPECT_FALSE(Make("", WS_POPUP, nullptr, "NoSuchOrvelClass"));
}

// A window may end its parent while it ends itself, and nothing comes to one that ends.
static LRESULT CALLBACK EndsItsParent(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCDESTROY)
        DestroyWindow(GetParent(window));
    return CallWindowProcA(Listen, window, message, wParam, lParam);
}

TEST_F(Windows, ChildMayEndItsParentWithItself)
{
    HWND window = Make("parent", WS_POPUP), child = Make("child", WS_CHILD, window);
    SetWindowLongPtrA(child, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(EndsItsParent));
    DestroyWindow(child);
    EXPECT_FALSE(IsWindow(child) || IsWindow(window));
}

static INT_PTR CALLBACK TwoProc(HWND, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COMMAND)
        Hear("command ", wParam);
    if (message == WM_INITDIALOG) {
        Hear("focus ", WPARAM(GetDlgCtrlID(HWND(wParam))));
        Hear("init ", WPARAM(lParam));
        return lParam == 5;
    }
    return message == WM_APP;
}

static HWND Open(const char *name, HWND owner, LPARAM parameter = 5)
{
    return CreateDialogParamA(GetModuleHandleA(nullptr), name, owner, TwoProc, parameter);
}

TEST_F(Windows, FocusGoesToTheFirstStopUnlessTheProcedureSaysNo)
{
    HWND dialog = Open("two", host_);
    EXPECT_EQ(gHeard, (Heard{"focus 11", "init 5"}));
    EXPECT_EQ(GetFocus(), GetDlgItem(dialog, 11));
    SetFocus(GetDlgItem(dialog, 14));
    SetActiveWindow(host_);
    EXPECT_EQ(GetFocus(), host_);
    SetActiveWindow(dialog);
    EXPECT_EQ(GetFocus(), GetDlgItem(dialog, 14)) << "the one that it was left with";
    EXPECT_FALSE(SetFocus(GetDlgItem(dialog, 13))) << "disabled";
    for (auto [from, to] : {std::pair{11, 14}, {14, 11}, {10, 11}, {12, 14}, {15, 11}, {0, 11}})
        EXPECT_EQ(GetDlgCtrlID(GetNextDlgTabItem(dialog, GetDlgItem(dialog, from), FALSE)), to);
    EXPECT_FALSE(GetNextDlgTabItem(dialog, nullptr, TRUE));
    EXPECT_EQ(SendMessageA(dialog, WM_APP, 0, 0), 0) << "the answer isn't the result";
    DestroyWindow(dialog);
    Open("two", host_, 6);
    EXPECT_EQ(GetFocus(), host_);
    for (const char *name : {"three", "TW", "twofold", "broken", (const char *)8})
        EXPECT_FALSE(Open(name, host_));
    EXPECT_FALSE(Open("two", HWND(LONG_PTR(12345))));
}

TEST_F(Windows, DefaultButtonCanBeChangedAndClosingPressesCancel)
{
    HWND dialog = Open("two", host_);
    for (int id : {14, 11}) {  // the template's, then another
        EXPECT_EQ(SendMessageA(dialog, DM_GETDEFID, 0, 0), MAKELONG(id, DC_HASDEFID));
        EXPECT_TRUE(SendDlgItemMessageA(dialog, id, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON);
        SendMessageA(dialog, DM_SETDEFID, WPARAM(25 - id), 0);
        EXPECT_FALSE(SendDlgItemMessageA(dialog, id, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON);
    }
    dialog = Open(reinterpret_cast<const char *>(7), host_);
    EXPECT_EQ(SendMessageA(dialog, DM_GETDEFID, 0, 0), MAKELONG(IDOK, DC_HASDEFID));
    for (bool isEnabled : {false, true}) {
        gHeard.clear();
        EnableWindow(GetDlgItem(dialog, IDCANCEL), isEnabled);
        SendMessageA(dialog, WM_CLOSE, 0, 0);
        DrainMessages();
        if (isEnabled || kIsNative) {  // Wine presses a disabled button too
            EXPECT_EQ(gHeard, isEnabled ? Heard{"command 2"} : Heard{});
        }
    }
}

static WPARAM gAct;  // what the owner of a modal dialog sends at its next turn; 0: nothing

// The owner acts when nothing is left in the queue, as a person would.
static LRESULT CALLBACK ActWhenIdle(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_ENTERIDLE && wParam == MSGF_DIALOGBOX && gAct) {
        Hear("enabled ", WPARAM(IsWindowEnabled(window)));
        PostMessageA(HWND(lParam), WM_COMMAND, gAct, 0);
        gAct = gAct == 14 ? 11 : 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

static INT_PTR CALLBACK ModalProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG ? lParam == 9 : message == WM_COMMAND && wParam != 14)
        EndDialog(dialog, message == WM_COMMAND ? INT_PTR(wParam) + 100 : 99);
    return message != WM_INITDIALOG && TwoProc(dialog, message, wParam, lParam);
}

TEST_F(Windows, ModalDialogIsAnsweredByItsOwner)
{
    SetWindowLongPtrA(host_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ActWhenIdle));
    struct Row {
        const char *name;
        LPARAM parameter;  // 9: it ends at once
        INT_PTR result;
        Heard heard;
    } const rows[] = {
        {"two", 5, 111, {"enabled 0", "command 14", "enabled 0", "command 11"}},
        {"two", 9, 99, {}},
        {"broken", 5, -1, {}},
    };
    for (const Row &row : rows) {
        gHeard.clear();
        gAct = 14;
        EXPECT_EQ(DialogBoxParamA(nullptr, row.name, host_, ModalProc, row.parameter), row.result);
        EXPECT_EQ(gHeard, row.heard);
        EXPECT_TRUE(IsWindowEnabled(host_));
    }
}

// ---- the queue and keyboard hooks ----

TEST_F(Windows, QueueKeepsTheOrderAndDropsWhatIsForTheDead)
{
    HWND dead = Make("dead", WS_POPUP);
    MSG message;
    PostQuitMessage(3);
    PostMessageA(host_, WM_APP, 1, 0);
    PostMessageA(dead, WM_APP, 2, 0);
    PostMessageA(host_, WM_APP, 3, 0);
    PostMessageA(host_, WM_APP + 1, 4, 0);
    DestroyWindow(dead);
    gHeard.clear();
    EXPECT_FALSE(PostMessageA(dead, WM_APP, 4, 0));
    EXPECT_TRUE(PeekMessageA(&message, host_, WM_APP + 1, WM_APP + 1, PM_NOREMOVE));
    while (GetMessageA(&message, nullptr, 0, 0) > 0)
        DispatchMessageA(&message);
    EXPECT_EQ(message.wParam, 3U) << "the end, behind what was posted";
    EXPECT_EQ(gHeard, (Heard{"1", "3"}));
}

// What another window waits for doesn't hide the one that is asked for.
TEST_F(Windows, UnpaintedWindowIsFoundAmongItsOwn)
{
    if (!kIsNative)
        GTEST_SKIP() << "Wine looks at the first unpainted window alone";
    HWND other = Make("", WS_CHILD | WS_VISIBLE, host_);
    HWND asked = Make("", WS_CHILD | WS_VISIBLE, host_);
    HWND inner = Make("", WS_CHILD | WS_VISIBLE, asked);
    MSG message = {};
    for (HWND expected : {asked, inner, other}) {
        HWND filter = expected == other ? other : asked;
        ASSERT_TRUE(PeekMessageA(&message, filter, WM_PAINT, WM_PAINT, PM_REMOVE));
        EXPECT_EQ(message.hwnd, expected);
        DispatchMessageA(&message);
    }
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

TEST_F(Windows, KeysPassTheHooksNewestFirstAndReachTheFocus)
{
    HHOOK outer = SetWindowsHookExA(WH_KEYBOARD, OuterHook, nullptr, GetCurrentThreadId());
    HHOOK inner = SetWindowsHookExA(WH_KEYBOARD, InnerHook, nullptr, GetCurrentThreadId());
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
    EXPECT_EQ(std::count(gHeard.begin(), gHeard.end(), "inner up 9"), 0) << "removed itself";
    EXPECT_TRUE(!UnhookWindowsHookEx(inner) && UnhookWindowsHookEx(outer));
}

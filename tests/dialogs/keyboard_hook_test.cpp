// The keyboard hook on a window with an edit box of its own making, two buttons and a button 2.
#include "dialogs/keyboard_hook.h"

#include "dialogs/attached.h"

constexpr int kEdit = 20, kFirst = 21, kSecond = 22, kCancel = 2;

struct HookHost {
    std::vector<std::string> heard;
    LRESULT defaultId;
};
static HookHost gHost;

static LRESULT CALLBACK HookDialog(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (HandleSpecialKeys(window, message, wParam, lParam)) {
        gHost.heard.push_back("special " + std::to_string(wParam));
        return 1;
    }
    if (message == WM_COMMAND)
        gHost.heard.push_back("click " + std::to_string(LOWORD(wParam)));
    if (message == DM_GETDEFID)
        return gHost.defaultId;
    return DefWindowProcA(window, message, wParam, lParam);
}

static LRESULT CALLBACK Edit(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_CHAR)
        gHost.heard.push_back("char " + std::to_string(wParam));
    return message == WM_GETDLGCODE ? 0x0089 : DefWindowProcA(window, message, wParam, lParam);
}

class KeyHook : public AttachedDialogs
{
  protected:
    void SetUp() override
    {
        AttachedDialogs::SetUp();
        Register("OrvelHookDialog", HookDialog);
        Register("OrvelHookEdit", Edit);
        dialog_ = Make("OrvelHookDialog", WS_POPUP | WS_VISIBLE, 0, nullptr);
        Make("OrvelHookEdit", kStop, kEdit, dialog_);
        Make("BUTTON", kStop, kFirst, dialog_);
        Make("BUTTON", kStop, kSecond, dialog_);
        Make("BUTTON", WS_CHILD | WS_VISIBLE, kCancel, dialog_);
        InstallDialogKeyHook(dialog_);
        Start(kEdit);
    }
    void TearDown() override
    {
        RemoveDialogKeyHook();
        DestroyWindow(dialog_);
        AttachedDialogs::TearDown();
        EXPECT_TRUE(UnregisterClassA("OrvelHookDialog", GetModuleHandleA(nullptr)));
        EXPECT_TRUE(UnregisterClassA("OrvelHookEdit", GetModuleHandleA(nullptr)));
    }
    static void Register(const char *name, WNDPROC procedure)
    {
        WNDCLASSA windowClass = {};
        windowClass.lpfnWndProc = procedure;
        windowClass.hInstance = GetModuleHandleA(nullptr);
        windowClass.lpszClassName = name;
        ASSERT_TRUE(RegisterClassA(&windowClass)) << name;
    }
    static HWND Make(const char *name, DWORD style, int id, HWND parent)
    {
        return CreateWindowExA(0, name, "", style, 10, 10, 60, 20, parent,
                               reinterpret_cast<HMENU>(LONG_PTR(id)), GetModuleHandleA(nullptr),
                               nullptr);
    }
    void Start(int focus, LRESULT defaultId = MAKELONG(kSecond, DC_HASDEFID))
    {
        SetFocus(GetDlgItem(dialog_, focus));
        DrainMessages();
        gHost = {{}, defaultId};
    }
    std::vector<std::string> Press(BYTE key)
    {
        gHost.heard.clear();
        PressKey(key);
        return gHost.heard;
    }
    static constexpr DWORD kStop = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
    HWND dialog_ = nullptr;
};

using Heard = std::vector<std::string>;

TEST_F(KeyHook, KeysPressAndReachTheFocusToo)
{
    constexpr LRESULT kNoDefault = MAKELONG(kSecond, 0x534A);
    struct Row {
        int focus;
        BYTE key;
        LRESULT defaultId;
        Heard heard;
    } const rows[] = {
        {kEdit, VK_RETURN, MAKELONG(kSecond, DC_HASDEFID), {"click 22", "special 13", "char 13"}},
        {kFirst, VK_RETURN, MAKELONG(kSecond, DC_HASDEFID), {"click 21", "special 13"}},
        {kEdit, VK_RETURN, kNoDefault, {"special 13", "char 13"}},
        {kEdit, VK_RETURN, 0, {"special 13", "char 13"}},
        {kFirst, VK_RETURN, kNoDefault, {"click 21", "special 13"}},
        {kEdit, VK_RETURN, MAKELONG(99, DC_HASDEFID), {"special 13", "char 13"}},
        {kEdit, VK_SPACE, 0, {"special 32", "char 32"}},
        {kFirst, VK_SPACE, 0, {"click 21", "special 32"}},
        {kEdit, VK_ESCAPE, 0, {"click 2", "special 27"}},
        {kFirst, VK_ESCAPE, 0, {"click 2", "special 27"}},
        {kEdit, VK_UP, 0, {"special 38"}},
        {kEdit, VK_NEXT, 0, {"special 34"}},
        {kEdit, 'A', 0, {"char 97"}},
    };
    for (const Row &row : rows) {
        Start(row.focus, row.defaultId);
        Heard heard = Press(row.key);
        // Where the pressing takes the focus along, the system decides who gets the character.
        std::erase_if(heard, [&](const std::string &what) {
            return what.starts_with("char") &&
                   std::find(row.heard.begin(), row.heard.end(), what) == row.heard.end();
        });
        EXPECT_EQ(heard, row.heard) << row.focus << " " << int(row.key);
    }
}

TEST_F(KeyHook, TabMovesTheFocusBothWays)
{
    for (int wanted : {kFirst, kSecond, kEdit}) {
        Press(VK_TAB);
        EXPECT_EQ(GetDlgCtrlID(GetFocus()), wanted);
    }
    keybd_event(VK_SHIFT, 0, 0, 0);
    for (int wanted : {kSecond, kFirst, kEdit}) {
        Press(VK_TAB);
        EXPECT_EQ(GetDlgCtrlID(GetFocus()), wanted) << "backward";
    }
    keybd_event(VK_SHIFT, 0, KEYEVENTF_KEYUP, 0);
    DrainMessages();
    EnableWindow(GetDlgItem(dialog_, kFirst), FALSE);
    Press(VK_TAB);
    EXPECT_EQ(GetDlgCtrlID(GetFocus()), kSecond) << "past the disabled one";
    EnableWindow(GetDlgItem(dialog_, kFirst), TRUE);
}

TEST_F(KeyHook, KeyRepeatsAndIsNotPostedWhenItGoesUp)
{
    keybd_event(VK_DOWN, 0, 0, 0);
    keybd_event(VK_DOWN, 0, 0, 0);
    keybd_event(VK_DOWN, 0, KEYEVENTF_KEYUP, 0);
    DrainMessages();
    EXPECT_EQ(gHost.heard, (Heard{"special 40", "special 40"}));
}

TEST_F(KeyHook, OtherWindowsKeepTheirKeys)
{
    SetActiveWindow(host_);
    EXPECT_EQ(Press(VK_ESCAPE), Heard{});
    SetActiveWindow(dialog_);
    EXPECT_EQ(Press(VK_ESCAPE), (Heard{"click 2", "special 27"}));
    RemoveDialogKeyHook();
    Start(kEdit);
    EXPECT_EQ(Press(VK_ESCAPE), Heard{"char 27"});
    RemoveDialogKeyHook();
}

// The hook of the first dialog stays its own, until the second one takes it away.
TEST_F(KeyHook, SecondDialogGetsNoneAndRemovesTheFirstOnes)
{
    ASSERT_EQ(StartOrvelMeter(host_, "x"), 1);
    EXPECT_NE(GetActiveWindow(), dialog_);
    EXPECT_EQ(Press(VK_ESCAPE), Heard{});
    EXPECT_EQ(UpdateOrvelMeter(1), 0) << "the meter has no hook";
    SetFocus(GetDlgItem(dialog_, kEdit));
    EXPECT_EQ(Press(VK_UP), Heard{"special 38"});
    EXPECT_EQ(CloseOrvelMeter(), 1);
    SetFocus(GetDlgItem(dialog_, kEdit));
    EXPECT_EQ(Press(VK_UP), Heard{});
    InstallDialogKeyHook(dialog_);
    EXPECT_EQ(Press(VK_UP), Heard{"special 38"});
}

// The keyboard hook on a window with an edit box of its own making, two buttons and a button 2.
#include "dialogs/keyboard_hook.h"

#include "dialogs/attached.h"

constexpr int kEdit = 20, kFirst = 21, kSecond = 22, kCancel = 2;
constexpr LRESULT kSecondIsDefault = MAKELONG(kSecond, DC_HASDEFID);

struct HookHost {
    std::string heard;  // "click 22, special 13, "
    LRESULT defaultId;
};
static HookHost gHost;

static void Hear(const char *what, WPARAM number)
{
    gHost.heard += what + std::to_string(number) + ", ";
}

static LRESULT CALLBACK HookDialog(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (HandleSpecialKeys(window, message, wParam, lParam)) {
        Hear("special ", wParam);
        return 1;
    }
    if (message == WM_COMMAND)
        Hear("click ", LOWORD(wParam));
    return message == DM_GETDEFID ? gHost.defaultId
                                  : DefWindowProcA(window, message, wParam, lParam);
}

static LRESULT CALLBACK Edit(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_CHAR)
        Hear("char ", wParam);
    return message == WM_GETDLGCODE ? 0x0089 : DefWindowProcA(window, message, wParam, lParam);
}

class KeyHook : public AttachedDialogs
{
  protected:
    void SetUp() override
    {
        AttachedDialogs::SetUp();
        dialog_ = Make("STATIC", WS_POPUP | WS_VISIBLE, 0, nullptr);
        Make("STATIC", kStop, kEdit, dialog_);
        Make("BUTTON", kStop, kFirst, dialog_);
        Make("BUTTON", kStop, kSecond, dialog_);
        Make("BUTTON", WS_CHILD | WS_VISIBLE, kCancel, dialog_);
        SetProcedure(dialog_, HookDialog);
        SetProcedure(GetDlgItem(dialog_, kEdit), Edit);
        InstallDialogKeyHook(dialog_);
        Start(kEdit, kSecondIsDefault);
    }
    void TearDown() override
    {
        RemoveDialogKeyHook();
        DestroyWindow(dialog_);
        AttachedDialogs::TearDown();
    }
    static HWND Make(const char *name, DWORD style, int id, HWND parent)
    {
        return CreateWindowExA(0, name, "", style, 10, 10, 60, 20, parent,
                               reinterpret_cast<HMENU>(LONG_PTR(id)), GetModuleHandleA(nullptr),
                               nullptr);
    }
    void Start(int focus, LRESULT defaultId)
    {
        SetFocus(GetDlgItem(dialog_, focus));
        DrainMessages();
        gHost = {"", defaultId};
    }
    static std::string Press(BYTE key)
    {
        gHost.heard.clear();
        PressKey(key);
        return gHost.heard;
    }
    static constexpr DWORD kStop = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
    HWND dialog_ = nullptr;
};

TEST_F(KeyHook, KeysPressAndReachTheFocusToo)
{
    constexpr LRESULT kNoDefault = MAKELONG(kSecond, 0x534A), kNotThere = MAKELONG(99, DC_HASDEFID);
    const struct {
        int focus;
        BYTE key;
        LRESULT defaultId;
        const char *heard;
    } rows[] = {
        // clang-format off
        {kEdit, VK_RETURN, kSecondIsDefault, "click 22, special 13, "},
        {kFirst, VK_RETURN, kSecondIsDefault, "click 21, special 13, "},
        {kEdit, VK_RETURN, kNoDefault, "special 13, char 13, "}, {kEdit, VK_RETURN, 0, "special 13, char 13, "},
        {kFirst, VK_RETURN, kNoDefault, "click 21, special 13, "},
        {kEdit, VK_RETURN, kNotThere, "special 13, char 13, "},
        {kEdit, VK_SPACE, 0, "special 32, char 32, "}, {kFirst, VK_SPACE, 0, "click 21, special 32, "},
        {kFirst, VK_ESCAPE, 0, "click 2, special 27, "}, {kEdit, VK_UP, 0, "special 38, "},
        {kEdit, VK_NEXT, 0, "special 34, "}, {kEdit, 'A', 0, "char 97, "},
        // clang-format on
    };
    for (const auto &row : rows) {
        Start(row.focus, row.defaultId);
        std::string heard = Press(row.key);
        if (heard.starts_with("click"))  // the focus may have moved: who gets the character?
            heard = heard.substr(0, heard.find("char"));
        EXPECT_EQ(heard, row.heard) << row.focus << " " << int(row.key);
    }
}

TEST_F(KeyHook, TabMovesTheFocusBothWays)
{
    const struct {
        int wanted;
        bool isBackward, isFirstEnabled;
    } rows[] = {{kSecond, false, false}, {kEdit, false, true},  {kFirst, false, true},
                {kEdit, true, true},     {kSecond, true, true}, {kEdit, true, false}};
    for (const auto &row : rows) {
        EnableWindow(GetDlgItem(dialog_, kFirst), row.isFirstEnabled);
        keybd_event(VK_SHIFT, 0, row.isBackward ? 0 : KEYEVENTF_KEYUP, 0);
        Press(VK_TAB);
        EXPECT_EQ(GetDlgCtrlID(GetFocus()), row.wanted) << row.isBackward << row.isFirstEnabled;
    }
    keybd_event(VK_SHIFT, 0, KEYEVENTF_KEYUP, 0);
    DrainMessages();
}

TEST_F(KeyHook, KeysRepeatAndOtherWindowsKeepTheirs)
{
    for (DWORD flags : {0, 0, KEYEVENTF_KEYUP})
        keybd_event(VK_DOWN, 0, flags, 0);
    DrainMessages();
    EXPECT_EQ(gHost.heard, "special 40, special 40, ") << "none as it goes up";
    SetActiveWindow(host_);
    EXPECT_EQ(Press(VK_ESCAPE), "");
    SetActiveWindow(dialog_);
    EXPECT_EQ(Press(VK_ESCAPE).substr(0, 19), "click 2, special 27");
    RemoveDialogKeyHook();
    Start(kEdit, 0);
    EXPECT_EQ(Press(VK_ESCAPE), "char 27, ");
}

// The tree of windows: what each window is told, and that dead handles are known to be dead.
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <windows.h>

typedef std::vector<std::string> Heard;
static Heard gHeard;
static UINT gRefused;  // this message of the creation says no

static LRESULT CALLBACK Listen(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    char name[16];
    if (message == WM_NCCREATE || message == WM_CREATE) {
        auto create = reinterpret_cast<CREATESTRUCTA *>(lParam);
        gHeard.push_back((message == WM_CREATE ? "create " : "nccreate ") +
                         std::string(create->lpszName));
        if (message == gRefused)
            return message == WM_CREATE ? -1 : 0;
    }
    if (message == WM_DESTROY || message == WM_NCDESTROY) {
        GetWindowTextA(window, name, sizeof name);
        gHeard.push_back((message == WM_DESTROY ? "destroy " : "ncdestroy ") + std::string(name));
        EXPECT_TRUE(IsWindow(window));
    }
    return message == WM_APP ? 1 : DefWindowProcA(window, message, wParam, lParam);
}

static WNDCLASSA gClass = {};

class Windows : public testing::Test
{
  protected:
    void SetUp() override
    {
        gClass.lpfnWndProc = Listen;
        gClass.hInstance = GetModuleHandleA(nullptr);
        gClass.lpszClassName = "OrvelTestWindow";
        ASSERT_TRUE(RegisterClassA(&gClass));
        gHeard.clear();
        gRefused = 0;
    }
    void TearDown() override { EXPECT_TRUE(UnregisterClassA("OrvelTestWindow", gClass.hInstance)); }
};

static HWND Make(const char *name, DWORD style, HWND parent = nullptr,
                 const char *className = "OrvelTestWindow")
{
    return CreateWindowExA(0, className, name, style, 10, 20, 100, 50, parent, nullptr,
                           gClass.hInstance, nullptr);
}

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
    for (HWND gone : {outer, first, owned})
        EXPECT_FALSE(IsWindow(gone));
}

TEST_F(Windows, CreationCanBeRefused)
{
    for (gRefused = WM_CREATE; gRefused; gRefused = gRefused == WM_CREATE ? WM_NCCREATE : 0) {
        gHeard.clear();
        EXPECT_FALSE(Make("w", WS_POPUP));
        if (gRefused == WM_CREATE)
            EXPECT_EQ(gHeard, (Heard{"nccreate w", "create w", "ncdestroy w"}));
        else  // what a window that never was hears after that differs by system
            EXPECT_EQ(gHeard.at(0), "nccreate w");
        EXPECT_FALSE(FindWindowA("OrvelTestWindow", nullptr));
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
        EXPECT_FALSE(SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOSIZE));
        EXPECT_FALSE(SetWindowTextA(window, "x"));
        EXPECT_EQ(GetWindowLongA(window, GWL_EXSTYLE), 0);
        EXPECT_FALSE(GetDlgItem(window, 1));
    }
    EXPECT_FALSE(Make("child", WS_CHILD, dead));
    EXPECT_FALSE(Make("child", WS_CHILD));
    DestroyWindow(other);
}

TEST_F(Windows, TextIsCutToItsRoom)
{
    HWND window = Make("title", WS_POPUP);
    for (int size : {20, 6, 5, 1}) {
        char text[21];
        memset(text, '#', sizeof text);
        EXPECT_EQ(GetWindowTextA(window, text, size), size > 5 ? 5 : size - 1);
        EXPECT_EQ(std::string(text), std::string("title").substr(0, size_t(size) - 1));
        EXPECT_EQ(text[size], '#');
    }
    EXPECT_TRUE(SetWindowTextA(window, nullptr));
    EXPECT_EQ(SendMessageA(window, WM_GETTEXTLENGTH, 0, 0), 0);
    SendMessageA(window, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(Windows, ClassesBelongToOneName)
{
    WNDCLASSA again = gClass;
    again.lpszClassName = "ORVELTESTWINDOW";
    EXPECT_FALSE(RegisterClassA(&again));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_CLASS_ALREADY_EXISTS));
    HWND window = Make("w", WS_POPUP);
    EXPECT_FALSE(UnregisterClassA("OrvelTestWindow", gClass.hInstance));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_CLASS_HAS_WINDOWS));
    DestroyWindow(window);
    EXPECT_FALSE(UnregisterClassA("NoSuchOrvelClass", gClass.hInstance));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_CLASS_DOES_NOT_EXIST));
    EXPECT_FALSE(Make("", WS_POPUP, nullptr, "NoSuchOrvelClass"));
}

// A window may end its parent while it ends itself, and nothing comes to one that ends.
static LRESULT CALLBACK EndsItsParent(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCDESTROY) {
        HWND parent = GetParent(window);
        DestroyWindow(parent);
        EXPECT_FALSE(IsWindow(parent));
    }
    return CallWindowProcA(Listen, window, message, wParam, lParam);
}

TEST_F(Windows, ChildMayEndItsParentWithItself)
{
    HWND window = Make("parent", WS_POPUP), child = Make("child", WS_CHILD, window);
    SetWindowLongPtrA(child, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(EndsItsParent));
    DestroyWindow(child);
    EXPECT_FALSE(IsWindow(child));
    EXPECT_FALSE(IsWindow(window));
}

TEST(RegisteredMessages, SameNameSameNumber)
{
    UINT first = RegisterWindowMessageA("OrvelTestMessage");
    EXPECT_TRUE(first >= 0xC000 && first <= 0xFFFF);
    EXPECT_EQ(RegisterWindowMessageA("orveltestMESSAGE"), first);
    EXPECT_NE(RegisterWindowMessageA("OrvelTestMessage2"), first);
    EXPECT_EQ(RegisterWindowMessageA("") + RegisterWindowMessageA(std::string(256, 'm').c_str()),
              0U);
}

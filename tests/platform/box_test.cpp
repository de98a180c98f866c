// Message boxes and their answers; on Windows these are real ones.
#include <gtest/gtest.h>

#include "support/message_boxes.h"

TEST(Boxes, AnswererSeesTheBoxAndDecides)
{
    struct Row {
        UINT flags;
        int answer;
        UINT told;
    } const rows[] = {
        {MB_OK, IDOK, MB_OK},
        {MB_OK | MB_ICONERROR | MB_SETFOREGROUND, IDOK, MB_OK},
        {MB_OKCANCEL, IDCANCEL, MB_OKCANCEL},
        {MB_OKCANCEL | MB_DEFBUTTON2, IDOK, MB_OKCANCEL | MB_DEFBUTTON2},
        {MB_YESNO | MB_ICONQUESTION, IDNO, MB_YESNO},
        {MB_YESNO | MB_DEFBUTTON2 | MB_TASKMODAL, IDYES, MB_YESNO | MB_DEFBUTTON2},
        {MB_YESNOCANCEL | MB_DEFBUTTON3, IDNO, MB_YESNOCANCEL | MB_DEFBUTTON3},
        {MB_ABORTRETRYIGNORE | MB_DEFBUTTON2, IDIGNORE, MB_ABORTRETRYIGNORE | MB_DEFBUTTON2},
        {MB_RETRYCANCEL | MB_SYSTEMMODAL, IDRETRY, MB_RETRYCANCEL},
        {MB_CANCELTRYCONTINUE, IDTRYAGAIN, MB_CANCELTRYCONTINUE},
    };
    for (const Row &row : rows) {
        ExpectBoxes boxes({"Caption: line one\nline & two"}, {row.answer});
        EXPECT_EQ(MessageBoxA(nullptr, "line one\nline & two", "Caption", row.flags), row.answer);
        ASSERT_EQ(boxes.shown.size(), 1u);
        EXPECT_EQ(boxes.shown[0].flags, row.told) << row.flags;
        EXPECT_EQ(boxes.shown[0].owner, nullptr);
    }
}

TEST(Boxes, AbsentTextsAndLongOnes)
{
    std::string text(2000, 'w');
    ExpectBoxes boxes({"Error: ", "c: ", "c: " + text});
    EXPECT_EQ(MessageBoxA(nullptr, "text", nullptr, MB_OK), IDOK);
    EXPECT_EQ(MessageBoxA(nullptr, nullptr, "c", MB_OK), IDOK);
    EXPECT_EQ(MessageBoxA(nullptr, text.c_str(), "c", MB_OK), IDOK);
    ASSERT_EQ(boxes.shown.size(), 3u);
    EXPECT_EQ(boxes.shown[1].text, "");
}

static LRESULT CALLBACK Own(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return DefWindowProcA(window, message, wParam, lParam);
}

TEST(Boxes, OwnerIsToldAndMustBeAlive)
{
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = Own;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszClassName = "BoxOwner";
    ASSERT_TRUE(RegisterClassA(&windowClass));
    HWND owner = CreateWindowExA(0, "BoxOwner", "o", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr,
                                 windowClass.hInstance, nullptr);
    {
        ExpectBoxes boxes({"text"});
        EXPECT_EQ(MessageBoxA(owner, "text", "c", MB_OK), IDOK);
        ASSERT_EQ(boxes.shown.size(), 1u);
        EXPECT_EQ(boxes.shown[0].owner, owner);
    }
    DestroyWindow(owner);
    UnregisterClassA("BoxOwner", windowClass.hInstance);
    ExpectBoxes none({});
    EXPECT_LE(MessageBoxA(owner, "text", "c", MB_OK), 0);
}

static std::vector<std::string> gOrder;

static int AskAgain(HWND, const char *text, const char *, UINT)
{
    gOrder.push_back(text);
    if (gOrder.size() == 1)
        MessageBoxA(nullptr, "inner", "c", MB_OK);
    return IDYES;
}

TEST(Boxes, AnswererMayShowABoxItself)
{
    MessageBoxAnswerer before = SetMessageBoxAnswerer(AskAgain);
    EXPECT_EQ(MessageBoxA(nullptr, "outer", "c", MB_YESNO), IDYES);
    EXPECT_EQ(SetMessageBoxAnswerer(before), AskAgain);
    EXPECT_EQ(gOrder, (std::vector<std::string>{"outer", "inner"}));
}

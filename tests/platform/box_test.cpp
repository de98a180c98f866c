// Message boxes and their answers; on Windows these are real ones.
#include <filesystem>
#include <gtest/gtest.h>

#include "support/message_boxes.h"

// `byDefault` is the native layer's answer when nobody answers: the box goes to standard error.
TEST(Boxes, AnswererSeesTheBoxAndDecides)
{
    struct Row {
        UINT flags;
        int answer;
        UINT told;
        int byDefault;
    } const rows[] = {
        {MB_OK, IDOK, MB_OK, IDOK},
        {MB_OK | MB_ICONERROR | MB_SETFOREGROUND, IDOK, MB_OK, IDOK},
        {MB_OKCANCEL, IDCANCEL, MB_OKCANCEL, IDOK},
        {MB_OKCANCEL | MB_DEFBUTTON2, IDOK, MB_OKCANCEL | MB_DEFBUTTON2, IDCANCEL},
        {MB_YESNO | MB_ICONQUESTION, IDNO, MB_YESNO, IDYES},
        {MB_YESNO | MB_DEFBUTTON2 | MB_TASKMODAL, IDYES, MB_YESNO | MB_DEFBUTTON2, IDNO},
        {MB_YESNOCANCEL | MB_DEFBUTTON3, IDNO, MB_YESNOCANCEL | MB_DEFBUTTON3, IDCANCEL},
        {MB_ABORTRETRYIGNORE | MB_DEFBUTTON2, IDIGNORE, MB_ABORTRETRYIGNORE | MB_DEFBUTTON2,
         IDRETRY},
        {MB_RETRYCANCEL | MB_SYSTEMMODAL, IDRETRY, MB_RETRYCANCEL, IDRETRY},
        {MB_CANCELTRYCONTINUE, IDTRYAGAIN, MB_CANCELTRYCONTINUE, IDCANCEL},
    };
    bool isWindows = std::filesystem::path::preferred_separator == '\\';
    for (const Row &row : rows) {
        ExpectBoxes boxes({"Caption: line one\nline & two"}, {row.answer});
        EXPECT_EQ(MessageBoxA(nullptr, "line one\nline & two", "Caption", row.flags), row.answer);
        ASSERT_EQ(boxes.shown.size(), 1U);
        EXPECT_EQ(boxes.shown[0].flags, row.told) << row.flags;
        EXPECT_EQ(boxes.shown[0].owner, nullptr);
        if (isWindows)
            continue;
        MessageBoxAnswerer before = SetMessageBoxAnswerer(nullptr);
        testing::internal::CaptureStderr();
        EXPECT_EQ(MessageBoxA(nullptr, "text", "Caption", row.flags), row.byDefault) << row.flags;
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "Caption: text\n");
        SetMessageBoxAnswerer(before);
    }
}

TEST(Boxes, TextsMayBeAbsentOrLongAndOwnersMustLive)
{
    HWND owner = CreateWindowExA(0, "STATIC", "o", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr,
                                 GetModuleHandleA(nullptr), nullptr);
    std::string text(2000, 'w');
    {
        ExpectBoxes boxes({"Error: ", "c: ", "c: " + text});
        EXPECT_EQ(MessageBoxA(owner, "text", nullptr, MB_OK), IDOK);
        EXPECT_EQ(MessageBoxA(nullptr, nullptr, "c", MB_OK), IDOK);
        EXPECT_EQ(MessageBoxA(nullptr, text.c_str(), "c", MB_OK), IDOK);
        ASSERT_EQ(boxes.shown.size(), 3U);
        EXPECT_EQ(boxes.shown[0].owner, owner);
        EXPECT_EQ(boxes.shown[1].text, "");
    }
    DestroyWindow(owner);
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

// Message boxes and their answers; on Windows these are real ones.
#include <filesystem>
#include <gtest/gtest.h>

#include "support/message_boxes.h"

TEST(Boxes, AnswererSeesTheBoxAndDecides)
{
    struct Row {
        UINT flags;
        int answer, byDefault;  // the last: what the native layer does when nobody answers
    } const rows[] = {
        // clang-format off
        {MB_OK | MB_ICONERROR | MB_SETFOREGROUND, IDOK, IDOK}, {MB_OKCANCEL, IDCANCEL, IDOK},
        {MB_OKCANCEL | MB_DEFBUTTON2, IDOK, IDCANCEL}, {MB_YESNO | MB_ICONQUESTION, IDNO, IDYES},
        {MB_YESNO | MB_DEFBUTTON2 | MB_TASKMODAL, IDYES, IDNO},
        {MB_YESNOCANCEL | MB_DEFBUTTON3, IDNO, IDCANCEL}, {MB_CANCELTRYCONTINUE, IDTRYAGAIN, IDCANCEL},
        {MB_ABORTRETRYIGNORE | MB_DEFBUTTON2, IDIGNORE, IDRETRY},
        {MB_RETRYCANCEL | MB_SYSTEMMODAL, IDRETRY, IDRETRY},
        // clang-format on
    };
    for (const Row &row : rows) {
        ExpectBoxes boxes({"Caption: line one\nline & two"}, {row.answer});
        EXPECT_EQ(MessageBoxA(nullptr, "line one\nline & two", "Caption", row.flags), row.answer);
        ASSERT_EQ(boxes.shown.size(), 1U);
        EXPECT_EQ(boxes.shown[0].flags, row.flags & kBoxFlagsTold);
        if (std::filesystem::path::preferred_separator == '\\')
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
    ExpectBoxes boxes({"Error: ", "c: ", "c: " + text});
    EXPECT_EQ(MessageBoxA(owner, "text", nullptr, MB_OK), IDOK);
    EXPECT_EQ(MessageBoxA(nullptr, nullptr, "c", MB_OK), IDOK);
    EXPECT_EQ(MessageBoxA(nullptr, text.c_str(), "c", MB_OK), IDOK);
    ASSERT_EQ(boxes.shown.size(), 3U);
    EXPECT_EQ(boxes.shown[0].owner, owner);
    EXPECT_EQ(boxes.shown[1].text, "");
    DestroyWindow(owner);
    EXPECT_LE(MessageBoxA(owner, "text", "c", MB_OK), 0);
}

// Boxes, allocation, window placement and help.
#include "frame/messages.h"

#include "frame/help.h"
#include "support/message_boxes.h"
#include "support/started_library.h"

class Messages : public StartedLibrary
{
};

TEST_F(Messages, WarningIsCutAndGivesNothing)
{
    std::string text(5000, 'w');
    {
        ExpectBoxes boxes({text.substr(0, 1999)});
        EXPECT_EQ(WarningBox("%s", text.c_str()), 0);
    }
    ExpectBoxes boxes({"Warning"});
    EXPECT_EQ(WarningBox(nullptr), 0);
}

TEST_F(Messages, CaptionIsTheProductsOrTheCallers)
{
    ExpectBoxes boxes({"text", "text"});
    EXPECT_EQ(OrvelMsg(nullptr, "text", nullptr, MB_OK), IDOK);
    EXPECT_EQ(OrvelMsg(nullptr, "text", "mine", MB_OK), IDOK);
    EXPECT_EQ(boxes.captions(), (std::vector<std::string>{"Orvel", "mine"}));
}

TEST_F(Messages, WindowComesToTheMiddleAndTopmost)
{
    HWND window = CreateWindowExA(0, "KerrinDLL", "", WS_POPUP, 5, 6, 101, 51, nullptr, nullptr,
                                  GetModuleHandleA(nullptr), nullptr);
    ASSERT_TRUE(window);
    EXPECT_TRUE(CenterWindow(window));
    RECT place;
    ASSERT_TRUE(GetWindowRect(window, &place));
    EXPECT_EQ(place.left, GetSystemMetrics(SM_CXSCREEN) / 2 - 50);
    EXPECT_EQ(place.top, GetSystemMetrics(SM_CYSCREEN) / 2 - 25);
    EXPECT_EQ(place.right - place.left, 101);
    EXPECT_EQ(place.bottom - place.top, 51);
    EXPECT_TRUE(GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_TOPMOST);
    DestroyWindow(window);
    EXPECT_FALSE(CenterWindow(window));
}

// Boxes, allocation, window placement and help.
#include "frame/messages.h"

#include "frame/help.h"
#include "frame/paths.h"
#include "runtime.h"
#include "support/message_boxes.h"
#include "support/started_library.h"
#include "testing/testing.h"

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

constexpr char kHelpControl[] = "CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";

// Only where the registry is the tests' own and there is no help control.
TEST_F(Messages, HelpThatCannotBeReachedIsSoughtOnce)
{
    if (!FailAllocationAfter(-1))
        GTEST_SKIP() << "the system has help of its own";
    char path[kPathSize];
    EXPECT_EQ(FindHelpLibrary(path), 0);
    for (size_t length : {259, 260, 261}) {
        StoreRegistryValue(HKEY_CLASSES_ROOT, kHelpControl, "", REG_BINARY,
                           std::string(length, 'p'));  // without a terminator
        EXPECT_EQ(FindHelpLibrary(path), length < kPathSize) << length;
    }
    EXPECT_EQ(ShowHelp(nullptr, "x", 0, 0), nullptr);
    std::string module = ProgramFolder() + "\\standin\\without-LaoOn\\Vesk.dll";
    ASSERT_NE(GetFileAttributesA(module.c_str()), INVALID_FILE_ATTRIBUTES);
    StoreRegistryValue(HKEY_CLASSES_ROOT, kHelpControl, "", REG_BINARY, module);
    EXPECT_EQ(ShowHelp(nullptr, "x", 0, 0), nullptr);
    EXPECT_EQ(GetModuleHandleA(module.c_str()), nullptr) << "a second attempt";
    RemoveRegistryKey(HKEY_CLASSES_ROOT, kHelpControl);
}

// The progress meter, judged by its windows.
#include "dialogs/attached.h"

#include <algorithm>
#include <commctrl.h>

#include "frame/records.h"
#include "resources/resource.h"
#include "runtime.h"
#include "support/message_boxes.h"
#include "support/temp_folder.h"
#include "testing/testing.h"
#include "xmlconv/convert.h"

class Meter : public AttachedDialogs
{
  protected:
    HWND Open(const char *label = "Working")
    {
        EXPECT_EQ(StartOrvelMeter(host_, label), 1);
        HWND meter = FindWindowA("#32770", nullptr);
        EXPECT_TRUE(meter);
        EXPECT_EQ(GetWindow(meter, GW_OWNER), host_);
        return meter;
    }
    static std::string Label(HWND meter)
    {
        char text[600];
        GetDlgItemTextA(meter, ID_METER_LABEL, text, sizeof text);
        return text;
    }
    static LRESULT Shown(HWND meter)
    {
        return SendDlgItemMessageA(meter, ID_METER_BAR, PBM_GETPOS, 0, 0);
    }
};

TEST_F(Meter, OpensInFrontWithItsLabelAndShowsPercentages)
{
    HWND meter = Open();
    EXPECT_TRUE(IsWindowVisible(meter));
    EXPECT_EQ(Label(meter), "Working");
    EXPECT_TRUE(GetWindowLongA(meter, GWL_EXSTYLE) & WS_EX_TOPMOST);
    RECT place;
    GetWindowRect(meter, &place);
    EXPECT_EQ(place.left, GetSystemMetrics(SM_CXSCREEN) / 2 - 231);
    for (auto [percent, shown] : {std::pair{0u, 0}, {45u, 45}, {100u, 100}, {3u, 3}, {250u, 100}}) {
        EXPECT_EQ(UpdateOrvelMeter(percent), 0);
        EXPECT_EQ(Shown(meter), shown) << percent;
    }
    for (const std::string &text : {std::string("next"), std::string(500, 'w')}) {
        SendMessageA(meter, RegisterWindowMessageA("ORVEL_SetLabel"), 0,
                     reinterpret_cast<LPARAM>(text.c_str()));
        EXPECT_EQ(Label(meter), text);
    }
    DrawnTextRecord drawn;
    if (DrawnText(meter, 3, &drawn)) {  // else the system draws on the screen
        EXPECT_STREQ(drawn.text, "Orvel");
        EXPECT_EQ(drawn.color, 0xC00000u) << "in front of its shine";
        EXPECT_EQ(drawn.align, UINT(TA_CENTER));
        EXPECT_FALSE(DrawnText(meter, 4, &drawn));
    }
}

TEST_F(Meter, CancelIsToldOnceAndClosesNothing)
{
    HWND meter = Open();
    for (int clicks = 0; clicks < 2; ++clicks)
        SendDlgItemMessageA(meter, ID_CANCEL, BM_CLICK, 0, 0);
    EXPECT_EQ(UpdateOrvelMeter(5), 1);
    EXPECT_EQ(UpdateOrvelMeter(6), 0);
    SendMessageA(meter, WM_COMMAND, MAKEWPARAM(ID_METER_BAR, BN_CLICKED), 0);
    EXPECT_EQ(UpdateOrvelMeter(7), 0);
    SendMessageA(meter, WM_CLOSE, 0, 0);
    DrainMessages();
    EXPECT_TRUE(IsWindow(meter));
    EXPECT_EQ(UpdateOrvelMeter(8), 1) << "closing asks for Cancel";
    SendDlgItemMessageA(meter, ID_CANCEL, BM_CLICK, 0, 0);
    EXPECT_EQ(CloseOrvelMeter(), 1);
    Open();
    EXPECT_EQ(UpdateOrvelMeter(1), 0) << "of the meter before";
}

TEST_F(Meter, ThereIsAtMostOneAndItGoesWithItsParent)
{
    EXPECT_EQ(UpdateOrvelMeter(5) + CloseOrvelMeter(), 0);
    HWND parent = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr,
                                  GetModuleHandleA(nullptr), nullptr);
    EXPECT_EQ(StartOrvelMeter(parent, "first"), 1);
    EXPECT_EQ(StartOrvelMeter(host_, "second"), 0);
    EXPECT_EQ(Label(FindWindowA("#32770", nullptr)), "first");
    DestroyWindow(parent);
    EXPECT_EQ(UpdateOrvelMeter(5) + CloseOrvelMeter(), 0);
    EXPECT_EQ(StartOrvelMeter(parent, "dead parent"), 0);
    EXPECT_EQ(StartOrvelMeter(nullptr, nullptr), 1);
    EXPECT_EQ(CloseOrvelMeter(), 1);
}

TEST_F(Meter, KeysPressCancelWhileItIsActive)
{
    HWND meter = Open();
    ASSERT_EQ(GetActiveWindow(), meter);
    EXPECT_EQ(GetFocus(), GetDlgItem(meter, ID_CANCEL));
    for (auto [key, cancelled] : {std::pair{VK_RETURN, 1},
                                  {VK_SPACE, 1},
                                  {VK_TAB, 0},
                                  {VK_DOWN, 0},
                                  {0 + 'C', 0},
                                  {VK_ESCAPE, 1}}) {
        PressKey(BYTE(key));
        EXPECT_EQ(UpdateOrvelMeter(1), cancelled) << key;
        EXPECT_EQ(GetFocus(), GetDlgItem(meter, ID_CANCEL)) << key;
    }
    SetActiveWindow(host_);
    PressKey(VK_ESCAPE);
    EXPECT_EQ(UpdateOrvelMeter(1), 0) << "the host has the keys";
}

static int gTraces;

static LRESULT CALLBACK Monitor(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    gTraces += message == 0x5F3 && wParam == ID_CANCEL && lParam == 0xABC3;
    return DefWindowProcA(window, message, wParam, lParam);
}

TEST_F(Meter, TellsTheMonitorOfItsCommands)
{
    HWND meter = Open();
    for (const char *title : {"--- Show it ---", "a --- Show It --- b"}) {
        HWND monitor = CreateWindowExA(0, "STATIC", title, WS_POPUP, 0, 0, 9, 9, nullptr, nullptr,
                                       GetModuleHandleA(nullptr), nullptr);
        SetProcedure(monitor, Monitor);
        gTraces = 0;
        SendDlgItemMessageA(meter, ID_CANCEL, BM_CLICK, 0, 0);
        EXPECT_EQ(gTraces, title[0] == 'a') << title;
        DestroyWindow(monitor);
    }
}

// ---- the meter of a conversion ----

static int gMetersAtBoxes;

static int LookForMeter(HWND, const char *, const char *, UINT)
{
    gMetersAtBoxes += CloseOrvelMeter();
    return IDOK;
}

// A meter of the host's serves it too and is closed with it.
TEST_F(Meter, OfAConversionIsGoneBeforeItsBoxes)
{
    std::string folder = FreshFolder(), in = folder + "\\in.xml", out = folder + "\\out.xml";
    ASSERT_TRUE(WriteWholeFile(in, "<a b='c'>"));
    HWND meter = Open();
    MessageBoxAnswerer before = SetMessageBoxAnswerer(LookForMeter);
    gMetersAtBoxes = 0;
    EXPECT_EQ(ConvertFile(in.c_str(), out.c_str()), 269u);
    EXPECT_EQ(ConvertFile((folder + "\\none.xml").c_str(), out.c_str()), 926u);
    SetMessageBoxAnswerer(before);
    EXPECT_EQ(gMetersAtBoxes, 0);
    EXPECT_FALSE(IsWindow(meter));
}

static std::vector<int> gProgress;
static WNDPROC gBarProc;

static LRESULT CALLBACK WatchBar(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == PBM_SETPOS)
        gProgress.push_back(int(wParam));
    return CallWindowProcA(gBarProc, window, message, wParam, lParam);
}

// The long tag in the middle is noted as two restarts and steps over some percents.
TEST_F(Meter, OfAConversionRisesOnceForEachPercentThroughRestarts)
{
    std::string folder = FreshFolder(), in = folder + "\\in.xml", out = folder + "\\out.xml";
    std::string tags;
    for (int i = 0; i < 5000; ++i)
        tags += "<a/>";
    ASSERT_TRUE(WriteWholeFile(in, tags + "<b c=\"" + std::string(3000, 'v') + "\"/>" + tags));
    HWND bar = GetDlgItem(Open(), ID_METER_BAR);
    gProgress.clear();
    gBarProc = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(bar, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(WatchBar)));
    gConverter.sizes = kFirstSizes;
    ExpectBoxes boxes({"increased to 2048\r\nRestarted: tag buffer increased to 4096"});
    EXPECT_EQ(ConvertFile(in.c_str(), out.c_str()), 0u);
    EXPECT_EQ(std::ranges::adjacent_find(gProgress, std::greater_equal{}), gProgress.end());
    ASSERT_GT(gProgress.size(), 90u);
    EXPECT_EQ(gProgress.front(), 1);
    EXPECT_EQ(gProgress.back(), 100);
}

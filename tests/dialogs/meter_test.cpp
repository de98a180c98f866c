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

static std::string SizeOf(HWND window)
{
    RECT rect = {};
    GetWindowRect(window, &rect);
    return std::to_string(rect.right - rect.left) + " x " + std::to_string(rect.bottom - rect.top);
}

TEST_F(Meter, OpensInTheMiddleWithItsLabelAtZero)
{
    HWND meter = Open();
    EXPECT_TRUE(IsWindowVisible(meter));
    EXPECT_EQ(Label(meter), "Working");
    EXPECT_EQ(Shown(meter), 0);
    RECT outer, label, bar, cancel;
    GetWindowRect(meter, &outer);
    EXPECT_EQ(outer.left, GetSystemMetrics(SM_CXSCREEN) / 2 - 231);
    EXPECT_EQ(outer.top, GetSystemMetrics(SM_CYSCREEN) / 2 - 75);
    EXPECT_TRUE(GetWindowLongA(meter, GWL_EXSTYLE) & WS_EX_TOPMOST);
    EXPECT_EQ(SizeOf(meter), "462 x 151");
    EXPECT_EQ(SizeOf(GetDlgItem(meter, ID_METER_LABEL)), "435 x 16");
    EXPECT_EQ(SizeOf(GetDlgItem(meter, ID_METER_BAR)), "270 x 20");
    EXPECT_EQ(SizeOf(GetDlgItem(meter, ID_CANCEL)), "95 x 21");
    GetWindowRect(GetDlgItem(meter, ID_METER_LABEL), &label);
    GetWindowRect(GetDlgItem(meter, ID_METER_BAR), &bar);
    GetWindowRect(GetDlgItem(meter, ID_CANCEL), &cancel);
    EXPECT_EQ(bar.left - label.left, 95 - 11);
    EXPECT_EQ(bar.top - label.top, 82 - 56);
    EXPECT_EQ(cancel.left - bar.left, 182 - 95);
    EXPECT_EQ(cancel.top - bar.top, 114 - 82);
}

TEST_F(Meter, ShowsPercentagesUpToAHundred)
{
    HWND meter = Open();
    for (auto [percent, shown] :
         {std::pair{0u, 0}, {45u, 45}, {100u, 100}, {3u, 3}, {250u, 100}, {0xFFFFFFFFu, 100}}) {
        EXPECT_EQ(UpdateOrvelMeter(percent), 0);
        EXPECT_EQ(Shown(meter), shown) << percent;
    }
}

TEST_F(Meter, CancelIsToldOnceAndClosesNothing)
{
    HWND meter = Open();
    SendDlgItemMessageA(meter, ID_CANCEL, BM_CLICK, 0, 0);
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

TEST_F(Meter, ThereIsAtMostOne)
{
    EXPECT_EQ(UpdateOrvelMeter(5), 0);
    EXPECT_EQ(CloseOrvelMeter(), 0);
    HWND meter = Open("first");
    EXPECT_EQ(StartOrvelMeter(host_, "second"), 0);
    EXPECT_EQ(Label(meter), "first");
    EXPECT_EQ(CloseOrvelMeter(), 1);
    EXPECT_FALSE(IsWindow(meter));
    EXPECT_EQ(CloseOrvelMeter(), 0);
    EXPECT_EQ(StartOrvelMeter(meter, "dead parent"), 0);
    EXPECT_EQ(StartOrvelMeter(nullptr, nullptr), 1);
    EXPECT_EQ(CloseOrvelMeter(), 1);
}

TEST_F(Meter, GoesWithItsParent)
{
    HWND parent = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr,
                                  GetModuleHandleA(nullptr), nullptr);
    EXPECT_EQ(StartOrvelMeter(parent, "x"), 1);
    DestroyWindow(parent);
    EXPECT_EQ(UpdateOrvelMeter(5), 0);
    EXPECT_EQ(CloseOrvelMeter(), 0);
    EXPECT_TRUE(Open());
}

TEST_F(Meter, HostsCanChangeTheLabel)
{
    HWND meter = Open();
    UINT setLabel = RegisterWindowMessageA("ORVEL_SetLabel");
    std::string texts[] = {"next", "", std::string(500, 'w'), "a\xE9"};
    for (const std::string &text : texts) {
        SendMessageA(meter, setLabel, 0, reinterpret_cast<LPARAM>(text.c_str()));
        EXPECT_EQ(Label(meter), text);
    }
}

TEST_F(Meter, KeysPressCancelWhileItIsActive)
{
    HWND meter = Open();
    ASSERT_EQ(GetActiveWindow(), meter);
    EXPECT_EQ(GetFocus(), GetDlgItem(meter, ID_CANCEL));
    struct Row {
        BYTE key;
        int cancelled;
    } const rows[] = {{VK_ESCAPE, 1}, {VK_RETURN, 1}, {VK_SPACE, 1}, {VK_TAB, 0},
                      {VK_DOWN, 0},   {'C', 0},       {VK_ESCAPE, 1}};
    for (const Row &row : rows) {
        PressKey(row.key);
        EXPECT_EQ(UpdateOrvelMeter(1), row.cancelled) << int(row.key);
        EXPECT_EQ(GetFocus(), GetDlgItem(meter, ID_CANCEL)) << int(row.key);
    }
    SetActiveWindow(host_);
    PressKey(VK_ESCAPE);
    EXPECT_EQ(UpdateOrvelMeter(1), 0) << "the host has the keys";
}

static std::vector<std::string> gTraces;

static LRESULT CALLBACK Monitor(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == 0x5F3)
        gTraces.push_back(std::to_string(wParam) + " " + std::to_string(lParam));
    return DefWindowProcA(window, message, wParam, lParam);
}

TEST_F(Meter, TellsTheMonitorOfItsCommands)
{
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = Monitor;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszClassName = "OrvelMonitor";
    ASSERT_TRUE(RegisterClassA(&windowClass));
    gTraces.clear();
    HWND meter = Open();
    SendDlgItemMessageA(meter, ID_CANCEL, BM_CLICK, 0, 0);
    for (const char *title : {"a --- Show It --- b", "--- Show it ---"}) {
        HWND monitor = CreateWindowExA(0, "OrvelMonitor", title, WS_POPUP, 0, 0, 9, 9, nullptr,
                                       nullptr, windowClass.hInstance, nullptr);
        SendDlgItemMessageA(meter, ID_CANCEL, BM_CLICK, 0, 0);
        DestroyWindow(monitor);
    }
    EXPECT_EQ(gTraces, (std::vector<std::string>{"2 43971"})) << "0xABC3, of the first alone";
    CloseOrvelMeter();
    EXPECT_TRUE(UnregisterClassA("OrvelMonitor", windowClass.hInstance));
}

TEST_F(Meter, LeavesNothingBehind)
{
    HANDLE process = GetCurrentProcess();
    DWORD windows = GetGuiResources(process, GR_USEROBJECTS);
    DWORD drawing = GetGuiResources(process, GR_GDIOBJECTS);
    for (int i = 0; i < 300; ++i) {
        ASSERT_EQ(StartOrvelMeter(host_, "x"), 1) << i;
        UpdateOrvelMeter(DWORD(i % 100));
        DrainMessages();
        ASSERT_EQ(CloseOrvelMeter(), 1);
    }
    EXPECT_LE(GetGuiResources(process, GR_USEROBJECTS), windows + 10);
    EXPECT_LE(GetGuiResources(process, GR_GDIOBJECTS), drawing + 10);
}

TEST_F(Meter, IsPaintedWithTheProductsName)
{
    HWND meter = Open();
    DrawnTextRecord drawn;
    if (!DrawnText(meter, 0, &drawn))
        GTEST_SKIP() << "the system draws on the screen";
    struct Row {
        int x, y;
        COLORREF color;
    } const rows[] = {
        {231, 13, 0xFFC000}, {232, 12, 0xFFC000}, {232, 13, 0xFFC000}, {231, 12, 0xC00000}};
    for (int i = 0; i < 4; ++i) {
        ASSERT_TRUE(DrawnText(meter, i, &drawn)) << i;
        EXPECT_STREQ(drawn.text, "Orvel");
        EXPECT_EQ(drawn.x, rows[i].x);
        EXPECT_EQ(drawn.y, rows[i].y);
        EXPECT_EQ(drawn.color, rows[i].color) << i;
        EXPECT_EQ(drawn.align, UINT(TA_CENTER));
        EXPECT_EQ(drawn.backgroundMode, TRANSPARENT);
        EXPECT_EQ(drawn.font.lfHeight, -30);
        EXPECT_STREQ(drawn.font.lfFaceName, "Brush Script MT");
    }
    EXPECT_FALSE(DrawnText(meter, 4, &drawn));
}

// ---- the meter of a conversion ----

static int gMetersAtBoxes;

static int LookForMeter(HWND, const char *, const char *, UINT)
{
    gMetersAtBoxes += CloseOrvelMeter();
    return IDOK;
}

TEST_F(Meter, OfAConversionIsGoneBeforeItsBoxes)
{
    std::string folder = FreshFolder(), in = folder + "\\in.xml", out = folder + "\\out.xml";
    ASSERT_TRUE(WriteWholeFile(in, "<a b='c'>"));
    MessageBoxAnswerer before = SetMessageBoxAnswerer(LookForMeter);
    gMetersAtBoxes = 0;
    EXPECT_EQ(ConvertFile(in.c_str(), out.c_str()), 269u);
    EXPECT_EQ(ConvertFile((folder + "\\none.xml").c_str(), out.c_str()), 926u);
    SetMessageBoxAnswerer(before);
    EXPECT_EQ(gMetersAtBoxes, 0);
    EXPECT_EQ(ConvertFile(nullptr, out.c_str()), 920u);
    EXPECT_EQ(CloseOrvelMeter(), 0) << "closed";
}

static std::vector<int> gProgress;
static WNDPROC gBarProc;

static LRESULT CALLBACK WatchBar(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == PBM_SETPOS)
        gProgress.push_back(int(wParam));
    return CallWindowProcA(gBarProc, window, message, wParam, lParam);
}

// Small tags, and a long one in the middle that is noted as two restarts and steps over some
// percents.
TEST_F(Meter, OfAConversionRisesOnceForEachPercentThroughRestarts)
{
    std::string folder = FreshFolder(), in = folder + "\\in.xml", out = folder + "\\out.xml";
    std::string tags, document;
    for (int i = 0; i < 5000; ++i)
        tags += "<a/>";
    document = tags + "<b c=\"" + std::string(3000, 'v') + "\"/>" + tags;
    ASSERT_TRUE(WriteWholeFile(in, document));
    HWND bar = GetDlgItem(Open(), ID_METER_BAR);
    gProgress.clear();
    gBarProc = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(bar, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(WatchBar)));
    gConverter.sizes = kFirstSizes;
    {
        ExpectBoxes boxes({"increased to 2048\r\nRestarted: tag buffer increased to 4096"});
        EXPECT_EQ(ConvertFile(in.c_str(), out.c_str()), 0u);
    }
    EXPECT_TRUE(std::is_sorted(gProgress.begin(), gProgress.end()));
    EXPECT_EQ(std::adjacent_find(gProgress.begin(), gProgress.end()), gProgress.end());
    EXPECT_GT(gProgress.size(), 90u);
    ASSERT_FALSE(gProgress.empty());
    EXPECT_EQ(gProgress.front(), 1);
    EXPECT_EQ(gProgress.back(), 100);
}

// A meter that is open already serves the conversion too, and is closed with it.
TEST_F(Meter, OfTheHostDoesNotStandInTheWay)
{
    std::string folder = FreshFolder(), in = folder + "\\in.xml", out = folder + "\\out.xml";
    ASSERT_TRUE(WriteWholeFile(in, "<a>text</a>"));
    HWND meter = Open();
    EXPECT_EQ(ConvertFile(in.c_str(), out.c_str()), 0u);
    EXPECT_FALSE(IsWindow(meter));
    EXPECT_EQ(ReadWholeFile(out), "<a>text</a>");
}

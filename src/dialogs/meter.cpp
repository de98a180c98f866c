// The progress meter: a label, a bar and a Cancel button. The document converter and hosts open it,
// update it while they work, and close it; there is at most one. Nobody runs a message loop
// meanwhile, so the update is what paints it, and Cancel only leaves a mark, of which the next
// update tells its caller.
#include "frame/library.h"

#include <commctrl.h>

#include "dialogs/caption.h"
#include "dialogs/keyboard_hook.h"
#include "dialogs/show_it.h"
#include "orvel.h"
#include "resources/resource.h"

struct MeterState {
    HWND dialog;        // null while closed
    DWORD cancelLatch;  // set by Cancel, cleared by the update that tells of it
};
static MeterState gMeter;

constexpr LPARAM kMeterTrace = 0xABC3;

// Place and size of a control in the dialog's client area.
struct ControlPlace {
    int id;
    int x, y, width, height;
};

static constexpr ControlPlace kControlPlaces[] = {
    // pixels
    {ID_METER_LABEL, 11, 56, 435, 16},
    {ID_CANCEL, 182, 114, 95, 21},
    {ID_METER_BAR, 95, 82, 270, 20},
};

static void PlaceControls(HWND dialog)
{
    SetWindowPos(dialog, nullptr, 0, 0, 462, 151, SWP_NOMOVE | SWP_NOZORDER);
    for (const ControlPlace &place : kControlPlaces)
        SetWindowPos(GetDlgItem(dialog, place.id), nullptr, place.x, place.y, place.width,
                     place.height, SWP_NOZORDER);
}

static INT_PTR InitMeter(HWND dialog, const char *label)
{
    gMeter.cancelLatch = 0;  // a meter before this one may have been cancelled
    PlaceControls(dialog);
    CenterWindow(dialog);
    SendDlgItemMessageA(dialog, ID_METER_BAR, PBM_SETPOS, 0, 0);
    SetDlgItemTextA(dialog, ID_METER_LABEL, label);
    InstallDialogKeyHook(dialog);
    return 1;
}

// A host's message; painted now, as nobody else will.
static INT_PTR SetLabel(HWND dialog, const char *label)
{
    SetDlgItemTextA(dialog, ID_METER_LABEL, label);
    UpdateWindow(GetDlgItem(dialog, ID_METER_LABEL));
    return 1;
}

static INT_PTR PaintMeter(HWND dialog)
{
    constexpr CaptionStyle kStyle = {nullptr, -30, FW_NORMAL, 0, 0xC00000};
    PAINTSTRUCT paint;
    HDC context = BeginPaint(dialog, &paint);
    PaintCaption(dialog, context, nullptr, {-1, 12}, &kStyle);
    EndPaint(dialog, &paint);
    return 0;
}

static INT_PTR MeterCommand(WPARAM command)
{
    ShowItTrace(command, kMeterTrace);
    if (LOWORD(command) == ID_CANCEL)
        gMeter.cancelLatch = 1;
    return 0;
}

// The host may destroy the dialog with its parent.
static INT_PTR MeterDestroyed(HWND dialog)
{
    RemoveDialogKeyHook();
    if (gMeter.dialog == dialog)
        gMeter.dialog = nullptr;
    return 0;
}

static INT_PTR CALLBACK MeterDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == RegisteredMessage(kSetLabel))
        return SetLabel(dialog, reinterpret_cast<const char *>(lParam));
    if (message == RegisteredMessage(kSpecialKeys))
        return HandleSpecialKeys(dialog, message, wParam, lParam);
    switch (message) {
    case WM_INITDIALOG: return InitMeter(dialog, reinterpret_cast<const char *>(lParam));
    case WM_DESTROY: return MeterDestroyed(dialog);
    case WM_PAINT: return PaintMeter(dialog);
    case WM_COMMAND: return MeterCommand(wParam);
    }
    return 0;
}

static bool IsMeterOpen()
{
    return gMeter.dialog && IsWindow(gMeter.dialog);
}

int WINAPI StartOrvelMeter(HWND parent, const char *label)
{
    if (IsMeterOpen())
        return 0;
    gMeter.dialog = CreateDialogParamA(gProcess.instance, "Meter", parent, MeterDlgProc,
                                       reinterpret_cast<LPARAM>(label));
    if (!gMeter.dialog)
        return 0;
    UpdateWindow(gMeter.dialog);
    ShowWindow(gMeter.dialog, SW_SHOW);
    return 1;
}

int WINAPI UpdateOrvelMeter(DWORD percent)
{
    if (!IsMeterOpen())
        return 0;
    int wasCancelled = int(gMeter.cancelLatch);
    gMeter.cancelLatch = 0;
    SendDlgItemMessageA(gMeter.dialog, ID_METER_BAR, PBM_SETPOS, percent > 100 ? 100 : percent, 0);
    UpdateWindow(gMeter.dialog);
    ShowWindow(gMeter.dialog, SW_SHOW);
    return wasCancelled;
}

int WINAPI CloseOrvelMeter(void)
{
    return IsMeterOpen() && DestroyWindow(gMeter.dialog);
}

// msctls_progress32: a bar whose position stays within its range, whatever is asked for.
#include <commctrl.h>

#include "controls/control_classes.h"
#include "windows/window_table.h"

struct ProgressData {
    int low, high;  // the range; high is never below low
    int position;   // within the range
};

// The nearest position of the range.
static int Within(const ProgressData *bar, int position)
{
    if (position < bar->low)
        return bar->low;
    return position > bar->high ? bar->high : position;
}

// The position from before.
static LRESULT MoveBar(WindowRecord *window, ProgressData *bar, int position)
{
    int before = bar->position;
    bar->position = Within(bar, position);
    if (bar->position != before)
        window->needsPaint = true;
    return before;
}

// The range from before, as the message packs it.
static LRESULT SetBarRange(WindowRecord *window, ProgressData *bar, int low, int high)
{
    LRESULT before = MAKELONG(bar->low, bar->high);
    bar->low = low;
    bar->high = high > low ? high : low;
    MoveBar(window, bar, bar->position);
    return before;
}

static LRESULT CALLBACK ProgressProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    WindowRecord *record = FindWindowRecord(window);
    ProgressData *bar =
        record ? static_cast<ProgressData *>(ClassData(record, ProgressProc)) : nullptr;
    if (!bar)
        return 0;
    switch (message) {
    case WM_CREATE: SetBarRange(record, bar, 0, 100); return 0;
    case PBM_SETRANGE: return SetBarRange(record, bar, LOWORD(lParam), HIWORD(lParam));
    case PBM_SETPOS: return MoveBar(record, bar, int(wParam));
    case PBM_GETPOS: return bar->position;
    }
    return DefControlProc(window, message, wParam, lParam);
}

const ControlClass kProgressControl = {PROGRESS_CLASSA, ProgressProc, sizeof(ProgressData)};

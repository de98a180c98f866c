// STATIC: a text that a dialog shows. It is painted anew when the text changes.
#include "controls/control_classes.h"
#include "windows/window_table.h"

static LRESULT CALLBACK StaticProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    WindowRecord *record = FindWindowRecord(window);
    switch (message) {
    case WM_GETDLGCODE: return DLGC_STATIC;
    case WM_SETTEXT:
        if (record)
            record->needsPaint = true;
        break;
    }
    return DefControlProc(window, message, wParam, lParam);
}

const ControlClass kStaticControl = {"STATIC", StaticProc, 0};

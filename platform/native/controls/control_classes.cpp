// Registers the layer's own window classes when the layer is loaded, so that the folder of windows
// need not know any of them. They belong to no module: every program sees them.
#include "controls/control_classes.h"

#include <iterator>

#include "windows/window_table.h"

static const ControlClass *const kControls[] = {
    &kStaticControl, &kButtonControl,   &kEditControl,
    &kComboControl,  &kProgressControl, &kDialogControl,
};

static WindowClass gRecords[std::size(kControls)];  // a row each

__attribute__((constructor)) static void RegisterControls()
{
    for (size_t i = 0; i < std::size(kControls); ++i) {
        gRecords[i].procedure = kControls[i]->procedure;
        gRecords[i].dataSize = kControls[i]->dataSize;
        AddSystemClass(&gRecords[i], kControls[i]->name);
    }
}

LRESULT DefControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    WindowRecord *record = FindWindowRecord(window);
    if (record && message == WM_SETFONT) {
        record->font = reinterpret_cast<HFONT>(wParam);
        record->needsPaint = true;
        return 0;
    }
    if (record && message == WM_GETFONT)
        return reinterpret_cast<LRESULT>(record->font);
    return DefWindowProcA(window, message, wParam, lParam);
}

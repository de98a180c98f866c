// Registers the layer's own window classes when the layer is loaded, so that the folder of windows
// need not know any of them. They belong to no module: every program sees them.
#include "controls/control_classes.h"

#include <iterator>

#include "windows/classes.h"

static const ControlClass *const kControls[] = {
    &kStaticControl,
    &kButtonControl,
    &kProgressControl,
    &kDialogControl,
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

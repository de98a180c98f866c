// The classes that the layer brings along, one file for each: its name, its procedure and what each
// window of it keeps. A new control is a new file, a line here and a row in control_classes.cpp.
#ifndef ORVEL_PLATFORM_NATIVE_CONTROLS_CONTROL_CLASSES_H
#define ORVEL_PLATFORM_NATIVE_CONTROLS_CONTROL_CLASSES_H

#include <windows.h>

struct ControlClass {
    const char *name;
    WNDPROC procedure;
    size_t dataSize;  // bytes of the record that ClassData gives the procedure; 0: none
};

// What all of them do alike with a message that a control leaves: they keep the handle of the font
// that they were told to use, which stays the teller's.
LRESULT DefControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

extern const ControlClass kStaticControl;    // static_control.cpp
extern const ControlClass kButtonControl;    // button.cpp
extern const ControlClass kEditControl;      // edit.cpp
extern const ControlClass kComboControl;     // combo.cpp
extern const ControlClass kProgressControl;  // progress.cpp
extern const ControlClass kDialogControl;    // dialog.cpp

#endif

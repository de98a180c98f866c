// What a dialog keeps, for the files of the dialog manager.
#ifndef ORVEL_PLATFORM_NATIVE_CONTROLS_DIALOG_H
#define ORVEL_PLATFORM_NATIVE_CONTROLS_DIALOG_H

#include "windows/window_table.h"

struct DialogData {
    DLGPROC procedure;  // the program's; null: all is handled by default
    int defaultId;      // of the button that Return presses; 0: there is none
    HFONT font;         // of the dialog and its controls, owned; null: the system's
    HWND leftFocus;     // the control that had the focus when another window became active
    bool hasEnded;      // EndDialog was called
    INT_PTR result;     // that it was called with
};

// Null for a window that isn't there or isn't a dialog.
DialogData *FindDialogData(HWND dialog);

// Whether the control says of itself that it is a default push button.
bool IsDefaultButton(HWND control);

// Where the control's group begins: at the nearest control with WS_GROUP, itself included. It goes
// on to the next one.
WindowRecord *FirstOfGroup(const WindowRecord *control);

// Gives a control the focus as the dialog manager does: the text of an edit box is selected.
void FocusControl(HWND control);

// The default look goes along then, to a push button or back to the dialog's own default.
void FocusControlByKey(HWND dialog, HWND control);

#endif

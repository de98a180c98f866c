// The Lao keyboard of a modeless dialog. It delivers the internal code while an edit box of the
// dialog has the focus; anywhere else, above all in the host's document, the mode word is the
// host's own. One dialog types at a time, so one that opens over another knows the host's word from
// it.
#pragma once

#include <windows.h>

struct LaoInput {
    DWORD savedMode;  // the mode word that is the host's
};

// Bits of the mode word: font code, keyboard on, and one that dialogs switch along.
enum : DWORD { kLaoTyping = 48, kLaoKeyboard = 16, kLaoKeyboardMask = 31, kDialogMode = 63 };

// The dialog opens: keeps the host's mode word and turns the keyboard on.
void BeginLaoInput(LaoInput *input);
// A box gains the focus: sets these bits under the mask.
void TurnLaoInputOn(LaoInput *input, DWORD value, DWORD mask);
// A box loses the focus, or the dialog closes.
void TurnLaoInputOff(LaoInput *input);
// The dialog is gone, perhaps with its owner and without a word before: the mode word must not stay
// its own.
void EndLaoInput(LaoInput *input);

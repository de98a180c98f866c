// The keyboard interface of modeless dialogs. They live on the host's message loop, which doesn't
// know them and hands their keys to no one: a hook posts Tab, Return, Escape and Space to the
// dialog, which acts on them when the message arrives. One hook serves one dialog at a time.
#pragma once

#include <windows.h>

// From WM_INITDIALOG: the hook serves this dialog. Does nothing while there is a hook, whichever
// dialog it serves; without a hook to be had the dialog works by mouse alone.
void InstallDialogKeyHook(HWND dialog);

// From WM_DESTROY: removes the hook, whichever dialog it serves.
void RemoveDialogKeyHook();

// Acts on a key that the hook has posted, in the dialog that the hook serves. 1 for that message, 0
// for any other.
int HandleSpecialKeys(HWND dialog, UINT message, WPARAM key, LPARAM keyData);

// The editor from outside, as a person has it: another program that starts it, presses keys, clicks
// buttons and reads what it shows. For the test of a whole session and for the pictures.
#pragma once

#include <string>
#include <windows.h>

// Starts the editor that stands beside this program with a UTF-8 file. Null when no window comes.
HWND StartEditor(const std::wstring &file);

// Chooses a command of the menu. It may open a dialog, so this doesn't wait for its end.
void Choose(HWND editor, int command);

// The dialog of this title, when it is up and has the keyboard. Null when it doesn't come.
HWND WaitForDialog(const wchar_t *title);

// Whether a window has gone, or goes soon.
bool WaitForEnd(HWND window);

// Until the thread of a window has done what was sent and posted to it.
void WaitForIdle(HWND window);

// Clicks a button of a dialog, as WaitForIdle knows.
void Click(HWND dialog, int button);

// Presses keys on the keyboard, in the window that has it: a text, or one key with Control or
// without.
void TypeText(const std::wstring &text);
void PressKey(BYTE key, bool withControl = false);

// The text of a window of any program.
std::wstring ReadWindow(HWND window);

// The editor's document, once it is the text wanted; else what it stays.
std::wstring WaitForDocument(HWND editor, const std::wstring &wanted);

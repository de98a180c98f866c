// What every dialog does with its controls, by their ids: lists, boxes, buttons, and the Lao font.
#pragma once

#include <windows.h>

#include "resources/resource.h"

// ---- lists of combo boxes; positions count from 0, -1 is none ----

// Gives the position at which the text came to stand.
int AddListItem(HWND dialog, int list, const char *text);
// Takes all items out, and the text of an edit part with them.
void EmptyList(HWND dialog, int list);
int SelectedItem(HWND dialog, int list);
void SelectItem(HWND dialog, int list, int position);
// The item that is this text, in any case; -1 when there is none.
int FindListItem(HWND dialog, int list, const char *text);
// The item's text when it fits size bytes with its terminator: its length, else 0 and no text.
int CopyListItem(HWND dialog, int list, int position, char *text, int size);

// ---- boxes and buttons ----

bool IsChecked(HWND dialog, int box);
void CheckBox(HWND dialog, int box, bool isChecked);
void EnableControl(HWND dialog, int control, bool isEnabled);
void ShowControl(HWND dialog, int control, bool isShown);
// The button that Return presses.
void SetDefaultButton(HWND dialog, int button);

// ---- room ----

// Templates give some texts less room than they need in the fonts that systems have today. The
// label in front of a control then reaches up to it; a list becomes wider by a part of its width.
void WidenLabelOf(HWND dialog, int control);
void WidenList(HWND dialog, int list, int percent);

// ---- texts in Lao ----

// The font of controls that hold Lao in the internal code; its owner gives it back by DeleteObject.
HFONT CreateLaoFont();
void SetControlFont(HWND dialog, int control, HFONT font);
// Paints a control anew: a combining sign changes what stands before it.
void RedrawControl(HWND dialog, int control);

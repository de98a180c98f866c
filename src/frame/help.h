// The help viewer. The help library is loaded at the first use and stays; once it can't be reached
// no further attempt is made.
#pragma once

#include "frame/records.h"

// Asks the viewer to show a topic (command 0, data 0). What it gives; 0 when it can't be reached.
HWND ShowHelp(HWND window, const char *path, UINT command, DWORD_PTR data);

// Path of the registered help control in buffer (kPathSize bytes): 1 when it was read, else 0.
int FindHelpLibrary(char *buffer);

// Shows a topic of the library's own help file, as in "src/word/sorting_lao.html". Nothing happens
// without an install folder or a viewer.
void ShowHelpTopic(HWND window, const char *topic);

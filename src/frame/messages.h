// Message boxes and the allocation that tells of its failure.
#pragma once

#include <windows.h>

// Shows a formatted text (as vsprintf; cut at 1999 bytes; "Warning" without a format) and gives 0,
// so that an operation can end in it.
int WarningBox(const char *format, ...) __attribute__((format(printf, 1, 2)));

// GlobalAlloc with a message when it gives null.
void *CheckedGlobalAlloc(UINT flags, size_t size);

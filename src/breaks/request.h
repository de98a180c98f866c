// What a call of WrapText or DivideText asks for, read from its flags and from the options.
#pragma once

#include <windows.h>

struct BreakRequest {
    bool insert;  // breaks are wanted, and there is something to find them by
    DWORD flags;  // for MarkBreakPoints
};

BreakRequest ReadBreakRequest(DWORD flags);

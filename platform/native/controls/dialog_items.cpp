// A dialog's controls: by their number, with their texts, numbers and check marks.
#include <limits.h>
#include <stdio.h>

#include "windows/window_table.h"

// The first control of this number; a dialog that has none gives null.
HWND WINAPI GetDlgItem(HWND dialog, int id)
{
    WindowRecord *record = FindWindowRecord(dialog);
    if (!record)
        return nullptr;
    for (WindowRecord *child = record->firstChild; child; child = child->next) {
        if (int(child->id) == id)
            return child->handle;
    }
    SetLastError(ERROR_CONTROL_ID_NOT_FOUND);
    return nullptr;
}

int WINAPI GetDlgCtrlID(HWND control)
{
    WindowRecord *record = FindWindowRecord(control);
    return record ? int(record->id) : 0;
}

// For a control that isn't there nothing is done, and the caller hears it.
BOOL WINAPI SetDlgItemTextA(HWND dialog, int id, LPCSTR text)
{
    HWND control = GetDlgItem(dialog, id);
    return control && SetWindowTextA(control, text);
}

// A control that isn't there has an empty text: the buffer is written in any case.
UINT WINAPI GetDlgItemTextA(HWND dialog, int id, LPSTR text, int size)
{
    HWND control = GetDlgItem(dialog, id);
    if (control)
        return UINT(GetWindowTextA(control, text, size));
    if (text && size > 0)
        text[0] = '\0';
    return 0;
}

LRESULT WINAPI SendDlgItemMessageA(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam)
{
    HWND control = GetDlgItem(dialog, id);
    return control ? SendMessageA(control, message, wParam, lParam) : 0;
}

// Blanks in front are passed over, and what follows the digits is left. A number that doesn't fit
// is none, and none is 0.
UINT WINAPI GetDlgItemInt(HWND dialog, int id, BOOL *isNumber, BOOL isSigned)
{
    char text[64];
    GetDlgItemTextA(dialog, id, text, sizeof text);
    const char *at = text;
    while (*at == ' ')
        ++at;
    bool isNegative = isSigned && *at == '-';
    at += isNegative;
    uint64_t limit = isSigned ? uint64_t(INT_MAX) + isNegative : UINT_MAX;
    uint64_t number = 0;
    bool hasDigits = false;
    for (; *at >= '0' && *at <= '9' && number <= limit; ++at) {
        number = number * 10 + unsigned(*at - '0');
        hasDigits = true;
    }
    bool isGood = hasDigits && number <= limit;
    if (isNumber)
        *isNumber = isGood;
    if (!isGood)
        return 0;
    return isNegative ? 0u - UINT(number) : UINT(number);
}

BOOL WINAPI SetDlgItemInt(HWND dialog, int id, UINT value, BOOL isSigned)
{
    char text[16];
    snprintf(text, sizeof text, isSigned ? "%d" : "%u", value);
    return SetDlgItemTextA(dialog, id, text);
}

BOOL WINAPI CheckDlgButton(HWND dialog, int id, UINT check)
{
    HWND button = GetDlgItem(dialog, id);
    if (button)
        SendMessageA(button, BM_SETCHECK, check, 0);
    return button != nullptr;
}

UINT WINAPI IsDlgButtonChecked(HWND dialog, int id)
{
    return UINT(SendDlgItemMessageA(dialog, id, BM_GETCHECK, 0, 0));
}

// The messages behind each question to a control, so that dialogs read as what they decide. A
// control that isn't there answers as an empty one.
#include "frame/controls.h"

#include <cstring>

#include "frame/strings.h"

int AddListItem(HWND dialog, int list, const char *text)
{
    return int(SendDlgItemMessageA(dialog, list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text)));
}

void EmptyList(HWND dialog, int list)
{
    SendDlgItemMessageA(dialog, list, CB_RESETCONTENT, 0, 0);
}

int SelectedItem(HWND dialog, int list)
{
    HWND control = GetDlgItem(dialog, list);
    return control ? int(SendMessageA(control, CB_GETCURSEL, 0, 0)) : -1;
}

void SelectItem(HWND dialog, int list, int position)
{
    SendDlgItemMessageA(dialog, list, CB_SETCURSEL, WPARAM(position), 0);
}

int FindListItem(HWND dialog, int list, const char *text)
{
    return int(SendDlgItemMessageA(dialog, list, CB_FINDSTRINGEXACT, WPARAM(-1),
                                   reinterpret_cast<LPARAM>(text)));
}

int CopyListItem(HWND dialog, int list, int position, char *text, int size)
{
    LRESULT length = SendDlgItemMessageA(dialog, list, CB_GETLBTEXTLEN, WPARAM(position), 0);
    if (position < 0 || length < 0 || length >= size)
        return 0;
    return int(SendDlgItemMessageA(dialog, list, CB_GETLBTEXT, WPARAM(position),
                                   reinterpret_cast<LPARAM>(text)));
}

bool IsChecked(HWND dialog, int box)
{
    return IsDlgButtonChecked(dialog, box) == BST_CHECKED;
}

void CheckBox(HWND dialog, int box, bool isChecked)
{
    CheckDlgButton(dialog, box, isChecked ? BST_CHECKED : BST_UNCHECKED);
}

void EnableControl(HWND dialog, int control, bool isEnabled)
{
    EnableWindow(GetDlgItem(dialog, control), isEnabled);
}

void ShowControl(HWND dialog, int control, bool isShown)
{
    ShowWindow(GetDlgItem(dialog, control), isShown ? SW_SHOW : SW_HIDE);
}

void SetDefaultButton(HWND dialog, int button)
{
    SendMessageA(dialog, DM_SETDEFID, WPARAM(button), 0);
}

static void SetSize(HWND window, int width, int height)
{
    SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// A label is the control before its control.
void WidenLabelOf(HWND dialog, int control)
{
    HWND labelled = GetDlgItem(dialog, control), label = GetWindow(labelled, GW_HWNDPREV);
    RECT place = {}, end = {};
    GetWindowRect(label, &place);
    GetWindowRect(labelled, &end);
    SetSize(label, end.left - place.left, place.bottom - place.top);
}

// The height of such a control is that with its list open.
void WidenList(HWND dialog, int list, int percent)
{
    HWND control = GetDlgItem(dialog, list);
    RECT open = {};
    SendMessageA(control, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&open));
    SetSize(control, (open.right - open.left) * (100 + percent) / 100, open.bottom - open.top);
}

HFONT CreateLaoFont()
{
    LOGFONTA font = {};
    font.lfHeight = 28;
    font.lfWeight = FW_NORMAL;
    font.lfCharSet = DEFAULT_CHARSET;
    CopyCut(font.lfFaceName, sizeof font.lfFaceName, "Saysettha Lao");
    return CreateFontIndirectA(&font);
}

void SetControlFont(HWND dialog, int control, HFONT font)
{
    SendDlgItemMessageA(dialog, control, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

void RedrawControl(HWND dialog, int control)
{
    InvalidateRect(GetDlgItem(dialog, control), nullptr, FALSE);
}

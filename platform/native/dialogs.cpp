// The dialog manager: dialogs made from templates, their default handling of messages, and the way
// to their controls by number.
#include "dialog_template.h"
#include "window_slots.h"

#include <string.h>

struct DialogUnits {
    int width, height;  // pixels of 4 units across, of 8 units down
};

// The measures of the fonts that templates name; the system's own font otherwise.
static DialogUnits UnitsOf(const TemplateHead *head)
{
    if (head->pointSize == 8)
        return {6, 13};
    return {8, 16};
}

static int Scaled(int units, int pixels, int per)
{
    int scaled = units * pixels;
    return (scaled + (scaled < 0 ? -per / 2 : per / 2)) / per;
}

static HWND CreateItem(const TemplateItem *item, DialogUnits units, HWND parent, HINSTANCE module)
{
    int isControl = (item->style & WS_CHILD) != 0;
    DWORD style = isControl ? item->style : item->style & ~(DWORD)WS_VISIBLE;
    return CreateWindowExA(item->exStyle, item->className, item->text, style,
                           Scaled(item->x, units.width, 4), Scaled(item->y, units.height, 8),
                           Scaled(item->width, units.width, 4),
                           Scaled(item->height, units.height, 8), parent,
                           isControl ? (HMENU)(ULONG_PTR)item->id : nullptr, module, nullptr);
}

static int IsDefaultButton(HWND control)
{
    return (SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON) != 0;
}

static int CreateControls(TemplateReader *reader, int count, DialogUnits units, HWND dialog)
{
    WindowRecord *record = FindWindowRecord(dialog);
    for (int i = 0; i < count && record; i++) {
        TemplateItem item;
        if (!ReadTemplateControl(reader, &item))
            return 0;
        item.style |= WS_CHILD;
        item.exStyle |= WS_EX_NOPARENTNOTIFY;
        HWND control = CreateItem(&item, units, dialog, record->instance);
        if (!control)
            return 0;
        record = FindWindowRecord(dialog);
        if (record && IsDefaultButton(control))
            record->defaultId = item.id;
    }
    return record != nullptr;
}

// The procedure chooses: told that the first control is to have the focus, it says yes or has set
// the focus itself.
static void InitDialog(HWND dialog, DWORD style, LPARAM parameter)
{
    HWND first = GetNextDlgTabItem(dialog, nullptr, FALSE);
    if (SendMessageA(dialog, WM_INITDIALOG, (WPARAM)first, parameter) && IsWindow(dialog)) {
        first = GetNextDlgTabItem(dialog, nullptr, FALSE);
        SetFocus(first ? first : dialog);
    }
    if ((style & WS_VISIBLE) && IsWindow(dialog))
        ShowWindow(dialog, SW_SHOWNORMAL);
}

HWND WINAPI CreateDialogParamA(HINSTANCE module, LPCSTR name, HWND parent, DLGPROC procedure,
                               LPARAM parameter)
{
    TemplateReader reader = {};
    TemplateHead head;
    module = InstanceOrProgram(module);
    reader.bytes = FindDialogTemplate(module, name);
    if (!reader.bytes.bytes || !ReadTemplateHead(&reader, &head))
        return nullptr;
    DialogUnits units = UnitsOf(&head);
    HWND dialog = CreateItem(&head.dialog, units, parent, module);
    WindowRecord *record = dialog ? FindWindowRecord(dialog) : nullptr;
    if (!record)
        return nullptr;
    record->dialogProcedure = procedure;
    record->defaultId = IDOK;
    if (!CreateControls(&reader, head.controls, units, dialog)) {
        DestroyWindow(dialog);
        return nullptr;
    }
    InitDialog(dialog, head.dialog.style, parameter);
    return IsWindow(dialog) ? dialog : nullptr;
}

// ---- default handling ----

static LRESULT DefaultId(const WindowRecord *dialog)
{
    return dialog->defaultId ? MAKELONG(dialog->defaultId, DC_HASDEFID) : 0;
}

// The old default button becomes a plain one, the new one the default.
static LRESULT SetDefaultId(WindowRecord *dialog, int id)
{
    HWND window = dialog->handle, before = GetDlgItem(window, dialog->defaultId);
    HWND button = GetDlgItem(window, id);
    dialog->defaultId = id;
    if (before && before != button && IsDefaultButton(before))
        SendMessageA(before, BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
    if (button && (SendMessageA(button, WM_GETDLGCODE, 0, 0) & DLGC_UNDEFPUSHBUTTON))
        SendMessageA(button, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    return TRUE;
}

static void KeepFocus(WindowRecord *dialog)
{
    WindowRecord *focus = GetFocus() ? FindWindowRecord(GetFocus()) : nullptr;
    if (focus && focus != dialog && TopLevelOf(focus) == dialog->handle)
        dialog->leftFocus = focus->handle;
}

// Back to the control that had it, else to the first one.
static void GiveFocusBack(WindowRecord *dialog)
{
    HWND kept = dialog->leftFocus;
    dialog->leftFocus = nullptr;
    if (!kept || !IsWindow(kept))
        kept = GetNextDlgTabItem(dialog->handle, nullptr, FALSE);
    if (kept)
        SetFocus(kept);
}

static LRESULT CloseDialog(HWND dialog)
{
    HWND cancel = GetDlgItem(dialog, IDCANCEL);
    if (!cancel || IsWindowEnabled(cancel))
        PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), (LPARAM)cancel);
    return 0;
}

static LRESULT HandleByDefault(WindowRecord *dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case DM_GETDEFID: return DefaultId(dialog);
    case DM_SETDEFID: return SetDefaultId(dialog, (int)wParam);
    case WM_CLOSE: return CloseDialog(dialog->handle);
    case WM_SETFOCUS: GiveFocusBack(dialog); return 0;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE)
            KeepFocus(dialog);
        else
            GiveFocusBack(dialog);
        return 0;
    }
    return DefWindowProcA(dialog->handle, message, wParam, lParam);
}

// A procedure's yes ends the message with 0: only the first message of all gives it back.
LRESULT WINAPI DefDlgProcA(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    WindowRecord *record = FindWindowRecord(dialog);
    if (!record)
        return 0;
    INT_PTR answer =
        record->dialogProcedure ? record->dialogProcedure(dialog, message, wParam, lParam) : FALSE;
    if (message == WM_INITDIALOG)
        return answer;
    record = FindWindowRecord(dialog);
    return answer || !record ? 0 : HandleByDefault(record, message, wParam, lParam);
}

// ---- controls by number ----

HWND WINAPI GetDlgItem(HWND dialog, int id)
{
    WindowRecord *record = FindWindowRecord(dialog);
    if (!record)
        return nullptr;
    for (WindowRecord *child = record->firstChild; child; child = child->next) {
        if ((int)child->id == id)
            return child->handle;
    }
    SetLastError(ERROR_CONTROL_ID_NOT_FOUND);
    return nullptr;
}

int WINAPI GetDlgCtrlID(HWND control)
{
    WindowRecord *record = FindWindowRecord(control);
    return record ? (int)record->id : 0;
}

BOOL WINAPI SetDlgItemTextA(HWND dialog, int id, LPCSTR text)
{
    HWND control = GetDlgItem(dialog, id);
    return control && SetWindowTextA(control, text);
}

UINT WINAPI GetDlgItemTextA(HWND dialog, int id, LPSTR text, int size)
{
    HWND control = GetDlgItem(dialog, id);
    if (control)
        return (UINT)GetWindowTextA(control, text, size);
    if (text && size > 0)
        text[0] = '\0';
    return 0;
}

LRESULT WINAPI SendDlgItemMessageA(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam)
{
    HWND control = GetDlgItem(dialog, id);
    return control ? SendMessageA(control, message, wParam, lParam) : 0;
}

static int IsTabStop(const WindowRecord *control)
{
    return (control->style & (WS_TABSTOP | WS_VISIBLE | WS_DISABLED)) == (WS_TABSTOP | WS_VISIBLE);
}

// The last stop before `control` in the order of the controls; before the end where it is none.
static HWND StopBefore(const WindowRecord *dialog, const WindowRecord *control)
{
    HWND found = nullptr;
    for (WindowRecord *child = dialog->firstChild; child && child != control; child = child->next) {
        if (IsTabStop(child))
            found = child->handle;
    }
    return found;
}

static HWND StopFrom(const WindowRecord *control)
{
    for (; control; control = control->next) {
        if (IsTabStop(control))
            return control->handle;
    }
    return nullptr;
}

// Without a control the first stop is meant; backwards there is none then. The last is followed by
// the first; a control that is the only stop is its own neighbour.
HWND WINAPI GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous)
{
    WindowRecord *record = FindWindowRecord(dialog);
    if (!record)
        return nullptr;
    if (!control || control == dialog)
        return previous ? nullptr : StopFrom(record->firstChild);
    WindowRecord *from = FindWindowRecord(control);
    if (!from || from->parent != record)
        return nullptr;
    HWND found = previous ? StopBefore(record, from) : StopFrom(from->next);
    if (!found)
        found = previous ? StopBefore(record, nullptr) : StopFrom(record->firstChild);
    return found;
}

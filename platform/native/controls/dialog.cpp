// The class of dialogs: the program's procedure is asked first, and what it leaves is handled here:
// the default button, the focus that comes back, closing as a press on Cancel.
#include "controls/dialog.h"

#include "controls/control_classes.h"

DialogData *FindDialogData(HWND dialog)
{
    WindowRecord *record = FindWindowRecord(dialog);
    return record ? static_cast<DialogData *>(ClassData(record, DefDlgProcA)) : nullptr;
}

bool IsDefaultButton(HWND control)
{
    return (SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON) != 0;
}

// The high word says that there is one.
static LRESULT DefaultId(const DialogData *dialog)
{
    return dialog->defaultId ? MAKELONG(dialog->defaultId, DC_HASDEFID) : 0;
}

// The one that looks like the default; null: there is none.
static HWND FindDefaultLook(HWND dialog)
{
    HWND control = GetWindow(dialog, GW_CHILD);
    while (control && !IsDefaultButton(control))
        control = GetWindow(control, GW_HWNDNEXT);
    return control;
}

// At most one button looks like the default. What isn't a plain push button doesn't become one.
static void MoveDefaultLook(HWND dialog, HWND button)
{
    HWND before = FindDefaultLook(dialog);
    if (before && before != button)
        SendMessageA(before, BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
    if (button && (SendMessageA(button, WM_GETDLGCODE, 0, 0) & DLGC_UNDEFPUSHBUTTON))
        SendMessageA(button, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
}

static LRESULT SetDefaultId(HWND window, DialogData *dialog, int id)
{
    dialog->defaultId = id;
    MoveDefaultLook(window, GetDlgItem(window, id));
    return TRUE;
}

// Another window becomes active: which control had the focus is remembered for the way back.
static void KeepFocus(HWND window, DialogData *dialog)
{
    WindowRecord *focus = GetFocus() ? FindWindowRecord(GetFocus()) : nullptr;
    if (focus && focus->handle != window && TopLevelOf(focus) == window)
        dialog->leftFocus = focus->handle;
}

// Back to the control that had it, else to the first one.
static void GiveFocusBack(HWND window, DialogData *dialog)
{
    HWND kept = dialog->leftFocus;
    dialog->leftFocus = nullptr;
    if (!kept || !IsWindow(kept))
        kept = GetNextDlgTabItem(window, nullptr, FALSE);
    if (kept)
        SetFocus(kept);
}

void FocusControl(HWND control)
{
    if (SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL)
        SendMessageA(control, EM_SETSEL, 0, -1);
    SetFocus(control);
}

// Only the look moves: DM_GETDEFID goes on to tell the dialog's own default.
void FocusControlByKey(HWND window, HWND control)
{
    constexpr LRESULT kPush = DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON;
    FocusControl(control);
    bool isPush = (SendMessageA(control, WM_GETDLGCODE, 0, 0) & kPush) != 0;
    DialogData *dialog = FindDialogData(window);
    if (dialog)
        MoveDefaultLook(window, isPush ? control : GetDlgItem(window, dialog->defaultId));
}

// Closing is a press on Cancel, which the program handles as it likes; a disabled one refuses.
static LRESULT CloseDialog(HWND dialog)
{
    HWND cancel = GetDlgItem(dialog, IDCANCEL);
    if (!cancel || IsWindowEnabled(cancel))
        PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED),
                     reinterpret_cast<LPARAM>(cancel));
    return 0;
}

// The controls are gone already.
static void DropFont(DialogData *dialog)
{
    if (dialog->font)
        DeleteObject(dialog->font);
    dialog->font = nullptr;
}

static LRESULT HandleByDefault(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    DialogData *dialog = FindDialogData(window);
    if (!dialog)
        return DefWindowProcA(window, message, wParam, lParam);
    switch (message) {
    case DM_GETDEFID: return DefaultId(dialog);
    case DM_SETDEFID: return SetDefaultId(window, dialog, int(wParam));
    case WM_CLOSE: return CloseDialog(window);
    case WM_NCDESTROY: DropFont(dialog); break;
    case WM_SETFOCUS: GiveFocusBack(window, dialog); return 0;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE)
            KeepFocus(window, dialog);
        else
            GiveFocusBack(window, dialog);
        return 0;
    }
    return DefControlProc(window, message, wParam, lParam);
}

// A procedure's yes ends the message with 0: only the first message of all gives it back.
LRESULT WINAPI DefDlgProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    DialogData *dialog = FindDialogData(window);
    INT_PTR answer =
        dialog && dialog->procedure ? dialog->procedure(window, message, wParam, lParam) : FALSE;
    if (message == WM_INITDIALOG)
        return answer;
    return answer || !IsWindow(window) ? 0 : HandleByDefault(window, message, wParam, lParam);
}

const ControlClass kDialogControl = {"#32770", DefDlgProcA, sizeof(DialogData)};

// Opening dialogs: a template becomes a window with its controls, and either goes on by itself
// (modeless) or is waited for (modal). Sizes in templates are dialog units, which the dialog's font
// turns into pixels.
#include "controls/dialog.h"
#include "controls/dialog_template.h"

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

// Rounded to the nearest, away from 0, as the system does.
static int Scaled(int units, int pixels, int per)
{
    int scaled = units * pixels;
    return (scaled + (scaled < 0 ? -per / 2 : per / 2)) / per;
}

// In pixels. The middle of the screen is the place of a dialog that asks for it.
static RECT PlaceOf(const TemplateItem *item, DialogUnits units)
{
    int x = Scaled(item->x, units.width, 4), y = Scaled(item->y, units.height, 8);
    int width = Scaled(item->width, units.width, 4), height = Scaled(item->height, units.height, 8);
    if (!(item->style & WS_CHILD) && (item->style & DS_CENTER)) {
        x = (GetSystemMetrics(SM_CXSCREEN) - width) / 2;
        y = (GetSystemMetrics(SM_CYSCREEN) - height) / 2;
    }
    return {x, y, x + width, y + height};
}

// The dialog itself isn't visible before its first message, whatever its template says.
static HWND CreateItem(const TemplateItem *item, DialogUnits units, HWND parent, HINSTANCE module)
{
    bool isControl = (item->style & WS_CHILD) != 0;
    DWORD style = isControl ? item->style : item->style & ~DWORD(WS_VISIBLE);
    RECT place = PlaceOf(item, units);
    return CreateWindowExA(item->exStyle, item->className, item->text, style, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, parent,
                           isControl ? reinterpret_cast<HMENU>(ULONG_PTR(item->id)) : nullptr,
                           module, nullptr);
}

// Before anybody else hears of the window.
static void TellFont(HWND dialog, HWND window)
{
    DialogData *data = FindDialogData(dialog);
    if (data && data->font)
        SendMessageA(window, WM_SETFONT, reinterpret_cast<WPARAM>(data->font), FALSE);
}

// The last default button of the template is the dialog's.
static void NoteDefault(HWND dialog, HWND control, int id)
{
    bool isDefault = IsDefaultButton(control);
    DialogData *data = FindDialogData(dialog);
    if (data && isDefault)
        data->defaultId = id;
}

// False when a control can't be read or made, or one of them has destroyed the dialog.
static bool CreateControls(TemplateReader *reader, int count, DialogUnits units, HWND dialog)
{
    WindowRecord *record = FindWindowRecord(dialog);
    for (int i = 0; i < count && record; ++i) {
        TemplateItem item;
        if (!ReadTemplateControl(reader, &item))
            return false;
        item.style |= WS_CHILD;
        item.exStyle |= WS_EX_NOPARENTNOTIFY;
        HWND control = CreateItem(&item, units, dialog, record->instance);
        if (!control)
            return false;
        TellFont(dialog, control);
        NoteDefault(dialog, control, int(item.id));
        record = FindWindowRecord(dialog);  // the control's messages may have destroyed it
    }
    return record != nullptr;
}

// The procedure chooses: told that the first control is to have the focus, it says yes or has set
// the focus itself.
static void InitDialog(HWND dialog, LPARAM parameter)
{
    HWND first = GetNextDlgTabItem(dialog, nullptr, FALSE);
    if (SendMessageA(dialog, WM_INITDIALOG, reinterpret_cast<WPARAM>(first), parameter) &&
        IsWindow(dialog)) {
        first = GetNextDlgTabItem(dialog, nullptr, FALSE);
        if (first)
            FocusControl(first);
        else
            SetFocus(dialog);
    }
}

// Makes the dialog up to its first message; it isn't shown yet. Null for a template that isn't
// there or can't be read, and when a window can't be made. A class of the program's own, which has
// no DialogData, isn't for templates.
static HWND MakeDialog(HINSTANCE module, LPCSTR name, HWND parent, DLGPROC procedure,
                       TemplateHead *head)
{
    TemplateReader reader = {};
    reader.bytes = FindDialogTemplate(module, name);
    if (!reader.bytes.bytes || !ReadTemplateHead(&reader, head))
        return nullptr;
    DialogUnits units = UnitsOf(head);
    HWND dialog = CreateItem(&head->dialog, units, parent, module);
    DialogData *data = dialog ? FindDialogData(dialog) : nullptr;
    if (data) {
        data->procedure = procedure;
        data->defaultId = IDOK;
        data->font = head->pointSize ? CreateFontIndirectA(&head->font) : nullptr;
        TellFont(dialog, dialog);
        if (CreateControls(&reader, head->controls, units, dialog))
            return dialog;
    }
    DestroyWindow(dialog);
    return nullptr;
}

HWND WINAPI CreateDialogParamA(HINSTANCE module, LPCSTR name, HWND parent, DLGPROC procedure,
                               LPARAM parameter)
{
    TemplateHead head;
    HWND dialog = MakeDialog(InstanceOrProgram(module), name, parent, procedure, &head);
    if (!dialog)
        return nullptr;
    InitDialog(dialog, parameter);
    if ((head.dialog.style & WS_VISIBLE) && IsWindow(dialog))
        ShowWindow(dialog, SW_SHOWNORMAL);
    return IsWindow(dialog) ? dialog : nullptr;
}

// ---- modal dialogs ----

// A dialog that was destroyed without EndDialog isn't open either.
static bool IsOpen(HWND dialog)
{
    DialogData *data = FindDialogData(dialog);
    return data && !data->hasEnded;
}

struct ModalState {
    unsigned ended;  // how many loops have ended since the start
};
static ModalState gModal;

// Nobody sits at this screen, so a queue that is empty stays empty. Then the owner is told, as
// always, and may do what a person would do; where it does nothing the dialog is asked to close,
// and one that won't is left after a second try. A dialog that opened meanwhile has taken out what
// was posted for this one, so that the owner is told again.
static void RunModalLoop(HWND dialog, HWND owner)
{
    constexpr int kMaxCloses = 2;
    int closes = 0;
    bool wasTold = false;  // since the last message
    while (IsOpen(dialog)) {
        MSG message;
        if (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT) {
                PostQuitMessage(int(message.wParam));  // for the host's own loop
                return;
            }
            if (!IsDialogMessageA(dialog, &message)) {
                TranslateMessage(&message);
                DispatchMessageA(&message);
            }
            wasTold = false;
        } else if (!wasTold) {
            unsigned ended = gModal.ended;
            SendMessageA(owner, WM_ENTERIDLE, MSGF_DIALOGBOX, reinterpret_cast<LPARAM>(dialog));
            wasTold = gModal.ended == ended;
        } else if (closes++ < kMaxCloses) {
            SendMessageA(dialog, WM_CLOSE, 0, 0);
        } else {
            return;
        }
    }
}

// The owner is disabled meanwhile, unless it was before; the result is that of EndDialog.
INT_PTR WINAPI DialogBoxParamA(HINSTANCE module, LPCSTR name, HWND parent, DLGPROC procedure,
                               LPARAM parameter)
{
    TemplateHead head;
    HWND dialog = MakeDialog(InstanceOrProgram(module), name, parent, procedure, &head);
    if (!dialog)
        return -1;
    HWND owner = GetWindow(dialog, GW_OWNER);
    bool mustEnable = owner && !EnableWindow(owner, FALSE);
    InitDialog(dialog, parameter);
    if (IsOpen(dialog))
        ShowWindow(dialog, SW_SHOWNORMAL);
    RunModalLoop(dialog, owner);
    ++gModal.ended;
    DialogData *data = FindDialogData(dialog);
    INT_PTR result = data && data->hasEnded ? data->result : -1;
    if (mustEnable)
        EnableWindow(owner, TRUE);  // before the dialog goes, so that the owner can be active again
    DestroyWindow(dialog);
    return result;
}

// Only a mark: the loop sees it when the message that called this is done.
BOOL WINAPI EndDialog(HWND dialog, INT_PTR result)
{
    DialogData *data = FindDialogData(dialog);
    if (!data)
        return FALSE;
    data->hasEnded = true;
    data->result = result;
    return TRUE;
}

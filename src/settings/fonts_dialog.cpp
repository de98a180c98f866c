// The fonts dialog: shows the table of registered fonts, a record at a time, and lets the user add,
// change and delete. It works on the table in memory; who opened it writes the list. A font that is
// being added stands in the slot behind the last record and counts only when OK is pressed.
#include <cstring>

#include "fonts/font_table.h"
#include "frame/companion.h"
#include "frame/controls.h"
#include "frame/help.h"
#include "frame/library.h"
#include "frame/strings.h"
#include "settings/dialogs.h"

enum FontsMode {
    kShowingFonts = 1,
    kAddingFont = 2,
    kModifyingFont = 4,
};

struct FontsDialogState {
    FontsMode mode;
    int working;     // index of the record that is being added or changed
    bool isChanged;  // a font was added, changed or deleted
};
static FontsDialogState gDialog;

static int CurrentCode()
{
    return int(LaoMode(0, 0) & 15);
}

// ---- what becomes of an entry ----

// What the controls hold as OK is pressed.
struct FontEntry {
    char name[kFontNameSize - 1];  // the dialog takes a byte less than the table
    char substitute[kFontNameSize - 1];
    int code;         // the font code; -1: none is selected
    bool isExtended;  // the box is checked
    short scale;      // in percent, whatever was typed
};

// Name, code and flag: stored before the substitute is asked about, and kept whatever the answer.
static void StoreFont(FontRecord *record, const FontEntry *entry)
{
    CopyCut(record->name, sizeof record->name, entry->name);
    if (entry->code >= 0)
        record->code = short(entry->code);
    record->extended = CarriesExtended(*record) && entry->isExtended;
}

static bool IsFontOfCode(const char *name, int code)
{
    for (int i = 0; i < gFonts.count; ++i)
        if (gFonts.records[i].code == code && EqualNoCase(gFonts.records[i].name, name))
            return true;
    return false;
}

// Counts the record in the working slot, unless its name is registered: then the index of that one,
// and the record is dropped.
static int CountAddedFont()
{
    int known = FontIndex(gFonts.records[gFonts.count].name);
    return known >= 0 || gFonts.count >= kMostFonts ? known : gFonts.count++;
}

// ---- what can be seen and used ----

struct ControlModes {
    int control;
    int shown, usable;  // bits of FontsMode
};

constexpr int kEditing = kAddingFont | kModifyingFont, kAlways = kEditing | kShowingFonts;

static constexpr ControlModes kControlModes[] = {
    {ID_FONTS_ADD, kAlways, kShowingFonts},    {ID_FONTS_MODIFY, kAlways, kShowingFonts},
    {ID_FONTS_DELETE, kAlways, kShowingFonts}, {ID_FONTS_REGISTERED, kShowingFonts, kAlways},
    {ID_FONTS_SYSTEM, kAddingFont, kAlways},   {ID_FONTS_NAME, kModifyingFont, kAlways},
    {ID_FONTS_CODE, kAlways, kEditing},        {ID_FONTS_SUBSTITUTE, kAlways, kEditing},
    {ID_FONTS_SCALE, kAlways, kEditing},       {ID_FONTS_EXTENDED, kAlways, kEditing},
};

// The name takes the focus, since what had it may be out of use now.
static void ShowFontEditMode(HWND dialog, FontsMode mode)
{
    gDialog.mode = mode;
    for (const ControlModes &row : kControlModes) {
        ShowControl(dialog, row.control, row.shown & mode);
        EnableControl(dialog, row.control, row.usable & mode);
        if (row.shown == int(mode))
            SetFocus(GetDlgItem(dialog, row.control));
    }
}

// ---- the lists ----

// A code that the companion lacks leaves a gap, so each item carries its code.
static INT_PTR ListCodes(HWND dialog)
{
    EmptyList(dialog, ID_FONTS_CODE);
    for (int code = 0; code < kMostFontCodes; ++code) {
        FontCodeRecord record = {};
        if (!FontCodeData(code, &record))
            continue;
        record.name[sizeof record.name - 1] = 0;
        int position = AddListItem(dialog, ID_FONTS_CODE, record.name);
        SendDlgItemMessageA(dialog, ID_FONTS_CODE, CB_SETITEMDATA, WPARAM(position), code);
    }
    return 1;
}

static INT_PTR ListFonts(HWND dialog, int leftOut)
{
    int currentCode = CurrentCode();
    EmptyList(dialog, ID_FONTS_REGISTERED);
    EmptyList(dialog, ID_FONTS_SUBSTITUTE);
    for (int i = 0; i < gFonts.count; ++i) {
        const FontRecord &record = gFonts.records[i];
        AddListItem(dialog, ID_FONTS_REGISTERED, record.name);
        if (record.code == currentCode && i != leftOut)
            AddListItem(dialog, ID_FONTS_SUBSTITUTE, record.name);
    }
    return 1;
}

static int CodeAt(HWND dialog, int position)
{
    return position < 0 ? -1
                        : int(SendDlgItemMessageA(dialog, ID_FONTS_CODE, CB_GETITEMDATA,
                                                  WPARAM(position), 0));
}

static int PositionOfCode(HWND dialog, int code)
{
    int count = int(SendDlgItemMessageA(dialog, ID_FONTS_CODE, CB_GETCOUNT, 0, 0));
    while (--count >= 0 && CodeAt(dialog, count) != code) {
    }
    return count;
}

static INT_PTR ShowFont(HWND dialog, int index)
{
    const FontRecord *record = FontAt(index);
    if (!record)
        return 1;
    SelectItem(dialog, ID_FONTS_REGISTERED, index);
    SelectItem(dialog, ID_FONTS_CODE, PositionOfCode(dialog, record->code));
    SetDlgItemTextA(dialog, ID_FONTS_SUBSTITUTE, record->substitute);
    SetDlgItemInt(dialog, ID_FONTS_SCALE, UINT(record->scale), TRUE);
    CheckBox(dialog, ID_FONTS_EXTENDED, CarriesExtended(*record) && record->extended);
    return 1;
}

static int CALLBACK AddSystemFont(const LOGFONTA *font, const TEXTMETRICA *, DWORD type,
                                  LPARAM list)
{
    if (type & TRUETYPE_FONTTYPE)
        SendMessageA(reinterpret_cast<HWND>(list), CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>(font->lfFaceName));
    return 1;  // on to the next family
}

static void FillSystemFonts(HWND dialog, int list)
{
    EmptyList(dialog, list);
    HDC context = GetDC(dialog);
    EnumFontFamiliesA(context, nullptr, AddSystemFont,
                      reinterpret_cast<LPARAM>(GetDlgItem(dialog, list)));
    ReleaseDC(dialog, context);
    SelectItem(dialog, list, 0);
}

// ---- the buttons ----

static int Ask(HWND dialog, const char *text, UINT flags)
{
    return OrvelMsg(dialog, text, "Orvel: Font registration", flags);
}

static void BeginAddition(HWND dialog)
{
    if (gFonts.count + 1 >= kFontRoom) {
        Ask(dialog, "No more fonts can be registered!", MB_ICONEXCLAMATION);
        return;
    }
    gDialog.working = gFonts.count;
    gFonts.records[gFonts.count] = {};
    ShowFontEditMode(dialog, kAddingFont);
    FillSystemFonts(dialog, ID_FONTS_SYSTEM);
    SetDlgItemInt(dialog, ID_FONTS_SCALE, 100, FALSE);
}

static void BeginChange(HWND dialog)
{
    gDialog.working = SelectedItem(dialog, ID_FONTS_REGISTERED);
    FontRecord *record = FontAt(gDialog.working);
    if (!record)
        return;
    char name[sizeof FontEntry::name];
    GetDlgItemTextA(dialog, ID_FONTS_REGISTERED, name, sizeof name);
    CopyCut(record->name, sizeof record->name, name);
    SetDlgItemTextA(dialog, ID_FONTS_NAME, record->name);
    ShowFontEditMode(dialog, kModifyingFont);
}

static void DeleteFont(HWND dialog)
{
    if (gFonts.count < 2) {
        Ask(dialog,
            "You must leave at least one Lao font registered! (Add another font first if you "
            "must delete this one.)",
            MB_ICONEXCLAMATION);
        return;
    }
    gDialog.working = SelectedItem(dialog, ID_FONTS_REGISTERED);
    if (!RemoveFontRecord(gDialog.working))
        return;
    SendMessageA(dialog, RegisteredMessage(kListFonts), WPARAM(-1), 0);
    SendMessageA(dialog, RegisteredMessage(kFontDataChange), 0, 0);
    gDialog.isChanged = true;
}

// ---- OK while a font is being added or changed ----

static FontEntry ReadEntry(HWND dialog)
{
    FontEntry entry;
    GetDlgItemTextA(dialog, gDialog.mode == kAddingFont ? ID_FONTS_SYSTEM : ID_FONTS_NAME,
                    entry.name, sizeof entry.name);
    GetDlgItemTextA(dialog, ID_FONTS_SUBSTITUTE, entry.substitute, sizeof entry.substitute);
    entry.code = CodeAt(dialog, SelectedItem(dialog, ID_FONTS_CODE));
    entry.isExtended = IsChecked(dialog, ID_FONTS_EXTENDED);
    entry.scale = short(GetDlgItemInt(dialog, ID_FONTS_SCALE, nullptr, FALSE));
    return entry;
}

// A host may have changed the table since the entry was begun.
static FontRecord *WorkingRecord()
{
    if (gDialog.mode == kAddingFont) {
        gDialog.working = gFonts.count;
        return gFonts.count < kMostFonts ? &gFonts.records[gFonts.count] : nullptr;
    }
    return FontAt(gDialog.working);
}

static bool CanSubstitute(HWND dialog, const char *substitute)
{
    return IsFontOfCode(substitute, CurrentCode()) ||
           Ask(dialog,
               "The substitute font does not use the currently selected font codes. Do you still "
               "want to use it?",
               MB_YESNO | MB_ICONQUESTION) != IDNO;
}

static void FinishAddition(HWND dialog)
{
    int index = CountAddedFont();
    if (index < gDialog.working)
        Ask(dialog, "That font is already registered!", MB_ICONEXCLAMATION);
    gDialog.working = index;
}

static void LeaveEdit(HWND dialog)
{
    ShowFontEditMode(dialog, kShowingFonts);
}

static void StoreEntry(HWND dialog)
{
    FontEntry entry = ReadEntry(dialog);
    FontRecord *record = WorkingRecord();
    if (!record) {
        LeaveEdit(dialog);
        return;
    }
    if (strpbrk(entry.name, kFieldEnds)) {  // the list's file would take it for more than a name
        Ask(dialog, "A font's name can't hold a comma!", MB_ICONEXCLAMATION);
        return;
    }
    StoreFont(record, &entry);
    if (!CanSubstitute(dialog, entry.substitute))
        return;
    CopyCut(record->substitute, sizeof record->substitute, entry.substitute);
    record->scale = entry.scale;
    if (gDialog.mode == kAddingFont)
        FinishAddition(dialog);
    SendMessageA(dialog, RegisteredMessage(kListFonts), WPARAM(gDialog.working), 0);
    SendMessageA(dialog, RegisteredMessage(kFontDataChange), WPARAM(gDialog.working), 0);
    SetDlgItemTextA(dialog, ID_CANCEL, "Close");
    LeaveEdit(dialog);
    gDialog.isChanged = true;
}

// ---- the dialog ----

static INT_PTR InitFonts(HWND dialog)
{
    WidenLabelOf(dialog, ID_FONTS_SUBSTITUTE);
    SendMessageA(dialog, RegisteredMessage(kListCodes), 0, 0);
    SendMessageA(dialog, RegisteredMessage(kListFonts), WPARAM(-1), 0);
    SendMessageA(dialog, RegisteredMessage(kFontDataChange), 0, 0);
    ShowFontEditMode(dialog, kShowingFonts);
    gDialog.isChanged = false;
    return 0;
}

// Shown when the list is done with its own notification.
static void FontSelected(HWND dialog, int notification)
{
    if (notification == CBN_SELCHANGE)
        PostMessageA(dialog, RegisteredMessage(kFontDataChange),
                     WPARAM(SelectedItem(dialog, ID_FONTS_REGISTERED)), 0);
}

// OK and Cancel end the edit when there is one, else the dialog.
static void PressOkOrCancel(HWND dialog, int id)
{
    if (gDialog.mode == kShowingFonts)
        EndDialog(dialog, gDialog.isChanged);
    else if (id == ID_OK)
        StoreEntry(dialog);
    else
        LeaveEdit(dialog);
}

static INT_PTR FontsCommand(HWND dialog, int id, int notification)
{
    switch (id) {
    case ID_OK:
    case ID_CANCEL: PressOkOrCancel(dialog, id); break;
    case ID_HELP: ShowHelpTopic(dialog, "src/fonts/adding_fonts.html"); break;
    case ID_FONTS_ADD: BeginAddition(dialog); break;
    case ID_FONTS_MODIFY: BeginChange(dialog); break;
    case ID_FONTS_DELETE: DeleteFont(dialog); break;
    case ID_FONTS_REGISTERED: FontSelected(dialog, notification); break;
    default: return 0;
    }
    return 1;
}

static INT_PTR CALLBACK FontsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    if (message == RegisteredMessage(kListCodes))
        return ListCodes(dialog);
    if (message == RegisteredMessage(kListFonts))
        return ListFonts(dialog, int(wParam));
    if (message == RegisteredMessage(kFontDataChange))
        return ShowFont(dialog, int(wParam));
    switch (message) {
    case WM_INITDIALOG: return InitFonts(dialog);
    case WM_COMMAND: return FontsCommand(dialog, LOWORD(wParam), HIWORD(wParam));
    }
    return 0;
}

int FontsDialog(HWND parent)
{
    return DialogBoxParamA(gProcess.instance, "Fonts", parent, FontsDlgProc, 0) > 0;
}

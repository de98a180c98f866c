// COMBOBOX: a list of entries with an edit box over it that is always open (simple) or drops down,
// or a list that drops down alone. Nobody sees it drop: the keys choose in the closed list. The
// edit box is a child window, which has the focus for the two and tells this one what was typed.
// Typing takes the selection away, also where it makes the text of an entry.
#include <string.h>

#include "controls/combo_list.h"
#include "controls/control_classes.h"
#include "windows/window_table.h"

constexpr LONG_PTR kEditId = 1001;  // of the edit box, on every system
constexpr DWORD kComboForm = 3;     // the bits of the style

struct ComboData {
    ComboList list;
    int selected;   // CB_ERR: nothing
    HWND edit;      // null: the form that is only a list
    bool hasFocus;  // it or its edit box
};

static LRESULT CALLBACK ComboProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

static ComboData *FindComboData(HWND window)
{
    WindowRecord *record = FindWindowRecord(window);
    return record ? static_cast<ComboData *>(ClassData(record, ComboProc)) : nullptr;
}

static void Tell(HWND window, WORD code)
{
    WindowRecord *combo = FindWindowRecord(window);
    if (combo)
        SendMessageA(GetParent(window), WM_COMMAND, MAKEWPARAM(combo->id, code),
                     reinterpret_cast<LPARAM>(window));
}

static LRESULT CreateCombo(WindowRecord *combo, ComboData *data)
{
    data->selected = CB_ERR;
    if ((combo->style & kComboForm) == CBS_DROPDOWNLIST)
        return 0;
    DWORD style = WS_CHILD | WS_VISIBLE | (combo->style & CBS_AUTOHSCROLL ? ES_AUTOHSCROLL : 0);
    data->edit = CreateWindowExA(0, "EDIT", "", style, 0, 0, combo->rect.right - combo->rect.left,
                                 combo->rect.bottom - combo->rect.top, combo->handle,
                                 reinterpret_cast<HMENU>(kEditId), combo->instance, nullptr);
    return data->edit ? 0 : -1;
}

// ---- the selection ----

// -1 takes it away. The text of the edit box follows, and is selected where a person is typing.
static LRESULT SelectEntry(WindowRecord *combo, ComboData *data, int index)
{
    const ComboEntry *entry = index < 0 ? nullptr : EntryAt(&data->list, WPARAM(index));
    HWND edit = data->edit;
    data->selected = entry ? index : CB_ERR;
    combo->needsPaint = true;
    LRESULT result = data->selected;
    if (edit)
        SendMessageA(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(entry ? entry->text : ""));
    if (edit && GetFocus() == edit)
        SendMessageA(edit, EM_SETSEL, 0, -1);
    return result;
}

static void SelectByKey(HWND window, int index)
{
    ComboData *data = FindComboData(window);
    if (!EntryAt(&data->list, WPARAM(index)))
        return;
    SelectEntry(FindWindowRecord(window), data, index);
    Tell(window, CBN_SELCHANGE);
}

// The first arrow in a text that was typed leads to the entry that it begins.
static void SelectByText(HWND window)
{
    char text[256];
    text[0] = '\0';
    SendMessageA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    ComboData *data = FindComboData(window);
    if (!data)
        return;
    int found = text[0] ? FindEntry(&data->list, -1, text, false) : CB_ERR;
    SelectByKey(window, found == CB_ERR ? 0 : found);
}

static void HandleKey(HWND window, const ComboData *data, WPARAM key)
{
    int last = data->list.count - 1, at = data->selected;
    switch (key) {
    case VK_LEFT:
    case VK_UP: SelectByKey(window, at > 0 ? at - 1 : 0); break;
    case VK_RIGHT:
    case VK_DOWN:
        if (at == CB_ERR)
            SelectByText(window);
        else
            SelectByKey(window, at < last ? at + 1 : last);
        break;
    case VK_HOME: SelectByKey(window, 0); break;
    case VK_END: SelectByKey(window, last); break;
    }
}

// Without an edit box a character leads to the next entry that begins with it.
static void HandleCharacter(HWND window, const ComboData *data, char character)
{
    const char text[] = {character, '\0'};
    int found =
        BYTE(character) < ' ' ? CB_ERR : FindEntry(&data->list, data->selected, text, false);
    if (found != CB_ERR)
        SelectByKey(window, found);
}

// The selected entry stays selected behind a new one.
static LRESULT Add(const WindowRecord *combo, ComboData *data, const char *text)
{
    int index = AddEntry(&data->list, text, (combo->style & CBS_SORT) != 0);
    if (index >= 0 && index <= data->selected)
        ++data->selected;
    return index;
}

static LRESULT Reset(WindowRecord *combo, ComboData *data)
{
    EmptyList(&data->list);
    SelectEntry(combo, data, CB_ERR);
    return CB_OKAY;
}

// ---- focus ----

// Where there is an edit box the focus is its own: it only passes this window on its way there,
// and nobody hears of that.
static void ChangeFocus(HWND window, ComboData *data, bool hasFocus)
{
    if (data->hasFocus == hasFocus)
        return;
    data->hasFocus = hasFocus;
    Tell(window, hasFocus ? CBN_SETFOCUS : CBN_KILLFOCUS);
}

static void TakeFocus(HWND window, ComboData *data)
{
    HWND edit = data->edit;
    if (!edit) {
        ChangeFocus(window, data, true);
        return;
    }
    SendMessageA(edit, EM_SETSEL, 0, -1);
    SetFocus(edit);
}

// What the edit box tells.
static void HandleEdit(WindowRecord *combo, ComboData *data, WORD code)
{
    switch (code) {
    case EN_SETFOCUS: ChangeFocus(combo->handle, data, true); break;
    case EN_KILLFOCUS: ChangeFocus(combo->handle, data, false); break;
    case EN_UPDATE:
        data->selected = CB_ERR;
        Tell(combo->handle, CBN_EDITUPDATE);
        break;
    case EN_CHANGE: Tell(combo->handle, CBN_EDITCHANGE); break;
    }
}

// ---- messages ----

// The caller asked for the length and brings the room.
static LRESULT GetEntryText(const ComboEntry *entry, char *text)
{
    if (!entry)
        return CB_ERR;
    if (text)
        strcpy(text, entry->text);
    return LRESULT(strlen(entry->text));
}

static LRESULT SetEntryData(ComboEntry *entry, LPARAM data)
{
    if (!entry)
        return CB_ERR;
    entry->data = data;
    return CB_OKAY;
}

// The messages of the list, whose numbers are one range.
static LRESULT HandleListMessage(WindowRecord *combo, ComboData *data, UINT message, WPARAM wParam,
                                 LPARAM lParam)
{
    char *text = reinterpret_cast<char *>(lParam);
    ComboEntry *entry = EntryAt(&data->list, wParam);
    switch (message) {
    case CB_ADDSTRING: return Add(combo, data, text);
    case CB_RESETCONTENT: return Reset(combo, data);
    case CB_GETCOUNT: return data->list.count;
    case CB_GETDROPPEDCONTROLRECT:  // its list is never closed
        return GetWindowRect(combo->handle, reinterpret_cast<RECT *>(lParam));
    case CB_GETCURSEL: return data->selected;
    case CB_SETCURSEL: return SelectEntry(combo, data, int(wParam));
    case CB_GETLBTEXT: return GetEntryText(entry, text);
    case CB_GETLBTEXTLEN: return GetEntryText(entry, nullptr);
    case CB_FINDSTRINGEXACT: return FindEntry(&data->list, int(wParam), text, true);
    case CB_GETITEMDATA: return entry ? entry->data : CB_ERR;
    case CB_SETITEMDATA: return SetEntryData(entry, lParam);
    }
    return 0;
}

// The text is the edit box's; a list's is that of the selected entry and can't be set.
static LRESULT HandleText(WindowRecord *combo, const ComboData *data, UINT message, WPARAM wParam,
                          LPARAM lParam)
{
    if (data->edit)
        return SendMessageA(data->edit, message, wParam, lParam);
    if (message == WM_SETTEXT)
        return CB_ERR;
    const ComboEntry *entry = EntryAt(&data->list, WPARAM(data->selected));
    return StoreWindowText(combo, entry ? entry->text : "")
               ? DefControlProc(combo->handle, message, wParam, lParam)
               : 0;
}

static LRESULT CALLBACK ComboProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    WindowRecord *combo = FindWindowRecord(window);
    ComboData *data = FindComboData(window);
    if (!data)
        return 0;
    if (message >= CB_ADDSTRING && message <= CB_FINDSTRINGEXACT)
        return HandleListMessage(combo, data, message, wParam, lParam);
    switch (message) {
    case WM_CREATE: return CreateCombo(combo, data);
    case WM_NCDESTROY: EmptyList(&data->list); break;
    case WM_GETDLGCODE: return DLGC_WANTCHARS | DLGC_WANTARROWS;
    case WM_SETTEXT:
    case WM_GETTEXT:
    case WM_GETTEXTLENGTH: return HandleText(combo, data, message, wParam, lParam);
    case WM_SETFONT:
        if (data->edit)
            SendMessageA(data->edit, message, wParam, lParam);
        break;
    case WM_SETFOCUS: TakeFocus(window, data); return 0;
    case WM_KILLFOCUS: ChangeFocus(window, data, false); return 0;
    case WM_KEYDOWN: HandleKey(window, data, wParam); return 0;
    case WM_CHAR: HandleCharacter(window, data, char(wParam)); return 0;
    case WM_COMMAND: HandleEdit(combo, data, HIWORD(wParam)); return 0;
    }
    return DefControlProc(window, message, wParam, lParam);
}

const ControlClass kComboControl = {"COMBOBOX", ComboProc, sizeof(ComboData)};

// EDIT: one line of text that a person types, with a selection that what is typed replaces. Its
// parent hears of each change, before the box would be drawn and after it. Positions count bytes
// from the start of the text. The edit box of a combo box is one of these: it leaves the keys of
// the list to its parent, and tells it only what was typed.
#include <algorithm>
#include <assert.h>
#include <stdlib.h>
#include <string.h>

#include "controls/control_classes.h"
#include "windows/window_table.h"

constexpr size_t kTypedLimit = 30000;  // bytes of a text that typing may fill

struct EditData {
    size_t anchor, caret;  // the two ends of the selection, within the text; the keys move `caret`
};

static LRESULT CALLBACK EditProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

static EditData *FindEditData(HWND window)
{
    WindowRecord *record = FindWindowRecord(window);
    return record ? static_cast<EditData *>(ClassData(record, EditProc)) : nullptr;
}

static size_t LengthOf(const WindowRecord *edit)
{
    return edit->text ? strlen(edit->text) : 0;
}

static bool IsPartOfCombo(const WindowRecord *edit)
{
    return edit->parent && ClassData(edit->parent, kComboControl.procedure);
}

static void Tell(HWND window, WORD code)
{
    WindowRecord *edit = FindWindowRecord(window);
    if (edit)
        SendMessageA(GetParent(window), WM_COMMAND, MAKEWPARAM(edit->id, code),
                     reinterpret_cast<LPARAM>(window));
}

static void TellChange(HWND window)
{
    Tell(window, EN_UPDATE);
    Tell(window, EN_CHANGE);
}

static void Select(EditData *data, size_t anchor, size_t caret)
{
    data->anchor = anchor;
    data->caret = caret;
}

// The smaller end goes first. Behind the text, where -1 is too, means its end; a start of -1 takes
// the selection away.
static void SetSelection(const WindowRecord *edit, EditData *data, UINT start, UINT end)
{
    size_t length = LengthOf(edit);
    size_t anchor = std::min(size_t(start), length), caret = std::min(size_t(end), length);
    if (start == UINT(-1))
        anchor = caret = std::max(data->anchor, data->caret);
    Select(data, std::min(anchor, caret), std::max(anchor, caret));
}

static LRESULT GetSelection(const EditData *data, DWORD *start, DWORD *end)
{
    size_t first = std::min(data->anchor, data->caret), last = std::max(data->anchor, data->caret);
    if (start)
        *start = DWORD(first);
    if (end)
        *end = DWORD(last);
    return last > 0xffff ? -1 : MAKELONG(first, last);
}

// False when there is no memory.
static bool ReplaceSelection(WindowRecord *edit, EditData *data, const char *text)
{
    size_t first = std::min(data->anchor, data->caret), last = std::max(data->anchor, data->caret);
    size_t length = LengthOf(edit), size = strlen(text);
    assert(last <= length);
    char *changed = static_cast<char *>(malloc(length - (last - first) + size + 1));
    if (!changed)
        return false;
    const char *before = edit->text ? edit->text : "";
    memcpy(changed, before, first);
    memcpy(changed + first, text, size);
    memcpy(changed + first + size, before + last, length - last + 1);
    free(edit->text);
    edit->text = changed;
    edit->needsPaint = true;
    Select(data, first + size, first + size);
    return true;
}

// What is selected goes, or one byte before or behind the caret.
static void Delete(WindowRecord *edit, EditData *data, bool isBackward)
{
    if (data->anchor == data->caret && isBackward && data->caret > 0)
        --data->anchor;
    else if (data->anchor == data->caret && !isBackward && data->caret < LengthOf(edit))
        ++data->caret;
    if (data->anchor != data->caret && ReplaceSelection(edit, data, ""))
        TellChange(edit->handle);
}

// Return, Tab and the like are no text.
static void TypeCharacter(WindowRecord *edit, EditData *data, char character)
{
    if (edit->style & ES_READONLY)
        return;
    if (character == '\b') {
        Delete(edit, data, true);
        return;
    }
    if (BYTE(character) < ' ')
        return;
    const char typed[] = {character, '\0'};
    bool hasRoom = data->anchor != data->caret || LengthOf(edit) < kTypedLimit;
    if (hasRoom && ReplaceSelection(edit, data, typed))
        TellChange(edit->handle);
}

static void MoveCaret(EditData *data, size_t caret)
{
    Select(data, caret, caret);
}

// In one line up is left and down is right.
static void HandleKey(WindowRecord *edit, EditData *data, WPARAM key, LPARAM keyData)
{
    if (IsPartOfCombo(edit) && (key == VK_UP || key == VK_DOWN)) {
        SendMessageA(edit->parent->handle, WM_KEYDOWN, key, keyData);
        return;
    }
    switch (key) {
    case VK_HOME: MoveCaret(data, 0); break;
    case VK_END: MoveCaret(data, LengthOf(edit)); break;
    case VK_LEFT:
    case VK_UP: MoveCaret(data, data->caret > 0 ? data->caret - 1 : 0); break;
    case VK_RIGHT:
    case VK_DOWN: MoveCaret(data, std::min(data->caret + 1, LengthOf(edit))); break;
    case VK_DELETE:
        if (!(edit->style & ES_READONLY))
            Delete(edit, data, false);
        break;
    }
}

// The limit is for typing alone.
static LRESULT SetText(WindowRecord *edit, EditData *data, const char *text)
{
    if (!StoreWindowText(edit, text))
        return FALSE;
    edit->needsPaint = true;
    MoveCaret(data, 0);
    if (!IsPartOfCombo(edit))
        TellChange(edit->handle);
    return TRUE;
}

static void SetReadOnly(WindowRecord *edit, bool isReadOnly)
{
    edit->style &= ~DWORD(ES_READONLY);
    if (isReadOnly)
        edit->style |= ES_READONLY;
}

static LRESULT CALLBACK EditProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    WindowRecord *edit = FindWindowRecord(window);
    EditData *data = FindEditData(window);
    if (!data)
        return 0;
    const char *text = reinterpret_cast<const char *>(lParam);
    switch (message) {
    case WM_GETDLGCODE: return DLGC_HASSETSEL | DLGC_WANTCHARS | DLGC_WANTARROWS;
    case WM_SETTEXT: return SetText(edit, data, text);
    case WM_CHAR: TypeCharacter(edit, data, char(wParam)); return 0;
    case WM_KEYDOWN: HandleKey(edit, data, wParam, lParam); return 0;
    case WM_SETFOCUS: Tell(window, EN_SETFOCUS); return 0;
    case WM_KILLFOCUS: Tell(window, EN_KILLFOCUS); return 0;
    case EM_SETSEL: SetSelection(edit, data, UINT(wParam), UINT(lParam)); return 0;
    case EM_GETSEL:
        return GetSelection(data, reinterpret_cast<DWORD *>(wParam),
                            reinterpret_cast<DWORD *>(lParam));
    case EM_SETREADONLY: SetReadOnly(edit, wParam != 0); return TRUE;
    case EM_SCROLLCARET: return TRUE;  // all of the text can be seen
    }
    return DefControlProc(window, message, wParam, lParam);
}

const ControlClass kEditControl = {"EDIT", EditProc, sizeof(EditData)};

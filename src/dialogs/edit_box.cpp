// The edit box: one line of Lao in a window without a caption, for hosts that have no place of
// their own to type it. It has no buttons: Return and Escape end it.
#include "dialogs/lao_input.h"
#include "frame/controls.h"
#include "frame/library.h"
#include "orvel.h"

// The host's buffer, for the length of the dialog.
struct EditBoxState {
    char *buffer;
    int size;  // its capacity in bytes
};
static EditBoxState gEditBox;

enum { kEditCancelled = 0, kEditTaken = 1, kEditTakenWithShift = 2 };

static int ReadText(HWND dialog)
{
    return int(GetDlgItemTextA(dialog, ID_EDITLAO_TEXT, gEditBox.buffer, gEditBox.size));
}

// The caret stands behind the text, where a person goes on.
static void PlaceCaret(HWND dialog)
{
    int end = ReadText(dialog);
    SendDlgItemMessageA(dialog, ID_EDITLAO_TEXT, EM_SETSEL, WPARAM(end), end);
    SendDlgItemMessageA(dialog, ID_EDITLAO_TEXT, EM_SCROLLCARET, 0, 0);
}

static void TakeText(HWND dialog)
{
    ReadText(dialog);
    bool hasShift = GetAsyncKeyState(VK_SHIFT) & 0x8000;
    EndDialog(dialog, hasShift ? kEditTakenWithShift : kEditTaken);
}

static INT_PTR EditBoxCommand(HWND dialog, int id, int notification)
{
    switch (id) {
    case ID_EDITLAO_TEXT:
        if (notification == EN_SETFOCUS)
            PlaceCaret(dialog);
        break;
    case ID_OK: TakeText(dialog); break;
    case ID_CANCEL: EndDialog(dialog, kEditCancelled); break;
    default: return 0;
    }
    return 1;
}

static INT_PTR CALLBACK EditBoxDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    switch (message) {
    case WM_INITDIALOG: return SetDlgItemTextA(dialog, ID_EDITLAO_TEXT, gEditBox.buffer);
    case WM_COMMAND: return EditBoxCommand(dialog, LOWORD(wParam), HIWORD(wParam));
    }
    return 0;
}

// A host that is called meanwhile may open another one: the outer one's buffer comes back.
int WINAPI EditLao(HWND parent, char *buffer, int size)
{
    if (!buffer || size < 1 || !Initialize())
        return kEditCancelled;
    EditBoxState outer = gEditBox;
    gEditBox = {buffer, size};
    DWORD oldMode = LaoMode(kLaoTyping, kDialogMode) & kDialogMode;
    INT_PTR result = DialogBoxParamA(gProcess.instance, "EDITLAO", parent, EditBoxDlgProc, 0);
    LaoMode(oldMode, kDialogMode);
    gEditBox = outer;
    return result > 0 ? int(result) : kEditCancelled;
}

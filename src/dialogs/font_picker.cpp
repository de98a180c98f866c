// The font picker: which registered font is to replace a font, and how widely. Only its three
// buttons close it, since the host waits for one of their answers.
#include "fonts/font_table.h"
#include "frame/controls.h"
#include "frame/library.h"
#include "orvel.h"

// The host's, for the length of the dialog.
struct FontPickerState {
    const char *font;  // to be replaced
    char *choice;      // the name of the one to use
    int size;          // capacity of choice in bytes
};
static FontPickerState gPicker;

struct Answer {
    int button;
    int result;
};

static constexpr Answer kAnswers[] = {
    {ID_FONTPICK_ONCE, 0},
    {ID_FONTPICK_SELECTION_ONLY, 1},
    {ID_FONTPICK_ALWAYS, -1},
};

static INT_PTR InitPicker(HWND dialog, int code)
{
    SetDlgItemTextA(dialog, ID_FONTPICK_REPLACED, gPicker.font);
    for (int i = 0; i < gFonts.count; ++i)
        if (gFonts.records[i].code == code)
            AddListItem(dialog, ID_FONTPICK_FONTS, gFonts.records[i].name);
    SelectItem(dialog, ID_FONTPICK_FONTS, FindListItem(dialog, ID_FONTPICK_FONTS, gPicker.choice));
    SetDefaultButton(dialog, ID_FONTPICK_ALWAYS);
    return 1;
}

// Typed text is no choice: the font must be a registered one.
static INT_PTR PickerCommand(HWND dialog, int id)
{
    CopyListItem(dialog, ID_FONTPICK_FONTS, SelectedItem(dialog, ID_FONTPICK_FONTS), gPicker.choice,
                 gPicker.size);
    for (const Answer &answer : kAnswers)
        if (answer.button == id)
            EndDialog(dialog, answer.result);
    return 1;
}

static INT_PTR CALLBACK PickerDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG: return InitPicker(dialog, int(lParam));
    case WM_COMMAND: return HIWORD(wParam) == BN_CLICKED && PickerCommand(dialog, LOWORD(wParam));
    }
    return 0;
}

// A host that is called meanwhile may open another one: the outer one's buffers come back.
int WINAPI ChooseLaoFont(const char *font, char *choice, int size, int code)
{
    if (!font || !choice)
        return 0;
    FontPickerState outer = gPicker;
    gPicker = {font, choice, size};
    INT_PTR result = DialogBoxParamA(gProcess.instance, "FONTPICK", GetActiveWindow(),
                                     PickerDlgProc, WORD(code));
    gPicker = outer;
    return int(result);
}

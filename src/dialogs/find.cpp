// The find and replace dialog. It stays open beside the host's document and searches nothing: it
// collects what is to be found, and calls the host back when a button is pressed, who then fetches
// the texts. Any such call may close the dialog, so nothing is done behind it.
#include "dialogs/find.h"

#include <cctype>

#include "dialogs/keyboard_hook.h"
#include "dialogs/lao_input.h"
#include "frame/controls.h"
#include "frame/help.h"
#include "frame/library.h"
#include "frame/messages.h"
#include "frame/strings.h"
#include "orvel.h"

constexpr int kMostText = 127;  // bytes of a text, terminator included, that a box hands out

struct FindState {
    FindCallback callback;     // the host's
    char text[kMostText + 1];  // to find, as last typed or given; stays when the dialog goes
    bool isReplacing;          // the form
    bool ignoresBreaks;        // how the box stands as the dialog opens
    LaoInput input;
    HFONT font;  // of both boxes; the open dialog owns it
};
static FindState gFind;

bool IsBlankText(const char *text)
{
    while (*text && isspace(static_cast<unsigned char>(*text)))
        ++text;
    return !*text;
}

// ---- the two forms ----

static constexpr int kReplaceControls[] = {ID_FIND_REPLACEMENT_LABEL, ID_FIND_REPLACEMENT,
                                           ID_FIND_REPLACE_ALL};
static constexpr int kFindControls[] = {ID_FIND_DIRECTION_LABEL, ID_FIND_DIRECTION};

static INT_PTR ShowForm(HWND dialog, bool isReplacing)
{
    gFind.isReplacing = isReplacing;
    SetWindowTextA(dialog, isReplacing ? "Replacing Lao text" : "Finding Lao text");
    SetDlgItemTextA(dialog, ID_FIND_REPLACE, isReplacing ? "Replace" : "Replace...");
    for (int control : kReplaceControls)
        ShowControl(dialog, control, isReplacing);
    for (int control : kFindControls)
        ShowControl(dialog, control, !isReplacing);
    if (!isReplacing)
        SelectItem(dialog, ID_FIND_DIRECTION, 0);
    ShowWindow(dialog, SW_SHOW);
    return 1;
}

// ---- the buttons follow the text ----

static constexpr int kTextButtons[] = {ID_OK, ID_FIND_REPLACE, ID_FIND_REPLACE_ALL};

static INT_PTR ShowFindText(HWND dialog, bool selectsAll, bool keepsFocus)
{
    bool isBlank = IsBlankText(gFind.text);
    for (int button : kTextButtons)
        EnableControl(dialog, button, !isBlank);
    SetDefaultButton(dialog, isBlank ? ID_CANCEL : ID_OK);
    if (!isBlank && selectsAll)
        SendDlgItemMessageA(dialog, ID_FIND_TEXT, EM_SETSEL, 0, LPARAM(0xFFFF0000));
    if (!keepsFocus)
        SetFocus(GetDlgItem(dialog, ID_FIND_TEXT));
    return 1;
}

static void ReadFindText(HWND dialog)
{
    GetDlgItemTextA(dialog, ID_FIND_TEXT, gFind.text, kMostText);
    SendMessageA(dialog, RegisteredMessage(kShowLao), 0, 0);
}

// ---- the dialog ----

static void FillControls(HWND dialog)
{
    gFind.font = CreateLaoFont();
    SetControlFont(dialog, ID_FIND_TEXT, gFind.font);
    if (!IsBlankText(gFind.text))
        SetDlgItemTextA(dialog, ID_FIND_TEXT, gFind.text);
    SetControlFont(dialog, ID_FIND_REPLACEMENT, gFind.font);
    EmptyList(dialog, ID_FIND_DIRECTION);
    AddListItem(dialog, ID_FIND_DIRECTION, "Down");
    AddListItem(dialog, ID_FIND_DIRECTION, "Up");
    CheckBox(dialog, ID_FIND_IGNORE_BREAKS, gFind.ignoresBreaks);
}

static INT_PTR InitFind(HWND dialog)
{
    gProcess.findWindow = dialog;
    WidenLabelOf(dialog, ID_FIND_TEXT);
    FillControls(dialog);
    SendMessageA(dialog, RegisteredMessage(kShowLao), 1, 0);
    SetWindowPos(dialog, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    SetForegroundWindow(dialog);
    PostMessageA(dialog, RegisteredMessage(gFind.isReplacing ? kSetReplace : kSetFind), 0, 0);
    InstallDialogKeyHook(dialog);
    return 1;
}

static void CloseFind(HWND dialog)
{
    TurnLaoInputOff(&gFind.input);
    DestroyWindow(dialog);
}

static INT_PTR FindDestroyed()
{
    EndLaoInput(&gFind.input);
    RemoveDialogKeyHook();
    DeleteObject(gFind.font);
    gProcess.findWindow = nullptr;
    return 0;
}

static void BoxNotified(HWND dialog, int box, int notification)
{
    switch (notification) {
    case EN_SETFOCUS: TurnLaoInputOn(&gFind.input, kLaoTyping, kDialogMode); break;
    case EN_KILLFOCUS: TurnLaoInputOff(&gFind.input); break;
    case EN_UPDATE: RedrawControl(dialog, box); break;
    case EN_CHANGE:
        if (box == ID_FIND_TEXT)
            ReadFindText(dialog);
        break;
    }
}

static void PressReplace(HWND dialog)
{
    if (gFind.isReplacing)
        gFind.callback(kReplaceFound);
    else
        SendMessageA(dialog, RegisteredMessage(kSetReplace), 0, 0);
}

static INT_PTR FindCommand(HWND dialog, int id, int notification)
{
    switch (id) {
    case ID_OK: gFind.callback(kFindNext); break;
    case ID_CANCEL: CloseFind(dialog); break;
    case ID_HELP: ShowHelpTopic(dialog, "src/word/find_and_replace.html"); break;
    case ID_FIND_TEXT:
    case ID_FIND_REPLACEMENT: BoxNotified(dialog, id, notification); break;
    case ID_FIND_DIRECTION: SendMessageA(dialog, RegisteredMessage(kShowLao), 0, 1); break;
    case ID_FIND_REPLACE: PressReplace(dialog); break;
    case ID_FIND_REPLACE_ALL: gFind.callback(kReplaceAll); break;
    }
    return 0;
}

// Closing by the title bar presses Close, by default.
static INT_PTR CloseAsked()
{
    TurnLaoInputOff(&gFind.input);
    return 0;
}

static INT_PTR CALLBACK FindDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == RegisteredMessage(kShowLao))
        return ShowFindText(dialog, wParam != 0, lParam != 0);
    if (message == RegisteredMessage(kSetFind))
        return ShowForm(dialog, false);
    if (message == RegisteredMessage(kSetReplace))
        return ShowForm(dialog, true);
    if (message == RegisteredMessage(kSpecialKeys))
        return HandleSpecialKeys(dialog, message, wParam, lParam);
    switch (message) {
    case WM_INITDIALOG: return InitFind(dialog);
    case WM_COMMAND: return FindCommand(dialog, LOWORD(wParam), HIWORD(wParam));
    case WM_CLOSE: return CloseAsked();
    case WM_DESTROY: return FindDestroyed();
    }
    return 0;
}

// ---- the exports ----

int WINAPI StartOrvelFind(HWND, int replace, const char *text, int ignoreBreaks,
                          FindCallback callback)
{
    if (gProcess.findWindow)
        return 0;
    if (!callback)
        return WarningBox("Null callback address!");
    gFind.callback = callback;
    if (text)
        CopyCut(gFind.text, sizeof gFind.text, text);
    gFind.ignoresBreaks = ignoreBreaks;
    gFind.isReplacing = replace;
    BeginLaoInput(&gFind.input);
    if (CreateDialogParamA(gProcess.instance, "SearchDlg", GetActiveWindow(), FindDlgProc, 0))
        return 1;
    TurnLaoInputOff(&gFind.input);
    return 0;
}

int WINAPI GetFindReplaceText(char *findText, char *replaceText, int size, DWORD *ignoreBreaks,
                              DWORD *direction)
{
    HWND dialog = gProcess.findWindow;
    if (!dialog || !findText || !replaceText || !ignoreBreaks || !direction)
        return 0;
    if (size < 0 || size > kMostText)
        size = kMostText;
    GetDlgItemTextA(dialog, ID_FIND_TEXT, findText, size);
    GetDlgItemTextA(dialog, ID_FIND_REPLACEMENT, replaceText, size);
    *ignoreBreaks = IsChecked(dialog, ID_FIND_IGNORE_BREAKS);
    int selected = SelectedItem(dialog, ID_FIND_DIRECTION);
    *direction = !gFind.isReplacing && selected > 0 ? DWORD(selected) : 0;
    return 1;
}

int WINAPI ShowFindDialog(int topmost)
{
    return SetWindowPos(gProcess.findWindow, topmost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                        SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
}

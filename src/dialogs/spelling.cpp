// The spelling dialog. The host walks its document and finds the words; the dialog shows one at a
// time and calls the host back with what the user pressed. The host then acts, hands over the next
// word by SetMarkedText and says whether there is one. The dialog begins by pressing Ignore itself,
// which asks the host for the first word. What reacts to a call is posted, so that it comes behind
// all that the host did; and a host may close the dialog in any call.
#include "dialogs/spelling.h"

#include <cstring>

#include "dialogs/keyboard_hook.h"
#include "dialogs/lao_input.h"
#include "dialogs/show_it.h"
#include "frame/controls.h"
#include "frame/help.h"
#include "frame/library.h"
#include "frame/messages.h"
#include "frame/strings.h"
#include "orvel.h"
#include "settings/registry.h"
#include "text/lao_code.h"

struct SpellState {
    SpellCallback callback;          // the host's
    char marked[kSpellTextSize];     // the word as the host gave it, with break marks
    char suggested[kSpellTextSize];  // what the host has in its place; then work space
    char displayed[kSpellTextSize];  // the word as the upper box shows it
    char changed[kSpellTextSize];    // what the lower box holds
    int kind;                        // kBadStretch or kOldWord; any other is shown as it comes
    bool hasUserWords;               // the stored options have the user dictionary on
    LaoInput input;
    HFONT font;  // of both boxes; the open dialog owns it
};
static SpellState gSpell;

constexpr char kExpandValue[] = "ExpandErrors";

// ---- the word ----

void RemoveBreaks(char *target, const char *source)
{
    for (; *source; ++source)
        if (*source != kBreakMark)
            *target++ = *source;
    *target = 0;
}

void ExpandBreaks(char *target, const char *source)
{
    constexpr size_t kEnough = kSpellTextSize - 4;  // room for one more step and the terminator
    size_t length = 0;
    for (; *source && length < kEnough; ++source) {
        if (*source == kBreakMark || IsCombiningCode(BYTE(*source))) {
            target[length++] = ' ';
            target[length++] = ' ';
        }
        target[length++] = *source;
    }
    target[length] = 0;
}

// ---- what a kind of word means for the controls ----

struct SpellKind {
    int kind;
    const char *label;
    const char *proposal;  // what is put into the lower box, without its break marks
    bool canChange;        // at once; else when something was typed
    int focus, defaultButton;
};

static constexpr SpellKind kSpellKinds[] = {
    // a bad spelling is to be corrected by hand, an old one has its modern form at hand
    {kBadStretch, "Bad spelling:", gSpell.marked, false, ID_SPELL_CHANGED, ID_OK},
    {kOldWord, "Old spelling:", gSpell.suggested, true, ID_SPELL_CHANGE, ID_SPELL_CHANGE},
};

static void EnableChange(HWND dialog, bool canChange)
{
    EnableControl(dialog, ID_SPELL_CHANGE, canChange);
    EnableControl(dialog, ID_SPELL_CHANGE_ALL, canChange);
}

static void ShowNewWord(HWND dialog, const SpellKind *kind)
{
    RemoveBreaks(gSpell.changed, kind->proposal);
    SetDlgItemTextA(dialog, ID_SPELL_CHANGED, gSpell.changed);
    SetDlgItemTextA(dialog, ID_SPELL_KIND_LABEL, kind->label);
    EnableChange(dialog, kind->canChange);
    SetFocus(GetDlgItem(dialog, kind->focus));
    PostMessageA(dialog, DM_SETDEFID, WPARAM(kind->defaultButton), 0);
}

// Shows the texts, and with isNew what the kind of the word asks for.
static INT_PTR ShowSpelling(HWND dialog, bool isNew)
{
    if (IsChecked(dialog, ID_SPELL_EXPAND))
        ExpandBreaks(gSpell.displayed, gSpell.marked);
    else
        RemoveBreaks(gSpell.displayed, gSpell.marked);
    SetDlgItemTextA(dialog, ID_SPELL_MARKED, gSpell.displayed);
    SetDlgItemTextA(dialog, ID_SPELL_CHANGED, gSpell.changed);
    for (const SpellKind &kind : kSpellKinds)
        if (isNew && kind.kind == gSpell.kind)
            ShowNewWord(dialog, &kind);
    return 1;
}

static void ReadChanged(HWND dialog)
{
    GetDlgItemTextA(dialog, ID_SPELL_CHANGED, gSpell.changed, sizeof gSpell.changed - 1);
}

// ---- calling the host ----

// The host hears of the end when the dialog is out of its way.
static void EndCheck(HWND dialog, DWORD action)
{
    TurnLaoInputOff(&gSpell.input);
    ShowWindow(dialog, SW_HIDE);
    gSpell.callback(action);
    if (IsWindow(dialog))
        DestroyWindow(dialog);
}

static void CallHost(HWND dialog, DWORD action)
{
    int hasNext = gSpell.callback(action);
    if (!IsWindow(dialog))
        return;
    if (hasNext)
        PostMessageA(dialog, RegisteredMessage(kShowLao), 1, 0);
    else
        EndCheck(dialog, kSpellDone);
}

struct SpellButton {
    int id;
    DWORD action;
    bool takesChange;  // the host will ask for the changed word
};

static constexpr SpellButton kSpellButtons[] = {
    {ID_OK, kSpellIgnore, false},
    {ID_SPELL_IGNORE_ALL, kSpellIgnoreAll, false},
    {ID_SPELL_CHANGE, kSpellChange, true},
    {ID_SPELL_CHANGE_ALL, kSpellChangeAll, true},
};

static INT_PTR PressButton(HWND dialog, int id)
{
    if (id == ID_CANCEL)
        EndCheck(dialog, kSpellCancelled);
    for (const SpellButton &button : kSpellButtons) {
        if (button.id != id)
            continue;
        if (button.takesChange)
            ReadChanged(dialog);
        CallHost(dialog, button.action);
    }
    return 0;
}

// ---- the boxes ----

// Only what a person types counts: the focus tells it from the dialog's own writing.
static void TakeTyping(HWND dialog, WPARAM wParam, LPARAM lParam)
{
    if (GetFocus() != GetDlgItem(dialog, ID_SPELL_CHANGED))
        return;
    ShowItTrace(wParam, lParam);
    ReadChanged(dialog);
    EnableChange(dialog, true);
    SetDefaultButton(dialog, ID_SPELL_CHANGE);
}

static INT_PTR BoxNotified(HWND dialog, WPARAM wParam, LPARAM lParam)
{
    switch (HIWORD(wParam)) {
    case EN_SETFOCUS: TurnLaoInputOn(&gSpell.input, kLaoKeyboard, kLaoKeyboardMask); break;
    case EN_KILLFOCUS: TurnLaoInputOff(&gSpell.input); break;
    case EN_UPDATE: RedrawControl(dialog, LOWORD(wParam)); break;
    case EN_CHANGE:
        if (LOWORD(wParam) == ID_SPELL_CHANGED)
            TakeTyping(dialog, wParam, lParam);
        break;
    }
    return 1;
}

// ---- the other buttons ----

static INT_PTR ExpandPressed(HWND dialog)
{
    SendMessageA(dialog, RegisteredMessage(kShowLao), 0, 0);
    KeepUserNumber(kExpandValue, IsChecked(dialog, ID_SPELL_EXPAND));
    return 1;
}

static INT_PTR OpenDictionary(HWND dialog)
{
    RemoveBreaks(gSpell.displayed, gSpell.marked);
    ModifyDictionary(dialog, gSpell.displayed);
    return 1;
}

static INT_PTR OpenHelp(HWND dialog)
{
    ShowHelpTopic(dialog, "src/word/check_spelling.html");
    return 1;
}

// ---- the dialog ----

static INT_PTR InitSpelling(HWND dialog)
{
    gProcess.spellingWindow = dialog;
    SetWindowPos(dialog, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    gSpell.marked[0] = gSpell.suggested[0] = 0;
    gSpell.font = CreateLaoFont();
    SetControlFont(dialog, ID_SPELL_MARKED, gSpell.font);
    SetControlFont(dialog, ID_SPELL_CHANGED, gSpell.font);
    CheckBox(dialog, ID_SPELL_EXPAND, ReadUserNumber(kExpandValue, 0));
    if (gSpell.hasUserWords)
        EnableControl(dialog, ID_SPELL_DICTIONARY, true);
    SendDlgItemMessageA(dialog, ID_SPELL_MARKED, EM_SETREADONLY, TRUE, 0);
    SetDefaultButton(dialog, ID_OK);
    InstallDialogKeyHook(dialog);
    PostMessageA(dialog, RegisteredMessage(kShowLao), 1, 0);
    PostMessageA(dialog, WM_COMMAND, ID_OK, 0);  // asks the host for the first word
    return 1;
}

static INT_PTR SpellingDestroyed()
{
    EndLaoInput(&gSpell.input);
    RemoveDialogKeyHook();
    DeleteObject(gSpell.font);
    gProcess.spellingWindow = nullptr;
    return 0;
}

// The host hears of it here, and once more when the default handling has pressed Cancel.
static INT_PTR CloseAsked(HWND dialog)
{
    TurnLaoInputOff(&gSpell.input);
    ShowWindow(dialog, SW_HIDE);
    gSpell.callback(kSpellCancelled);
    return 0;
}

// A button is pressed by a click alone; its other notifications say nothing.
static INT_PTR SpellingCommand(HWND dialog, WPARAM wParam, LPARAM lParam)
{
    switch (LOWORD(wParam)) {
    case ID_HELP: return OpenHelp(dialog);
    case ID_SPELL_MARKED:
    case ID_SPELL_CHANGED: return BoxNotified(dialog, wParam, lParam);
    case ID_SPELL_EXPAND: return ExpandPressed(dialog);
    case ID_SPELL_DICTIONARY: return OpenDictionary(dialog);
    }
    return HIWORD(wParam) == BN_CLICKED ? PressButton(dialog, LOWORD(wParam)) : 0;
}

static INT_PTR CALLBACK SpellingDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == RegisteredMessage(kShowLao))
        return ShowSpelling(dialog, wParam == 1);
    if (message == RegisteredMessage(kSpecialKeys))
        return HandleSpecialKeys(dialog, message, wParam, lParam);
    switch (message) {
    case WM_INITDIALOG: return InitSpelling(dialog);
    case WM_COMMAND: return SpellingCommand(dialog, wParam, lParam);
    case WM_CLOSE: return CloseAsked(dialog);
    case WM_DESTROY: return SpellingDestroyed();
    }
    return 0;
}

// ---- the exports ----

// As they are stored: a change that wasn't saved isn't seen here. What can't be read stays as it
// was the last time.
static void ReadStoredOptions()
{
    OptionsRecord options = {};
    DWORD size = sizeof options;
    if (ReadUserValue("State", &options, &size))
        gSpell.hasUserWords = options.dictionaries & kUserDictionary;
}

int WINAPI StartSpellChecking(HWND parent, SpellCallback callback)
{
    if (gProcess.spellingWindow)
        return 0;
    if (!callback)
        return WarningBox("Null callback address!");
    gSpell.callback = callback;
    BeginLaoInput(&gSpell.input);
    ReadStoredOptions();
    if (CreateDialogParamA(gProcess.instance, "Spell", parent, SpellingDlgProc, 0))
        return 1;
    TurnLaoInputOff(&gSpell.input);
    return 0;
}

int WINAPI SetMarkedText(const char *marked, const char *suggested, int kind)
{
    if (marked)
        CopyCut(gSpell.marked, kMostWord + 1, marked);
    if (suggested)
        CopyCut(gSpell.suggested, kMostWord + 1, suggested);
    gSpell.kind = kind;
    return 1;
}

int WINAPI GetChangedText(char *buffer, int size)
{
    RemoveBreaks(gSpell.suggested, gSpell.changed);
    size_t length = strlen(gSpell.suggested);
    if (!buffer || size < 1 || length >= size_t(size))
        return 0;
    memcpy(buffer, gSpell.suggested, length + 1);
    return 1;
}

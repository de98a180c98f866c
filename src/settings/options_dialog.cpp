// The options dialog, the root of the settings: it leads to the keyboards, the fonts and the user's
// words. It works on the live record with every click, so that what the library reads meanwhile is
// what the controls show; Cancel takes the stored one again.
#include "settings/options_dialog.h"

#include "frame/controls.h"
#include "frame/help.h"
#include "frame/messages.h"
#include "settings/dialogs.h"
#include "settings/options.h"

struct OptionsDialogState {
    OptionsRecord *options;  // that the open dialog works on, the library's
    bool mustRestart;        // the keyboards were turned on or off
};
static OptionsDialogState gDialog;

// ---- choices of one value ----

struct Choice {
    WORD OptionsRecord::*field;
    WORD value;
    int button;
};

// The last of each field is the standard one.
// clang-format off
static constexpr Choice kChoices[] = {
    {&OptionsRecord::breakMode,        kSyllableBreaks,    ID_OPTIONS_BREAKS_SYLLABLES},
    {&OptionsRecord::breakMode,        kWordBreaks,        ID_OPTIONS_BREAKS_WORDS},
    {&OptionsRecord::breakMode,        kBothBreaks,        ID_OPTIONS_BREAKS_BOTH},
    {&OptionsRecord::oldSpelling,      kAskOldSpelling,    ID_OPTIONS_OLD_SPELLING_PROMPT},
    {&OptionsRecord::oldSpelling,      kChangeOldSpelling, ID_OPTIONS_OLD_SPELLING_AUTOMATIC},
    {&OptionsRecord::oldSpelling,      kKeepOldSpelling,   ID_OPTIONS_OLD_SPELLING_KEEP},
    {&OptionsRecord::romanBreak,       kHiddenRomanBreak,  ID_OPTIONS_ROMAN_HIDDEN},
    {&OptionsRecord::romanBreak,       kVisibleRomanBreak, ID_OPTIONS_ROMAN_VISIBLE},
    {&OptionsRecord::romanBreak,       kNoRomanBreak,      ID_OPTIONS_ROMAN_NONE},
    {&OptionsRecord::sortMode,         kNaturalSort,       ID_OPTIONS_SORT_NATURAL},
    {&OptionsRecord::sortMode,         kVowelsLastSort,    ID_OPTIONS_SORT_VOWELS_LAST},
    {&OptionsRecord::fontSubstitution, 1,                  ID_OPTIONS_SUBSTITUTION_USER},
    {&OptionsRecord::fontSubstitution, 0,                  ID_OPTIONS_SUBSTITUTION_AUTO},
};
// clang-format on

int ButtonOfOption(WORD OptionsRecord::*field, WORD value)
{
    int button = 0;
    for (const Choice &choice : kChoices) {
        if (choice.field != field)
            continue;
        button = choice.button;
        if (choice.value == value)
            break;
    }
    return button;
}

// ---- dictionaries, a bit each ----

struct DictionaryBox {
    WORD bit;
    int box;
};

static constexpr DictionaryBox kDictionaryBoxes[] = {
    {kMainDictionary, ID_OPTIONS_MAIN_WORDS},
    {kUserDictionary, ID_OPTIONS_USER_WORDS},
    {kOldDictionary, ID_OPTIONS_OLD_WORDS},
};

// ---- what can be used ----

int UsableControls(const OptionsRecord *options)
{
    bool hasWords = options->breakMode > kSyllableBreaks;
    bool hasOldWords = hasWords && (options->dictionaries & kMainDictionary);
    int usable = kNoControls;
    if (hasWords)
        usable |= kWordControls;
    if (hasOldWords)
        usable |= kOldWordControls;
    if (hasOldWords && (options->dictionaries & kOldDictionary))
        usable |= kOldSpellingControls;
    if (options->dictionaries & kUserDictionary)
        usable |= kUserWordControls;
    return usable;
}

struct ControlNeed {
    int control;
    OptionControls group;
};

static constexpr ControlNeed kControlNeeds[] = {
    {ID_OPTIONS_DICTIONARIES, kWordControls},
    {ID_OPTIONS_MAIN_WORDS, kWordControls},
    {ID_OPTIONS_USER_WORDS, kWordControls},
    {ID_OPTIONS_OLD_WORDS, kOldWordControls},
    {ID_OPTIONS_OLD_SPELLING, kOldSpellingControls},
    {ID_OPTIONS_OLD_SPELLING_PROMPT, kOldSpellingControls},
    {ID_OPTIONS_OLD_SPELLING_AUTOMATIC, kOldSpellingControls},
    {ID_OPTIONS_OLD_SPELLING_KEEP, kOldSpellingControls},
    {ID_OPTIONS_WORD_LIST, kUserWordControls},
};

static void UpdateOptionControls(HWND dialog, const OptionsRecord *options)
{
    int usable = UsableControls(options);
    for (const ControlNeed &need : kControlNeeds)
        EnableControl(dialog, need.control, usable & need.group);
}

// ---- between the record and the controls ----

static void ShowOptions(HWND dialog, const OptionsRecord *options)
{
    for (const Choice &choice : kChoices)
        CheckBox(dialog, choice.button,
                 ButtonOfOption(choice.field, options->*choice.field) == choice.button);
    for (const DictionaryBox &dictionary : kDictionaryBoxes)
        CheckBox(dialog, dictionary.box, options->dictionaries & dictionary.bit);
}

// A box that can't be used keeps its mark and counts. The two fields of the hosts lose what they
// held.
static void ReadOptionControls(HWND dialog)
{
    OptionsRecord *options = gDialog.options;
    for (const Choice &choice : kChoices)
        if (IsChecked(dialog, choice.button))
            options->*choice.field = choice.value;
    options->dictionaries = 0;
    for (const DictionaryBox &dictionary : kDictionaryBoxes)
        if (IsChecked(dialog, dictionary.box))
            options->dictionaries |= dictionary.bit;
    options->optionI = options->optionE = 80;
}

// ---- the dialog ----

static INT_PTR InitOptions(HWND dialog, OptionsRecord *options)
{
    gDialog.options = options;
    ShowOptions(dialog, options);
    UpdateOptionControls(dialog, options);
    SetFocus(GetDlgItem(dialog, ID_OK));
    ShowWindow(dialog, SW_SHOW);
    return 0;
}

// Changed fonts are written at once: from then on the button undoes no more than the options.
static void OpenFonts(HWND dialog)
{
    if (!FontsDialog(dialog))
        return;
    WriteFontList();
    SetDlgItemTextA(dialog, ID_CANCEL, "Close");
}

static void OpenKeyboards(HWND dialog)
{
    if (KeyboardsDialog(dialog))
        gDialog.mustRestart = true;
}

static void TakeClick(HWND dialog)
{
    ReadOptionControls(dialog);
    UpdateOptionControls(dialog, gDialog.options);
}

static INT_PTR OptionsCommand(HWND dialog, int id)
{
    switch (id) {
    case ID_OK:
        ReadOptionControls(dialog);
        EndDialog(dialog, 1);
        break;
    case ID_CANCEL:
        LoadOptions();
        EndDialog(dialog, 0);
        break;
    case ID_HELP: ShowHelpTopic(dialog, "src/user_settings.html"); break;
    case ID_OPTIONS_FONTS: OpenFonts(dialog); break;
    case ID_OPTIONS_KEYBOARDS: OpenKeyboards(dialog); break;
    case ID_OPTIONS_WORD_LIST: ModifyDictionary(dialog, nullptr); break;
    default: TakeClick(dialog);
    }
    return 1;
}

static INT_PTR CALLBACK OptionsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG: return InitOptions(dialog, reinterpret_cast<OptionsRecord *>(lParam));
    case WM_COMMAND: return OptionsCommand(dialog, LOWORD(wParam));
    }
    return 0;
}

// The keyboards are set by their own OK, so the hint about them comes after Cancel too.
int WINAPI OrvelOptions(HWND parent)
{
    if (!Initialize())
        return 0;
    LoadOptions();
    gDialog.mustRestart = false;
    INT_PTR isAccepted = DialogBoxParamA(gProcess.instance, "Options", parent, OptionsDlgProc,
                                         reinterpret_cast<LPARAM>(gProcess.options)) > 0;
    if (isAccepted)
        SaveOptions();
    if (gDialog.mustRestart)
        WarningBox("You must exit and restart Kerrin after enabling or disabling keyboard mapping");
    return int(isAccepted);
}

// The user dictionary dialog: the words of one's own in a list that is always open, over which a
// new one is typed. Each addition and deletion is saved by the companion at once, so Close undoes
// nothing. Typing makes Return mean Add, choosing from the list makes it mean Close.
#include <cstring>

#include "dialogs/lao_input.h"
#include "frame/companion.h"
#include "frame/controls.h"
#include "frame/help.h"
#include "frame/library.h"
#include "frame/strings.h"
#include "orvel.h"

constexpr int kShownWordSize = 32;  // bytes of a word in the list, terminator included

struct UserDictionaryState {
    const char *given;  // the caller's word for the edit box, read as the dialog opens; may be null
    char word[128];     // that was typed last
    DWORD savedMode;    // the mode word as the dialog opened
    HFONT font;         // of the list; the open dialog owns it
};
static UserDictionaryState gDictionary;

// ---- the default button ----

static void ChangeDefault(HWND dialog, int button, int plain)
{
    SetDefaultButton(dialog, button);
    SendDlgItemMessageA(dialog, plain, BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
}

static void WantDefault(HWND dialog, int button, int plain)
{
    if (LOWORD(SendMessageA(dialog, DM_GETDEFID, 0, 0)) != button)
        ChangeDefault(dialog, button, plain);
}

// ---- the list ----

// There may be 65,535 words: the list is asked for once and isn't drawn word by word. With a word,
// that one is selected.
static INT_PTR ShowWords(HWND dialog, const char *added)
{
    HWND list = GetDlgItem(dialog, ID_USERDICT_WORDS);
    SendMessageA(list, WM_SETREDRAW, FALSE, 0);
    SendMessageA(list, CB_RESETCONTENT, 0, 0);
    for (int number = 1; number <= gProcess.userWordCount; ++number) {
        char word[kShownWordSize + 1] = "";  // a word of full length comes without its terminator
        if (GetWord(word, kShownWordSize, number, kUserDictionary))
            SendMessageA(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(word));
    }
    if (added)
        SelectItem(dialog, ID_USERDICT_WORDS, FindListItem(dialog, ID_USERDICT_WORDS, added));
    SendMessageA(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, FALSE);
    return 1;
}

static void Refresh(HWND dialog, const char *added)
{
    SendMessageA(dialog, RegisteredMessage(kShowLao), 0, reinterpret_cast<LPARAM>(added));
}

// ---- the buttons ----

struct AddResult {
    int result;  // of AddWord
    const char *text;
    UINT flags;
};

static constexpr AddResult kAddResults[] = {
    {kWordTooShort, "User-defined words must be at least two characters long", MB_ICONINFORMATION},
    {kWordThereAlready, "That word is already in the user-defined word list", MB_ICONINFORMATION},
};
static constexpr AddResult kAddFailure = {
    kWordNotSaved, "Unable to add to the user-defined dictionary", MB_ICONEXCLAMATION};

static const AddResult *FindAddResult(int result)
{
    for (const AddResult &row : kAddResults)
        if (row.result == result)
            return &row;
    return &kAddFailure;
}

static void ReadWord(HWND dialog)
{
    GetDlgItemTextA(dialog, ID_USERDICT_WORDS, gDictionary.word, sizeof gDictionary.word - 1);
}

static void AddTypedWord(HWND dialog)
{
    ReadWord(dialog);
    if (strlen(gDictionary.word) < 2) {
        OrvelMsg(dialog, "User-defined words must be at least two characters long!", nullptr,
                 MB_ICONINFORMATION);
        return;
    }
    int result = AddWord(gDictionary.word);
    if (result == kWordAdded) {
        ++gProcess.userWordCount;
        Refresh(dialog, gDictionary.word);
    } else {
        const AddResult *told = FindAddResult(result);
        OrvelMsg(dialog, told->text, nullptr, told->flags);
    }
    ChangeDefault(dialog, ID_CANCEL, ID_USERDICT_ADD);
}

// The next word stands selected afterwards.
static void DeleteSelectedWord(HWND dialog)
{
    int position = SelectedItem(dialog, ID_USERDICT_WORDS);
    if (position < 0)
        return;
    ReadWord(dialog);
    if (DeleteWord(gDictionary.word) != kWordDeleted) {
        OrvelMsg(dialog, "The selected word is not in the user-defined word list", nullptr, MB_OK);
        return;
    }
    --gProcess.userWordCount;
    Refresh(dialog, nullptr);
    SelectItem(dialog, ID_USERDICT_WORDS, position);
}

// ---- the dialog ----

// The list shows and takes the internal code. A word that was brought along only waits for Return.
static INT_PTR InitDictionary(HWND dialog)
{
    gProcess.userDictionaryWindow = dialog;
    gDictionary.savedMode = LaoMode(0, 0);
    LaoMode(0, 15);
    gDictionary.font = CreateLaoFont();
    SetControlFont(dialog, ID_USERDICT_WORDS, gDictionary.font);
    Refresh(dialog, nullptr);
    SetDefaultButton(dialog, ID_CANCEL);
    if (gDictionary.given && *gDictionary.given) {
        SetDlgItemTextA(dialog, ID_USERDICT_WORDS, gDictionary.given);
        ChangeDefault(dialog, ID_USERDICT_ADD, ID_CANCEL);
    }
    return 1;
}

static INT_PTR DictionaryDestroyed()
{
    DeleteObject(gDictionary.font);
    LaoMode(gDictionary.savedMode, kDialogMode);
    gProcess.userDictionaryWindow = nullptr;
    return 0;
}

static void ListNotified(HWND dialog, int notification)
{
    switch (notification) {
    case CBN_SELCHANGE: WantDefault(dialog, ID_CANCEL, ID_USERDICT_ADD); break;
    case CBN_SETFOCUS: LaoOn(1); break;
    case CBN_EDITCHANGE: WantDefault(dialog, ID_USERDICT_ADD, ID_CANCEL); break;
    case CBN_EDITUPDATE: RedrawControl(dialog, ID_USERDICT_WORDS); break;
    }
}

static INT_PTR DictionaryCommand(HWND dialog, int id, int notification)
{
    switch (id) {
    case ID_USERDICT_WORDS: ListNotified(dialog, notification); break;
    case ID_USERDICT_ADD: AddTypedWord(dialog); break;
    case ID_USERDICT_DELETE: DeleteSelectedWord(dialog); break;
    case ID_CANCEL: EndDialog(dialog, 0); break;
    case ID_HELP: ShowHelpTopic(dialog, "src/breaks/user_dict.html"); break;
    default: return 0;
    }
    return 1;
}

static INT_PTR CALLBACK DictionaryDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == RegisteredMessage(kShowLao))
        return ShowWords(dialog, lParam ? gDictionary.word : nullptr);
    switch (message) {
    case WM_INITDIALOG: return InitDictionary(dialog);
    case WM_COMMAND: return DictionaryCommand(dialog, LOWORD(wParam), HIWORD(wParam));
    case WM_DESTROY: return DictionaryDestroyed();
    }
    return 0;
}

// One at a time: a host that calls again meanwhile finds it open.
int WINAPI ModifyDictionary(HWND parent, const char *word)
{
    if (gProcess.userDictionaryWindow && IsWindow(gProcess.userDictionaryWindow))
        return 1;
    CountUserWords();
    gDictionary.given = word;
    DialogBoxParamA(gProcess.instance, "UserDict", parent, DictionaryDlgProc, 0);
    return 1;
}

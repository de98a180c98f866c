// The keyboards dialog: which font codes the companion's keyboard serves, and the hot key that
// turns it on. What it sets is the companion's and the registry's, at once.
#include <iterator>

#include "frame/companion.h"
#include "frame/controls.h"
#include "settings/dialogs.h"
#include "settings/options.h"

struct KeyboardsState {
    DWORD oldHotKey;   // virtual key as of the opening
    bool mustRestart;  // as OK found it
};
static KeyboardsState gKeyboards;

constexpr BYTE kNoKeyboard = 16;  // in the flags of a font code

// In the order of the font codes, from 0.
static constexpr int kCodeBoxes[] = {
    ID_KEYBOARDS_ORVEL,     ID_KEYBOARDS_UNICODE, ID_KEYBOARDS_LAO2000, ID_KEYBOARDS_LAO95,
    ID_KEYBOARDS_IBM_STENO, ID_KEYBOARDS_LAO_ISO, ID_KEYBOARDS_THAI,
};

struct HotKey {
    const char *name;
    DWORD virtualKey;  // 0: keyboard mapping is off
};

static constexpr HotKey kHotKeys[] = {
    {"Pause", 19}, {"Scroll Lock", 145}, {"F2", 113},  {"F3", 114},     {"F4", 115},
    {"F5", 116},   {"F6", 117},          {"F7", 118},  {"F8", 119},     {"F9", 120},
    {"F10", 121},  {"F11", 122},         {"F12", 123}, {"Disabled", 0},
};

static bool HasKeyboard(int code)
{
    FontCodeRecord record = {};
    return FontCodeData(code, &record) && !(record.flags & kNoKeyboard);
}

static void SetKeyboardOfCode(int code, bool hasKeyboard)
{
    FontCodeRecord record = {};
    if (!FontCodeData(code, &record))
        return;
    record.flags = BYTE(hasKeyboard ? record.flags & ~kNoKeyboard : record.flags | kNoKeyboard);
    SetFontCodeData(code, &record);
}

// A key that isn't in the list is shown as none.
static INT_PTR InitKeyboards(HWND dialog)
{
    int code = 0, position = 0;
    for (int box : kCodeBoxes)
        CheckBox(dialog, box, HasKeyboard(code++));
    gKeyboards = {ReadHotKey(), false};
    EmptyList(dialog, ID_KEYBOARDS_HOT_KEY);
    for (const HotKey &key : kHotKeys) {
        AddListItem(dialog, ID_KEYBOARDS_HOT_KEY, key.name);
        if (key.virtualKey == gKeyboards.oldHotKey)
            SelectItem(dialog, ID_KEYBOARDS_HOT_KEY, position);
        ++position;
    }
    return 1;
}

// From one key to another the keyboard manager follows by itself.
static bool NeedsRestart(DWORD before, DWORD after)
{
    return before != after && (!before || !after);
}

// Text typed into the edit part selects nothing, and then the key stays.
static void StoreKeyboards(HWND dialog)
{
    int code = 0;
    for (int box : kCodeBoxes)
        SetKeyboardOfCode(code++, IsChecked(dialog, box));
    int position = SelectedItem(dialog, ID_KEYBOARDS_HOT_KEY);
    if (position < 0 || size_t(position) >= std::size(kHotKeys))
        return;
    DWORD hotKey = kHotKeys[position].virtualKey;
    WriteHotKey(hotKey);
    gKeyboards.mustRestart = NeedsRestart(gKeyboards.oldHotKey, hotKey);
}

static INT_PTR KeyboardsCommand(HWND dialog, int id)
{
    switch (id) {
    case ID_OK:
        StoreKeyboards(dialog);
        EndDialog(dialog, 1);
        return 1;
    case ID_CANCEL: EndDialog(dialog, 0); return 1;
    }
    return 0;
}

static INT_PTR CALLBACK KeyboardsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    switch (message) {
    case WM_INITDIALOG: return InitKeyboards(dialog);
    case WM_COMMAND: return KeyboardsCommand(dialog, LOWORD(wParam));
    }
    return 0;
}

int KeyboardsDialog(HWND parent)
{
    gKeyboards.mustRestart = false;
    DialogBoxParamA(gProcess.instance, "KEYBOARDS", parent, KeyboardsDlgProc, 0);
    return gKeyboards.mustRestart;
}

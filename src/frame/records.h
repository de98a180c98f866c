// The records that several folders share: the options, a font code's record of the companion, and
// what the process keeps from attach to detach. Their formats are fixed: they are stored in the
// registry or handed over a module border.
#pragma once

#include <windows.h>

#include "orvel.h"

constexpr DWORD kPathSize = 260;  // every path block, terminator included
constexpr char kRegistryKey[] = "Software\\Orvel\\Orvel7";

struct OptionsRecord {
    WORD optionF;
    WORD breakMode;
    WORD dictionaries;
    WORD oldSpelling;
    WORD romanBreak;
    WORD sortMode;
    WORD optionI;
    WORD optionE;
    WORD fontSubstitution;
};
static_assert(sizeof(OptionsRecord) == 18);  // stored in the registry as it is

struct FontCodeRecord {
    BYTE flags;           // 16: disabled; the rest is the companion's
    BYTE breakCharacter;  // stands for an invisible break in text of this code
    char name[30];
};
static_assert(sizeof(FontCodeRecord) == 32);  // filled by the companion

// Registered window messages, in the order of their registration.   ORDER kMessageNames
enum DialogMessage {
    kShowLao,
    kListFonts,
    kListCodes,
    kFontDataChange,
    kSetFind,
    kSetReplace,
    kSetLabel,
    kStartWait,
    kStopWait,
    kSpecialKeys,
    kMenuKeys,
    kMessageCount
};

struct ProcessState {
    HINSTANCE instance;  // of this library, for its dialogs
    OptionsRecord *options;
    UINT messages[kMessageCount];
    HWND userDictionaryWindow, spellingWindow, findWindow;  // null while closed
    WORD userWordCount;  // as of the last load of the user dictionary
    int started;
};

extern ProcessState gProcess;

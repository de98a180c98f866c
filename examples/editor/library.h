// The library as a host that doesn't link it has it: each export by its name, with the type that
// its declaration gives it. Bound once, as the program starts.
#pragma once

#include "orvel.h"

// clang-format off
#define ORVEL_EXPORTS(X)                                                                           \
    X(InitializeFrom) X(GetOrvelOption)                                                            \
    X(DivideText) X(FindOldWord)                                                                   \
    X(UnicodeToLao) X(LaoToUnicode) X(PackLao) X(RecodeString) X(GetFontCodeName)                  \
    X(GetLaoFontInfo) X(SetReplacementFontName) X(WriteFontList) X(SortString) X(ConvertDocument)  \
    X(OrvelOptions) X(ModifyDictionary) X(EditLao) X(ChooseLaoFont) X(ShowLaoSortDialog)           \
    X(StartOrvelFind) X(GetFindReplaceText) X(StartSpellChecking) X(SetMarkedText)                 \
    X(GetChangedText)
// clang-format on

struct Library {
#define ORVEL_MEMBER(name) decltype(&::name) name;
    ORVEL_EXPORTS(ORVEL_MEMBER)
#undef ORVEL_MEMBER
};
extern Library gOrvel;

// Loads the library that stands beside this program, and starts it. Null when it is started, else
// what to tell the user.
const wchar_t *StartOrvel();

// The options record and its one-letter names. A field is a row: its letter, its place, its
// default.
#include "settings/options.h"

#include <cstring>

#include "frame/records.h"
#include "orvel.h"
#include "settings/registry.h"

constexpr DWORD kPauseKey = 19;

struct OptionRow {
    char letter;
    WORD OptionsRecord::*field;
    WORD standard;
};

// clang-format off
constexpr OptionRow kOptionRows[] = {
    {'f', &OptionsRecord::optionF,          0},
    {'b', &OptionsRecord::breakMode,        kBothBreaks},
    {'d', &OptionsRecord::dictionaries,     kMainDictionary},
    {'o', &OptionsRecord::oldSpelling,      kKeepOldSpelling},
    {'r', &OptionsRecord::romanBreak,       kVisibleRomanBreak},
    {'s', &OptionsRecord::sortMode,         kVowelsLastSort},
    {'i', &OptionsRecord::optionI,          64},
    {'e', &OptionsRecord::optionE,          12},
    {'c', &OptionsRecord::fontSubstitution, 0},
};
// clang-format on

static void SetDefaults(OptionsRecord *options)
{
    for (const OptionRow &row : kOptionRows)
        options->*row.field = row.standard;
}

int LoadOptions()
{
    OptionsRecord *options = gProcess.options;
    SetDefaults(options);
    if (!HasUserKey())
        return SaveOptions();
    // A shorter value of an older version fills the leading fields; a longer one is none of ours.
    OptionsRecord stored = *options;
    DWORD size = sizeof stored;
    if (!ReadUserValue("State", &stored, &size))
        return 0;
    *options = stored;
    return 1;
}

int SaveOptions()
{
    return WriteUserValue("State", REG_BINARY, gProcess.options, sizeof(OptionsRecord));
}

DWORD ReadHotKey()
{
    return ReadUserNumber("HotKey", kPauseKey);
}

int WriteHotKey(DWORD virtualKey)
{
    return WriteUserValue("HotKey", REG_DWORD, &virtualKey, sizeof virtualKey);
}

static WORD *FindOption(const char *key)
{
    if (!key)
        return nullptr;
    for (const OptionRow &row : kOptionRows)
        if ((*key | 0x20) == row.letter)
            return &(gProcess.options->*row.field);
    return nullptr;
}

WORD WINAPI GetOrvelOption(const char *key)
{
    const WORD *option = FindOption(key);
    return option ? *option : 0;
}

int WINAPI SetOrvelOption(const char *key, WORD value, int save)
{
    WORD *option = FindOption(key);
    if (!option)
        return 0;
    *option = value;
    return save ? SaveOptions() : 1;
}

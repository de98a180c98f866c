// The dictionaries: loading, old spellings, and the words of the user. The companion holds the
// words; here stands what hosts may ask about them. Every operation asks for its dictionary to be
// loaded first, as the companion drops all of them when the library is detached.
#include "breaks/dictionaries.h"

#include <cstring>

#include "frame/companion.h"
#include "orvel.h"

constexpr int kOldWordHandle = int(kOldDictionary) | kWholeEntry | kWantHandle;

void LoadDictionaries(WORD dictionaries)
{
    if (dictionaries & kMainDictionary)
        ReadLaoDict("MainDict.dat", kMainDictionary);
    if (dictionaries & kUserDictionary)
        gProcess.userWordCount = ReadLaoDict("UserDict.dat", kUserDictionary);
    if (dictionaries & kOldDictionary)
        ReadLaoDict("OldDict.dat", kOldDictionary);
}

// The companion gives a handle for an old spelling, and for the handle the modern one.
int WINAPI FindOldWord(const char *word, char *buffer, DWORD size)
{
    if (!word || !buffer)
        return 0;
    int handle = FindWord(word, int(strlen(word)), 0, kOldWordHandle);
    return handle && GetNewWord(buffer, size, handle) ? 1 : 0;
}

int WINAPI CountUserWords(void)
{
    LoadDictionaries(kUserDictionary);
    return gProcess.userWordCount;
}

int WINAPI AddUserWord(const char *word)
{
    if (!word || strlen(word) < 2)
        return kWordTooShort;
    LoadDictionaries(kUserDictionary);
    return AddWord(word);
}

// A companion without a call for many words is asked for each.
int WINAPI AddUserWords(const char *const *words, int *results, DWORD count)
{
    if (!words || !results)
        return 0;
    LoadDictionaries(kUserDictionary);
    if (AddWords(words, results, count))
        return 1;
    for (DWORD i = 0; i < count; ++i)
        results[i] = AddUserWord(words[i]);
    return 1;
}

int WINAPI DeleteUserWord(const char *word)
{
    if (!word)
        return 1;
    LoadDictionaries(kUserDictionary);
    return DeleteWord(word);
}

// The bridge to the companion module. Each entry is tested at each call, so that one name that is
// missing disables one operation.
#include "frame/companion.h"

#include <cstring>

#include "frame/paths.h"
#include "orvel.h"

struct Companion {
    HMODULE module;
    DWORD(WINAPI *laoMode)(DWORD, DWORD);
    int(WINAPI *laoOn)(int);
    WORD(WINAPI *readLaoDict)(const char *, int);
    int(WINAPI *findWord)(const char *, int, int, int);
    int(WINAPI *getWord)(char *, DWORD, int, int);
    int(WINAPI *getNewWord)(char *, DWORD, int);
    int(WINAPI *addWord)(const char *);
    int(WINAPI *deleteWord)(const char *);
    int(WINAPI *options)();
    void(WINAPI *packLao)(char *);
    int(WINAPI *fontCodeData)(int, FontCodeRecord *);
    int(WINAPI *setFontCodeData)(int, FontCodeRecord *);
    int(WINAPI *recodeString)(char *, DWORD, int);
    int(WINAPI *addLaoSyllable)(char *, const char *, const char *);
    int(WINAPI *unloadDictionaries)();
    void(WINAPI *aboutOrvel)(int);
    void(WINAPI *findWordLengths)(const char *, DWORD, WordLengths *);  // optional
    DWORD(WINAPI *addWords)(const char *const *, int *, DWORD);         // optional
    DWORD(WINAPI *dictionariesRevision)();                              // optional
    DWORD(WINAPI *joinLaoSigns)(DWORD, DWORD);                          // optional
    bool hasJoins;                                                      // the next field is made
    SignJoins joins;
};
static Companion gCompanion;

struct BoundName {
    const char *name;
    void *entry;  // the place of the function pointer
};

static const BoundName kBoundNames[] = {
    {"LaoMode", &gCompanion.laoMode},
    {"LaoOn", &gCompanion.laoOn},
    {"ReadLaoDict", &gCompanion.readLaoDict},
    {"FindWord", &gCompanion.findWord},
    {"GetWord", &gCompanion.getWord},
    {"GetNewWord", &gCompanion.getNewWord},
    {"AddWord", &gCompanion.addWord},
    {"DeleteWord", &gCompanion.deleteWord},
    {"Options", &gCompanion.options},
    {"PackLao", &gCompanion.packLao},
    {"FontCodeData", &gCompanion.fontCodeData},
    {"SetFontCodeData", &gCompanion.setFontCodeData},
    {"RecodeString", &gCompanion.recodeString},
    {"AddLaoSyllable", &gCompanion.addLaoSyllable},
    {"UnloadDictionaries", &gCompanion.unloadDictionaries},
    {"AboutOrvel", &gCompanion.aboutOrvel},
};

static bool FindEntry(HMODULE module, const BoundName &bound)
{
    FARPROC found = GetProcAddress(module, bound.name);
    memcpy(bound.entry, &found, sizeof found);
    return found != nullptr;
}

static void BindEntry(HMODULE module, const BoundName &bound)
{
    if (!FindEntry(module, bound))
        MessageBoxA(nullptr, bound.name, "Vesk link error", MB_ICONSTOP | MB_SYSTEMMODAL);
}

int BindCompanion()
{
    if (gCompanion.module)
        return 1;
    if (!FindWindowA("KerrinDLL", nullptr))
        return 0;
    const char *path = InstallFilePath("Vesk.dll");
    HMODULE module = path ? LoadLibraryA(path) : nullptr;
    if (!module)
        return 0;
    gCompanion.module = module;
    for (const BoundName &bound : kBoundNames)
        BindEntry(module, bound);
    FindEntry(module, {"FindWordLengths", &gCompanion.findWordLengths});
    FindEntry(module, {"AddWords", &gCompanion.addWords});
    FindEntry(module, {"DictionariesRevision", &gCompanion.dictionariesRevision});
    FindEntry(module, {"JoinLaoSigns", &gCompanion.joinLaoSigns});
    return 1;
}

int UnbindCompanion()
{
    HMODULE module = gCompanion.module;
    gCompanion = {};
    if (module)
        FreeLibrary(module);
    return 1;
}

DWORD WINAPI LaoMode(DWORD value, DWORD mask)
{
    return gCompanion.laoMode ? gCompanion.laoMode(value, mask) : 0;
}

int WINAPI LaoOn(int value)
{
    return gCompanion.laoOn ? gCompanion.laoOn(value) : 0;
}

WORD ReadLaoDict(const char *fileName, int dictionary)
{
    return gCompanion.readLaoDict ? gCompanion.readLaoDict(fileName, dictionary) : 0;
}

int FindWord(const char *text, int length, int zero, int flags)
{
    return gCompanion.findWord ? gCompanion.findWord(text, length, zero, flags) : -1;
}

int WINAPI GetWord(char *buffer, DWORD size, int number, int dictionary)
{
    return gCompanion.getWord ? gCompanion.getWord(buffer, size, number, dictionary) : 0;
}

int WINAPI GetNewWord(char *buffer, DWORD size, int handle)
{
    return gCompanion.getNewWord ? gCompanion.getNewWord(buffer, size, handle) : 0;
}

int AddWord(const char *word)
{
    return gCompanion.addWord ? gCompanion.addWord(word) : -1;
}

int AddWords(const char *const *words, int *results, DWORD count)
{
    return gCompanion.addWords && gCompanion.addWords(words, results, count);
}

int DeleteWord(const char *word)
{
    return gCompanion.deleteWord ? gCompanion.deleteWord(word) : -1;
}

int Options()
{
    return gCompanion.options ? gCompanion.options() : 0;
}

void WINAPI PackLao(char *text)
{
    if (gCompanion.packLao)
        gCompanion.packLao(text);
}

// Signs that join get numbers, each in the order in which it is met. False where they are too many.
static bool PutJoin(SignJoins *joins, int *rows, int *columns, int first, int second)
{
    uint8_t *row = &joins->row[first], *column = &joins->column[second];
    DWORD joined = gCompanion.joinLaoSigns(DWORD(first), DWORD(second));
    if (!joined)
        return true;
    *row = *row ? *row : uint8_t(++*rows);
    *column = *column ? *column : uint8_t(++*columns);
    if (*row >= kMostJoining || *column >= kMostJoining)
        return false;
    joins->joined[*row][*column] = uint8_t(joined);
    return true;
}

static bool MakeJoins(SignJoins *joins)
{
    int rows = 0, columns = 0;
    for (int first = 128; first < 256; ++first)
        for (int second = 128; second < 256; ++second)
            if (!PutJoin(joins, &rows, &columns, first, second))
                return false;
    return true;
}

const SignJoins *JoiningSigns()
{
    if (!gCompanion.joinLaoSigns)
        return nullptr;
    if (!gCompanion.hasJoins && !MakeJoins(&gCompanion.joins))
        gCompanion.joinLaoSigns = nullptr;
    gCompanion.hasJoins = gCompanion.joinLaoSigns;
    return gCompanion.hasJoins ? &gCompanion.joins : nullptr;
}

int FontCodeData(int code, FontCodeRecord *record)
{
    return gCompanion.fontCodeData ? gCompanion.fontCodeData(code, record) : 0;
}

int SetFontCodeData(int code, FontCodeRecord *record)
{
    return gCompanion.setFontCodeData ? gCompanion.setFontCodeData(code, record) : 0;
}

int WINAPI RecodeString(char *text, DWORD size, int code)
{
    return gCompanion.recodeString ? gCompanion.recodeString(text, size, code) : 0;
}

int AddLaoSyllable(char *output, const char *start, const char *end)
{
    return gCompanion.addLaoSyllable ? gCompanion.addLaoSyllable(output, start, end) : 0;
}

int UnloadDictionaries()
{
    return gCompanion.unloadDictionaries ? gCompanion.unloadDictionaries() : 0;
}

void WINAPI ShowAbout(HWND, int value)
{
    if (gCompanion.aboutOrvel)
        gCompanion.aboutOrvel(value);
}

int FindWordLengths(const char *text, DWORD dictionaries, WordLengths *lengths)
{
    if (!gCompanion.findWordLengths || !gCompanion.findWord)
        return 0;  // without FindWord all that is asked counts as found
    gCompanion.findWordLengths(text, dictionaries, lengths);
    return 1;
}

int DictionariesRevision(DWORD *revision)
{
    if (!gCompanion.dictionariesRevision)
        return 0;
    *revision = gCompanion.dictionariesRevision();
    return 1;
}

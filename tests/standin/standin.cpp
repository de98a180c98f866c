// A companion for tests that answers 7 to everything and has one font code. It is built once for
// each name that it lacks.
#include <cstring>

#include <windows.h>

enum { kAnswer = 7 };

#define ANSWERS(name, ...)                                                                         \
    int WINAPI name(__VA_ARGS__)                                                                   \
    {                                                                                              \
        return kAnswer;                                                                            \
    }

extern "C" {
// clang-format off
ANSWERS(LaoMode, DWORD, DWORD)
ANSWERS(LaoOn, int)
ANSWERS(ReadLaoDict, const char *, int)
ANSWERS(FindWord, const char *, int, int, int)
ANSWERS(GetWord, char *, DWORD, int, int)
ANSWERS(GetNewWord, char *, DWORD, int)
ANSWERS(AddWord, const char *)
ANSWERS(DeleteWord, const char *)
ANSWERS(Options)
ANSWERS(SetFontCodeData, int, BYTE *)
ANSWERS(RecodeString, char *, DWORD, int)
ANSWERS(UnloadDictionaries)
void WINAPI PackLao(char *) {}
void WINAPI AboutOrvel(int) {}
int WINAPI AddLaoSyllable(char *, const char *, const char *) { return 0; }
// clang-format on
int WINAPI FontCodeData(int code, BYTE *record)
{
    if (code == 0)
        memcpy(record, "\0-Stand-in", 11);
    return code == 0 ? kAnswer : 0;
}
// No word at any length: not to be asked where FindWord is missing.
void WINAPI FindWordLengths(const char *, DWORD, DWORD *lengths)
{
    memset(lengths, 0, 3 * sizeof *lengths);
}
}

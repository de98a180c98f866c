// A companion for tests that answers 7 to everything and has one font code. It is built once for
// each name that it lacks.
#include <cstring>

#include <windows.h>

enum { kAnswer = 7 };

extern "C" {
DWORD WINAPI LaoMode(DWORD, DWORD)
{
    return kAnswer;
}
int WINAPI LaoOn(int)
{
    return kAnswer;
}
WORD WINAPI ReadLaoDict(const char *, int)
{
    return kAnswer;
}
int WINAPI FindWord(const char *, int, int, int)
{
    return kAnswer;
}
// No word at any length: not to be asked where FindWord is missing.
void WINAPI FindWordLengths(const char *, DWORD, DWORD *lengths)
{
    memset(lengths, 0, 3 * sizeof *lengths);
}
int WINAPI GetWord(char *, DWORD, int, int)
{
    return kAnswer;
}
int WINAPI GetNewWord(char *, DWORD, int)
{
    return kAnswer;
}
int WINAPI AddWord(const char *)
{
    return kAnswer;
}
int WINAPI DeleteWord(const char *)
{
    return kAnswer;
}
int WINAPI Options()
{
    return kAnswer;
}
void WINAPI PackLao(char *) {}
int WINAPI FontCodeData(int code, BYTE *record)
{
    if (code == 0)
        memcpy(record, "\0-Stand-in", 11);
    return code == 0 ? kAnswer : 0;
}
int WINAPI SetFontCodeData(int, BYTE *)
{
    return kAnswer;
}
int WINAPI RecodeString(char *, DWORD, int)
{
    return kAnswer;
}
int WINAPI AddLaoSyllable(char *, const char *, const char *)
{
    return 0;
}
int WINAPI UnloadDictionaries()
{
    return kAnswer;
}
void WINAPI AboutOrvel(int) {}
}

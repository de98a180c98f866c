// The system forgets the fonts with the program, so nothing is taken back.
#include "own_fonts.h"

#include <string>
#include <windows.h>

void AddOwnFonts()
{
    wchar_t path[MAX_PATH];
    std::wstring folder(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
    folder.resize(folder.find_last_of(L'\\') + 1);
    folder += L"fonts\\";
    WIN32_FIND_DATAW found;
    HANDLE search = FindFirstFileW((folder + L"*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return;
    do
        AddFontResourceExW((folder + found.cFileName).c_str(), FR_PRIVATE, nullptr);
    while (FindNextFileW(search, &found));
    FindClose(search);
}

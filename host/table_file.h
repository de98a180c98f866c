// A person's own control file, wherever it stands.
#pragma once

#include <string>

#include <windows.h>

// Loads a table with LoadSortKey or LoadRomanKey; with an empty path the built-in one stays. False,
// after telling why, when the file can't be read or the library refuses it.
bool LoadTable(const std::string &path, int(WINAPI *load)(const char *content, DWORD size));

// A person's own control file for the operations that take one by its name in the data folder.
#pragma once

#include <string>

// Loads a table with SetSortKey or SetRomanKey; with an empty path the built-in one. False, with a
// message, when the file can't be read or the library refuses it.
bool LoadTable(const std::string &path, int(WINAPI *load)(char *name));

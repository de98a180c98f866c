// Font codes by name, as the companion gives them.
#pragma once

#include <string>

// The name of a code, or its number where it has none.
std::string FontCodeName(int code);

// A code by its name, in any case, or by its number; -1 when there is none such.
int FindFontCode(const std::string &name);

// All names, each behind a comma and a blank.
std::string ListFontCodes();

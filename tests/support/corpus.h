// The way from UTF-8 to internal code through the library, and back.
#pragma once

#include <string>

#include "support/texts.h"

// Internal code of UTF-8 text; what isn't in the Lao block or ASCII becomes "?".
std::string CodeOfText(const std::string &utf8);

// UTF-8 of internal code, break marks as "|".
std::string TextOfCode(const std::string &code);

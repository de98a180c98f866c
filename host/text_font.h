// What the commands share that turn Lao lines into other text.
#pragma once

#include <string>

#include "key_text.h"

// The registered font through which such text goes; false after telling that there is none.
bool ChooseTextFont(std::string *font);

// Appends what the operation makes of a line, or the line as it came where it can't be done. The
// status.
int ConvertLine(const CodeTable &codes, KeyForm form, const KeyOperation &operation,
                std::string_view line, bool inBrackets, std::string *output);

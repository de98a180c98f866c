// A text as the library divides it: for the break marks and the spelling check.
#pragma once

#include <string>
#include <vector>

#include "orvel.h"

// The chunks of all Lao in the text, their places in its characters. place: kSyllableBreaks,
// kWordBreaks, kBothBreaks, or 0 for what the option says.
std::vector<LaoChunk> Divide(const std::wstring &text, DWORD place);

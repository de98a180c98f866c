// The way from a character to the internal code, for whoever maps a text of its own.
#pragma once

#include <windows.h>

#include <cstdint>

// The byte of a character: 0 for one of the charts that has none, `kept` for one outside of all
// charts. extended: the text's font uses the private-use characters.
uint8_t ByteOfCharacter(WCHAR character, uint8_t kept, bool extended);

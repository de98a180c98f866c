// The three dictionaries of the companion. Asking for one that is loaded costs next to nothing, so
// that each run of text may ask.
#pragma once

#include <windows.h>

// Loads the dictionaries of a set (bits 1 main, 2 old spellings, 4 user) and notes the number of
// user words.
void LoadDictionaries(WORD dictionaries);

// Words that a stretch which can't be divided may have been meant to be: for whoever checks
// spelling over the library.
#pragma once

#include <string>
#include <vector>

#include "lao_text.h"

constexpr size_t kMostSuggestions = 5;

// The words around chunk `bad` of a divided text that one sign more, less or otherwise would make,
// so that the stretch is none any more; the likeliest first, at most kMostSuggestions. Empty where
// there is none, and for a stretch so long that one sign can't mend it.
std::vector<std::string> SuggestWords(const LaoText &text, size_t bad);

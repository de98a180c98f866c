// What a file is, by its first bytes: the converter takes WordprocessingML 2003 alone, and whoever
// gives it something else is told what that is. `orvel convert` asks before each conversion.
#pragma once

#include <string>
#include <string_view>

// Why a file that begins so can't be converted, and what to do about it: words that follow its
// name. Empty for XML in UTF-8, which the converter may try.
std::string WhyNoDocument(std::string_view head);

// The same of the file itself, also when it can't be read. What isn't a plain file, a pipe for
// instance, can be read only once and counts as a document.
std::string WhyNoDocumentIn(const std::string &path);

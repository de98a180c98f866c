// Real Lao text, and the way from UTF-8 to internal code through the library.
#pragma once

#include <string>
#include <vector>

inline const char *const kCorpusFiles[] = {"udhr.txt", "cldr_annotations.txt", "web_phrases.txt"};

std::string ReadCorpus(const char *name);

// Internal code of UTF-8 text; what isn't in the Lao block or ASCII becomes "?".
std::string CodeOfText(const std::string &utf8);

// UTF-8 of internal code, break marks as "|".
std::string TextOfCode(const std::string &code);

std::vector<std::string> SplitLines(const std::string &text);

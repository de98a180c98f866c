// The peer for breaks: ICU's line iterator for Lao, with its dictionary.
#pragma once

#include <cstddef>
#include <string>

// Boundaries of UTF-8 text that is UTF-16 already: their number. The text is set once.
struct IcuText;
IcuText *MakeIcuText(const std::string &utf8);
size_t CountIcuBoundaries(IcuText *text);

// UTF-8 in, UTF-8 out with U+200B at each boundary between Lao letters; both conversions are
// inside.
void MarkByIcu(IcuText *text, const std::string &utf8, std::string *output);

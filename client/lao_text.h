// UTF-8 text and the chunks of its Lao. The library divides 16-bit characters; here stands where
// each of them came from, so that marks and messages point into the text as it came and every byte
// of it can be written again.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "orvel.h"

constexpr WCHAR kBreakSign = 0x200B;  // an old break among the characters

// A divided text; it doesn't hold the text itself. A record can serve text after text.
struct LaoText {
    std::vector<WCHAR> characters;  // one for each of Lao, one blank for each stretch of others
    std::vector<size_t> starts;     // of each character in the text, in bytes, and the text's end
    std::vector<size_t> oldBreaks;  // where in the text a break mark (U+200B) stands that is one
    std::vector<LaoChunk> chunks;   // their places count in characters
};

// Divides a text (flags as of DivideText). False without memory; the library has shown it then.
bool DivideLaoText(std::string_view source, DWORD flags, LaoText *text);

// Appends the text that was divided, without its old breaks and with a mark in front of each chunk
// that has a break.
void AppendMarked(std::string_view source, const LaoText &text, std::string_view mark,
                  std::string *output);

// The bytes of a chunk without old breaks.
std::string ChunkText(std::string_view source, const LaoText &text, const LaoChunk &chunk);

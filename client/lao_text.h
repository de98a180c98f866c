// UTF-8 text and the chunks of its Lao. Chunks point into the text as it came, so that every byte
// of it can be written again.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "orvel.h"

// A divided text. A record can serve text after text.
struct LaoText {
    std::string_view source;           // the caller's
    std::span<const LaoChunk> chunks;  // of the block; their places are in bytes of the source
    std::vector<LaoChunk> block;
};

// Divides a text, which has to stay as long as it is asked about (flags as of DivideText). False
// without memory; the library has shown it then.
bool DivideLaoText(std::string_view source, DWORD flags, LaoText *text);

// Appends the text without its old breaks and with a mark in front of each chunk that has a break.
void AppendMarked(const LaoText &text, std::string_view mark, std::string *output);

// The bytes of the text from one place to another without old breaks.
std::string CleanText(const LaoText &text, size_t from, size_t to);

inline std::string ChunkText(const LaoText &text, const LaoChunk &chunk)
{
    return CleanText(text, chunk.start, chunk.end);
}

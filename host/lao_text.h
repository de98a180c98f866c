// The road of a text through the library: UTF-8 to internal code, its chunks, and back to places in
// the UTF-8. The library joins signs on the way in; the text itself never goes back through it, so
// that every byte stays as it came.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "orvel.h"
#include "session.h"

// What the library makes of single characters and of pairs of codes: asked once, so that a code of
// the result can be traced back to the characters that it came from.
struct CodeTrace {
    TextFont font;
    std::array<uint8_t, 128> codes;  // of U+0E80 to U+0EFF
    std::vector<uint8_t>
        joined;  // [first * 256 + second]: what PackLao joins them to, 0: it doesn't
};

// What a chunk is, as the library's side buffer tells it.
enum ChunkKind : uint8_t {
    kPlainChunk,  // first in its run, or of a run too short to be divided
    kSyllableChunk,
    kMainWordChunk,
    kUserWordChunk,
    kOldWordChunk,
    kBadChunk,
};

struct Chunk {
    size_t start, end;          // in LaoText::clean
    size_t codeStart, codeEnd;  // in LaoText::code
    ChunkKind kind;
    bool hasBreak;  // a boundary inside a run is in front of it
};

// One text. A record can serve text after text.
struct LaoText {
    std::string clean;            // the source without old break marks
    std::vector<size_t> removed;  // where in clean one stood
    std::vector<WCHAR> characters;
    std::vector<size_t> starts;  // of each character in clean, and the end
    std::string packed;          // the internal code, signs joined
    std::string code;            // with break marks
    std::vector<BYTE> side;
    std::vector<Chunk> chunks;
};

// False, with a message, when no font for the text is registered.
bool PrepareTrace(CodeTrace *trace);

// The internal code of a text; what isn't Lao becomes one blank for each stretch.
void ReadLaoText(const CodeTrace &trace, std::string_view source, LaoText *text);

// Reads and divides a text (flags as of WrapText). False when the library could not do it; it has
// shown a message then.
bool DivideLaoText(const CodeTrace &trace, std::string_view source, DWORD flags, LaoText *text);

// Appends the text with a mark in front of each chunk that has a break.
void AppendMarked(const LaoText &text, const std::string &mark, std::string *output);

// Internal code as UTF-8.
std::string Utf8FromCode(const CodeTrace &trace, const std::string &code);

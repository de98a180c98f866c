// Text for the operations that give another text: sort keys, romanization, e-mail coding. Lao and
// ASCII are handed over; a stretch of anything else stands there as one byte that no operation
// knows, and takes its place again in the result.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "lao_text.h"

// Which hyphens are text. The library takes byte 45 as its own break.
enum class Hyphens {
    kText,       // all: plain text
    kSeparators  // those behind a coded syllable are breaks: e-mail coding
};

struct KeyText {
    std::string code;                  // internal code, stand-ins for what is foreign
    std::vector<std::string> foreign;  // in their order
    std::vector<char> result;          // room for the operation
};

// Reads UTF-8. inBrackets: whether an e-mail text begins inside of a Latin passage.
void ReadKeyText(const CodeTrace &trace, std::string_view source, Hyphens hyphens, bool inBrackets,
                 KeyText *text);

// UTF-8 of the result: breaks that can be seen as "-", hidden ones as U+200B.
std::string WriteKeyText(const CodeTrace &trace, const KeyText &text, Hyphens hyphens);

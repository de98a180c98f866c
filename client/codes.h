// UTF-8 and the internal code, character by character, as the library's Unicode operations map
// them. For what the operations on whole texts don't do: words of the user, results to be shown.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

// The UTF-8 of a code: of one character or of two, which have three bytes at most each.
struct CodeText {
    char bytes[7];
    uint8_t size;  // 0: no character
};
static_assert(sizeof(CodeText) == 8);

// Asked of the started library once; the answers don't change.
struct CodeTable {
    std::array<uint8_t, 128> codes;       // of U+0E80 to U+0EFF; 0 for a character without one
    std::array<uint8_t, 128> runCodes;    // the same, and 0 for those that stand in no run of Lao
    std::array<uint8_t, 64> punctuation;  // of U+2000 to U+203F
    std::array<CodeText, 256> texts;
};

CodeTable ReadCodeTable();

// The internal code of one character, which may have more bytes behind it; 0 for one without.
uint8_t CodeOfCharacter(const CodeTable &table, std::string_view character);

// The internal code of a Lao word, signs joined, old breaks left out. Empty when it isn't Lao from
// end to end.
std::string CodeOfWord(const CodeTable &table, std::string_view word);

std::string TextOfCode(const CodeTable &table, std::string_view code);
void AppendTextOfCode(const CodeTable &table, std::string_view code, std::string *text);

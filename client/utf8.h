// UTF-8 text as bytes: what is Lao, what is a break mark, where characters end. Nothing is decoded
// that needn't be: all other bytes, invalid ones too, pass through the command as they came.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The Lao block U+0E80 to U+0EFF is the three-byte sequences that begin with E0 BA and E0 BB.
inline bool IsLaoAt(const char *text, size_t left)
{
    return left >= 3 && text[0] == '\xE0' && (text[1] & '\xFE') == '\xBA' &&
           (text[2] & '\xC0') == '\x80';
}

inline char16_t LaoAt(const char *text)
{
    return char16_t(0x0E80 | (text[1] & 1) << 6 | (text[2] & 63));
}

inline bool IsZeroWidthSpaceAt(const char *text, size_t left)
{
    return left >= 3 && text[0] == '\xE2' && text[1] == '\x80' && text[2] == '\x8B';
}

constexpr std::string_view kZeroWidthSpace = "\xE2\x80\x8B";

inline bool IsContinuation(char byte)
{
    return (byte & '\xC0') == '\x80';
}

// Bytes of the character at text: 1 to 4; 1 for a byte that begins no valid sequence.
size_t CharacterSize(std::string_view text);

size_t CountCharacters(std::string_view text);

// Appends a character below U+10000.
void AppendUtf8(std::string *text, char16_t character);

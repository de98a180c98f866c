// Conversions for tests.
#include "support/corpus.h"

#include <vector>

#include <gtest/gtest.h>

#include "orvel.h"

std::string CodeOfText(const std::string &utf8)
{
    std::vector<WCHAR> characters = WideOf(utf8);
    std::string code(characters.size(), '?');
    EXPECT_GE(UnicodeToLao(characters.data(), code.data(), DWORD(code.size() + 1), 0), 0);
    return code.c_str();
}

std::string TextOfCode(const std::string &code)
{
    std::vector<WCHAR> characters(2 * code.size() + 1);
    for (size_t i = 0; i < code.size(); ++i)
        characters[i] = uint8_t(code[i]) == 0x8C ? WCHAR('-') : WCHAR(uint8_t(code[i]));
    int count = LaoToUnicode(code.c_str(), characters.data(), DWORD(characters.size()), 0);
    std::string text;
    for (int i = 0; i < count; ++i) {
        unsigned c = characters[size_t(i)];
        if (c == 0x200B)
            text += '|';
        else if (c < 0x80)
            text += char(c);
        else
            text += {char(0xE0 | c >> 12), char(0x80 | (c >> 6 & 63)), char(0x80 | (c & 63))};
    }
    return text;
}

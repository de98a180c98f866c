// The table of codes, and words by it. No font is named: what the plain fonts have is meant.
#include "codes.h"

#include <cassert>
#include <cstring>

#include "orvel.h"
#include "utf8.h"

constexpr int kNoFont = -1;

static uint8_t AskCode(WCHAR character)
{
    char text[] = {'?', 0};  // stays where the character has no code
    UnicodeToLao(&character, text, sizeof text, kNoFont);
    return text[0] == '?' ? 0 : uint8_t(text[0]);
}

static CodeText TextOf(std::string_view utf8)
{
    CodeText text = {{}, uint8_t(utf8.size())};
    assert(utf8.size() <= sizeof text.bytes);
    memcpy(text.bytes, utf8.data(), utf8.size());
    return text;
}

static CodeText AskText(uint8_t code)
{
    char text[] = {char(code), 0};
    WCHAR characters[2] = {code < 0x80 ? WCHAR(code) : WCHAR(0), 0};  // ASCII is its own character
    int count = LaoToUnicode(text, characters, 2, kNoFont);
    std::string utf8;
    for (int i = 0; i < count; ++i)
        if (characters[i])
            AppendUtf8(&utf8, char16_t(characters[i]));
    return TextOf(utf8);
}

CodeTable ReadCodeTable()
{
    CodeTable table = {};
    for (size_t i = 0; i < table.codes.size(); ++i) {
        table.codes[i] = AskCode(WCHAR(0x0E80 + i));
        table.runCodes[i] = IsLaoCode(table.codes[i]) ? table.codes[i] : 0;
    }
    for (size_t i = 0; i < table.punctuation.size(); ++i)
        table.punctuation[i] = AskCode(WCHAR(0x2000 + i));
    for (size_t code = 1; code < table.texts.size(); ++code)
        table.texts[code] = AskText(uint8_t(code));
    table.texts[kRealHyphen] = TextOf("-");
    return table;
}

uint8_t CodeOfCharacter(const CodeTable &table, std::string_view character)
{
    if (IsLaoAt(character.data(), character.size()))
        return table.codes[LaoAt(character.data()) - 0x0E80];
    bool isPunctuation =
        character.size() >= 3 && character.starts_with("\xE2\x80") && IsContinuation(character[2]);
    return isPunctuation ? table.punctuation[character[2] & 63] : 0;
}

std::string CodeOfWord(const CodeTable &table, std::string_view word)
{
    std::string code;
    for (; !word.empty(); word.remove_prefix(CharacterSize(word))) {
        if (word.starts_with(kZeroWidthSpace))
            continue;
        code += char(CodeOfCharacter(table, word));
        if (!IsLaoCode(uint8_t(code.back())))
            return {};
    }
    PackLao(code.data());
    code.resize(std::char_traits<char>::length(code.c_str()));
    return code;
}

// All eight bytes are copied, and the end is moved by as many as count.
void AppendTextOfCode(const CodeTable &table, std::string_view code, std::string *text)
{
    char block[512 + sizeof(CodeText)];
    size_t used = 0;
    for (char byte : code) {
        const CodeText &piece = table.texts[uint8_t(byte)];
        memcpy(block + used, &piece, sizeof piece);
        used += piece.size;
        if (used < sizeof block - sizeof piece)
            continue;
        text->append(block, used);
        used = 0;
    }
    text->append(block, used);
}

std::string TextOfCode(const CodeTable &table, std::string_view code)
{
    std::string text;
    AppendTextOfCode(table, code, &text);
    return text;
}

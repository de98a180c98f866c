// Legacy text out of Unicode text, by charts that are read backwards.
#include "document_text.h"

#include <algorithm>
#include <unordered_map>

#include "document_charts.h"

enum { kLao, k95, k2000, kLetters };  // conversion types; 4 and 5 have the code of 95
constexpr char kZeroWidthSpace[] = "\u200B";

// Code page 1252 characters of the bytes 0x80 to 0x9F; a byte without one keeps its value.
constexpr uint16_t kHighCharacters[32] = {
    0x20AC, 0x81,   0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021, 0x2C6,  0x2030, 0x160,
    0x2039, 0x152,  0x8D,   0x17D,  0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x2DC,  0x2122, 0x161,  0x203A, 0x153,  0x9D,   0x17E,  0x178,
};

unsigned NextRandom(uint32_t *seed, unsigned below)
{
    *seed = *seed * 1664525u + 1013904223u;
    return (*seed >> 8) % below;
}

struct ByteSign {
    uint8_t byte;
    std::string sign;
};

// A font's signs, and the bytes of each.
struct FontSigns {
    std::vector<ByteSign> all;
    std::unordered_map<std::string, std::vector<uint8_t>> bytes;
};

static void AddSign(FontSigns *signs, const std::string &sign, unsigned byte)
{
    if (sign.empty() || byte == '<' || byte == '&' || byte == '>')
        return;
    signs->all.push_back({uint8_t(byte), sign});
    signs->bytes[sign].push_back(uint8_t(byte));
}

static FontSigns MakeSigns(int type)
{
    FontSigns signs;
    const char *const *chart = type == k2000      ? kSignsOf2000
                               : type == kLetters ? kSignsAtLetters
                                                  : kLaoSigns;
    for (unsigned i = 0; i < 128; ++i)
        AddSign(&signs, chart[i], type == kLetters ? 0x20 + i : 0x80 + i);
    for (unsigned c = 0x20; type != kLetters && c < 0x7F; ++c)
        if (type != kLao || c != '-')
            AddSign(&signs, std::string(1, char(c)), c);
    if (type == kLao) {  // the hyphen's byte is the break there
        AddSign(&signs, kZeroWidthSpace, '-');
        AddSign(&signs, "-", 0x8C);
    }
    return signs;
}

static const FontSigns &SignsOf(int type)
{
    static const FontSigns signs[] = {MakeSigns(kLao), MakeSigns(k95), MakeSigns(k2000),
                                      MakeSigns(kLetters)};
    return signs[type > kLetters ? int(k95) : type];
}

static void AppendUtf8(std::string *text, unsigned c)
{
    if (c < 0x80)
        *text += char(c);
    else if (c < 0x800)
        *text += {char(0xC0 | c >> 6), char(0x80 | (c & 63))};
    else
        *text += {char(0xE0 | c >> 12), char(0x80 | (c >> 6 & 63)), char(0x80 | (c & 63))};
}

static size_t SizeOfCharacter(char first)
{
    uint8_t byte = uint8_t(first);
    return byte < 0x80 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

static void AppendByte(LegacyText *result, unsigned byte, const std::string &sign)
{
    bool isHigh = byte >= 0x80 && byte < 0xA0;
    AppendUtf8(&result->stored, isHigh ? kHighCharacters[byte - 0x80] : byte);
    result->known += sign;
}

// Signs that the text lacks, and what a word processor may hold beside the font's own.
static void AppendRareness(LegacyText *result, int type, uint32_t *seed)
{
    const std::vector<ByteSign> &all = SignsOf(type).all;
    const ByteSign &any = all[NextRandom(seed, unsigned(all.size()))];
    switch (NextRandom(seed, 8)) {
    case 0:  // has no place and becomes a break
        result->stored += "\u4E2D";
        result->known += kZeroWidthSpace;
        break;
    case 1:  // the code page has it by likeness
        result->stored += type == kLetters ? "" : "\uFF21 &amp; ";
        result->known += type == kLetters ? "" : "A &amp; ";
        break;
    default: AppendByte(result, any.byte, any.sign); break;
    }
}

LegacyText WriteInLegacyFont(const std::string &text, int type, uint32_t *seed)
{
    const FontSigns &signs = SignsOf(type);
    LegacyText result;
    for (size_t at = 0; at < text.size();) {
        size_t one = SizeOfCharacter(text[at]), size = one;
        if (NextRandom(seed, 50) == 0)
            AppendRareness(&result, type, seed);
        if (at + one < text.size() && NextRandom(seed, 8) != 0)
            size += SizeOfCharacter(text[at + one]);
        auto sign = signs.bytes.find(text.substr(at, size));
        if (sign == signs.bytes.end())
            sign = signs.bytes.find(text.substr(at, size = one));
        if (sign != signs.bytes.end())
            AppendByte(&result, sign->second[NextRandom(seed, unsigned(sign->second.size()))],
                       sign->first);
        at += size;
    }
    return result;
}

std::vector<std::string> CutIntoPhrases(const std::string &text, uint32_t *seed)
{
    std::vector<std::string> phrases;
    for (size_t at = 0; at < text.size();) {
        size_t line = std::min(text.find('\n', at), text.size());
        size_t end = std::min(line, at + 40 + NextRandom(seed, 160));
        end = std::min(line, text.find(' ', end));
        if (end > at)
            phrases.push_back(text.substr(at, end - at));
        at = end + (end == line);
    }
    return phrases;
}

// The signs of the internal one-byte code: which byte a character of the Lao block has, which bytes
// stand for two signs, which are other forms of a sign. Everything in the module that knows a sign
// knows it from these tables.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr uint8_t kBreakMark = 45;  // invisible, U+200B
constexpr uint8_t kOldBreakMark = 31;
constexpr uint8_t kRealHyphen = 140;  // U+002D
constexpr uint8_t kNoBreakSpace = 160;
constexpr uint8_t kRepeatSign = 197;
constexpr uint8_t kEllipsis = 198;
constexpr uint8_t kHoSung = 185, kLo = 249;
constexpr uint8_t kHoLo = 205;  // the two in one

constexpr uint32_t kLaoBlock = 0x0E80;  // first character of kSignOfUnicode

// clang-format off
// The byte for U+0E80 to U+0EDF, sixteen a row; 0 where there is none.
constexpr uint8_t kSignOfUnicode[96] = {
    // 0    1    2    3    4    5    6    7    8    9    A    B    C    D    E    F
       0,0xA1,0xA2,   0,0xA3,   0,   0,0xA4,0xA5,   0,0xA7,   0,   0,0xA8,   0,   0,  // 0E8
       0,   0,   0,   0,0xA9,0xAA,0xAB,0xEA,   0,0xAD,0xAE,0xAF,0xB0,0xB1,0xB2,0xB3,  // 0E9
       0,0xB4,0xB5,0xEB,   0,0xEC,   0,0xB8,   0,   0,0xA6,0xB9,   0,0xBA,0xBB,0xC6,  // 0EA
    0xBD,0xF1,0xBE,0xBF,0xF2,0xF3,0xF4,0xF5,0xF7,0xF8,   0,0xF6,0xF9,0xBC,   0,   0,  // 0EB
    0xC0,0xC1,0xC2,0xC3,0xC4,   0,0xC5,   0,0xFA,0xFB,0xFC,0xFD,0xFE,0xF0,   0,   0,  // 0EC
    0xE0,0xE1,0xE2,0xE3,0xE4,0xE5,0xE6,0xE7,0xE8,0xE9,   0,   0,0xCE,0xCF,   0,   0,  // 0ED
};

// Bytes for two signs, with the signs in the order in which Unicode text has them.
struct SignPair {
    uint8_t joined, first, second;
};
constexpr SignPair kSignPairs[] = {
    {132, 241, 250}, {133, 242, 250}, {134, 243, 250},
    {135, 244, 250}, {136, 245, 250}, {137, 246, 250},
    {152, 241, 251}, {153, 242, 251}, {154, 243, 251},
    {155, 244, 251}, {156, 245, 251}, {157, 246, 251},
    {210, 240, 250}, {211, 240, 251},
    {212, 250, 191}, {213, 251, 191},
    {kHoLo, kHoSung, kLo},
};

// Other forms of a sign, and the form in which words have it; fonts that draw a sign at two heights have them.
struct SignForm {
    uint8_t form, main;
};
constexpr SignForm kSignForms[] = {
    {172, 234}, {182, 235}, {183, 236}, {208, 247}, {209, 248}, {237, 157},
    {200, 250}, {201, 251}, {202, 252}, {203, 253}, {204, 254},
};
// clang-format on

// Can the byte be part of a run of Lao text?
constexpr bool IsLaoSign(uint8_t code)
{
    return (code >= 132 && code <= 137) || (code >= 152 && code <= 157) ||
           (code >= 161 && code <= 213) || (code >= 234 && code <= 254);
}

// The sign's main form: the byte itself for all but the rows of kSignForms.
constexpr uint8_t MainForm(uint8_t code)
{
    for (const SignForm &row : kSignForms)
        if (row.form == code)
            return row.main;
    return code;
}

// The byte for a character of the Lao block; 0 for all others.
constexpr uint8_t SignOfUnicode(uint32_t character)
{
    uint32_t place = character - kLaoBlock;
    return place < 96 ? kSignOfUnicode[place] : 0;
}

// The character of the Lao block for a byte that is one sign in its main form; 0 for all others.
constexpr uint16_t UnicodeOfSign(uint8_t code)
{
    for (uint32_t place = 0; code && place < 96; ++place)
        if (kSignOfUnicode[place] == code)
            return uint16_t(kLaoBlock + place);
    return 0;
}

// The row of a byte that stands for two signs, or null.
constexpr const SignPair *SignPairOf(uint8_t code)
{
    for (const SignPair &row : kSignPairs)
        if (row.joined == code)
            return &row;
    return nullptr;
}

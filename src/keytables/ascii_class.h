// Classes of ASCII bytes as the C locale has them, whatever locale the host has set. Bytes from 128
// up belong to none.
#pragma once

constexpr bool IsAsciiLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

constexpr bool IsAsciiDigit(char c)
{
    return c >= '0' && c <= '9';
}

constexpr bool IsAsciiPunctuation(char c)
{
    return c > ' ' && c < 127 && !IsAsciiLetter(c) && !IsAsciiDigit(c);
}

constexpr char AsciiUpper(char c)
{
    return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c;
}

// Sets of bytes that end a name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

struct ByteSet {
    bool has[256];
};

// These bytes and the terminator.
constexpr ByteSet SetOf(std::string_view bytes)
{
    ByteSet set = {};
    set.has[0] = true;
    for (char byte : bytes)
        set.has[uint8_t(byte)] = true;
    return set;
}

// Bytes in front of the first one that is in the set.
inline size_t LengthUpTo(const char *text, const ByteSet &ends)
{
    size_t length = 0;
    while (!ends.has[uint8_t(text[length])])
        ++length;
    return length;
}

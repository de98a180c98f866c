// Sets of bytes, for the ends of names in tags. The tag parser and the fast road of tags use them:
// one look into a table for each byte, and no second test for the end of the text, since the
// terminator is in every set.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

struct ByteSet {
    bool has[256];  // by the byte's value
};

// The set of these bytes and the terminator.
constexpr ByteSet SetOf(std::string_view bytes)
{
    ByteSet set = {};
    set.has[0] = true;
    for (char byte : bytes)
        set.has[uint8_t(byte)] = true;
    return set;
}

// Number of bytes in front of the first one that is in the set. The text has to hold one.
inline size_t LengthUpTo(const char *text, const ByteSet &ends)
{
    size_t length = 0;
    while (!ends.has[uint8_t(text[length])])
        ++length;
    return length;
}

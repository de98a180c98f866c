// Small work on NUL-terminated texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// Cuts white space off both ends, in place; gives the same pointer.
char *TrimSpaces(char *text);

// Copies as much of text as fits size bytes with its terminator. size is at least 1.
void CopyCut(char *target, size_t size, const char *text);

// Copies text only when it fits size bytes with its terminator: its length, else 0.
int CopyWhole(char *target, size_t size, const char *text);

// Ends a text of length bytes that was read into a block of capacity bytes, perhaps without its
// terminator: 1, or 0 when there is no room for one.
int TerminateText(char *block, size_t capacity, size_t length);

// The bytes of a text as numbers from 0 to 255.
inline const uint8_t *AsBytes(const char *text)
{
    return reinterpret_cast<const uint8_t *>(text);
}
inline uint8_t *AsBytes(char *text)
{
    return reinterpret_cast<uint8_t *>(text);
}

// Texts without regard to the case of A to Z, all other bytes as they are.
inline char FoldLetter(char c)
{
    return c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c;
}
inline bool EqualNoCase(std::string_view left, std::string_view right)
{
    if (left.size() != right.size())
        return false;
    for (size_t i = 0; i < left.size(); ++i)
        if (FoldLetter(left[i]) != FoldLetter(right[i]))
            return false;
    return true;
}

// FNV-1a over small letters, for names that count without regard to case.
inline size_t HashNoCase(std::string_view name)
{
    uint32_t hash = 2166136261u;
    for (char c : name)
        hash = (hash ^ uint8_t(FoldLetter(c))) * 16777619u;
    return hash;
}

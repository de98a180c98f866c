// Small work on NUL-terminated texts. White space is what the C locale calls so, whatever locale
// the host has set.
#include "frame/strings.h"

#include <cstring>

static bool IsSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

char *TrimSpaces(char *text)
{
    size_t length = strlen(text);
    while (length > 1 && IsSpace(text[length - 1]))
        --length;
    size_t start = 0;
    while (start < length && IsSpace(text[start]))
        ++start;
    memmove(text, text + start, length - start);
    text[length - start] = 0;
    return text;
}

void CopyCut(char *target, size_t size, const char *text)
{
    size_t length = strnlen(text, size - 1);
    memcpy(target, text, length);
    target[length] = 0;
}

int TerminateText(char *block, size_t capacity, size_t length)
{
    if (length < capacity)
        block[length] = 0;
    return memchr(block, 0, capacity) != nullptr;
}

int CopyWhole(char *target, size_t size, const char *text)
{
    size_t length = strlen(text);
    if (length >= size)
        return 0;
    memcpy(target, text, length + 1);
    return int(length);
}

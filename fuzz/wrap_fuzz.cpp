// The exports on buffers of every size: nothing is written behind them (the sanitizer sees it),
// results are terminated, and with an unknown font the text stays.
#include <cstring>
#include <vector>

#include "start.h"

// A text of the input in a block of exactly its size.
static std::vector<char> TakeText(const uint8_t *data, size_t size)
{
    std::vector<char> text(data, data + size);
    text.push_back(0);
    return text;
}

static void WrapInto(const std::vector<char> &source, DWORD size, DWORD flags)
{
    std::vector<char> buffer(size);
    std::vector<BYTE> side(size);
    const char *font = flags & 16 ? "unknown" : StartedFont().c_str();
    int done = WrapLaoEx(source.data(), buffer.data(), side.data(), size, font, flags);
    bool isWritten = size > strlen(source.data());
    Require(!done || isWritten, "what does not fit is refused");
    Require(!isWritten || memchr(buffer.data(), 0, size), "the result is terminated");
}

static void MapToUnicode(const std::vector<char> &text, DWORD capacity, int font)
{
    std::vector<WCHAR> characters(std::max<size_t>(capacity, text.size()), 'k');
    int count = LaoToUnicode(text.data(), characters.data(), capacity, font);
    Require(count <= int(capacity), "no more than fits");
}

static void Recode(const std::vector<char> &text, DWORD size, int code)
{
    std::vector<char> buffer(std::max<size_t>(size, text.size()));
    memcpy(buffer.data(), text.data(), text.size());
    RecodeString(buffer.data(), DWORD(buffer.size()), code);
    Require(memchr(buffer.data(), 0, buffer.size()), "recoded text is terminated");
    PackLao(buffer.data());
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 3)
        return 0;
    StartedFont();
    std::vector<char> text = TakeText(data + 3, size - 3);
    DWORD room = DWORD(data[0] | (data[1] & 3) << 8);
    WrapInto(text, room, data[2]);
    MapToUnicode(text, room, data[2] % 3 - 1);
    Recode(text, room, int8_t(data[2]) % 9);
    return 0;
}

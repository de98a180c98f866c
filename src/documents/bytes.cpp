// Growth is by doubling, so that a byte is moved once or twice in all, however long the block gets.
#include "documents/bytes.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

constexpr size_t kFirstRoom = 64;

bool GrowArray(void **items, size_t *room, size_t count, size_t itemSize)
{
    if (count <= *room)
        return true;
    size_t wanted = *room ? *room : kFirstRoom;
    while (wanted < count && wanted <= SIZE_MAX / 2)
        wanted *= 2;
    if (wanted < count || wanted > SIZE_MAX / 2 / itemSize)
        return false;
    void *grown = realloc(*items, wanted * itemSize);
    if (!grown)
        return false;
    *items = grown;
    *room = wanted;
    return true;
}

char *MakeRoom(Bytes *bytes, size_t count)
{
    void *data = bytes->data;
    bool isTooMuch = count > SIZE_MAX - bytes->length;
    if (bytes->failed || isTooMuch || !GrowArray(&data, &bytes->room, bytes->length + count, 1))
        bytes->failed = true;
    else
        bytes->data = static_cast<char *>(data);
    return bytes->failed ? nullptr : bytes->data + bytes->length;
}

void AppendBytes(Bytes *bytes, std::string_view text)
{
    char *place = text.empty() ? nullptr : MakeRoom(bytes, text.size());
    if (!place)
        return;
    memcpy(place, text.data(), text.size());
    bytes->length += text.size();
}

void FreeBytes(Bytes *bytes)
{
    free(bytes->data);
    *bytes = {};
}

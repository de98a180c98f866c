// Blocks that grow while a document goes through. Where memory runs out a block notes it and takes
// nothing more, so that not every line has to ask: whoever finishes a stretch of work looks once.
#pragma once

#include <cstddef>
#include <string_view>

struct Bytes {
    char *data;  // owned
    size_t length, room;
    bool failed;  // something didn't fit the memory, and is missing
};

void AppendBytes(Bytes *bytes, std::string_view text);
void FreeBytes(Bytes *bytes);

// The block with room for so many bytes more behind its length: where they go, or null.
char *MakeRoom(Bytes *bytes, size_t count);

inline std::string_view TextOf(const Bytes &bytes)
{
    return {bytes.data, bytes.length};
}

// The same for an array of records, whose room counts in records: whether there is room for so many
// in all.
bool GrowArray(void **items, size_t *room, size_t count, size_t itemSize);

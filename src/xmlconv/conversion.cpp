// The buffers of a conversion. They start small, since nearly all tags and texts are, and the
// document goes on where it stood when one was too small.
#include "xmlconv/conversion.h"

#include <cassert>
#include <climits>
#include <cstdint>
#include <cstdlib>

#include "xmlconv/tag_writer.h"

// A room stands in one block, the 16-bit units behind the text at an even address. It has no text
// without memory.
static TextRoom TakeTextRoom(size_t size)
{
    size_t evenSize = size + size % 2;
    char *block = static_cast<char *>(malloc(evenSize + size * sizeof(WCHAR)));
    return {block, reinterpret_cast<WCHAR *>(block ? block + evenSize : nullptr), size};
}

int StartConversion(Conversion *conversion, DocumentJob *job, const ConversionSizes &sizes)
{
    assert(sizes.tag > kSpareBytes && sizes.text > kSpareBytes && sizes.block > 0);
    conversion->job = job;
    conversion->sizes = sizes;
    conversion->tagSource = static_cast<char *>(malloc(sizes.tag));
    conversion->tagText = static_cast<char *>(malloc(sizes.tag));
    conversion->textSource = static_cast<char *>(malloc(sizes.text));
    conversion->room = TakeTextRoom(sizes.text);
    conversion->memory = static_cast<TextMemory *>(calloc(1, sizeof(TextMemory)));
    bool hasAll = StartStyles(&conversion->styles, sizes.styles) && conversion->tagSource &&
                  conversion->tagText && conversion->textSource && conversion->room.text &&
                  conversion->memory;
    return hasAll || SetConversionError(&conversion->report, 0, kFailMemory);
}

void EndConversion(Conversion *conversion)
{
    FreeStyles(&conversion->styles);
    FreeFontMap(&conversion->fonts);
    FreeConversionNotes(&conversion->report);
    FreeTagStack(conversion->spare);
    free(conversion->memory);
    free(conversion->tagSource);
    free(conversion->tagText);
    free(conversion->textSource);
    free(conversion->room.text);
    *conversion = {};
}

// A block of another size with the same bytes in front. Without memory the old one stays.
static bool ResizeBlock(char **block, size_t size)
{
    void *grown = realloc(*block, size);
    if (!grown)
        return false;
    *block = static_cast<char *>(grown);
    return true;
}

// Sizes are given to the code pages as int, and a room takes a little more than three times its
// size, which has to be a size too.
static bool CanDouble(size_t size)
{
    return size <= size_t(INT_MAX) / 2 && size <= SIZE_MAX / 8;
}

// The source of the tag that is being read stands in front of both buffers' growth; its written
// form begins anew. One buffer that has grown without the other does no harm: the size says less.
int GrowTagBuffers(Conversion *conversion)
{
    size_t size = 2 * conversion->sizes.tag;
    AddRestartNote(&conversion->report, "Restarted: tag buffer increased to %d", size);
    bool done = CanDouble(conversion->sizes.tag) && ResizeBlock(&conversion->tagSource, size) &&
                ResizeBlock(&conversion->tagText, size);
    if (!done)
        return SetConversionError(&conversion->report, 0, kFailMemory);
    conversion->sizes.tag = size;
    return 1;
}

// The old room is dropped: it holds no more than a part of a result.
int GrowTextBuffers(Conversion *conversion)
{
    size_t size = 2 * conversion->sizes.text;
    AddRestartNote(&conversion->report, "Restarted: text buffer increased to %d", size);
    bool canDouble = CanDouble(conversion->sizes.text);
    TextRoom room = canDouble ? TakeTextRoom(size) : TextRoom{};
    if (!room.text || !ResizeBlock(&conversion->textSource, size)) {
        free(room.text);
        return SetConversionError(&conversion->report, 0, kFailMemory);
    }
    free(conversion->room.text);
    conversion->room = room;
    conversion->sizes.text = size;
    return 1;
}

// The table of styles grows by itself.
ConversionSizes SizesOf(const Conversion *conversion)
{
    ConversionSizes sizes = conversion->sizes;
    sizes.styles = conversion->styles.capacity;
    return sizes;
}

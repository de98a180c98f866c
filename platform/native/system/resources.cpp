// Finds a resource in a compiled resource file: one entry behind the other, each a header with two
// sizes, type and name, and the data, all at multiples of four. The file is checked as it is read:
// sizes in it may be anything. Called by the dialog manager.
#include "system/resources.h"

#include <assert.h>
#include <string.h>

constexpr int kMaxModules = 16;
constexpr WORD kDialogType = 5;

struct ModuleResources {
    HMODULE module;      // null: a free place
    ResourceBytes file;  // the compiled resource file, which the module holds in itself
};

struct ResourceState {
    ModuleResources modules[kMaxModules];
};
static ResourceState gResources;

// Null finds a free place.
static ModuleResources *FindModule(HMODULE module)
{
    for (ModuleResources &known : gResources.modules) {
        if (known.module == module)
            return &known;
    }
    return nullptr;
}

bool AddModuleResources(HMODULE module, const void *bytes, size_t size)
{
    ModuleResources *place = module ? FindModule(nullptr) : nullptr;
    if (place)
        *place = {module, {static_cast<const BYTE *>(bytes), size}};
    return place != nullptr;
}

void RemoveModuleResources(HMODULE module)
{
    ModuleResources *place = module ? FindModule(module) : nullptr;
    if (place)
        *place = {};
}

// Byte by byte: an entry need not be aligned, and the file is little-endian on every machine.
static WORD ReadWord(const BYTE *at)
{
    return WORD(at[0] | at[1] << 8);
}

static DWORD ReadLong(const BYTE *at)
{
    return ReadWord(at) | DWORD(ReadWord(at + 2)) << 16;
}

// Of a header with its data; the sum of two 32-bit sizes can't overflow 64 bits, and where size_t
// is shorter the sizes were held against the file's before.
static size_t Aligned(size_t size)
{
    return (size + 3) & ~size_t(3);
}

// Names are compared as the resource compiler wrote them: only A to Z have a case.
static WORD UpperCase(WORD character)
{
    return character >= 'a' && character <= 'z' ? WORD(character - ('a' - 'A')) : character;
}

// A type or name in a header: 0xFFFF and a number, or characters to a zero.
static bool IsNumber(const BYTE *at, const BYTE *end, ULONG_PTR number)
{
    return end - at >= 4 && ReadWord(at) == 0xffff && ReadWord(at + 2) == number;
}

static bool IsName(const BYTE *at, const BYTE *end, const char *name)
{
    if (reinterpret_cast<ULONG_PTR>(name) <= 0xffff)
        return IsNumber(at, end, reinterpret_cast<ULONG_PTR>(name));
    for (; end - at >= 2; at += 2, ++name) {
        if (UpperCase(ReadWord(at)) != UpperCase(BYTE(*name)))
            return false;
        if (!*name)
            return true;
    }
    return false;
}

// The header behind its two sizes: type, name, and more that isn't looked at.
static bool IsDialogNamed(const BYTE *header, size_t size, const char *name)
{
    return size >= 16 && IsNumber(header + 8, header + size, kDialogType) &&
           IsName(header + 12, header + size, name);
}

// One entry behind the other. A size that leads out of the file ends the search: what stands behind
// it can't be told from rubbish.
static ResourceBytes FindInFile(ResourceBytes file, const char *name)
{
    size_t at = 0;
    while (file.size - at >= 8) {  // at <= file.size, see the step below
        size_t dataSize = ReadLong(file.bytes + at);
        size_t headerSize = ReadLong(file.bytes + at + 4);
        if (headerSize < 8 || headerSize > file.size - at || dataSize > file.size - at - headerSize)
            break;
        if (IsDialogNamed(file.bytes + at, headerSize, name))
            return {file.bytes + at + headerSize, dataSize};
        size_t step = Aligned(headerSize + dataSize);
        if (step > file.size - at)
            break;
        at += step;
    }
    return {};
}

ResourceBytes FindDialogTemplate(HMODULE module, const char *name)
{
    ModuleResources *known = module ? FindModule(module) : nullptr;
    ResourceBytes found = known && name ? FindInFile(known->file, name) : ResourceBytes{};
    if (!found.bytes)
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return found;
}

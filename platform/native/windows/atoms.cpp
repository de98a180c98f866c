// The atom table, for classes of windows and registered messages. It grows by one block of names at
// a time and never shrinks: names are few, and a number must keep its meaning as long as the
// process lives.
#include "windows/atoms.h"

#include <assert.h>
#include <stdlib.h>
#include <string.h>

#include "runtime.h"

// As on Windows, so that the numbers of registered messages don't meet a program's own.
constexpr int kFirstAtom = 0xC000;
constexpr int kMaxAtoms = 0x4000;

struct AtomTable {
    char *names[kMaxAtoms];  // owned, the first `count` of them; the index is the number
    int count;
};
static AtomTable gAtoms;

// A number that a program hands over in a pointer's place is taken as it is (MAKEINTATOM).
ATOM FindAtom(const char *nameOrAtom)
{
    if (reinterpret_cast<ULONG_PTR>(nameOrAtom) <= 0xffff)
        return ATOM(reinterpret_cast<ULONG_PTR>(nameOrAtom));
    for (int i = 0; i < gAtoms.count; ++i) {
        if (CompareNoCase(gAtoms.names[i], nameOrAtom) == 0)
            return ATOM(kFirstAtom + i);
    }
    return 0;
}

// A new name gets the next number; one that is there keeps its own, in whatever case it comes.
ATOM AtomOfName(const char *name)
{
    size_t length = reinterpret_cast<ULONG_PTR>(name) <= 0xffff ? 0 : strlen(name);
    if (length == 0 || length > kMaxAtomName) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    ATOM atom = FindAtom(name);
    if (atom)
        return atom;
    char *copy = gAtoms.count < kMaxAtoms ? static_cast<char *>(malloc(length + 1)) : nullptr;
    if (!copy) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
    memcpy(copy, name, length + 1);
    assert(gAtoms.count < kMaxAtoms && kFirstAtom + gAtoms.count <= 0xffff);
    gAtoms.names[gAtoms.count] = copy;
    return ATOM(kFirstAtom + gAtoms.count++);
}

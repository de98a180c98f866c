// The tests' hooks on Windows: the allocator, the screen and the folders are the system's, so a
// test asks by the results whether it has them.
#include "testing/testing.h"

int FailAllocationAfter(int)
{
    return 0;
}

int DrawnText(HWND, int, DrawnTextRecord *)
{
    return 0;
}

int ListSystemFonts(const SystemFontRecord *, int)
{
    return 0;
}

void UseFoldersBelow(const char *) {}

void RemoveRegistryKey(HKEY root, const char *path)
{
    RegDeleteKeyA(root, path);
}

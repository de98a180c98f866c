// Comparing names without their case: file names of modules, classes of windows, registry keys. The
// C runtime's own functions ask the locale, which is the host's to set, and differ by target.
#include "runtime.h"

static int FoldByte(char byte)
{
    unsigned char value = BYTE(byte);
    return value >= 'A' && value <= 'Z' ? value + ('a' - 'A') : value;
}

int CompareNoCase(const char *left, const char *right)
{
    while (*left && FoldByte(*left) == FoldByte(*right)) {
        ++left;
        ++right;
    }
    return FoldByte(*left) - FoldByte(*right);
}

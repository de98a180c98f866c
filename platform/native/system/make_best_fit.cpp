// Writes best_fit_1252.inc to standard output: asks the system it runs on (Windows or Wine)
// for the byte of each of the 65,536 units and lists those that aren't the code page's own.
#include <stdio.h>
#include <windows.h>

struct Run {
    unsigned first, count, byte, step;
};

static unsigned UnitOfByte(unsigned byte)
{
    char narrow = char(byte);
    WCHAR wide = 0;
    MultiByteToWideChar(1252, 0, &narrow, 1, &wide, 1);
    return wide;
}

// The byte by look, or -1 where there is none or the unit is the code page's own.
static int BestFit(unsigned unit)
{
    WCHAR wide = WCHAR(unit);
    char narrow = 0;
    BOOL usedDefault = FALSE;
    int length = WideCharToMultiByte(1252, 0, &wide, 1, &narrow, 1, "?", &usedDefault);
    unsigned byte = BYTE(narrow);
    return length != 1 || usedDefault || UnitOfByte(byte) == unit ? -1 : int(byte);
}

static bool Continues(Run *run, unsigned unit, unsigned byte)
{
    if (run->count == 0 || unit != run->first + run->count)
        return false;
    if (run->count == 1 && (byte == run->byte || byte == run->byte + 1))
        run->step = byte - run->byte;
    return byte == run->byte + run->step * run->count;
}

static void Print(const Run *run)
{
    if (run->count)
        printf("    {0x%04X, %3u, 0x%02X, %u},\n", run->first, run->count, run->byte, run->step);
}

int main()
{
    printf("// Written by make_best_fit.cpp; used by codepages.cpp alone.\n\n");
    printf("// clang-format off\n");
    printf("static constexpr WCHAR kUpperHalf1252[32] = {  // bytes 0x80 to 0x9F\n");
    for (unsigned byte = 0x80; byte < 0xA0; ++byte)
        printf("%s0x%04X,%s", byte % 8 ? " " : "    ", UnitOfByte(byte), byte % 8 == 7 ? "\n" : "");
    printf("};\n\n");
    printf("static constexpr BestFitRun kBestFit1252[] = {  // sorted by first\n");
    printf("    // first  count  byte  step\n");
    Run run = {0, 0, 0, 0};
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        int byte = BestFit(unit);
        if (byte < 0)
            continue;
        if (Continues(&run, unit, unsigned(byte))) {
            ++run.count;
            continue;
        }
        Print(&run);
        run = {unit, 1, unsigned(byte), 0};
    }
    Print(&run);
    printf("};\n// clang-format on\n");
    return 0;
}

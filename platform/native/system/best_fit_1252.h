// Windows' code page 1252: its bytes 0x80 to 0x9F, and the units that come out as a byte by their
// look. The tables stand in best_fit_1252.inc, which make_best_fit writes.
#ifndef ORVEL_PLATFORM_NATIVE_SYSTEM_BEST_FIT_1252_H
#define ORVEL_PLATFORM_NATIVE_SYSTEM_BEST_FIT_1252_H

#include <windows.h>

// Units first to first + count - 1 come out as byte, byte + step, byte + 2 step and so on.
struct BestFitRun {
    WORD first;
    WORD count;
    BYTE byte;
    BYTE step;  // 0 or 1
};

#include "best_fit_1252.inc"

constexpr int kBestFit1252Count = sizeof kBestFit1252 / sizeof kBestFit1252[0];

#endif

// AddLaoSyllable, for DecodeEmail. A text has few different syllables: what a stretch of up to
// eight letters gave last is remembered by its letters. It depends on nothing else.
#include "email_syllable.h"
#include <cstdint>
#include <cstring>

constexpr size_t kLongestKept = 8, kMostLao = 13;  // letters; bytes of Lao
constexpr int kCellBits = 12;

struct StretchCell {
    uint64_t letters;  // filled up with zeros, which no stretch holds; 0: none
    uint8_t length;    // of what it gives
    char lao[kMostLao];
};

struct EmailMemo {
    StretchCell cells[1 << kCellBits];  // 96 KB
};
static EmailMemo gEmailMemo;

static StretchCell *CellOf(uint64_t letters)
{
    return &gEmailMemo.cells[letters * 0x9E3779B97F4A7C15u >> (64 - kCellBits)];
}

// 0 for a stretch that isn't kept: too long, or with a zero among its letters.
static uint64_t NumberOf(const char *start, size_t length)
{
    uint64_t letters = 0;
    if (length > kLongestKept || memchr(start, 0, length))
        return 0;
    memcpy(&letters, start, length);
    return letters;
}

static void Keep(StretchCell *cell, uint64_t letters, const char *lao, DWORD length)
{
    if (length > kMostLao)
        return;
    *cell = {letters, uint8_t(length), {}};
    memcpy(cell->lao, lao, length);
}

DWORD WINAPI AddLaoSyllable(char *output, const char *start, const char *end)
{
    if (!output || !start || !end || start >= end)
        return 0;
    uint64_t letters = NumberOf(start, size_t(end - start));
    if (!letters)
        return DecodeStretch(output, start, end);
    StretchCell *cell = CellOf(letters);
    if (cell->letters == letters) {
        memcpy(output, cell->lao, cell->length);
        return cell->length;
    }
    DWORD written = DecodeStretch(output, start, end);
    Keep(cell, letters, output, written);
    return written;
}

// Break scoring: divides a run of Lao bytes into chunks, dictionary words and syllables, by a
// dynamic programme from the end of the run to its start. A chunk is worth the square of its
// length, a dictionary word twice that, plus the best value behind it.
#pragma once

#include <windows.h>

#include <cstdint>

// A mark holds the length of the best chunk in its low bits and its source above them.
enum : uint8_t {
    kMarkLength = 31,
    kFromMain = 32,
    kFromUser = 64,
    kFromOld = 128,
};

// Divides text, a writable NUL-terminated run, and writes what starts
// there, kInside to kBadStretch, over each of its bytes.
// scores and marks have room for one entry more than the run has bytes. flags: 4 syllables, 8 words
// of the dictionaries that the options have on. A run whose values pass 32767 shows a message once
// and is marked all the same.
void MarkBreakPoints(uint8_t *text, uint16_t *scores, uint8_t *marks, DWORD flags);

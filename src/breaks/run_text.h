// The runs of Lao in a text that stays where it is, in both forms in which hosts have text: 16-bit
// characters and UTF-8. A run comes as the internal code, and each byte
// knows its place in the text. U+200B inside of a run is passed over.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

#include "frame/companion.h"

// A run, in blocks of the caller's.
struct RunBytes {
    uint8_t *codes;  // one entry more than room, for the terminator
    DWORD *starts;   // of each byte in the text
    DWORD *lasts;    // of the last character that became a part of it
    size_t room, count;
    const SignJoins
        *joins;  // packs the run as it is read; null: it stays a byte for each character
};

// What a text is made of. Units are bytes or characters.
struct RunText {
    const void *units;
    DWORD length;          // in units
    DWORD characterUnits;  // of a character of Lao
    // The first character of Lao from start on, or the length.
    DWORD (*findRun)(const RunText *text, DWORD start);
    // Fills the run that begins at start as far as its room goes, and gives the place behind what
    // was taken, or passed over.
    DWORD (*readRun)(const RunText *text, DWORD start, RunBytes *run);
};

RunText RunTextOfCharacters(const WCHAR *characters, DWORD length);
RunText RunTextOfUtf8(const char *bytes, DWORD length);

// How many font codes there are; the records themselves are reached through the exports of vesk.h.
#pragma once

#include <cstdint>

constexpr int kFontCodeCount = 7;  // ORDER FontCode

// The bytes for an invisible break, where the byte of "-" is a hyphen: the fonts of the codes 2 and
// 3 draw nothing at 0x96, and no character of the public charsets 4 and 5 has 0x1F.
constexpr uint8_t kFontBreak = 0x96, kPublicBreak = 0x1F;

// Drops the records, so that the next question reads the user's flags again.
void ForgetFontCodes();

// How many font codes there are; the records themselves are reached through the exports of vesk.h.
#pragma once

constexpr int kFontCodeCount = 7;  // ORDER FontCode

// Drops the records, so that the next question reads the user's flags again.
void ForgetFontCodes(void);

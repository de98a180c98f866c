// Text of RTF: letters, \'hh, \uN with what stands for it in old programs, and the signs that have
// words of their own.
#pragma once

#include "documents/rtf_tokens.h"
#include "documents/text_form.h"

// The forms differ in how many characters stand behind a \uN for old programs: 0 to 3.
enum { kMostFallback = 3 };
extern const TextForm kRtfText[kMostFallback + 1];

// Whether a token is a character, or begins one.
bool IsTextToken(const RtfToken &token);

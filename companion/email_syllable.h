// The decoder of e-mail coding.
#pragma once

#include "vesk.h"

// What AddLaoSyllable gives, worked out anew. No pointer is null.
DWORD DecodeStretch(char *output, const char *start, const char *end);

// The driver of a document conversion. ConvertFile is declared in orvel.h.
#pragma once

#include <cstddef>

// Sizes of the buffers for one tag and one text, in bytes, more than 16. They grow by doubling, and
// what a document needed stays for the next one.
struct ConversionSizes {
    size_t tag, text;
};
extern ConversionSizes gConversionSizes;

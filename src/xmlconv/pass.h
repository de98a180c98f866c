// One pass over a document, from the first byte to the last. What the report tells then is whole,
// failed, or has to begin again.
#pragma once

#include <cstddef>

#include "orvel.h"

// Sizes in bytes. Those of the buffers for one tag and one text, more than 16, grow by doubling,
// and what a document needed stays for the next one. The block is what is read at a time.
struct ConversionSizes {
    size_t tag, text, block;
};
extern ConversionSizes gConversionSizes;

// shownPercent is the last percentage shown, and goes on through all passes of a job.
void RunPass(DocumentJob *job, DWORD *shownPercent);

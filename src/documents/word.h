// WordprocessingML: documents of today's kind in both editions of the standard, and those of 2003.
#pragma once

#include "documents/walk.h"

extern const Vocabulary kWordElements;

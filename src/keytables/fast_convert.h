// The fast road of a conversion, with the same results as the plain one.
#pragma once

#include "keytables/conversion.h"

enum { kNoFastRoad = -1 };

// Converts the text that stands in the conversion's output: 1 or 0 as ConvertByKeyTable; or
// kNoFastRoad, with nothing done, for what is rare: texts with bytes of the work marks, runs or
// results near a limit, tables that bring their own breaks or whose patterns look behind a run, a
// companion that doesn't tell when its words change.
int ConvertFast(Conversion *conversion);

// Leaves all to the plain road, or nothing more. For tests, which hold the two equal.
void CloseFastRoad(bool isClosed);

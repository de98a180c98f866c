// What the fuzz targets share: a started library with folders of its own, and a check that stops
// the run.
#pragma once

#include "lao_text.h"

// Starts the library at the first call, with empty folders under the temporary folder.
const CodeTrace &StartedTrace();

// Stops the run with a report when a promise does not hold.
void Require(bool holds, const char *promise);

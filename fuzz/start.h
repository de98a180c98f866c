// What the fuzz targets share: a started library with folders of its own, and a check that stops
// the run.
#pragma once

#include <string>

#include "orvel.h"
#include "session.h"

// A font whose text is the internal code. Starts the library at the first call, with empty folders
// under the temporary folder, and drops the messages of the run before.
const std::string &StartedFont();

// Stops the run with a report when a promise does not hold.
void Require(bool holds, const char *promise);

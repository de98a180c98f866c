// The work of orvel convert on one document.
#pragma once

#include "convert_record.h"

// Converts a document, or only looks at it, as the settings say; the library is started. hasBar: a
// large document shows how far it is.
ConvertOutcome WorkOnTask(const ConvertSettings &settings, const ConvertTask &task, bool hasBar);

// What is told of a document that can't be worked on, for this reason.
ConvertOutcome RefuseTask(const ConvertSettings &settings, const ConvertTask &task,
                          const std::string &why);

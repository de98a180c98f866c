// Failures of conversions in words. The library's number stays beside them, since people quote it.
#pragma once

#include <string>

#include "orvel.h"

// The words that stand behind the name of a job's source. It failed with this number, and the job
// is as it was.
std::string ExplainFailure(DWORD failure, const DocumentJob &job);

// Whether it would be the same for all documents to come.
bool FailsForAll(DWORD failure);

// Whether the source is no document, which a folder may hold among documents.
bool IsOtherFile(DWORD failure, const DocumentJob &job);

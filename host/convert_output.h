// What orvel convert gives of its documents, in their order: messages, output and the report, and
// what they come to in the end.
#pragma once

#include <fstream>

#include "convert_record.h"

struct ConvertOutput {
    std::ofstream report;  // closed: nobody wants one, or it can't be written any more
    std::string reportPath;
    size_t total = 0, done = 0;  // documents
    size_t skipped = 0, doneBefore = 0;
    bool isVerbose = false, isDryRun = false, hasBar = false;
    int status = 0;  // the worst so far, an ExitStatus
};

// Opens the report, which has to be a new file or a report that is there; false after telling.
bool StartOutput(const ConvertSettings &settings, ConvertOutput *output);

// Writes what came of the next document. False when no more shall come: the output can't be
// written.
bool WriteOutcome(ConvertOutput *output, const ConvertOutcome &outcome);

// Tells what was left. The status of all.
int EndOutput(ConvertOutput *output);

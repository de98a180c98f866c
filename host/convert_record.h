// What orvel convert shares among its files: what a run was told, one of its documents, and what
// came of it. convert_job.cpp does the work on one, convert_folder.cpp makes the list of all and
// walks through it, here or by way of convert_workers.cpp, whose other side is convert_worker.cpp.
#pragma once

#include <string>
#include <vector>

#include "orvel.h"

struct ConvertSettings {
    std::vector<std::string> files;         // UTF-8 paths: source and destination, or sources alone
    std::string folder, map, report, font;  // UTF-8; paths but for the font's name
    std::string detects, breaks;            // as the command line has them
    bool hasFolder = false, hasMap = false, hasReport = false, hasFont = false;
    bool listsFonts = false, isDryRun = false, doesAgain = false, isVerbose = false;
    DWORD flags = kAllFormats;  // of a DocumentJob
    int jobs = 1;               // processes; 0: as many as the machine has processors
};

// Whether documents are written. What only looks at them is told no destination.
inline bool Writes(const ConvertSettings &settings)
{
    return !settings.listsFonts && !settings.isDryRun;
}

struct ConvertTask {
    std::string source, destination;  // UTF-8 paths; no destination where only fonts are listed
    std::string why;                  // not empty: it can't be worked on, for this reason
    bool isFromFolder;                // a folder may hold what is no document, which is skipped
    bool isOther;                     // `why` says that it is no document
};

enum class DocumentStatus : uint8_t {
    kConverted,
    kUnchanged,   // it has no legacy text; the new document is the old one
    kDoneBefore,  // its new document is there already
    kSkipped,     // it is no document
    kFailed,
    kStopped  // nothing came of it, since the person wants no more
};

// As lines that are ready to be written, each with its end, so that documents which are done at the
// same time come out one behind the other.
struct ConvertOutcome {
    DocumentStatus status;
    bool endsAll;        // it would be the same for all documents to come
    std::string told;    // for standard error
    std::string output;  // for standard output
    std::string report;  // a line of the report, empty where there is none
};

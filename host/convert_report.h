// The report of orvel convert: a line of JSON for each document, for programs.
#pragma once

#include <string>
#include <vector>

#include "convert_record.h"

// All that is known of one document.
struct DocumentFacts {
    DocumentStatus status;
    const char *format;               // "docx" …; empty: not known
    unsigned long long characters;    // in legacy fonts
    std::vector<DocumentFont> fonts;  // of its text
    std::vector<std::string> notes;
    DWORD failure;      // the library's number; 0 also for what the command itself refuses
    std::string words;  // why it failed or was skipped
};

// "docx" … for a DocumentFormat.
const char *NameFormat(DWORD format);

// "done before" …
const char *NameStatus(DocumentStatus status);

// The line of a report, with its end.
std::string ReportLine(const ConvertTask &task, const DocumentFacts &facts);

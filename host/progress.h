// A bar on a terminal for long work: how much of a file is done, or how many of many files. Nothing
// shows where standard error is no terminal or where the work is short, so that pipes and log files
// stay clean. One bar shows at a time.
#pragma once

#include <cstddef>
#include <string>

struct Progress {
    std::string name;                // of the file, as it is shown
    unsigned long long total, done;  // bytes; a total of 0 is unknown: there is no bar
    int shown;                       // percent of the bar on the screen, -1 before the first
};

// The work on an open file, told in bytes or in percent. There is no bar either where writesOutput
// and standard output is a terminal: the text itself tells then.
Progress StartProgress(int file, const std::string &name, bool writesOutput);
void AddProgress(Progress *progress, size_t bytes);
void ShowProgress(Progress *progress, int percent);

// The work on many files: how many of them are done. For a terminal alone.
void ShowCount(size_t done, size_t total);

// Takes the bar away: at the end, and before a message. What comes next draws it again.
void HideProgress();

// A bar on a terminal for long work: how much of a file is done. Nothing shows where standard error
// is no terminal or where the work is short. One bar shows at a time.
#pragma once

#include <cstddef>
#include <string>

struct Progress {
    std::string name;
    unsigned long long total, done;  // bytes; 0 in all: unknown, no bar
    int shown;                       // percent, -1 before the first
};

// The work on an open file, told in bytes or in percent. There is no bar either where writesOutput
// and standard output is a terminal: the text itself tells then.
Progress StartProgress(int file, const std::string &name, bool writesOutput);
void AddProgress(Progress *progress, size_t bytes);
void ShowProgress(Progress *progress, int percent);

// Takes the bar away: at the end, and before a message. What comes next draws it again.
void HideProgress();

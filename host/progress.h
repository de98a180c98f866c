// A bar on a terminal for long work: how much of a file is done. Nothing shows where standard error
// is no terminal, where standard output is one (the text itself tells), or where the work is short.
#pragma once

#include <cstddef>
#include <string>

struct Progress {
    std::string name;
    unsigned long long total, done;  // bytes; 0 in all: unknown, no bar
    int shown;                       // percent, -1 before the first
};

Progress StartProgress(int file, const std::string &name);
void AddProgress(Progress *progress, size_t bytes);

// Takes the bar away.
void EndProgress(const Progress &progress);

// Breaks in HTML pages, for orvel wrap.
#pragma once

#include <string>
#include <vector>

// Writes each page with its breaks to standard output; "-" and no file at all are standard input.
// The worst status of all.
int WrapPages(const std::vector<std::string> &files, bool usesWbr);

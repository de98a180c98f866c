// The documents that a command line names: a file is one, a folder stands for all files below it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

struct ListedDocument {
    std::string path;  // UTF-8
    std::string name;  // of the new document below the folder that it goes to, with "/" between
};

// In the order of the names, those of a folder sorted. What stands in `left` (an empty path: none)
// is left out, so that a second run over a tree doesn't take the new documents for old ones. A
// folder that can't be read is told, and *status is then kNotDone.
std::vector<ListedDocument> ListDocuments(const std::vector<std::string> &names,
                                          const std::string &left, int *status);

// Paths of the command are UTF-8 on all systems; a backslash counts as a slash.
std::filesystem::path Utf8Path(const std::string &path);

// Where a path's last name begins.
size_t BaseStart(const std::string &path);

// The documents that a command line names: a file is one, a folder stands for all files below it.
// And paths of the command, which are UTF-8 on all systems; a backslash counts as a slash.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

struct ListedDocument {
    std::string path;   // UTF-8
    std::string name;   // of the new document below the folder that it goes to, with "/" between
    std::string why;    // not empty: it can't be read, for this reason
    bool isFromFolder;  // nobody has named it: it may well be no document
    bool isOther;       // it is no file that could hold a document; `why` says what
};

// Files and folders that are none of a job, though they may stand below its folders: where the new
// documents go, so that a second run over a tree doesn't take them for old ones, and its report.
// Empty paths for none.
struct LeftOut {
    std::string folder, file;
};

// In the order of the names, those of a folder sorted.
std::vector<ListedDocument> ListDocuments(const std::vector<std::string> &names,
                                          const LeftOut &left);

std::filesystem::path Utf8Path(const std::string &path);

// Where a path's last name begins.
size_t BaseStart(const std::string &path);

bool IsFolder(const std::string &path);

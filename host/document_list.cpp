// The documents that a command line names. Links to folders aren't followed, since they may lead
// back, and a folder that can't be read holds up none of the others.
#include "document_list.h"

#include <algorithm>

#include "commands.h"
#include "messages.h"
#include "session.h"

namespace fs = std::filesystem;

fs::path Utf8Path(const std::string &path)
{
    std::string system = SystemPath(path);
    return std::u8string(system.begin(), system.end());
}

size_t BaseStart(const std::string &path)
{
    bool hasDrive = path.size() > 1 && path[1] == ':';
    size_t slash = path.find_last_of("/\\");
    return slash != path.npos ? slash + 1 : hasDrive ? 2 : 0;
}

static std::string ToUtf8(const fs::path &path)
{
    std::u8string text = path.generic_u8string();
    return std::string(text.begin(), text.end());
}

static bool IsSameFolder(const fs::path &one, const fs::path &other)
{
    std::error_code ignored;
    return !other.empty() && fs::equivalent(one, other, ignored);
}

static int TellFolder(const fs::path &folder, const std::error_code &failure)
{
    return Tell("the folder \"" + ToUtf8(folder) + "\" can't be read: " + failure.message(),
                kNotDone);
}

// What stands in the folder itself, sorted; empty, and told, when it can't be read.
static std::vector<fs::path> SortedEntries(const fs::path &folder, int *status)
{
    std::vector<fs::path> entries;
    std::error_code failure;
    for (fs::directory_iterator at(folder, failure), end; !failure && at != end;
         at.increment(failure))
        entries.push_back(at->path());
    if (failure)
        *status = TellFolder(folder, failure);
    std::ranges::sort(entries);
    return entries;
}

// `below` is the folder's path below the named one, with a slash at its end, or empty.
static void ListFolder(const fs::path &folder, const std::string &below, const fs::path &left,
                       std::vector<ListedDocument> *documents, int *status)
{
    for (const fs::path &entry : SortedEntries(folder, status)) {
        std::error_code ignored;
        std::string name = below + ToUtf8(entry.filename());
        if (!fs::is_directory(entry, ignored))
            documents->push_back({ToUtf8(entry), name});
        else if (!fs::is_symlink(entry, ignored) && !IsSameFolder(entry, left))
            ListFolder(entry, name + "/", left, documents, status);
    }
}

std::vector<ListedDocument> ListDocuments(const std::vector<std::string> &names,
                                          const std::string &left, int *status)
{
    std::vector<ListedDocument> documents;
    fs::path leftPath = left.empty() ? fs::path() : Utf8Path(left);
    for (const std::string &name : names) {
        std::error_code ignored;
        if (fs::is_directory(Utf8Path(name), ignored))
            ListFolder(Utf8Path(name), "", leftPath, &documents, status);
        else
            documents.push_back({name, name.substr(BaseStart(name))});
    }
    return documents;
}

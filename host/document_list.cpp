// The documents that a command line names. Links to folders aren't followed, since they may lead
// back, and a folder that can't be read holds up none of the others: it stands in the list itself.
#include "document_list.h"

#include <algorithm>

#include "runtime.h"
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

bool IsFolder(const std::string &path)
{
    std::error_code ignored;
    return fs::is_directory(Utf8Path(path), ignored);
}

// A name that is no text, as a damaged disk may have it, has "?" for itself.
static std::string ToUtf8(const fs::path &path)
{
    try {
        std::u8string text = path.generic_u8string();
        return std::string(text.begin(), text.end());
    } catch (const std::exception &) {
        return "?";
    }
}

static bool IsSameFolder(const fs::path &one, const fs::path &other)
{
    std::error_code ignored;
    return !other.empty() && fs::equivalent(one, other, ignored);
}

// What the listing of one name needs all the way down.
struct Listing {
    std::string top;  // the folder as it was named, with a slash at its end
    fs::path leftFolder;
    std::string leftFile;
    std::vector<ListedDocument> *documents;
};

static void ListUnread(const Listing &listing, const std::string &below,
                       const std::error_code &failure)
{
    std::string path = listing.top + below;
    listing.documents->push_back({path.substr(0, path.size() - 1), below,
                                  "the folder can't be read: " + failure.message(), true, false});
}

// What stands in the folder itself, sorted; as far as it could be read.
static std::vector<fs::directory_entry>
SortedEntries(const Listing &listing, const fs::path &folder, const std::string &below)
{
    std::vector<fs::directory_entry> entries;
    std::error_code failure;
    for (fs::directory_iterator at(folder, failure), end; !failure && at != end;
         at.increment(failure))
        entries.push_back(*at);
    if (failure)
        ListUnread(listing, below, failure);
    std::sort(entries.begin(), entries.end(),
              [](const fs::directory_entry &one, const fs::directory_entry &other) {
                  return one.path().native() < other.path().native();
              });
    return entries;
}

// Opening a pipe would wait for somebody to write to it. A link without an end is told by the
// opening.
static void ListFile(const Listing &listing, const fs::directory_entry &entry,
                     const std::string &name)
{
    std::error_code ignored;
    std::string path = listing.top + name;
    bool isFile = entry.is_regular_file(ignored) || !entry.exists(ignored);
    bool mayBeLeft = !listing.leftFile.empty() &&
                     !listing.leftFile.compare(BaseStart(listing.leftFile), std::string::npos, path,
                                               BaseStart(path), std::string::npos);
    if (!mayBeLeft || !IsSameFile(path.c_str(), listing.leftFile.c_str()))
        listing.documents->push_back(
            {path, name, isFile ? "" : "is no file but a pipe or a device", true, !isFile});
}

// `below` is the folder's path below the named one, with a slash at its end, or empty.
static void ListFolder(const Listing &listing, const fs::path &folder, const std::string &below)
{
    for (const fs::directory_entry &entry : SortedEntries(listing, folder, below)) {
        std::error_code ignored;
        std::string name = below + ToUtf8(entry.path().filename());
        if (!entry.is_directory(ignored))
            ListFile(listing, entry, name);
        else if (!entry.is_symlink(ignored) && !IsSameFolder(entry.path(), listing.leftFolder))
            ListFolder(listing, entry.path(), name + "/");
    }
}

// The folder of the new documents is none of the old ones, whatever way leads to it.
static void ListNamedFolder(const std::string &name, Listing *listing)
{
    fs::path folder = Utf8Path(name);
    bool hasEnd = name.find_last_of("/\\:") == name.size() - 1;
    if (IsSameFolder(folder, listing->leftFolder)) {
        listing->documents->push_back(
            {name, "", "the new documents can't go to the folder of the old ones", false, false});
        return;
    }
    listing->top = name + (hasEnd ? "" : "/");
    ListFolder(*listing, folder, "");
}

std::vector<ListedDocument> ListDocuments(const std::vector<std::string> &names,
                                          const LeftOut &left)
{
    std::vector<ListedDocument> documents;
    fs::path leftFolder = left.folder.empty() ? fs::path() : Utf8Path(left.folder);
    Listing listing = {"", leftFolder, left.file, &documents};
    for (const std::string &name : names) {
        if (IsFolder(name))
            ListNamedFolder(name, &listing);
        else
            documents.push_back({name, name.substr(BaseStart(name)), "", false, false});
    }
    return documents;
}

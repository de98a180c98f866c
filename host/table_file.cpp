// Reading of a control file for the library, which takes its content.
#include "table_file.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>

#include "commands.h"
#include "messages.h"
#include "runtime.h"

constexpr size_t kLargestTable = 1 << 20;  // bytes: a table has 200 lines of some 127 bytes

static bool ReadFile(const std::string &path, std::string *content)
{
    int file = OpenUtf8Path(path.c_str());
    char block[4096];
    ssize_t got = file < 0 ? -1 : 1;
    while (got > 0 && content->size() < kLargestTable &&
           (got = read(file, block, sizeof block)) > 0)
        content->append(block, size_t(got));
    if (got < 0)
        Tell(path + ": " + strerror(errno), kNotDone);
    if (file >= 0)
        close(file);
    return got >= 0;
}

bool LoadTable(const std::string &path, int(WINAPI *load)(const char *content, DWORD size))
{
    std::string content;
    if (path.empty())
        return true;
    if (!ReadFile(path, &content))
        return false;
    gPlace.file = path;
    int isLoaded = load(content.data(), DWORD(content.size()));
    TellMessages();  // what is wrong with it
    return isLoaded;
}

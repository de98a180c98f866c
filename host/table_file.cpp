// The library looks for control files in its data folder, so a person's own file is put there under
// a name of this process for as long as it is loaded.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

#include "commands.h"
#include "messages.h"
#include "orvel.h"
#include "runtime.h"
#include "table_file.h"

static bool ReadFile(const std::string &path, std::string *content)
{
    int file = OpenUtf8Path(path.c_str());
    char block[4096];
    ssize_t got = file < 0 ? -1 : 1;
    while (got > 0 && (got = read(file, block, sizeof block)) > 0)
        content->append(block, size_t(got));
    if (got < 0)
        fprintf(stderr, "orvel: %s: %s\n", path.c_str(), strerror(errno));
    if (file >= 0)
        close(file);
    return got == 0;
}

static bool WriteFile(const std::string &path, const std::string &content)
{
    FILE *file = OpenDataFile(path.c_str(), "wb");
    if (!file)
        return false;
    bool isWhole = fwrite(content.data(), 1, content.size(), file) == content.size();
    return fclose(file) == 0 && isWhole;
}

bool LoadTable(const std::string &path, int(WINAPI *load)(char *name))
{
    std::string content;
    char folder[MAX_PATH], name[32];
    if (path.empty())
        return true;
    if (!ReadFile(path, &content))
        return false;
    snprintf(name, sizeof name, "table-%d.key", int(getpid()));
    std::string copy =
        GetOrvelDataDir(folder, sizeof folder) ? std::string(folder) + "\\" + name : "";
    if (copy.empty() || !WriteFile(copy, content)) {
        fprintf(stderr, "orvel: %s can't be put into the data folder\n", path.c_str());
        DeleteFileA(copy.c_str());
        return false;
    }
    gPlace.file = path;
    load(name);
    DeleteFileA(copy.c_str());
    return TellMessages() == 0;  // what is wrong with a file comes as a message
}

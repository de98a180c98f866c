// The bar for long work.
#include "progress.h"

#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

constexpr unsigned long long kShortWork = 16 << 20;  // bytes that are done before anyone waits
constexpr int kBarWidth = 40;

Progress StartProgress(int file, const std::string &name)
{
    Progress progress = {name, 0, 0, -1};
    struct stat status;
    bool isWatched = isatty(STDERR_FILENO) && !isatty(STDOUT_FILENO);
    if (isWatched && fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
        (unsigned long long)status.st_size >= kShortWork)
        progress.total = (unsigned long long)status.st_size;
    return progress;
}

static void DrawBar(const Progress &progress)
{
    int filled = progress.shown * kBarWidth / 100;
    fprintf(stderr, "\r%s [%s%s] %3d%%", progress.name.c_str(),
            std::string(size_t(filled), '=').c_str(),
            std::string(size_t(kBarWidth - filled), ' ').c_str(), progress.shown);
    fflush(stderr);
}

void AddProgress(Progress *progress, size_t bytes)
{
    if (!progress->total)
        return;
    progress->done += bytes;
    int percent = int(progress->done * 100 / progress->total);
    if (percent <= progress->shown || percent > 100)
        return;
    progress->shown = percent;
    DrawBar(*progress);
}

void EndProgress(const Progress &progress)
{
    if (progress.shown >= 0)
        fprintf(stderr, "\r\x1B[K");
}

// The bar for long work. It is the last line of the terminal for as long as it shows, so whoever
// writes another one takes it away first.
#include "progress.h"

#include <chrono>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

constexpr unsigned long long kShortWork = 16 << 20;       // bytes that are done before anyone waits
constexpr int kBarWidth = 40;                             // characters between the brackets
constexpr std::chrono::milliseconds kShortestPause{100};  // between two bars of many files

struct BarState {
    bool isShown;                                 // the terminal's last line is the bar
    std::chrono::steady_clock::time_point drawn;  // when ShowCount did it last
};
static BarState gBar;

Progress StartProgress(int file, const std::string &name, bool writesOutput)
{
    Progress progress = {name, 0, 0, -1};
    struct stat status;
    bool isWatched = isatty(STDERR_FILENO) && !(writesOutput && isatty(STDOUT_FILENO));
    if (isWatched && fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
        (unsigned long long)status.st_size >= kShortWork)
        progress.total = (unsigned long long)status.st_size;
    return progress;
}

static void DrawBar(const std::string &name, int percent, const std::string &behind)
{
    int filled = percent * kBarWidth / 100;
    fprintf(stderr, "\r%s [%s%s] %3d%%%s", name.c_str(), std::string(size_t(filled), '=').c_str(),
            std::string(size_t(kBarWidth - filled), ' ').c_str(), percent, behind.c_str());
    fflush(stderr);
    gBar.isShown = true;
}

void ShowProgress(Progress *progress, int percent)
{
    if (!progress->total || percent <= progress->shown || percent > 100)
        return;
    progress->shown = percent;
    DrawBar(progress->name, progress->shown, "");
}

void AddProgress(Progress *progress, size_t bytes)
{
    progress->done += bytes;
    if (progress->total)
        ShowProgress(progress, int(progress->done * 100 / progress->total));
}

// A terminal that is far away gets no more than a person can read.
void ShowCount(size_t done, size_t total)
{
    std::chrono::steady_clock::time_point now = std::chrono::steady_clock::now();
    if (gBar.isShown && done < total && now - gBar.drawn < kShortestPause)
        return;
    gBar.drawn = now;
    DrawBar("orvel", int(done * 100 / total),
            " " + std::to_string(done) + " of " + std::to_string(total));
}

void HideProgress()
{
    if (gBar.isShown)
        fprintf(stderr, "\r\x1B[K");
    gBar.isShown = false;
}

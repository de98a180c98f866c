// Stopping: a word that a signal, another thread and the work itself share.
#include "convert_stop.h"

#include <atomic>
#include <csignal>
#include <cstdio>

constexpr int kOwnWish = -1;

struct StopState {
    std::atomic<int> reason;  // the number of a signal, kOwnWish, or 0: nobody wants it
};
static StopState gStop;
static_assert(std::atomic<int>::is_always_lock_free);  // else a signal couldn't write it

static void HearSignal(int number)
{
    gStop.reason = number;
    std::signal(number, SIG_DFL);
}

void CatchSignals()
{
    for (int number : {SIGINT, SIGTERM})
        if (std::signal(number, HearSignal) == SIG_IGN)
            std::signal(number, SIG_IGN);
}

void RequestStop()
{
    int none = 0;
    gStop.reason.compare_exchange_strong(none, kOwnWish);
}

bool IsStopRequested()
{
    return gStop.reason != 0;
}

void EndBySignal()
{
    int number = gStop.reason;
    if (number <= 0)
        return;
    fflush(nullptr);
    std::signal(number, SIG_DFL);
    std::raise(number);
}

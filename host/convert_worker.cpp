// A worker: reads documents from its standard input, answers on its standard output. Its input ends
// when nobody waits for an answer any more, for instance since the command was killed: what is
// being written then has to go, so a thread of its own listens while the library works.
#include <condition_variable>
#include <cstring>
#include <deque>
#include <mutex>
#include <thread>
#include <unistd.h>

#include "commands.h"
#include "convert_job.h"
#include "convert_pipe.h"
#include "convert_stop.h"
#include "convert_workers.h"
#include "messages.h"

// What the listener has heard and the worker hasn't taken yet. Valid as long as the process.
struct WorkerInput {
    std::mutex lock;
    std::condition_variable changed;
    std::deque<PipeFields> messages;
    bool hasEnded;
};
static WorkerInput gInput;

static void Listen()
{
    for (PipeFields message; ReadMessage(STDIN_FILENO, &message);) {
        std::lock_guard<std::mutex> guard(gInput.lock);
        gInput.messages.push_back(message);
        gInput.changed.notify_one();
    }
    RequestStop();
    std::lock_guard<std::mutex> guard(gInput.lock);
    gInput.hasEnded = true;
    gInput.changed.notify_one();
}

static bool NextMessage(PipeFields *message)
{
    std::unique_lock<std::mutex> guard(gInput.lock);
    gInput.changed.wait(guard, [] { return !gInput.messages.empty() || gInput.hasEnded; });
    if (gInput.messages.empty())
        return false;
    *message = gInput.messages.front();
    gInput.messages.pop_front();
    return true;
}

static bool Answer(const std::string &bytes)
{
    size_t done = 0;
    while (done < bytes.size()) {
        ssize_t written = write(STDOUT_FILENO, bytes.data() + done, unsigned(bytes.size() - done));
        if (written < 0 && errno != EINTR)
            return false;
        done += written > 0 ? size_t(written) : 0;
    }
    return true;
}

// The first message has the settings, each later one a task. An answer of a worker that was stopped
// is its last one.
static int WorkOnMessages()
{
    PipeFields message;
    ConvertSettings settings;
    if (!NextMessage(&message) || !TakeSettings(message, &settings))
        return kWrongUsage;
    for (ConvertTask task; NextMessage(&message) && TakeTask(message, &task);) {
        ConvertOutcome outcome = WorkOnTask(settings, task, false);
        if (!Answer(PackMessage(FieldsOfOutcome(outcome))))
            return kNotDone;
        if (IsStopRequested())
            break;
    }
    return kDone;
}

// The listener may wait for input as long as there is any: it ends with the process.
int RunConvertWorker()
{
    if (!Start())
        return kNotDone;
    CatchSignals();
    std::thread(Listen).detach();
    int status = WorkOnMessages();
    EndBySignal();
    return status;
}

// Each worker has a thread here that hands it its documents and waits for the answers; the thread
// that runs everything writes them. All that threads share stands in one record behind one lock.
#include "convert_workers.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <unistd.h>

#include "child_process.h"
#include "convert_job.h"
#include "convert_pipe.h"
#include "convert_stop.h"
#include "runtime.h"

constexpr std::chrono::milliseconds kSignalPause{50};  // between two looks for a signal
constexpr int kSignalPauses = 10;  // that a signal to all processes takes at most to be seen here

struct Worker {
    ChildProcess child;
    bool isRunning;
};

// Valid while ConvertByWorkers runs.
struct WorkPool {
    const ConvertSettings *settings;
    TaskPlan *plan;
    std::vector<std::optional<ConvertOutcome>> outcomes;  // of the tasks that are over
    std::vector<bool> isOver;
    std::vector<Worker> workers;
    size_t next = 0;       // the first task that no worker was given
    bool isEnded = false;  // no more are given
    std::mutex lock;
    std::condition_variable changed;
};

size_t CountWorkers(const ConvertSettings &settings, size_t tasks)
{
    size_t wanted = settings.jobs ? size_t(settings.jobs) : std::thread::hardware_concurrency();
    return std::clamp<size_t>(std::min(wanted, tasks), 1, 256);
}

// ---- a worker's thread: `lock` is held except while it waits ----

typedef std::unique_lock<std::mutex> PoolLock;

static bool TakeNext(WorkPool *pool, PoolLock *lock, size_t *task)
{
    if (pool->isEnded || pool->next == pool->plan->tasks.size())
        return false;
    *task = pool->next++;
    size_t before = pool->plan->follows[*task];
    pool->changed.wait(*lock,
                       [&] { return before == kNoTask || pool->isOver[before] || pool->isEnded; });
    return !pool->isEnded;
}

static bool StartWorker(const WorkPool &pool, Worker *worker)
{
    const char *const arguments[] = {kWorkerCommand, nullptr};
    if (worker->isRunning)
        return true;
    worker->isRunning = StartChild(arguments, &worker->child);
    std::string settings = PackMessage(FieldsOfSettings(*pool.settings));
    if (worker->isRunning)  // what isn't read shows when the first document is handed over
        SendToChild(worker->child, settings.data(), settings.size());
    return worker->isRunning;
}

// Waits for the answer without the lock, so that the others can go on.
static bool ReadAnswer(const Worker &worker, PoolLock *lock, ConvertOutcome *outcome)
{
    PipeFields fields;
    int output = worker.child.output;
    lock->unlock();
    bool isRead = ReadMessage(output, &fields) && TakeOutcome(fields, outcome);
    lock->lock();
    return isRead;
}

// Without the lock too: a worker may need a moment to end.
static void EndWorker(Worker *worker, PoolLock *lock)
{
    if (!worker->isRunning)
        return;
    ChildProcess child = worker->child;
    *worker = {};
    lock->unlock();
    EndChild(&child);
    lock->lock();
}

// What a worker that was killed had begun to write stands beside its place. It is taken over as the
// next one would take it over, and goes.
static void RemoveLeftFile(const ConvertTask &task)
{
    EndReplaceFile(BeginReplaceDocument(task.destination.c_str()), 0);
}

static ConvertOutcome AskWorker(WorkPool *pool, Worker *worker, PoolLock *lock, size_t number)
{
    const ConvertTask &task = pool->plan->tasks[number];
    std::string taken = WhyTaken(*pool->plan, number), bytes = PackMessage(FieldsOfTask(task));
    if (!taken.empty())
        return RefuseTask(*pool->settings, task, taken);
    if (!StartWorker(*pool, worker))
        return RefuseTask(*pool->settings, task,
                          "no process can be started for it: " +
                              std::generic_category().message(errno));
    ConvertOutcome outcome;
    if (SendToChild(worker->child, bytes.data(), bytes.size()) &&
        ReadAnswer(*worker, lock, &outcome))
        return outcome;
    EndWorker(worker, lock);
    if (Writes(*pool->settings))
        RemoveLeftFile(task);
    return RefuseTask(*pool->settings, task, "not converted: the process that did it has ended");
}

static void RunWorker(WorkPool *pool, size_t number)
{
    PoolLock lock(pool->lock);
    Worker *worker = &pool->workers[number];
    for (size_t task; TakeNext(pool, &lock, &task);) {
        ConvertOutcome outcome = AskWorker(pool, worker, &lock, task);
        if (outcome.status == DocumentStatus::kStopped)  // it takes no more
            EndWorker(worker, &lock);
        KeepStatus(pool->plan, task, outcome.status);
        pool->outcomes[task] = std::move(outcome);
        pool->isOver[task] = true;
        pool->changed.notify_all();
    }
    EndWorker(worker, &lock);
}

// ---- the thread that writes ----

// Workers see the end of their input and stop at once.
static void EndAll(WorkPool *pool)
{
    PoolLock lock(pool->lock);
    pool->isEnded = true;
    for (Worker &worker : pool->workers)
        if (worker.isRunning && worker.child.input >= 0) {
            close(worker.child.input);
            worker.child.input = -1;
        }
    pool->changed.notify_all();
}

// False when the work shall stop before the task is over.
static bool WaitForTask(WorkPool *pool, size_t task)
{
    PoolLock lock(pool->lock);
    while (!pool->isOver[task] && !IsStopRequested())
        pool->changed.wait_for(lock, kSignalPause);
    return pool->isOver[task];
}

// A worker that a signal has stopped: if the signal came to all it is seen here in a moment.
static bool IsAloneStopped()
{
    for (int i = 0; i < kSignalPauses && !IsStopRequested(); ++i)
        std::this_thread::sleep_for(kSignalPause);
    return !IsStopRequested();
}

static ConvertOutcome TakeOutcomeOf(WorkPool *pool, size_t task)
{
    PoolLock lock(pool->lock);
    ConvertOutcome outcome = std::move(*pool->outcomes[task]);
    pool->outcomes[task].reset();
    return outcome;
}

// Whether the job goes on behind a task that is over.
static bool WriteTask(WorkPool *pool, size_t task, ConvertOutput *output)
{
    ConvertOutcome outcome = TakeOutcomeOf(pool, task);
    if (outcome.status == DocumentStatus::kStopped) {
        if (!IsAloneStopped())
            return true;  // the rest of what is over is still told
        outcome = RefuseTask(*pool->settings, pool->plan->tasks[task],
                             "not converted: the process that did it was stopped");
    }
    return WriteOutcome(output, outcome) && !outcome.endsAll;
}

// What was over before a signal came is told, though it is behind what was not.
static void WriteRest(WorkPool *pool, size_t task, ConvertOutput *output)
{
    for (; task < pool->plan->tasks.size(); ++task)
        if (pool->isOver[task] && !WriteTask(pool, task, output))
            return;
}

static void WriteAll(WorkPool *pool, std::vector<std::thread> *threads, ConvertOutput *output)
{
    size_t task = 0;
    bool goesOn = true;
    while (goesOn && task < pool->plan->tasks.size() && WaitForTask(pool, task))
        goesOn = WriteTask(pool, task++, output);
    EndAll(pool);
    for (std::thread &thread : *threads)
        thread.join();
    if (goesOn)
        WriteRest(pool, task, output);
}

// As many as the system allows.
static std::vector<std::thread> StartThreads(WorkPool *pool)
{
    std::vector<std::thread> threads;
    try {
        for (size_t i = 0; i < pool->workers.size(); ++i)
            threads.emplace_back(RunWorker, pool, i);
    } catch (const std::system_error &) {
    }
    return threads;
}

bool ConvertByWorkers(const ConvertSettings &settings, size_t workers, TaskPlan *plan,
                      ConvertOutput *output)
{
    WorkPool pool;
    pool.settings = &settings;
    pool.plan = plan;
    pool.outcomes.resize(plan->tasks.size());
    pool.isOver.resize(plan->tasks.size());
    pool.workers.resize(workers);
    std::vector<std::thread> threads = StartThreads(&pool);
    if (!threads.empty())
        WriteAll(&pool, &threads, output);
    return !threads.empty();
}

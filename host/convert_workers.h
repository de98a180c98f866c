// Documents on several processes. The library belongs to one thread of its process, so further
// processors are used by further processes of this program, the workers: each is given a document,
// answers with what came of it, and is given the next.
#pragma once

#include "convert_output.h"
#include "convert_tasks.h"

// The subcommand that a worker is started with; no person ever writes it.
constexpr char kWorkerCommand[] = "convert-worker";

// How many processes are worth starting for the tasks.
size_t CountWorkers(const ConvertSettings &settings, size_t tasks);

// Does all tasks; what comes of them is written in their order. False when the system has no room
// for a second thread, and nothing was done.
bool ConvertByWorkers(const ConvertSettings &settings, size_t workers, TaskPlan *plan,
                      ConvertOutput *output);

// The life of a worker, from its start to the end of its input. Its exit status.
int RunConvertWorker();

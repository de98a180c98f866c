// The list of what orvel convert is to do, and which of it can't be done at the same time: where
// two documents would go to one file the first that succeeds has it.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "convert_record.h"

constexpr size_t kNoTask = size_t(-1);

struct TaskPlan {
    std::vector<ConvertTask> tasks;
    // Of each task: the file that it is written to, links resolved; empty for none.
    std::vector<std::string> places;
    // Of each task: an earlier one that has to be over first, since both may have one place.
    std::vector<size_t> follows;
    // By what places have in common that may be one: the tasks whose destination is there.
    std::unordered_map<std::string, std::vector<size_t>> holders;
};

TaskPlan MakePlan(const ConvertSettings &settings);

// Why a task can't be done since another one's document has its place; empty when it can. The one
// that it follows is over.
std::string WhyTaken(const TaskPlan &plan, size_t task);

// Keeps what became of a task.
void KeepStatus(TaskPlan *plan, size_t task, DocumentStatus status);

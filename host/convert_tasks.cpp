// Tasks and their places. Two paths may name one file in more ways than can be told before it is
// there: the file system may not care for capitals. So what is alike but for them is done one
// behind the other, and the file system is asked in between.
#include "convert_tasks.h"

#include <filesystem>

#include "document_list.h"
#include "runtime.h"
#include "utf8.h"

namespace fs = std::filesystem;

// The path of a file of this name in a folder.
static std::string PlaceIn(const std::string &folder, const std::string &name)
{
    bool hasEnd = folder.find_last_of("/\\:") == folder.size() - 1;
    return folder + (hasEnd ? "" : "/") + name;
}

static std::vector<ConvertTask> ListTasks(const ConvertSettings &settings)
{
    std::vector<ConvertTask> tasks;
    if (!settings.hasFolder && !settings.listsFonts)
        return {{settings.files[0], settings.files[1], "", false, false}};
    for (const ListedDocument &document :
         ListDocuments(settings.files, {settings.folder, settings.report}))
        tasks.push_back({document.path,
                         settings.hasFolder ? PlaceIn(settings.folder, document.name) : "",
                         document.why, document.isFromFolder, document.isOther});
    return tasks;
}

// ---- places ----

static std::string WithoutLinks(const std::string &path)
{
    try {
        std::error_code failure;
        fs::path resolved = fs::weakly_canonical(Utf8Path(path), failure);
        std::u8string text = failure ? std::u8string() : resolved.generic_u8string();
        return failure ? path : std::string(text.begin(), text.end());
    } catch (const std::exception &) {
        return path;  // names that are no text
    }
}

// The place of each folder: most documents share theirs with others.
typedef std::unordered_map<std::string, std::string> KnownFolders;

static std::string PlaceOf(const std::string &path, KnownFolders *folders)
{
    size_t base = BaseStart(path);
    std::string folder = path.substr(0, base);
    auto [known, isNew] = folders->try_emplace(folder);
    if (isNew)
        known->second = WithoutLinks(folder.empty() ? "." : folder);
    std::error_code ignored;
    bool isLink = fs::is_symlink(Utf8Path(path), ignored);
    return isLink ? WithoutLinks(path) : PlaceIn(known->second, path.substr(base));
}

// Whether a character beyond ASCII may have a capital: all that stands in two bytes counts so, and
// U+1E00 to U+1FFF; Lao has none.
static bool MayHaveCapital(std::string_view character)
{
    return character.size() == 2 || (character[0] == '\xE1' && (character[1] & '\xF8') == '\xB8');
}

// The same for all places that some file system may take for one; and for a few more.
static std::string CommonForm(std::string_view place)
{
    std::string form;
    for (size_t size = 0; !place.empty(); place.remove_prefix(size)) {
        size = CharacterSize(place);
        char first = place[0];
        if (size == 1)
            form += first >= 'A' && first <= 'Z' ? char(first + ('a' - 'A')) : first;
        else if (MayHaveCapital(place.substr(0, size)))
            form += '?';
        else
            form += place.substr(0, size);
    }
    return form;
}

// A document that is still to be read isn't written over by the new one of another. Its own one is
// the library's to refuse.
static void RefuseSources(TaskPlan *plan, KnownFolders *folders)
{
    std::unordered_map<std::string, size_t> sources;
    for (size_t i = 0; i < plan->tasks.size(); ++i)
        sources.try_emplace(PlaceOf(plan->tasks[i].source, folders), i);
    for (size_t i = 0; i < plan->tasks.size(); ++i) {
        ConvertTask &task = plan->tasks[i];
        auto found = sources.find(plan->places[i]);
        if (!task.why.empty() || found == sources.end() ||
            PlaceOf(task.source, folders) == plan->places[i])
            continue;
        task.why = "not converted: " + task.destination + " is itself one of these documents";
        plan->places[i].clear();
    }
}

static void FindFollowers(TaskPlan *plan)
{
    std::unordered_map<std::string, size_t> last;  // task of each form
    for (size_t i = 0; i < plan->tasks.size(); ++i) {
        if (plan->places[i].empty())
            continue;
        auto [before, isFirst] = last.try_emplace(CommonForm(plan->places[i]), i);
        if (!isFirst)
            plan->follows[i] = before->second;
        before->second = i;
    }
}

TaskPlan MakePlan(const ConvertSettings &settings)
{
    TaskPlan plan;
    KnownFolders folders;
    plan.tasks = ListTasks(settings);
    plan.places.resize(plan.tasks.size());
    plan.follows.resize(plan.tasks.size(), kNoTask);
    if (!settings.hasFolder)
        return plan;
    for (size_t i = 0; i < plan.tasks.size(); ++i)
        if (plan.tasks[i].why.empty())
            plan.places[i] = PlaceOf(plan.tasks[i].destination, &folders);
    RefuseSources(&plan, &folders);
    FindFollowers(&plan);
    return plan;
}

std::string WhyTaken(const TaskPlan &plan, size_t task)
{
    const std::string &place = plan.places[task], &path = plan.tasks[task].destination;
    auto found = place.empty() ? plan.holders.end() : plan.holders.find(CommonForm(place));
    if (found == plan.holders.end())
        return {};
    for (size_t holder : found->second)
        if (plan.places[holder] == place ||
            IsSameFile(plan.tasks[holder].destination.c_str(), path.c_str()))
            return "not converted: " + path + " is there from another one of these documents";
    return {};
}

void KeepStatus(TaskPlan *plan, size_t task, DocumentStatus status)
{
    if (!plan->places[task].empty() && status <= DocumentStatus::kDoneBefore)
        plan->holders[CommonForm(plan->places[task])].push_back(task);
}

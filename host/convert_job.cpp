// One document: it is looked at, its folder is made, the library converts it, and all that is known
// of it afterwards becomes lines. What can't be a document never gets to the library, and makes no
// folder.
#include "convert_job.h"

#include <algorithm>
#include <filesystem>
#include <unistd.h>

#include "convert_failures.h"
#include "convert_report.h"
#include "convert_stop.h"
#include "document_kind.h"
#include "document_list.h"
#include "progress.h"
#include "runtime.h"
#include "session.h"

namespace fs = std::filesystem;

constexpr DWORD kMostFonts = 4096;  // of one document

// What was said about a document while it was worked on.
struct Hearing {
    std::vector<std::string> told;  // for the person, each text behind the document's name
    std::vector<std::string> notes;
    Progress progress;
    bool isVerbose;
};

// ---- lines ----

// Names come from a document: nothing in them may act on a terminal or look like a column.
static std::string PlainName(std::string name)
{
    std::replace_if(
        name.begin(), name.end(), [](char c) { return (c >= 0 && c < ' ') || c == 127; }, '?');
    return name;
}

// A line of four columns for each font.
static std::string ListFonts(const ConvertTask &task, const DocumentFacts &facts)
{
    std::string text;
    for (const DocumentFont &font : facts.fonts)
        text += task.source + "\t" + std::to_string(font.characters) + "\t" + PlainName(font.name) +
                "\t" + (*font.unicodeName ? PlainName(font.unicodeName) : "(not in the font map)") +
                "\n";
    return text;
}

// What would be done, a line of five columns.
static std::string DescribePlan(const ConvertTask &task, const DocumentFacts &facts)
{
    std::string last = facts.words;
    for (const DocumentFont &font : facts.fonts)
        if (*font.unicodeName)
            last += (last.empty() ? "" : ", ") + PlainName(font.name) + " -> " +
                    PlainName(font.unicodeName);
    return task.source + "\t" + NameStatus(facts.status) + "\t" + facts.format + "\t" +
           std::to_string(facts.characters) + "\t" + last + "\n";
}

// What was skipped is told at the end, by its number, unless the person wants to hear all.
static std::string TellLines(const ConvertTask &task, const DocumentFacts &facts,
                             const Hearing &hearing)
{
    std::string file = task.source.empty() ? "orvel: " : task.source + ": ", text;
    bool isSkipped = facts.status == DocumentStatus::kSkipped;
    if (facts.status == DocumentStatus::kStopped || (isSkipped && !hearing.isVerbose))
        return {};
    for (const std::string &line : hearing.told)
        text += file + line + "\n";
    if (!facts.words.empty())
        text += file + (isSkipped ? "skipped: " : "") + facts.words + "\n";
    return text;
}

static ConvertOutcome MakeOutcome(const ConvertSettings &settings, const ConvertTask &task,
                                  const DocumentFacts &facts, const Hearing &hearing)
{
    ConvertOutcome outcome = {facts.status, FailsForAll(facts.failure), "", "", ""};
    bool isStopped = facts.status == DocumentStatus::kStopped;
    outcome.told = TellLines(task, facts, hearing);
    if (settings.listsFonts)
        outcome.output = ListFonts(task, facts);
    if (settings.isDryRun && !isStopped)
        outcome.output = DescribePlan(task, facts);
    if (settings.hasReport && !isStopped)
        outcome.report = ReportLine(task, facts);
    return outcome;
}

static DocumentFacts FactsOf(DocumentStatus status, const std::string &words)
{
    DocumentFacts facts = {};
    facts.status = status;
    facts.format = NameFormat(kNoFormat);
    facts.words = words;
    return facts;
}

static ConvertOutcome EndWith(const ConvertSettings &settings, const ConvertTask &task,
                              DocumentStatus status, const std::string &words)
{
    return MakeOutcome(settings, task, FactsOf(status, words), {{}, {}, {}, settings.isVerbose});
}

ConvertOutcome RefuseTask(const ConvertSettings &settings, const ConvertTask &task,
                          const std::string &why)
{
    return EndWith(settings, task, DocumentStatus::kFailed, why);
}

// ---- what the library says meanwhile ----

static void WINAPI HearNote(void *context, const char *note)
{
    Hearing *hearing = static_cast<Hearing *>(context);
    hearing->notes.push_back(note);
    hearing->told.push_back(note);
}

static void WINAPI HearPercent(void *context, DWORD percent)
{
    ShowProgress(&static_cast<Hearing *>(context)->progress, int(percent));
}

// The library asks in front of each block, and so often enough for a person.
static int WINAPI ShallStop(void *)
{
    return IsStopRequested();
}

// ---- a job of the library ----

// The size of the document says whether it takes long enough for a bar.
static Progress StartDocumentProgress(const std::string &source)
{
    int file = OpenUtf8Path(source.c_str());
    Progress progress = StartProgress(file, source, false);
    if (file >= 0)
        close(file);
    return progress;
}

static DocumentStatus StatusOf(const ConvertTask &task, const DocumentJob &job, DWORD failure)
{
    if (failure == kFailStopped)
        return DocumentStatus::kStopped;
    if (failure)
        return task.isFromFolder && IsOtherFile(failure, job) ? DocumentStatus::kSkipped
                                                              : DocumentStatus::kFailed;
    return job.changedParts || (!job.destination && job.convertedCharacters)
               ? DocumentStatus::kConverted
               : DocumentStatus::kUnchanged;
}

// The job points into both arguments.
static DocumentJob JobFor(const ConvertSettings &settings, const ConvertTask &task,
                          Hearing *hearing)
{
    DocumentJob job = {};
    job.size = sizeof job;
    job.source = task.source.c_str();
    job.destination = Writes(settings) ? task.destination.c_str() : nullptr;
    job.fontMap = settings.hasMap ? settings.map.c_str() : nullptr;
    job.textFont = settings.hasFont ? settings.font.c_str() : nullptr;
    job.flags = settings.flags;
    job.context = hearing;
    job.showPercent = HearPercent;
    job.shallStop = ShallStop;
    job.hearNote = HearNote;
    return job;
}

static DocumentFacts RunJob(const ConvertSettings &settings, const ConvertTask &task,
                            Hearing *hearing)
{
    bool wantsFonts = settings.listsFonts || settings.isDryRun || settings.hasReport;
    std::vector<DocumentFont> fonts(wantsFonts ? kMostFonts : 0);
    DocumentJob job = JobFor(settings, task, hearing);
    job.fonts = fonts.data();
    job.fontRoom = DWORD(fonts.size());
    DWORD failure = ConvertDocument(&job);
    HideProgress();
    for (const std::string &text : TakeMessages())
        hearing->told.push_back(text);
    DocumentFacts facts = FactsOf(StatusOf(task, job, failure), "");
    facts.failure = failure;
    facts.format = NameFormat(job.format);
    facts.characters = job.convertedCharacters;
    if (failure)
        facts.words = ExplainFailure(failure, job);
    else
        facts.fonts.assign(fonts.begin(), fonts.begin() + std::min(job.fontCount, job.fontRoom));
    return facts;
}

// A list of fonts that has an end before its document has is no whole list.
static void TellCutFonts(const ConvertSettings &settings, DocumentFacts *facts, Hearing *hearing)
{
    if (facts->fonts.size() < kMostFonts)
        return;
    std::string note = "fonts behind the first " + std::to_string(kMostFonts) + " are left out";
    hearing->notes.push_back(note);
    hearing->told.push_back(note);
    if (settings.listsFonts)
        facts->status = DocumentStatus::kFailed;
}

// ---- in front of it ----

// A new document that is there and not older than its source was made from it. The times are all
// that is asked: a folder of thousands is gone through in a moment.
static bool IsDoneBefore(const ConvertSettings &settings, const ConvertTask &task)
{
    if (!settings.hasFolder || settings.doesAgain)
        return false;
    std::error_code noSource, noDestination;
    fs::file_time_type source = fs::last_write_time(Utf8Path(task.source), noSource);
    fs::file_time_type made = fs::last_write_time(Utf8Path(task.destination), noDestination);
    return !noSource && !noDestination && made >= source && !IsFolder(task.destination) &&
           !IsSameFile(task.source.c_str(), task.destination.c_str());
}

static KindRefusal LookAtSource(const ConvertSettings &settings, const std::string &source)
{
    size_t folder = BaseStart(source);
    if (folder > 0 && !IsFolder(source.substr(0, folder)))
        return {"its folder isn't there", false};
    return LookAtDocument(source, settings.hasFont);
}

// Makes the folder of a file of many, with those above it. Empty, or why it isn't there.
static std::string MakeFolderOf(const std::string &destination)
{
    std::error_code failure;
    size_t end = BaseStart(destination);
    std::string folder = destination.substr(0, end > 1 ? end - 1 : end);
    fs::create_directories(Utf8Path(folder), failure);
    if (IsFolder(folder))
        return {};
    return "the folder \"" + folder + "\" can't be made" +
           (failure ? ": " + failure.message() : "");
}

static ConvertOutcome ConvertTaskHere(const ConvertSettings &settings, const ConvertTask &task,
                                      bool hasBar)
{
    Hearing hearing = {{}, {}, {}, settings.isVerbose};
    if (hasBar)
        hearing.progress = StartDocumentProgress(task.source);
    DocumentFacts facts = RunJob(settings, task, &hearing);
    TellCutFonts(settings, &facts, &hearing);
    facts.notes = hearing.notes;
    return MakeOutcome(settings, task, facts, hearing);
}

ConvertOutcome WorkOnTask(const ConvertSettings &settings, const ConvertTask &task, bool hasBar)
{
    if (!task.why.empty())
        return EndWith(settings, task,
                       task.isOther ? DocumentStatus::kSkipped : DocumentStatus::kFailed, task.why);
    if (IsDoneBefore(settings, task))
        return EndWith(settings, task, DocumentStatus::kDoneBefore, "");
    KindRefusal refusal = LookAtSource(settings, task.source);
    bool isSkipped = task.isFromFolder && refusal.isOther;
    if (!refusal.why.empty())
        return EndWith(settings, task,
                       isSkipped ? DocumentStatus::kSkipped : DocumentStatus::kFailed, refusal.why);
    std::string noFolder =
        settings.hasFolder && Writes(settings) ? MakeFolderOf(task.destination) : "";
    if (noFolder.empty())
        return ConvertTaskHere(settings, task, hasBar);
    ConvertOutcome outcome = RefuseTask(settings, task, noFolder);
    outcome.endsAll = !IsFolder(settings.folder);  // else it is one of many
    return outcome;
}

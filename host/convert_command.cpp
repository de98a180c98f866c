// orvel convert: documents from legacy Lao fonts to Unicode, and the fonts that documents use. Its
// options are read here, and the job is begun and ended; convert_record.h says where the rest
// stands.
#include <algorithm>

#include "commands.h"
#include "convert_job.h"
#include "convert_output.h"
#include "convert_stop.h"
#include "convert_tasks.h"
#include "convert_workers.h"
#include "messages.h"
#include "progress.h"

// ---- the job ----

// One process, which the library can be asked in. A signal ends it between documents and in them.
static void ConvertHere(const ConvertSettings &settings, TaskPlan *plan, ConvertOutput *output)
{
    bool goesOn = true;
    for (size_t i = 0; goesOn && i < plan->tasks.size() && !IsStopRequested(); ++i) {
        std::string taken = WhyTaken(*plan, i);
        const ConvertTask &task = plan->tasks[i];
        ConvertOutcome outcome = taken.empty() ? WorkOnTask(settings, task, plan->tasks.size() == 1)
                                               : RefuseTask(settings, task, taken);
        KeepStatus(plan, i, outcome.status);
        goesOn = outcome.status != DocumentStatus::kStopped && WriteOutcome(output, outcome) &&
                 !outcome.endsAll;
    }
}

static int ConvertFiles(const ConvertSettings &settings)
{
    ConvertOutput output;
    if (!StartOutput(settings, &output))
        return kNotDone;
    TaskPlan plan = MakePlan(settings);
    size_t workers = CountWorkers(settings, plan.tasks.size());
    output.total = plan.tasks.size();
    if (workers == 1 || !ConvertByWorkers(settings, workers, &plan, &output))
        ConvertHere(settings, &plan, &output);
    return EndOutput(&output);
}

// ---- command line ----

// "-" stands for standard input in other commands; a document has to have a name.
static bool HasStandardStream(const std::vector<std::string> &files)
{
    return std::find(files.begin(), files.end(), "-") != files.end();
}

static int RefuseUsage(const char *why)
{
    fprintf(stderr, "orvel: %s\n", why);
    return kWrongUsage;
}

static DWORD FlagsOf(const ConvertSettings &settings)
{
    DWORD flags = kAllFormats;
    if (!settings.detects.empty())
        flags |= kDetectText;
    if (settings.detects == "apply")
        flags |= kApplyDetected;
    if (!settings.breaks.empty())
        flags |= settings.breaks == "none" ? kTakeBreaks : kWriteBreaks;
    return flags;
}

static int RunConvert(const ConvertSettings &settings)
{
    bool takesTwo = !settings.hasFolder && !settings.listsFonts;
    if (takesTwo && settings.files.size() != 2)
        return RefuseUsage("convert takes a source and a destination, or --to FOLDER and files");
    if (HasStandardStream(settings.files))
        return RefuseUsage("convert takes files by their names; standard input can't be one");
    if (!Start())
        return kNotDone;
    CatchSignals();
    int status = ConvertFiles(settings);
    EndBySignal();
    return status;
}

static void AddWhere(CLI::App *convert, ConvertSettings *settings)
{
    convert
        ->add_option("files", settings->files,
                     "source and destination; with --to and --list-fonts all are sources, and a "
                     "folder stands for all files below it")
        ->required();
    convert->add_option(
        "--to", settings->folder,
        "the folder that the new documents go to, in the tree of the old ones; it is made");
    convert->add_flag("--again", settings->doesAgain,
                      "with --to: also do what was done before, and whose new document isn't older "
                      "than the old one");
    convert
        ->add_option("--jobs", settings->jobs,
                     "how many documents are worked on at a time (default 1; 0: as many as "
                     "there are processors)")
        ->check(CLI::Range(0, 256));
}

static void AddHow(CLI::App *convert, ConvertSettings *settings)
{
    convert->add_option("--map", settings->map,
                        "a file that says what each font is and becomes, like FontList.ini");
    convert->add_option("--font", settings->font, "the font whose code plain text is in");
    convert
        ->add_flag("--detect{tell}", settings->detects,
                   "tell of text that reads as legacy Lao though its font isn't one, and the other "
                   "way round; --detect=apply: go by what it reads as")
        ->check(CLI::IsMember({"tell", "apply"}));
    convert
        ->add_flag("--breaks{write}", settings->breaks,
                   "write a break that can't be seen at each word boundary of Lao; --breaks=none: "
                   "take them out")
        ->check(CLI::IsMember({"write", "none"}));
}

static void AddWhatIsTold(CLI::App *convert, ConvertSettings *settings)
{
    CLI::Option *list = convert->add_flag("--list-fonts", settings->listsFonts,
                                          "write nothing; tell the fonts of each document's text");
    CLI::Option *plan = convert->add_flag("--dry-run", settings->isDryRun,
                                          "write nothing; tell what would be done");
    CLI::Option *report =
        convert->add_option("--report", settings->report,
                            "a file that is written: what came of each document, as JSON");
    convert->add_flag("--verbose", settings->isVerbose,
                      "tell also which files of folders are no documents");
    list->excludes(plan)->excludes(report)->excludes(convert->get_option("--to"));
}

constexpr char kFooter[] =
    "A new document takes its place when it is whole; a failed conversion leaves what was there.\n"
    "What stands in a folder and is no document is skipped; a bad document stops none of the "
    "others.\n"
    "--list-fonts prints a line for each font, a tab between its columns: file, number of\n"
    "characters, font, and the Unicode font that takes its place or \"(not in the font map)\".\n"
    "--dry-run prints a line for each file: file, what would become of it, format, number of\n"
    "characters in legacy fonts, and the fonts that change or why nothing is done.\n"
    "Example: orvel convert old.docx new.docx\n"
    "Example: orvel convert --jobs 0 --report report.jsonl --to unicode letters";

static void AddWorkerCommand(CLI::App *app, Command *chosen)
{
    CLI::App *worker = app->add_subcommand(kWorkerCommand, "a process of convert --jobs");
    worker->group("");  // people don't see it
    worker->callback([=] { *chosen = RunConvertWorker; });
}

void AddConvertCommand(CLI::App *app, Command *chosen)
{
    auto settings = std::make_shared<ConvertSettings>();
    CLI::App *convert =
        app->add_subcommand("convert", "turn documents in legacy Lao fonts into Unicode ones");
    AddWhere(convert, settings.get());
    AddHow(convert, settings.get());
    AddWhatIsTold(convert, settings.get());
    convert->footer(kFooter);
    convert->callback([=] {
        settings->hasFolder = convert->count("--to") > 0;
        settings->hasMap = convert->count("--map") > 0;
        settings->hasReport = convert->count("--report") > 0;
        settings->hasFont = convert->count("--font") > 0;
        settings->flags = FlagsOf(*settings);
        *chosen = [=] { return RunConvert(*settings); };
    });
    AddWorkerCommand(app, chosen);
}

// orvel convert: WordprocessingML 2003 documents from legacy Lao fonts to Unicode, and the fonts
// that such documents use. The library's own number of a failure stays on standard error, since
// people quote it; what it means comes behind it. What can't be a document never gets so far: the
// library would copy it as if all were well.
#include <csignal>
#include <cstring>
#include <unistd.h>

#include "commands.h"
#include "document_kind.h"
#include "document_list.h"
#include "messages.h"
#include "orvel.h"
#include "progress.h"
#include "runtime.h"
#include "session.h"

constexpr DWORD kMostFonts = 4096;  // of one document

struct ConvertSettings {
    std::vector<std::string> files;  // UTF-8 paths: source and destination, or sources alone
    std::string folder, map;         // UTF-8 paths
    bool hasFolder = false, hasMap = false, listsFonts = false, isVerbose = false;
};

// Of the document that is worked on. Callbacks of the library find it here.
struct ConvertState {
    Progress progress;
    volatile std::sig_atomic_t stopSignal;  // 0: none came
};
static ConvertState gConvert;

// ---- paths: as the library has them, a backslash counts as a slash ----

// The path of a file of this name in a folder.
static std::string PlaceIn(const std::string &folder, const std::string &name)
{
    bool hasEnd = folder.find_last_of("/\\:") == folder.size() - 1;
    return folder + (hasEnd ? "" : "/") + name;
}

static bool IsFolder(const std::string &path)
{
    std::error_code ignored;
    return std::filesystem::is_directory(Utf8Path(path), ignored);
}

// Makes a folder with those above it, where they aren't there yet.
static bool HasFolder(const std::string &path)
{
    std::error_code failure;
    std::filesystem::create_directories(Utf8Path(path), failure);
    if (IsFolder(path))
        return true;
    Tell("the folder \"" + path + "\" can't be made" + (failure ? ": " + failure.message() : ""),
         kNotDone);
    return false;
}

// ---- failures in words ----

struct FailureMeaning {
    DWORD number;  // a ConversionFailure
    const char *words;
};

constexpr char kBadTag[] = "a tag of the document can't be read";
constexpr char kNoMemory[] = "there is not enough memory";

// What a person can do something about. The numbers of tags and of memory are many, since each has
// one place in the library; a person needs to know no more than which of the two it is.
// clang-format off
constexpr FailureMeaning kMeanings[] = {
    {kFailTagMemory,       kNoMemory},
    {kFailTagName,         kBadTag},
    {kFailAttributes,      kBadTag},
    {kFailAttributeMemory, kNoMemory},
    {kFailAttributeName,   kBadTag},
    {kFailValueMemory,     kNoMemory},
    {kFailStyleMemory,     kNoMemory},
    {kFailStyleFonts,      kNoMemory},
    {kFailParagraphFonts,  kNoMemory},
    {kFailRunFonts,        kNoMemory},
    {kFailMemory,          kNoMemory},
    {kFailCutTag,          "the document ends inside a tag: a part of it is missing"},
    {kFailText,            "a text of the document can't be converted"},
    {kFailWrite,           "the new document can't be written whole"},
};
// clang-format on

// The source could be opened a moment before.
static std::string ExplainOpening(const DocumentJob &job)
{
    if (!job.destination)
        return "it can't be opened any more";
    if (IsSameFile(job.source, job.destination))
        return "source and destination are one file";
    std::string path = job.destination, folder = path.substr(0, BaseStart(path));
    bool hasFolder = folder.empty() || IsFolder(folder);
    return path + (hasFolder ? " can't be written to" : " can't be made: its folder isn't there");
}

// The words that stand behind the source's name.
static std::string ExplainFailure(DWORD failure, const DocumentJob &job)
{
    if (failure == kFailOpen)
        return ExplainOpening(job);
    if (failure == kFailFontMap)
        return "the font map " + std::string(job.fontMap) + " can't be read or has no row";
    for (const FailureMeaning &row : kMeanings)
        if (failure == row.number)
            return row.words;
    return "the document can't be converted";
}

// False, with a message, for a file that is no document.
static bool CanBeDocument(const std::string &source)
{
    std::string why = WhyNoDocumentIn(source);
    size_t folder = BaseStart(source);
    if (folder > 0 && !IsFolder(source.substr(0, folder)))
        why = "its folder isn't there";
    gPlace.file = source;
    if (!why.empty())
        TellHere(why);
    return why.empty();
}

// ---- notes ----

constexpr std::string_view kRestarted = "Restarted: ", kLineEnd = "\r\n";

// Notes without those of restarts, which tell a person nothing. Behind each of these the library
// says again what it had said so far, as far as its log has room: the longest stretch says all.
static std::string NotesOfOneReading(std::string_view notes)
{
    std::string longest, stretch;
    while (!notes.empty()) {
        std::string_view line = notes.substr(0, notes.find(kLineEnd));
        notes.remove_prefix(std::min(line.size() + kLineEnd.size(), notes.size()));
        if (line.starts_with(kRestarted))
            stretch.clear();
        else
            stretch += (stretch.empty() ? "" : std::string(kLineEnd)) + std::string(line);
        longest = stretch.size() > longest.size() ? stretch : longest;
    }
    return longest;
}

static void TellNotes(bool isVerbose)
{
    for (const std::string &text : TakeMessages()) {
        std::string notes = isVerbose ? text : NotesOfOneReading(text);
        if (!notes.empty())
            TellHere(notes);
    }
}

// ---- signals: the new document stands beside the old one until it is whole, and has to go ----

// The first one stops the work at the next block, a second one ends the program as ever.
static void HearSignal(int number)
{
    gConvert.stopSignal = number;
    std::signal(number, SIG_DFL);
}

// What was told to ignore them, as behind nohup, goes on so.
static void CatchSignals()
{
    for (int number : {SIGINT, SIGTERM})
        if (std::signal(number, HearSignal) == SIG_IGN)
            std::signal(number, SIG_IGN);
}

// Ends as the signal would have ended it, so that a shell sees what happened.
static void EndBySignal()
{
    int number = gConvert.stopSignal;
    if (!number)
        return;
    fflush(nullptr);
    std::signal(number, SIG_DFL);
    std::raise(number);
}

// ---- the work on one document ----

static void WINAPI HearPercent(void *, DWORD percent)
{
    ShowProgress(&gConvert.progress, int(percent));
}

// The library asks in front of each block, and so often enough for a person.
static int WINAPI ShallStop(void *)
{
    return gConvert.stopSignal != 0;
}

// The size of the document says whether it takes long enough for a bar.
static Progress StartDocumentProgress(const char *source)
{
    int file = OpenUtf8Path(source);
    Progress progress = StartProgress(file, source, false);
    if (file >= 0)
        close(file);
    return progress;
}

// Notes and failures stand behind the source's name.
static DWORD RunJob(const ConvertSettings &settings, DocumentJob *job)
{
    gPlace.file = job->source;
    gConvert.progress = StartDocumentProgress(job->source);
    job->showPercent = HearPercent;
    job->shallStop = ShallStop;
    DWORD failure = ConvertDocument(job);
    HideProgress();
    TellNotes(settings.isVerbose);
    if (failure && failure != kFailStopped)
        TellHere(ExplainFailure(failure, *job));
    return failure;
}

// What all jobs of a run share. The job points into both arguments.
static DocumentJob JobFor(const ConvertSettings &settings, const std::string &source)
{
    DocumentJob job = {};
    job.size = sizeof job;
    job.source = source.c_str();
    job.fontMap = settings.hasMap ? settings.map.c_str() : nullptr;
    job.flags = kAllFormats;
    return job;
}

static DWORD ConvertOne(const ConvertSettings &settings, const std::string &source,
                        const std::string &destination)
{
    DocumentJob job = JobFor(settings, source);
    job.destination = destination.c_str();
    return RunJob(settings, &job);
}

// A failure that would be the same for all documents to come, or after which none shall come.
static bool EndsAll(DWORD failure)
{
    return failure == kFailFontMap || failure == kFailStopped;
}

// ---- many into a folder ----

// The file system tells which names are one: it may not care for capitals, or know links.
static bool IsAmong(const std::vector<std::string> &written, const std::string &path)
{
    return std::any_of(written.begin(), written.end(), [&](const std::string &earlier) {
        return IsSameFile(path.c_str(), earlier.c_str());
    });
}

// One document of many: whether it was written, and in *isLast whether the others are left.
static bool ConvertOneOfMany(const ConvertSettings &settings, const ListedDocument &document,
                             std::vector<std::string> *written, bool *isLast)
{
    std::string destination = PlaceIn(settings.folder, document.name);
    size_t folders = document.name.rfind('/');
    if (!CanBeDocument(document.path))
        return false;
    if (!HasFolder(folders == std::string::npos
                       ? settings.folder
                       : PlaceIn(settings.folder, document.name.substr(0, folders)))) {
        *isLast = !IsFolder(settings.folder);  // else it is one of many
        return false;
    }
    if (IsAmong(*written, destination)) {
        TellHere("not converted: " + destination + " is there from another one of these documents");
        return false;
    }
    DWORD failure = ConvertOne(settings, document.path, destination);
    *isLast = EndsAll(failure);
    if (!failure)
        written->push_back(destination);
    return !failure;
}

// A bad document among good ones stops none of them. The tree of a folder stays as it is.
static int ConvertAll(const ConvertSettings &settings)
{
    std::vector<std::string> written;
    int worst = kDone;
    bool isLast = false;
    for (const ListedDocument &document : ListDocuments(settings.files, settings.folder, &worst)) {
        if (!ConvertOneOfMany(settings, document, &written, &isLast))
            worst = kNotDone;
        if (isLast)
            break;
    }
    return worst;
}

// ---- fonts ----

// Names come from a document: nothing in them may act on a terminal or look like a column.
static std::string PlainName(std::string name)
{
    std::replace_if(
        name.begin(), name.end(), [](char c) { return (c >= 0 && c < ' ') || c == 127; }, '?');
    return name;
}

// A line of four columns.
static std::string DescribeFont(const std::string &file, const DocumentFont &font)
{
    std::string unicode = font.unicodeName;
    return file + "\t" + std::to_string(font.characters) + "\t" + PlainName(font.name) + "\t" +
           (unicode.empty() ? "(not in the font map)" : PlainName(unicode)) + "\n";
}

// The fonts are found by a conversion without a destination. What failed has no line.
static int ListFontsOf(const ConvertSettings &settings, const std::string &file, DWORD *failure)
{
    if (!CanBeDocument(file))
        return kNotDone;
    std::vector<DocumentFont> fonts(kMostFonts);
    DocumentJob job = JobFor(settings, file);
    std::string text;
    job.fonts = fonts.data();
    job.fontRoom = kMostFonts;
    *failure = RunJob(settings, &job);
    if (*failure)
        return kNotDone;
    for (DWORD i = 0; i < job.fontCount; ++i)
        text += DescribeFont(file, fonts[i]);
    int status = WriteOutput(text);
    if (job.fontCount < kMostFonts)
        return status;
    fprintf(stderr, "%s: fonts behind the first %u are left out\n", file.c_str(),
            unsigned(kMostFonts));
    return kNotDone;
}

static int ListFonts(const ConvertSettings &settings)
{
    int worst = kDone;
    DWORD failure = 0;
    for (const ListedDocument &document : ListDocuments(settings.files, "", &worst)) {
        worst = std::max(worst, ListFontsOf(settings, document.path, &failure));
        if (EndsAll(failure))
            break;
    }
    return worst;
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

static int ConvertFiles(const ConvertSettings &settings)
{
    if (settings.listsFonts)
        return ListFonts(settings);
    if (settings.hasFolder)
        return ConvertAll(settings);
    const std::string &source = settings.files[0], &destination = settings.files[1];
    return CanBeDocument(source) && !ConvertOne(settings, source, destination) ? kDone : kNotDone;
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

void AddConvertCommand(CLI::App *app, Command *chosen)
{
    auto settings = std::make_shared<ConvertSettings>();
    CLI::App *convert =
        app->add_subcommand("convert", "turn documents in legacy Lao fonts into Unicode ones");
    convert
        ->add_option("files", settings->files,
                     "source and destination; with --to and --list-fonts all are sources, and a "
                     "folder stands for all files below it")
        ->required();
    CLI::Option *folder = convert->add_option(
        "--to", settings->folder,
        "the folder that the new documents go to, in the tree of the old ones; it is made");
    CLI::Option *map =
        convert->add_option("--map", settings->map,
                            "a file that says what each font is and becomes, like FontList.ini");
    convert
        ->add_flag("--list-fonts", settings->listsFonts,
                   "write nothing; tell the fonts of each document's text")
        ->excludes(folder);
    convert->add_flag("--verbose", settings->isVerbose,
                      "tell also how often a document needed more memory");
    convert->footer("The documents are WordprocessingML 2003 (XML). A new document takes its place "
                    "when it is\nwhole; a failed conversion leaves what was there.\n"
                    "--list-fonts prints a line for each font, a tab between its columns: file, "
                    "number of\ncharacters, font, and the Unicode font that takes its place or "
                    "\"(not in the font map)\".\n"
                    "Example: orvel convert old.xml new.xml");
    convert->callback([=] {
        settings->hasFolder = folder->count() > 0;
        settings->hasMap = map->count() > 0;
        *chosen = [=] { return RunConvert(*settings); };
    });
}

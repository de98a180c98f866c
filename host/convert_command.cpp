// orvel convert: WordprocessingML 2003 documents from legacy Lao fonts to Unicode, and the fonts
// that such documents use. The library's own number of a failure stays on standard error, since
// people quote it; what it means comes behind it.
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <unistd.h>

#include "commands.h"
#include "messages.h"
#include "orvel.h"
#include "progress.h"
#include "runtime.h"

constexpr DWORD kCannotOpen = 926, kNoFontMap = 1003;
constexpr DWORD kMostFonts = 4096;

struct ConvertSettings {
    std::vector<std::string> files;
    std::string folder, map;
    bool hasFolder = false, hasMap = false, listsFonts = false;
};

struct ConvertState {
    Progress progress;
};
static ConvertState gConvert;

// ---- paths: as the library has them, a backslash counts as a slash ----

static size_t BaseStart(const std::string &path)
{
    bool hasDrive = path.size() > 1 && path[1] == ':';
    size_t slash = path.find_last_of("/\\");
    return slash != path.npos ? slash + 1 : hasDrive ? 2 : 0;
}

static std::string PlaceIn(const std::string &folder, const std::string &file)
{
    bool hasEnd = folder.find_last_of("/\\:") == folder.size() - 1;
    return folder + (hasEnd ? "" : "/") + file.substr(BaseStart(file));
}

static bool IsFolder(std::string path)
{
    std::error_code ignored;
    if (std::filesystem::path::preferred_separator == '/')
        std::replace(path.begin(), path.end(), '\\', '/');
    return std::filesystem::is_directory(
        std::filesystem::path(std::u8string(path.begin(), path.end())), ignored);
}

// ---- failures in words ----

struct FailureMeaning {
    DWORD first, last;
    const char *words;
};

// clang-format off
constexpr FailureMeaning kMeanings[] = {
    { 232,  288, "a tag of the document can't be read"},
    { 473,  519, "there is not enough memory"},
    { 938,  938, "there is not enough memory"},
    {1000, 1000, "the document ends inside a tag: a part of it is missing"},
    {1001, 1001, "a text of the document can't be converted"},
    {1002, 1002, "the new document can't be written whole"},
};
// clang-format on

static std::string ExplainSource(int reason)
{
    return reason ? strerror(reason) : "it can't be opened as a file";
}

static std::string ExplainDestination(const std::string &path)
{
    std::string folder = path.substr(0, BaseStart(path));
    bool hasFolder = folder.empty() || IsFolder(folder);
    return path + (hasFolder ? " can't be written to" : " can't be made: its folder isn't there");
}

static std::string ExplainOpening(const DocumentJob &job)
{
    errno = 0;
    FILE *source = OpenDocument(job.source);
    if (!source)
        return ExplainSource(errno);
    fclose(source);
    if (IsSameFile(job.source, job.destination))
        return "source and destination are one file";
    return ExplainDestination(job.destination);
}

static std::string ExplainFailure(DWORD failure, const DocumentJob &job)
{
    if (failure == kCannotOpen)
        return ExplainOpening(job);
    if (failure == kNoFontMap)
        return "the font map " + std::string(job.fontMap) + " can't be read or has no row";
    for (const FailureMeaning &row : kMeanings)
        if (failure >= row.first && failure <= row.last)
            return row.words;
    return "the document can't be converted";
}

// ---- the work on one document ----

static void WINAPI HearPercent(void *, DWORD percent)
{
    ShowProgress(&gConvert.progress, int(percent));
}

static Progress StartDocumentProgress(const char *source)
{
    int file = OpenUtf8Path(source);
    Progress progress = StartProgress(file, source, false);
    if (file >= 0)
        close(file);
    return progress;
}

// Notes and failures come as messages behind the source's name.
static DWORD RunJob(DocumentJob *job)
{
    gPlace.file = job->source;
    gConvert.progress = StartDocumentProgress(job->source);
    job->showPercent = HearPercent;
    DWORD failure = ConvertDocument(job);
    TellMessages();
    HideProgress();
    if (failure)
        fprintf(stderr, "%s: %s\n", job->source, ExplainFailure(failure, *job).c_str());
    return failure;
}

static DocumentJob JobFor(const ConvertSettings &settings, const std::string &source)
{
    DocumentJob job = {};
    job.size = sizeof job;
    job.source = source.c_str();
    job.fontMap = settings.hasMap ? settings.map.c_str() : nullptr;
    return job;
}

static DWORD ConvertOne(const ConvertSettings &settings, const std::string &source,
                        const std::string &destination)
{
    DocumentJob job = JobFor(settings, source);
    job.destination = destination.c_str();
    return RunJob(&job);
}

// ---- many into a folder ----

// The file system tells which names are one: it may not care for capitals, or know links.
static bool IsAmong(const std::vector<std::string> &written, const std::string &path)
{
    return std::any_of(written.begin(), written.end(), [&](const std::string &earlier) {
        return IsSameFile(path.c_str(), earlier.c_str());
    });
}

static int ConvertAll(const ConvertSettings &settings)
{
    std::vector<std::string> written;
    int worst = kDone;
    if (!IsFolder(settings.folder)) {
        fprintf(stderr, "orvel: there is no folder \"%s\"\n", settings.folder.c_str());
        return kNotDone;
    }
    for (const std::string &file : settings.files) {
        std::string destination = PlaceIn(settings.folder, file);
        if (IsAmong(written, destination)) {
            fprintf(stderr, "%s: not converted: %s is there from another one of these documents\n",
                    file.c_str(), destination.c_str());
            worst = kNotDone;
            continue;
        }
        DWORD failure = ConvertOne(settings, file, destination);
        if (failure == kNoFontMap)
            return kNotDone;  // it would be the same for all
        if (failure)
            worst = kNotDone;
        else
            written.push_back(destination);
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

static std::string DescribeFont(const std::string &file, const DocumentFont &font)
{
    std::string unicode = font.unicodeName;
    return file + "\t" + std::to_string(font.characters) + "\t" + PlainName(font.name) + "\t" +
           (unicode.empty() ? "(not in the font map)" : PlainName(unicode)) + "\n";
}

static int ListFontsOf(const ConvertSettings &settings, const std::string &file, DWORD *failure)
{
    std::vector<DocumentFont> fonts(kMostFonts);
    DocumentJob job = JobFor(settings, file);
    std::string text;
    job.fonts = fonts.data();
    job.fontRoom = kMostFonts;
    *failure = RunJob(&job);
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
    for (const std::string &file : settings.files) {
        worst = std::max(worst, ListFontsOf(settings, file, &failure));
        if (failure == kNoFontMap)
            break;  // it would be the same for all
    }
    return worst;
}

// ---- command line ----

static bool HasStandardStream(const std::vector<std::string> &files)
{
    return std::find(files.begin(), files.end(), "-") != files.end();
}

static int RefuseUsage(const char *why)
{
    fprintf(stderr, "orvel: %s\n", why);
    return kWrongUsage;
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
    if (settings.listsFonts)
        return ListFonts(settings);
    if (settings.hasFolder)
        return ConvertAll(settings);
    return ConvertOne(settings, settings.files[0], settings.files[1]) ? kNotDone : kDone;
}

void AddConvertCommand(CLI::App *app, Command *chosen)
{
    auto settings = std::make_shared<ConvertSettings>();
    CLI::App *convert =
        app->add_subcommand("convert", "turn documents in legacy Lao fonts into Unicode ones");
    convert
        ->add_option("files", settings->files,
                     "source and destination; with --to and --list-fonts all are sources")
        ->required();
    CLI::Option *folder =
        convert->add_option("--to", settings->folder, "the folder that the new documents go to");
    CLI::Option *map =
        convert->add_option("--map", settings->map,
                            "a file that says what each font is and becomes, like FontList.ini");
    convert
        ->add_flag("--list-fonts", settings->listsFonts,
                   "write nothing; tell the fonts of each document's text")
        ->excludes(folder);
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

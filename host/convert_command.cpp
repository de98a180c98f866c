// orvel convert: WordprocessingML 2003 documents from legacy Lao fonts to Unicode.
#include "commands.h"
#include "orvel.h"
#include "session.h"

struct ConvertSettings {
    std::vector<std::string> files;
    std::string folder;
};

static std::string BaseName(const std::string &path)
{
    size_t slash = path.find_last_of("/\\");
    return slash == path.npos ? path : path.substr(slash + 1);
}

// Notes and failures come as messages behind the source's name.
static int ConvertOne(const std::string &source, const std::string &destination)
{
    gMessages.file = source;
    return ConvertFile(source.c_str(), destination.c_str()) ? kNotDone : kDone;
}

static int ConvertAll(const ConvertSettings &settings)
{
    int worst = kDone;
    for (const std::string &file : settings.files)
        worst = std::max(worst, ConvertOne(file, settings.folder + "/" + BaseName(file)));
    return worst;
}

static int RunConvert(const ConvertSettings &settings)
{
    if (settings.folder.empty() && settings.files.size() != 2) {
        fprintf(stderr,
                "orvel: convert takes a source and a destination, or --to FOLDER and files\n");
        return kWrongUsage;
    }
    if (!StartLibrary())
        return kNotDone;
    if (settings.folder.empty())
        return ConvertOne(settings.files[0], settings.files[1]);
    return ConvertAll(settings);
}

void AddConvertCommand(CLI::App *app, Command *chosen)
{
    auto settings = std::make_shared<ConvertSettings>();
    CLI::App *convert =
        app->add_subcommand("convert", "turn documents in legacy Lao fonts into Unicode ones");
    convert
        ->add_option("files", settings->files, "source and destination; with --to all are sources")
        ->required();
    convert->add_option("--to", settings->folder, "the folder that the new documents go to");
    convert->footer("The documents are WordprocessingML 2003 (XML). A new document takes its place "
                    "when it is\nwhole; a failed conversion leaves what was there.\n"
                    "Example: orvel convert old.xml new.xml");
    convert->callback([=] { *chosen = [=] { return RunConvert(*settings); }; });
}

// orvel romanize: Lao text in Latin letters, line by line, since a repeat sign gives the last
// syllable of its own line again. Settings that the person gives hold for this run alone.
#include <map>

#include "commands.h"
#include "key_text.h"
#include "messages.h"
#include "table_file.h"
#include "text_font.h"

#include "orvel.h"

struct RomanizeSettings {
    std::string breaks, by, table;
    std::vector<std::string> files;
};

static const std::map<std::string, WORD> kBreaks = {
    {"none", kNoRomanBreak}, {"hidden", kHiddenRomanBreak}, {"visible", kVisibleRomanBreak}};
static const std::map<std::string, WORD> kModes = {{"syllable", kSyllableBreaks},
                                                   {"word", kWordBreaks}};

static int RunRomanize(const RomanizeSettings &settings)
{
    std::string font;
    if (!Start() || !ChooseTextFont(&font) || !LoadTable(settings.table, LoadRomanKey))
        return kNotDone;
    if (!settings.breaks.empty())
        SetOrvelOption("r", kBreaks.at(settings.breaks), 0);
    if (!settings.by.empty())
        SetOrvelOption("b", kModes.at(settings.by), 0);
    CodeTable codes = ReadCodeTable();
    KeyOperation operation = [&](const char *text, char *output, DWORD size) {
        return Romanize(text, output, size, font.c_str());
    };
    return ProcessLines(settings.files, [&](const TextPart &line, std::string *output) {
        return ConvertLine(codes, KeyForm::kText, operation, line.text, false, output);
    });
}

void AddRomanizeCommand(CLI::App *app, Command *chosen)
{
    auto settings = std::make_shared<RomanizeSettings>();
    CLI::App *romanize = app->add_subcommand("romanize", "write Lao in Latin letters");
    romanize
        ->add_option("--breaks", settings->breaks,
                     "none, hidden or visible (default: the option \"roman-breaks\")")
        ->check(CLI::IsMember({"none", "hidden", "visible"}));
    romanize->add_option("--by", settings->by, "syllable or word (default: the option \"breaks\")")
        ->check(CLI::IsMember({"syllable", "word"}));
    romanize->add_option("--table", settings->table, "a control file with another romanization");
    romanize->add_option("files", settings->files, "UTF-8 files; none or - reads standard input");
    romanize->footer("Example: orvel romanize --by word letter.txt");
    romanize->callback([=] { *chosen = [=] { return RunRomanize(*settings); }; });
}

// orvel romanize: Lao text in Latin letters.
#include <map>

#include "commands.h"
#include "key_text.h"
#include "session.h"
#include "table_file.h"

constexpr size_t kRoom = 40;  // bytes of a result for each byte of text, with whatever table

struct RomanizeSettings {
    std::string breaks, by, table;
    std::vector<std::string> files;
};

static const std::map<std::string, WORD> kBreaks = {{"none", 0}, {"hidden", 31}, {"visible", 32}};
static const std::map<std::string, WORD> kModes = {{"syllable", 4}, {"word", 8}};

static int RomanizeLine(const CodeTrace &trace, std::string_view line, KeyText *text,
                        std::string *output)
{
    ReadKeyText(trace, line, Hyphens::kText, false, text);
    text->result.assign(kRoom * text->code.size() + kRoom, 0);
    int done = Romanize(text->code.c_str(), text->result.data(), DWORD(text->result.size()),
                        trace.font.name.c_str());
    *output += done ? WriteKeyText(trace, *text, Hyphens::kText) : std::string(line);
    return done ? kDone : kNotDone;
}

static int RunRomanize(const RomanizeSettings &settings)
{
    CodeTrace trace;
    KeyText text;
    if (!StartLibrary() || !PrepareTrace(&trace) || !LoadTable(settings.table, SetRomanKey))
        return kNotDone;
    if (!settings.breaks.empty())
        SetOrvelOption("r", kBreaks.at(settings.breaks), 0);
    if (!settings.by.empty())
        SetOrvelOption("b", kModes.at(settings.by), 0);
    return ProcessLines(settings.files, [&](const TextPart &line, std::string *output) {
        return RomanizeLine(trace, line.text, &text, output);
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

// orvel wrap: writes break marks into Lao text and leaves every other byte as it came. The library
// says where chunks begin; the text itself never goes through it.
#include <map>

#include "commands.h"
#include "lao_text.h"
#include "messages.h"
#include "utf8.h"
#include "wrap_pages.h"

struct WrapSettings {
    std::string by;  // a name of kModes
    std::string mark{kZeroWidthSpace};
    std::vector<std::string> files;
    bool isHtml = false, usesWbr = false;
};

// Flags of DivideText; without one the user's option decides.
static const std::map<std::string, DWORD> kModes = {
    {"", 0}, {"syllable", kSyllableBreaks}, {"word", kWordBreaks}, {"both", kBothBreaks}};

static int RunWrap(const WrapSettings &settings)
{
    LaoText text;
    if (!Start())
        return kNotDone;
    DWORD flags = kInsertBreaks | kModes.at(settings.by);
    SetOrvelOption("d", WORD(GetOrvelOption("d") | kOldDictionary), 0);  // an old word is one too
    if (settings.isHtml) {
        if (!settings.by.empty())
            SetOrvelOption("b", WORD(kModes.at(settings.by)), 0);
        return WrapPages(settings.files, settings.usesWbr);
    }
    return ProcessParts(settings.files, [&](const TextPart &part, std::string *output) {
        if (DivideLaoText(part.text, flags, &text)) {
            AppendMarked(text, settings.mark, output);
            return kDone;
        }
        *output += part.text;  // what the library could not divide goes out as it came
        return kNotDone;
    });
}

void AddWrapCommand(CLI::App *app, Command *chosen)
{
    auto settings = std::make_shared<WrapSettings>();
    CLI::App *wrap =
        app->add_subcommand("wrap", "write a break mark at each word or syllable boundary");
    wrap->add_option("--by", settings->by,
                     "syllable, word or both (default: the option \"breaks\")")
        ->check(CLI::IsMember({"syllable", "word", "both"}));
    wrap->add_option("--mark", settings->mark,
                     "the mark's text (default: U+200B, which can't be seen)");
    CLI::Option *html = wrap->add_flag(
        "--html", settings->isHtml,
        "the text is HTML: tags, references, scripts, style sheets, <pre> and <code> stay as they "
        "are");
    wrap->add_flag("--wbr", settings->usesWbr, "with --html: <wbr> in place of U+200B")
        ->needs(html);
    html->excludes("--mark");
    wrap->add_option("files", settings->files, "UTF-8 files; none or - reads standard input");
    wrap->footer("Old U+200B are taken out; every other byte comes out as it came.\n"
                 "Example: orvel wrap --mark '|' letter.txt");
    wrap->callback([=] { *chosen = [=] { return RunWrap(*settings); }; });
}

// orvel email: Lao as ASCII, for where nothing else gets through, and back. Both ways are one road
// with another operation.
#include "commands.h"
#include "key_text.h"
#include "messages.h"
#include "text_font.h"

#include "orvel.h"

// One direction: the operation and what its results are.
struct EmailWay {
    int(WINAPI *run)(const char *text, char *output, DWORD size, const char *font, DWORD *state);
    KeyForm form;
};

constexpr EmailWay kEncoding = {EncodeEmail, KeyForm::kText};
constexpr EmailWay kDecoding = {DecodeEmail, KeyForm::kDecoded};

// Whether a Latin passage is open goes on from line to line, and from file to file.
static int RunEmail(const std::vector<std::string> &files, const EmailWay &way)
{
    std::string font;
    DWORD inBrackets = 0;
    if (!Start() || !ChooseTextFont(&font))
        return kNotDone;
    CodeTable codes = ReadCodeTable();
    KeyOperation operation = [&](const char *text, char *output, DWORD size) {
        return way.run(text, output, size, font.c_str(), &inBrackets);
    };
    return ProcessLines(files, [&](const TextPart &line, std::string *output) {
        return ConvertLine(codes, way.form, operation, line.text, inBrackets, output);
    });
}

void AddEmailCommand(CLI::App *app, Command *chosen)
{
    auto files = std::make_shared<std::vector<std::string>>();
    CLI::App *email = app->add_subcommand("email", "code Lao as ASCII, or back");
    email->require_subcommand(1);
    email->footer("Latin text stands between [ and ].\n"
                  "Example: orvel email encode letter.txt | orvel email decode");

    CLI::App *encode = email->add_subcommand("encode", "UTF-8 to ASCII");
    encode->add_option("files", *files, "UTF-8 files; none or - reads standard input");
    encode->footer("Example: orvel email encode letter.txt > letter.ascii");
    encode->callback([=] { *chosen = [=] { return RunEmail(*files, kEncoding); }; });

    CLI::App *decode =
        email->add_subcommand("decode", "coded text to UTF-8, a U+200B at each break");
    decode->add_option("files", *files, "coded files; none or - reads standard input");
    decode->footer("Example: orvel email decode letter.ascii");
    decode->callback([=] { *chosen = [=] { return RunEmail(*files, kDecoding); }; });
}

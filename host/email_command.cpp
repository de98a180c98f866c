// orvel email: Lao as ASCII, for where nothing else gets through, and back.
#include "commands.h"
#include "key_text.h"
#include "session.h"

constexpr size_t kEncodeRoom = 40, kDecodeRoom = 4;  // bytes of a result for each byte of text

struct EmailState {
    CodeTrace trace;
    KeyText text;
    DWORD inBrackets;  // goes on from line to line, and from file to file
};

static int EncodeLine(EmailState *state, std::string_view line, std::string *output)
{
    KeyText &text = state->text;
    ReadKeyText(state->trace, line, Hyphens::kText, false, &text);
    text.result.assign(kEncodeRoom * text.code.size() + kEncodeRoom, 0);
    int done = EncodeEmail(text.code.c_str(), text.result.data(), DWORD(text.result.size()),
                           state->trace.font.name.c_str(), &state->inBrackets);
    *output += done ? WriteKeyText(state->trace, text, Hyphens::kText) : std::string(line);
    return done ? kDone : kNotDone;
}

static int DecodeLine(EmailState *state, std::string_view line, std::string *output)
{
    KeyText &text = state->text;
    ReadKeyText(state->trace, line, Hyphens::kSeparators, state->inBrackets, &text);
    text.result.assign(kDecodeRoom * text.code.size() + kDecodeRoom, 0);
    int done = DecodeEmail(text.code.c_str(), text.result.data(), DWORD(text.result.size()),
                           state->trace.font.name.c_str(), &state->inBrackets);
    *output += done ? WriteKeyText(state->trace, text, Hyphens::kSeparators) : std::string(line);
    return done ? kDone : kNotDone;
}

static int RunEmail(const std::vector<std::string> &files,
                    int (*work)(EmailState *, std::string_view, std::string *))
{
    EmailState state = {};
    if (!StartLibrary() || !PrepareTrace(&state.trace))
        return kNotDone;
    return ProcessLines(files, [&](const TextPart &line, std::string *output) {
        return work(&state, line.text, output);
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
    encode->callback([=] { *chosen = [=] { return RunEmail(*files, EncodeLine); }; });

    CLI::App *decode =
        email->add_subcommand("decode", "coded text to UTF-8, a U+200B at each break");
    decode->add_option("files", *files, "coded files; none or - reads standard input");
    decode->footer("Example: orvel email decode letter.ascii");
    decode->callback([=] { *chosen = [=] { return RunEmail(*files, DecodeLine); }; });
}

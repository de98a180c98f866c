// orvel check: names the stretches that can't be divided, which are mostly misspelt, and the old
// spellings.
#include "codes.h"
#include "commands.h"
#include "lao_text.h"
#include "messages.h"
#include "suggestions.h"
#include "utf8.h"

constexpr DWORD kInsertBoth = kInsertBreaks | kBothBreaks;
constexpr size_t kModernSize = 256;  // bytes, of a modern spelling with its terminator

// A place that walks forward through the lines of a text.
struct LinePlace {
    size_t line, column;  // columns in characters, from 1
    size_t at;            // in the text, in bytes
};

// Columns count what the person sees and what an editor counts: old break marks too.
static void Advance(LinePlace *place, std::string_view source, size_t to)
{
    while (place->at < to) {
        bool isLineEnd = source[place->at] == '\n';
        place->line += isLineEnd;
        place->column = isLineEnd ? 1 : place->column + 1;
        place->at += CharacterSize(source.substr(place->at));
    }
}

static std::string ModernSpelling(const CodeTable &codes, const std::string &word)
{
    char modern[kModernSize];
    if (!FindOldWord(word.c_str(), modern, sizeof modern))
        return {};
    return TextOfCode(codes, modern);
}

// A repeat sign or ellipsis goes with a word but isn't in the dictionary.
static std::string DescribeOldWord(const CodeTable &codes, const std::string &word)
{
    std::string code = CodeOfWord(codes, word), modern = ModernSpelling(codes, code), sign;
    if (modern.empty() && !code.empty()) {
        sign = TextOfCode(codes, code.substr(code.size() - 1));
        code.pop_back();
        modern = ModernSpelling(codes, code);
    }
    return "old spelling: " + word + " -> " + modern + sign;
}

// The chunk between its neighbours, so that a person sees the word; a mark where the run goes on.
static std::string Surroundings(const LaoText &text, size_t number)
{
    std::span<const LaoChunk> chunks = text.chunks;
    auto isJoined = [&](size_t i) { return i < chunks.size() && chunks[i].hasBreak; };
    std::string around = ChunkText(text, chunks[number]);
    if (isJoined(number))
        around = (isJoined(number - 1) ? "…" : "") + ChunkText(text, chunks[number - 1]) + around;
    if (isJoined(number + 1))
        around += ChunkText(text, chunks[number + 1]) + (isJoined(number + 2) ? "…" : "");
    return around;
}

static std::string DescribeBadStretch(const LaoText &text, size_t number, bool isHelped)
{
    std::string bad = ChunkText(text, text.chunks[number]);
    std::string around = Surroundings(text, number), line = "bad spelling: " + bad;
    if (around != bad)
        line += " in " + around;
    const char *lead = "; perhaps ";
    for (const std::string &word :
         isHelped ? SuggestWords(text, number) : std::vector<std::string>{}) {
        line += lead + word;
        lead = ", ";
    }
    return line;
}

struct CheckSettings {
    bool isHelped = false;  // --suggest
    std::vector<std::string> files;
    CodeTable codes;
};

static int ReportChunks(const CheckSettings &settings, const LaoText &text, LinePlace place,
                        std::string *output)
{
    int status = kDone;
    for (size_t i = 0; i < text.chunks.size(); ++i) {
        const LaoChunk &chunk = text.chunks[i];
        if (chunk.kind != kBadStretch && chunk.kind != kOldWord)
            continue;
        Advance(&place, text.source, chunk.start);
        *output +=
            gPlace.file + ":" + std::to_string(place.line) + ":" + std::to_string(place.column) +
            ": " +
            (chunk.kind == kBadStretch ? DescribeBadStretch(text, i, settings.isHelped)
                                       : DescribeOldWord(settings.codes, ChunkText(text, chunk))) +
            "\n";
        status = kNotDone;
    }
    return status;
}

// Old spellings are looked for whatever the option says: they are what this command is asked for.
static int RunCheck(CheckSettings *settings)
{
    LaoText text;
    if (!Start())
        return kNotDone;
    settings->codes = ReadCodeTable();
    SetOrvelOption("d", WORD(GetOrvelOption("d") | kOldDictionary), 0);
    return ProcessParts(settings->files, [&](const TextPart &part, std::string *output) {
        std::string_view source = WithoutByteOrderMark(part);
        if (!DivideLaoText(source, kInsertBoth, &text))
            return int(kNotDone);
        return ReportChunks(*settings, text, {part.line, part.column, 0}, output);
    });
}

void AddCheckCommand(CLI::App *app, Command *chosen)
{
    auto settings = std::make_shared<CheckSettings>();
    CLI::App *check = app->add_subcommand("check", "report bad and old spellings");
    check->add_flag("--suggest", settings->isHelped, "up to five words that may have been meant");
    check->add_option("files", settings->files, "UTF-8 files; none or - reads standard input");
    check->footer("A line for each: file:line:column: bad spelling: TEXT in SURROUNDINGS, or\n"
                  "old spelling: TEXT -> MODERN. Exit status 1 when there is any.\n"
                  "Example: orvel check --suggest letter.txt");
    check->callback([=] { *chosen = [=] { return RunCheck(settings.get()); }; });
}

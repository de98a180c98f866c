// orvel check: names the stretches that can't be divided, which are mostly misspelt, and the old
// spellings.
#include "commands.h"
#include "lao_text.h"
#include "utf8.h"

constexpr DWORD kInsertBoth = 1 | 12;
constexpr WORD kOldSpellings = 2;

// A place that walks forward through the lines of a text.
struct LinePlace {
    size_t line, column;  // columns in characters, from 1
    size_t at;            // in LaoText::clean
    size_t removed;       // old break marks passed, which count as characters of the line
};

static void PassOldBreaks(LinePlace *place, const LaoText &text)
{
    while (place->removed < text.removed.size() && text.removed[place->removed] <= place->at) {
        ++place->removed;
        ++place->column;
    }
}

static void Advance(LinePlace *place, const LaoText &text, size_t to)
{
    PassOldBreaks(place, text);
    while (place->at < to) {
        bool isLineEnd = text.clean[place->at] == '\n';
        place->line += isLineEnd;
        place->column = isLineEnd ? 1 : place->column + 1;
        place->at += CharacterSize(std::string_view(text.clean).substr(place->at));
        PassOldBreaks(place, text);
    }
}

static std::string ModernSpelling(const CodeTrace &trace, const std::string &word)
{
    char modern[256];
    if (!FindOldWord(word.c_str(), modern, sizeof modern))
        return {};
    return Utf8FromCode(trace, modern);
}

static std::string ChunkText(const LaoText &text, const Chunk &chunk)
{
    return text.clean.substr(chunk.start, chunk.end - chunk.start);
}

// A repeat sign or ellipsis goes with a word but isn't in the dictionary.
static std::string DescribeOldWord(const CodeTrace &trace, const LaoText &text, const Chunk &chunk)
{
    std::string word = text.code.substr(chunk.codeStart, chunk.codeEnd - chunk.codeStart);
    std::string modern = ModernSpelling(trace, word), sign;
    if (modern.empty()) {
        sign = Utf8FromCode(trace, word.substr(word.size() - 1));
        word.pop_back();
        modern = ModernSpelling(trace, word);
    }
    return "old spelling: " + ChunkText(text, chunk) + " -> " + modern + sign;
}

static std::string DescribeChunk(const CodeTrace &trace, const LaoText &text, const Chunk &chunk)
{
    if (chunk.kind == kBadChunk)
        return "bad spelling: " + ChunkText(text, chunk);
    return chunk.kind == kOldWordChunk ? DescribeOldWord(trace, text, chunk) : "";
}

static std::string NamePlace(const LinePlace &place)
{
    return gMessages.file + ":" + std::to_string(place.line) + ":" + std::to_string(place.column);
}

static int ReportChunks(const CodeTrace &trace, const LaoText &text, LinePlace place,
                        std::string *output)
{
    int status = kDone;
    for (const Chunk &chunk : text.chunks) {
        std::string what = DescribeChunk(trace, text, chunk);
        if (what.empty())
            continue;
        Advance(&place, text, chunk.start);
        *output += NamePlace(place) + ": " + what + "\n";
        status = kNotDone;
    }
    return status;
}

// Old spellings are looked for whatever the option says: they are what this command is asked for.
static int RunCheck(const std::vector<std::string> &files)
{
    CodeTrace trace;
    LaoText text;
    if (!StartLibrary() || !PrepareTrace(&trace))
        return kNotDone;
    SetOrvelOption("d", WORD(GetOrvelOption("d") | kOldSpellings), 0);
    return ProcessParts(files, [&](const TextPart &part, std::string *output) {
        if (!DivideLaoText(trace, WithoutByteOrderMark(part), kInsertBoth, &text))
            return int(kNotDone);
        return ReportChunks(trace, text, {part.line, part.column, 0, 0}, output);
    });
}

void AddCheckCommand(CLI::App *app, Command *chosen)
{
    auto files = std::make_shared<std::vector<std::string>>();
    CLI::App *check = app->add_subcommand("check", "report bad and old spellings");
    check->add_option("files", *files, "UTF-8 files; none or - reads standard input");
    check->footer(
        "A line for each: file:line:column: bad spelling: TEXT, or old spelling: TEXT -> MODERN.\n"
        "Exit status 1 when there is any.\n"
        "Example: orvel check letter.txt");
    check->callback([=] { *chosen = [=] { return RunCheck(*files); }; });
}

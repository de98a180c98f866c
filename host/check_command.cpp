// orvel check: names the stretches that can't be divided, which are mostly misspelt, and the old
// spellings.
#include "codes.h"
#include "commands.h"
#include "lao_text.h"
#include "messages.h"
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

static std::string DescribeChunk(const CodeTable &codes, BYTE kind, const std::string &text)
{
    return kind == kBadStretch ? "bad spelling: " + text : DescribeOldWord(codes, text);
}

static int ReportChunks(const CodeTable &codes, std::string_view source, const LaoText &text,
                        LinePlace place, std::string *output)
{
    int status = kDone;
    for (const LaoChunk &chunk : text.chunks) {
        if (chunk.kind != kBadStretch && chunk.kind != kOldWord)
            continue;
        Advance(&place, source, text.starts[chunk.start]);
        *output += gPlace.file + ":" + std::to_string(place.line) + ":" +
                   std::to_string(place.column) + ": " +
                   DescribeChunk(codes, chunk.kind, ChunkText(source, text, chunk)) + "\n";
        status = kNotDone;
    }
    return status;
}

// Old spellings are looked for whatever the option says: they are what this command is asked for.
static int RunCheck(const std::vector<std::string> &files)
{
    LaoText text;
    if (!Start())
        return kNotDone;
    CodeTable codes = ReadCodeTable();
    SetOrvelOption("d", WORD(GetOrvelOption("d") | kOldDictionary), 0);
    return ProcessParts(files, [&](const TextPart &part, std::string *output) {
        std::string_view source = WithoutByteOrderMark(part);
        if (!DivideLaoText(source, kInsertBoth, &text))
            return int(kNotDone);
        return ReportChunks(codes, source, text, {part.line, part.column, 0}, output);
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

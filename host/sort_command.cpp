// orvel sort: lines in Lao order, by keys of the library.
#include <algorithm>

#include "commands.h"
#include "key_text.h"
#include "session.h"
#include "table_file.h"

constexpr size_t kKeyRoom = 40;  // bytes of a key for each byte of text, with whatever table

struct SortSettings {
    bool isNatural = false, isReverse = false, isUnique = false, showsKeys = false;
    std::string table;
    std::vector<std::string> files;
};

struct SortLine {
    std::string key, line;
    std::string file;  // where it comes from
    size_t number;
};

// False when the library could not make a whole key; it has shown a message.
static bool MakeKey(const CodeTrace &trace, std::string_view line, KeyText *text, std::string *key)
{
    ReadKeyText(trace, line, Hyphens::kText, false, text);
    text->result.assign(kKeyRoom * text->code.size() + kKeyRoom, 0);
    int done = SortString(text->code.c_str(), text->result.data(), DWORD(text->result.size()),
                          trace.font.name.c_str());
    *key = WriteKeyText(trace, *text, Hyphens::kText);
    return done;
}

static std::string_view WithoutEnd(std::string_view line)
{
    return line.ends_with('\n') ? line.substr(0, line.size() - 1) : line;
}

static int ReadLines(const SortSettings &settings, std::vector<SortLine> *lines)
{
    return ProcessLines(settings.files, [&](const TextPart &part, std::string *) {
        bool goesOn = part.column > 1;  // the line is longer than a part
        if (!goesOn)
            lines->push_back({"", "", gMessages.file, part.line});
        lines->back().line += WithoutEnd(WithoutByteOrderMark(part));
        return int(kDone);
    });
}

static int MakeKeys(const CodeTrace &trace, std::vector<SortLine> *lines)
{
    KeyText text;
    int worst = kDone;
    for (SortLine &line : *lines) {
        gMessages.file = line.file;
        gMessages.line = line.number;
        if (!MakeKey(trace, line.line, &text, &line.key))
            worst = kNotDone;
    }
    gMessages.line = 0;
    return worst;
}

static bool IsBefore(const SortLine &one, const SortLine &other)
{
    return one.key < other.key;
}

// Lines with one key keep their order, whichever way the list goes.
static void SortLines(const SortSettings &settings, std::vector<SortLine> *lines)
{
    if (settings.isReverse)
        std::stable_sort(
            lines->begin(), lines->end(),
            [](const SortLine &one, const SortLine &other) { return IsBefore(other, one); });
    else
        std::stable_sort(lines->begin(), lines->end(), IsBefore);
}

// Of equal lines the first stays. Lines of one key that are spelt differently are no doubles.
static void DropDoubles(std::vector<SortLine> *lines)
{
    std::vector<SortLine> kept;
    size_t group = 0;  // where the lines of the current key begin in kept
    for (SortLine &line : *lines) {
        if (kept.empty() || kept.back().key != line.key)
            group = kept.size();
        auto begin = kept.begin() + ptrdiff_t(group);
        if (std::none_of(begin, kept.end(),
                         [&](const SortLine &one) { return one.line == line.line; }))
            kept.push_back(std::move(line));
    }
    *lines = std::move(kept);
}

static int RunSort(const SortSettings &settings)
{
    CodeTrace trace;
    std::vector<SortLine> lines;
    if (!StartLibrary() || !PrepareTrace(&trace) || !LoadTable(settings.table, SetSortKey))
        return kNotDone;
    SetOrvelOption("s", settings.isNatural, 0);
    int worst = ReadLines(settings, &lines);
    worst = std::max(worst, MakeKeys(trace, &lines));
    SortLines(settings, &lines);
    if (settings.isUnique)
        DropDoubles(&lines);
    std::string output;
    for (const SortLine &line : lines)
        output += (settings.showsKeys ? line.key + "\t" : "") + line.line + "\n";
    return std::max(worst, WriteOutput(output));
}

void AddSortCommand(CLI::App *app, Command *chosen)
{
    auto settings = std::make_shared<SortSettings>();
    CLI::App *sort = app->add_subcommand("sort", "sort lines in Lao order");
    sort->add_flag("--natural", settings->isNatural, "vowels before finals (default: vowels last)");
    sort->add_flag("--reverse", settings->isReverse, "from the last to the first");
    sort->add_flag("--unique", settings->isUnique, "of equal lines print one");
    sort->add_flag("--keys", settings->showsKeys, "print each line's key and a tab in front of it");
    sort->add_option("--table", settings->table, "a control file with another order");
    sort->add_option("files", settings->files, "UTF-8 files; none or - reads standard input");
    sort->footer("Lines that have the same key keep their order.\n"
                 "Example: orvel sort words.txt");
    sort->callback([=] { *chosen = [=] { return RunSort(*settings); }; });
}

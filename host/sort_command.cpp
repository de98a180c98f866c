// orvel sort: lines in Lao order. All lines are read, each gets the library's sort key, and the
// order of the keys' bytes is the order of the lines: the one that any other host gets.
#include <algorithm>
#include <unordered_set>

#include "commands.h"
#include "key_text.h"
#include "messages.h"
#include "session.h"
#include "table_file.h"
#include "text_font.h"

#include "orvel.h"

struct SortSettings {
    bool isNatural = false, isReverse = false, isUnique = false, showsKeys = false;
    std::string table;
    std::vector<std::string> files;
};

struct SortLine {
    std::string key;  // bytes, as the library gives them to any host: their order is the order
    std::string line;
    const std::string *file;  // where it comes from; one of the set that RunSort keeps
    size_t number;            // of the line there, from 1
};

// What makes keys: the library's operation and what it is asked with.
struct KeyMaker {
    CodeTable codes;
    KeyOperation operation;
};

static std::string_view WithoutEnd(std::string_view line)
{
    return line.ends_with('\n') ? line.substr(0, line.size() - 1) : line;
}

static int ReadLines(const SortSettings &settings, std::vector<SortLine> *lines,
                     std::unordered_set<std::string> *files)
{
    return ProcessLines(settings.files, [&](const TextPart &part, std::string *) {
        bool goesOn = part.column > 1;  // the line is longer than a part
        if (!goesOn)
            lines->push_back({"", "", &*files->insert(gPlace.file).first, part.line});
        lines->back().line += WithoutEnd(WithoutByteOrderMark(part));
        return int(kDone);
    });
}

static int MakeKeys(const KeyMaker &maker, std::vector<SortLine> *lines)
{
    int worst = kDone;
    for (SortLine &line : *lines) {
        gPlace = {*line.file, line.number};
        if (!ConvertKeyText(maker.codes, KeyForm::kKey, maker.operation, line.line, false,
                            &line.key))
            worst = kNotDone;
        if (TellMessages())
            worst = kNotDone;
    }
    gPlace.line = 0;
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
    std::unordered_set<std::string> seen;  // of the current key
    std::vector<SortLine> kept;
    for (SortLine &line : *lines) {
        if (!kept.empty() && kept.back().key != line.key)
            seen.clear();
        if (seen.insert(line.line).second)
            kept.push_back(std::move(line));
    }
    *lines = std::move(kept);
}

static std::string ShownLine(const SortSettings &settings, const KeyMaker &maker,
                             const SortLine &line)
{
    std::string text;
    if (settings.showsKeys) {
        ConvertKeyText(maker.codes, KeyForm::kShownKey, maker.operation, line.line, false, &text);
        text += '\t';
    }
    return text + line.line + "\n";
}

static int WriteLines(const SortSettings &settings, const KeyMaker &maker,
                      const std::vector<SortLine> &lines)
{
    constexpr size_t kBlock = 1 << 20;  // bytes that are written at once
    std::string output;
    for (const SortLine &line : lines) {
        output += ShownLine(settings, maker, line);
        if (output.size() < kBlock)
            continue;
        if (WriteOutput(output))
            return kNotDone;
        output.clear();
    }
    TakeMessages();  // of keys that are shown: they were told before
    return WriteOutput(output);
}

static int RunSort(const SortSettings &settings)
{
    std::vector<SortLine> lines;
    std::unordered_set<std::string> files;
    std::string font;
    if (!Start() || !ChooseTextFont(&font) || !LoadTable(settings.table, LoadSortKey))
        return kNotDone;
    SetOrvelOption("s", settings.isNatural ? kNaturalSort : kVowelsLastSort, 0);
    KeyMaker maker = {ReadCodeTable(), [&](const char *text, char *key, DWORD size) {
                          return SortString(text, key, size, font.c_str());
                      }};
    int worst = ReadLines(settings, &lines, &files);
    worst = std::max(worst, MakeKeys(maker, &lines));
    SortLines(settings, &lines);
    if (settings.isUnique)
        DropDoubles(&lines);
    return std::max(worst, WriteLines(settings, maker, lines));
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

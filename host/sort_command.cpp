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
    uint64_t start[2];      // the key's first bytes as numbers, which decide most comparisons
    size_t key, keySize;    // in the keys: bytes as the library gives them to any host, whose order
                            // is the order of the lines
    size_t line, lineSize;  // in the text
    const std::string *file;  // where it comes from; one of the list's
    size_t number;            // of the line there, from 1
};

// All lines, in the order in which they were read, then in that of their keys.
struct SortList {
    std::vector<SortLine> lines;
    std::string text, keys;  // one behind the other
    std::unordered_set<std::string> files;
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

static std::string_view TextOf(const SortList &list, const SortLine &line)
{
    return std::string_view(list.text).substr(line.line, line.lineSize);
}

static std::string_view KeyOf(const SortList &list, const SortLine &line)
{
    return std::string_view(list.keys).substr(line.key, line.keySize);
}

static int ReadLines(const SortSettings &settings, SortList *list)
{
    return ProcessLines(settings.files, [list](const TextPart &part, std::string *) {
        bool goesOn = part.column > 1;  // the line is longer than a part
        if (!goesOn) {
            SortLine line = {};
            line.line = list->text.size();
            line.file = &*list->files.insert(gPlace.file).first;
            line.number = part.line;
            list->lines.push_back(line);
        }
        list->text += WithoutEnd(WithoutByteOrderMark(part));
        list->lines.back().lineSize = list->text.size() - list->lines.back().line;
        return int(kDone);
    });
}

// Eight bytes from a place of the key on, zeros behind its end, as a number of the same order.
static uint64_t NumberAt(std::string_view key, size_t place)
{
    uint64_t number = 0;
    for (size_t i = place; i < place + 8; ++i)
        number = number << 8 | (i < key.size() ? uint8_t(key[i]) : 0u);
    return number;
}

static bool MakeKey(const KeyMaker &maker, SortList *list, SortLine *line)
{
    line->key = list->keys.size();
    bool isDone = ConvertKeyText(maker.codes, KeyForm::kKey, maker.operation, TextOf(*list, *line),
                                 false, &list->keys);
    line->keySize = list->keys.size() - line->key;
    for (size_t i = 0; i < std::size(line->start); ++i)
        line->start[i] = NumberAt(KeyOf(*list, *line), 8 * i);
    return isDone;
}

static int MakeKeys(const KeyMaker &maker, SortList *list)
{
    int worst = kDone;
    for (SortLine &line : list->lines) {
        gPlace.line = line.number;
        if (gPlace.file != *line.file)
            gPlace.file = *line.file;
        if (!MakeKey(maker, list, &line))
            worst = kNotDone;
        if (TellMessages())
            worst = kNotDone;
    }
    gPlace.line = 0;
    return worst;
}

static bool IsBefore(const SortList &list, const SortLine &one, const SortLine &other)
{
    for (size_t i = 0; i < std::size(one.start); ++i)
        if (one.start[i] != other.start[i])
            return one.start[i] < other.start[i];
    return KeyOf(list, one) < KeyOf(list, other);
}

// Lines with one key keep their order, whichever way the list goes.
static void SortLines(const SortSettings &settings, SortList *list)
{
    std::stable_sort(
        list->lines.begin(), list->lines.end(), [&](const SortLine &one, const SortLine &other) {
            return settings.isReverse ? IsBefore(*list, other, one) : IsBefore(*list, one, other);
        });
}

// Of equal lines the first stays. Lines of one key that are spelt differently are no doubles.
static void DropDoubles(SortList *list)
{
    std::unordered_set<std::string_view> seen;  // of the current key
    std::vector<SortLine> kept;
    for (const SortLine &line : list->lines) {
        if (!kept.empty() && KeyOf(*list, kept.back()) != KeyOf(*list, line))
            seen.clear();
        if (seen.insert(TextOf(*list, line)).second)
            kept.push_back(line);
    }
    list->lines = std::move(kept);
}

static void AppendLine(const SortSettings &settings, const KeyMaker &maker, std::string_view line,
                       std::string *output)
{
    if (settings.showsKeys) {
        ConvertKeyText(maker.codes, KeyForm::kShownKey, maker.operation, line, false, output);
        *output += '\t';
    }
    *output += line;
    *output += '\n';
}

static int WriteLines(const SortSettings &settings, const KeyMaker &maker, const SortList &list)
{
    constexpr size_t kBlock = 1 << 20;  // bytes that are written at once
    std::string output;
    for (const SortLine &line : list.lines) {
        AppendLine(settings, maker, TextOf(list, line), &output);
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
    SortList list;
    std::string font;
    if (!Start() || !ChooseTextFont(&font) || !LoadTable(settings.table, LoadSortKey))
        return kNotDone;
    SetOrvelOption("s", settings.isNatural ? kNaturalSort : kVowelsLastSort, 0);
    KeyMaker maker = {ReadCodeTable(), [&](const char *text, char *key, DWORD size) {
                          return SortString(text, key, size, font.c_str());
                      }};
    int worst = ReadLines(settings, &list);
    worst = std::max(worst, MakeKeys(maker, &list));
    SortLines(settings, &list);
    if (settings.isUnique)
        DropDoubles(&list);
    return std::max(worst, WriteLines(settings, maker, list));
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

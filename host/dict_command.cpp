// orvel dict: the user's own words.
#include "commands.h"
#include "lao_text.h"
#include "session.h"

constexpr int kUserDictionary = 4;
constexpr int kWordSize = 256;
constexpr size_t kLongestSought = 15;  // bytes of a word that breaks are made by
enum AddResult { kAdded, kTooShort, kThereAlready };

typedef int (*WordAction)(const CodeTrace &trace, const std::string &word);

static int Refuse(const std::string &word, const char *why)
{
    if (gMessages.line)
        fprintf(stderr, "%s:%zu: %s: %s\n", gMessages.file.c_str(), gMessages.line, word.c_str(),
                why);
    else
        fprintf(stderr, "orvel: %s: %s\n", word.c_str(), why);
    return kNotDone;
}

// The internal code of a word; empty when it isn't Lao from end to end.
static std::string CodeOfWord(const CodeTrace &trace, const std::string &word)
{
    LaoText text;
    ReadLaoText(trace, word, &text);
    for (char code : text.packed)
        if (!IsLaoCode(code))
            return {};
    return text.packed;
}

// Added all the same: other programs may find it.
static int WarnOfLength(const std::string &word)
{
    Refuse(word, "it is added, but breaks are made by words of at most 15 signs");
    return kDone;
}

static int AddOneWord(const CodeTrace &trace, const std::string &word)
{
    std::string code = CodeOfWord(trace, word);
    if (code.empty())
        return Refuse(word, "a word has Lao letters alone");
    switch (AddUserWord(code.c_str())) {
    case kAdded: return code.size() > kLongestSought ? WarnOfLength(word) : int(kDone);
    case kTooShort: return Refuse(word, "a word has at least two characters");
    case kThereAlready: return Refuse(word, "it is in the user dictionary already");
    default: return Refuse(word, "it could not be saved");
    }
}

static int DeleteOneWord(const CodeTrace &trace, const std::string &word)
{
    std::string code = CodeOfWord(trace, word);
    if (!code.empty() && DeleteUserWord(code.c_str()) == 0)
        return kDone;
    return Refuse(word, "it isn't in the user dictionary, or the dictionary could not be saved");
}

// Who has words of their own wants them used.
static void SwitchDictionaryOn()
{
    WORD dictionaries = GetOrvelOption("d");
    if (dictionaries & kUserDictionary)
        return;
    SetOrvelOption("d", WORD(dictionaries | kUserDictionary), 1);
    fprintf(stderr, "orvel: the user dictionary is on from now (option dictionaries)\n");
}

static int RunWords(const std::vector<std::string> &words, WordAction action)
{
    CodeTrace trace;
    if (!StartLibrary() || !PrepareTrace(&trace))
        return kNotDone;
    int worst = kDone;
    for (const std::string &word : words)
        worst = std::max(worst, action(trace, word));
    if (action == AddOneWord && CountUserWords() > 0)
        SwitchDictionaryOn();
    return worst;
}

static int ListWords()
{
    CodeTrace trace;
    if (!StartLibrary() || !PrepareTrace(&trace))
        return kNotDone;
    std::string text;
    char word[kWordSize];
    CountUserWords();  // loads them; the count itself ends at 65535
    for (int number = 1; GetWord(word, sizeof word, number, kUserDictionary); ++number)
        text += Utf8FromCode(trace, word) + "\n";
    return WriteOutput(text);
}

static std::string_view TrimLine(std::string_view line)
{
    line = line.substr(0, line.find('#'));
    size_t start = line.find_first_not_of(" \t\r\n");
    if (start == line.npos)
        return {};
    return line.substr(start, line.find_last_not_of(" \t\r\n") + 1 - start);
}

// What goes on from a part of a line is no word: it may be the end of a long comment.
static std::string_view WordOfLine(const TextPart &line)
{
    return line.column > 1 ? std::string_view() : TrimLine(WithoutByteOrderMark(line));
}

static int ImportWords(const std::string &file)
{
    CodeTrace trace;
    if (!StartLibrary() || !PrepareTrace(&trace))
        return kNotDone;
    int status = ProcessLines({file}, [&](const TextPart &line, std::string *) {
        std::string_view word = WordOfLine(line);
        return word.empty() ? int(kDone) : AddOneWord(trace, std::string(word));
    });
    if (CountUserWords() > 0)
        SwitchDictionaryOn();
    return status;
}

void AddDictCommand(CLI::App *app, Command *chosen)
{
    auto words = std::make_shared<std::vector<std::string>>();
    auto file = std::make_shared<std::string>();
    CLI::App *dict = app->add_subcommand("dict", "list and change the user dictionary");
    dict->require_subcommand(1);
    dict->footer("Example: orvel dict add ວຽງຈັນ");

    CLI::App *list = dict->add_subcommand("list", "the user's words in Lao order, one a line");
    list->footer("Example: orvel dict list > words.txt");
    list->callback([=] { *chosen = ListWords; });

    CLI::App *add = dict->add_subcommand("add", "add words");
    add->add_option("words", *words, "Lao words")->required();
    add->footer("Example: orvel dict add ວຽງຈັນ");
    add->callback([=] { *chosen = [=] { return RunWords(*words, AddOneWord); }; });

    CLI::App *remove = dict->add_subcommand("delete", "delete words");
    remove->add_option("words", *words, "Lao words")->required();
    remove->footer("Example: orvel dict delete ວຽງຈັນ");
    remove->callback([=] { *chosen = [=] { return RunWords(*words, DeleteOneWord); }; });

    CLI::App *importer = dict->add_subcommand(
        "import", "add all words of a UTF-8 file, one a line, # begins a comment");
    importer->add_option("file", *file, "the file; - reads standard input")->required();
    importer->footer("Example: orvel dict import words.txt");
    importer->callback([=] { *chosen = [=] { return ImportWords(*file); }; });
}

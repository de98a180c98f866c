// orvel dict: the user's own words. They stand in UserDict.dat, which the companion keeps; here
// words become internal code and results become sentences.
#include "codes.h"
#include "commands.h"
#include "messages.h"
#include "session.h"

#include "orvel.h"

constexpr int kWordSize = 256;         // bytes, terminator included
constexpr size_t kLongestSought = 15;  // bytes of a word that breaks are made by

// A word that is to be added or deleted, and where in a file it stands.
struct GivenWord {
    std::string text;
    size_t line;  // 0: on the command line
};

static int Refuse(const GivenWord &word, const std::string &why)
{
    gPlace.line = word.line;
    TellHere(word.text + ": " + why);
    return kNotDone;
}

static int TellAdded(const GivenWord &word, int result, size_t length)
{
    switch (result) {
    case kWordAdded: break;
    case kWordTooShort: return Refuse(word, "a word has at least two characters");
    case kWordThereAlready: return Refuse(word, "it is in the user dictionary already");
    default: return Refuse(word, "it is not added: " + DescribeUnsaved("UserDict.dat"));
    }
    if (length > kLongestSought)  // added all the same: other programs may find it
        Refuse(word, "it is added, but breaks are made by words of at most 15 signs");
    return kDone;
}

// Who has words of their own wants them used.
static int SwitchDictionaryOn()
{
    WORD dictionaries = GetOrvelOption("d");
    if (dictionaries & kUserDictionary)
        return kDone;
    if (!SetOrvelOption("d", WORD(dictionaries | kUserDictionary), 1))
        return Tell("the user dictionary stays off: " + DescribeUnsavedOptions(), kNotDone);
    return Tell("the user dictionary is on from now (option dictionaries)", kDone);
}

// All words in one go: the dictionary is read and written once, however many there are.
static int AddWordsNow(const std::vector<GivenWord> &words)
{
    CodeTable codes = ReadCodeTable();
    std::vector<std::string> coded;
    std::vector<const char *> pointers;
    std::vector<int> results(words.size());
    for (const GivenWord &word : words)
        coded.push_back(CodeOfWord(codes, word.text));
    for (const std::string &code : coded)
        pointers.push_back(code.c_str());
    AddUserWords(pointers.data(), results.data(), DWORD(words.size()));
    int worst = kDone;
    for (size_t i = 0; i < words.size(); ++i)
        worst =
            std::max(worst, coded[i].empty() ? Refuse(words[i], "a word has Lao letters alone")
                                             : TellAdded(words[i], results[i], coded[i].size()));
    gPlace = {};
    return CountUserWords() > 0 ? std::max(worst, SwitchDictionaryOn()) : worst;
}

static int DeleteWordsNow(const std::vector<GivenWord> &words)
{
    CodeTable codes = ReadCodeTable();
    int worst = kDone;
    for (const GivenWord &word : words) {
        std::string code = CodeOfWord(codes, word.text);
        int result = code.empty() ? int(kWordNotThere) : DeleteUserWord(code.c_str());
        if (result == kWordNotThere)
            worst = Refuse(word, "it isn't in the user dictionary");
        else if (result != kWordDeleted)
            worst = Refuse(word, "it is not deleted: " + DescribeUnsaved("UserDict.dat"));
    }
    return worst;
}

static int RunWords(const std::vector<std::string> &words,
                    int (*work)(const std::vector<GivenWord> &))
{
    std::vector<GivenWord> given;
    for (const std::string &word : words)
        given.push_back({word, 0});
    LockSettings();
    return Start() ? work(given) : int(kNotDone);
}

static int ListWords()
{
    if (!Start())
        return kNotDone;
    CodeTable codes = ReadCodeTable();
    std::string text;
    char word[kWordSize];
    CountUserWords();  // loads them; the count itself ends at 65535
    for (int number = 1; GetWord(word, sizeof word, number, kUserDictionary); ++number)
        text += TextOfCode(codes, word) + "\n";
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
    std::vector<GivenWord> words;
    LockSettings();
    if (!Start())
        return kNotDone;
    int status = ProcessLines({file}, [&](const TextPart &line, std::string *) {
        std::string_view word = WordOfLine(line);
        if (!word.empty())
            words.push_back({std::string(word), line.line});
        return int(kDone);
    });
    gPlace.file = file;
    return std::max(status, AddWordsNow(words));
}

void AddDictCommand(CLI::App *app, Command *chosen)
{
    auto words = std::make_shared<std::vector<std::string>>();
    auto file = std::make_shared<std::string>();
    CLI::App *dict = app->add_subcommand("dict", "list and change the user dictionary");
    dict->require_subcommand(1);
    dict->footer("Example: orvel dict list");

    CLI::App *list = dict->add_subcommand("list", "the user's words in Lao order, one a line");
    list->footer("Example: orvel dict list > words.txt");
    list->callback([=] { *chosen = ListWords; });

    CLI::App *add = dict->add_subcommand("add", "add words");
    add->add_option("words", *words, "Lao words")->required();
    add->footer("Example: orvel dict add ວຽງຈັນ");
    add->callback([=] { *chosen = [=] { return RunWords(*words, AddWordsNow); }; });

    CLI::App *remove = dict->add_subcommand("delete", "delete words");
    remove->add_option("words", *words, "Lao words")->required();
    remove->footer("Example: orvel dict delete ວຽງຈັນ");
    remove->callback([=] { *chosen = [=] { return RunWords(*words, DeleteWordsNow); }; });

    CLI::App *importer = dict->add_subcommand(
        "import", "add all words of a UTF-8 file, one a line, # begins a comment");
    importer->add_option("file", *file, "the file; - reads standard input")->required();
    importer->footer("Example: orvel dict import words.txt");
    importer->callback([=] { *chosen = [=] { return ImportWords(*file); }; });
}

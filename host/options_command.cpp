// orvel options: shows and sets the options of the library by readable names. An option is a row of
// kOptions; all else works through the rows.
#include <algorithm>
#include <charconv>

#include "commands.h"
#include "messages.h"
#include "session.h"

#include "orvel.h"

struct OptionValue {
    const char *name;
    WORD value;
};

struct OptionName {
    const char *name, *letter;        // the letter is the library's name for it
    bool isSet;                       // values are bits, written with commas between them
    std::vector<OptionValue> values;  // empty: any number
};

static const std::vector<OptionName> kOptions = {
    {"breaks",
     "b",
     false,
     {{"syllable", kSyllableBreaks}, {"word", kWordBreaks}, {"both", kBothBreaks}}},
    {"dictionaries",
     "d",
     true,
     {{"main", kMainDictionary}, {"old", kOldDictionary}, {"user", kUserDictionary}}},
    {"old-spelling",
     "o",
     false,
     {{"keep", kKeepOldSpelling}, {"ask", kAskOldSpelling}, {"change", kChangeOldSpelling}}},
    {"roman-breaks",
     "r",
     false,
     {{"none", kNoRomanBreak}, {"hidden", kHiddenRomanBreak}, {"visible", kVisibleRomanBreak}}},
    {"sort", "s", false, {{"vowels-last", kVowelsLastSort}, {"natural", kNaturalSort}}},
    {"font-substitution", "c", false, {{"auto", 0}, {"user", 1}}},
    {"option-f", "f", false, {}},
    {"option-i", "i", false, {}},
    {"option-e", "e", false, {}},
};

static std::string DescribeSet(const OptionName &option, WORD value)
{
    std::string text;
    for (const OptionValue &row : option.values)
        if (value & row.value)
            text += (text.empty() ? "" : ",") + std::string(row.name);
    return text.empty() ? "none" : text;
}

static std::string DescribeValue(const OptionName &option, WORD value)
{
    if (option.isSet)
        return DescribeSet(option, value);
    for (const OptionValue &row : option.values)
        if (row.value == value)
            return row.name;
    return std::to_string(value);
}

static std::string DescribeChoices(const OptionName &option)
{
    std::string text;
    for (const OptionValue &row : option.values)
        text += (text.empty() ? "" : ", ") + std::string(row.name);
    return text.empty()   ? "a number from 0 to 65535"
           : option.isSet ? text + " (with commas), none"
                          : text;
}

static bool ParseNumber(std::string_view text, WORD *value)
{
    auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), *value);
    return failure == std::errc() && end == text.data() + text.size() && !text.empty();
}

static bool ParseChoice(const OptionName &option, std::string_view text, WORD *value)
{
    for (const OptionValue &row : option.values)
        if (text == row.name) {
            *value = row.value;
            return true;
        }
    return option.values.empty() && ParseNumber(text, value);
}

static bool ParseSet(const OptionName &option, std::string_view text, WORD *value)
{
    *value = 0;
    if (text == "none")
        return true;
    for (;;) {
        size_t comma = text.find(',');
        WORD bit;
        if (!ParseChoice(option, text.substr(0, comma), &bit))
            return false;
        *value = WORD(*value | bit);
        if (comma == text.npos)
            return true;
        text.remove_prefix(comma + 1);
    }
}

static const OptionName *FindOption(std::string_view name)
{
    for (const OptionName &option : kOptions)
        if (name == option.name || name == option.letter)
            return &option;
    return nullptr;
}

static std::string DescribeOption(const OptionName &option)
{
    return std::string(option.name) + " (" + option.letter +
           ") = " + DescribeValue(option, GetOrvelOption(option.letter)) + "\n";
}

static int SetOption(const OptionName &option, const std::string &text)
{
    WORD value;
    bool isGood = option.isSet ? ParseSet(option, text, &value) : ParseChoice(option, text, &value);
    if (!isGood)
        return Tell(option.name + (" can't be \"" + text) +
                        "\"; it takes: " + DescribeChoices(option),
                    kWrongUsage);
    if (SetOrvelOption(option.letter, value, 1))
        return kDone;
    return Tell(option.name + (" is as it was: " + DescribeUnsavedOptions()), kNotDone);
}

static int HandleArgument(const std::string &argument)
{
    size_t equals = argument.find('=');
    const OptionName *option = FindOption(std::string_view(argument).substr(0, equals));
    if (!option)
        return Tell("there is no option \"" + argument.substr(0, equals) +
                        "\"; orvel options lists them",
                    kWrongUsage);
    if (equals != argument.npos)
        return SetOption(*option, argument.substr(equals + 1));
    return WriteOutput(DescribeOption(*option));
}

static bool IsChange(const std::string &argument)
{
    return argument.find('=') != argument.npos;
}

static int RunOptions(const std::vector<std::string> &arguments)
{
    if (std::any_of(arguments.begin(), arguments.end(), IsChange))
        LockSettings();
    if (!Start())
        return kNotDone;
    int worst = kDone;
    for (const std::string &argument : arguments)
        worst = std::max(worst, HandleArgument(argument));
    if (!arguments.empty())
        return worst;
    std::string text;
    for (const OptionName &option : kOptions)
        text += DescribeOption(option);
    return WriteOutput(text);
}

void AddOptionsCommand(CLI::App *app, Command *chosen)
{
    auto arguments = std::make_shared<std::vector<std::string>>();
    CLI::App *options = app->add_subcommand("options", "show or set the library's options");
    options->add_option("options", *arguments,
                        "NAME shows an option, NAME=VALUE sets and saves it");
    std::string names = "Options, by name or letter:\n";
    for (const OptionName &option : kOptions)
        names += "  " + std::string(option.name) + " (" + option.letter +
                 "): " + DescribeChoices(option) + "\n";
    options->footer(names + "Example: orvel options breaks=word dictionaries=main,user");
    options->callback([=] { *chosen = [=] { return RunOptions(*arguments); }; });
}

// orvel fonts: the list of registered Lao fonts.
#include "commands.h"
#include "session.h"

#include "orvel.h"

constexpr int kNameSize = 37, kCodeNameSize = 32, kMostCodes = 16;

struct FontSettings {
    std::string name, substitute, code = "Unicode";
    int scale = 100;
    bool isPrivate = false;
};

static std::string CodeName(int code)
{
    char name[kCodeNameSize];
    return GetFontCodeName(name, sizeof name, code) ? name : std::to_string(code);
}

// A code by its number or by the companion's name for it; -1 when there is none such.
static int FindCode(const std::string &text)
{
    for (int code = 0; code < kMostCodes; ++code) {
        char name[kCodeNameSize];
        bool exists = GetFontCodeName(name, sizeof name, code);
        if (exists && (text == std::to_string(code) ||
                       CLI::detail::to_lower(text) == CLI::detail::to_lower(name)))
            return code;
    }
    return -1;
}

static int ListFonts()
{
    if (!StartLibrary())
        return kNotDone;
    char name[kNameSize], substitute[kNameSize];
    int scale;
    std::string text;
    for (int number = 1;; ++number) {
        int code = GetLaoFontInfo(name, substitute, sizeof name, &scale, number);
        if (code < 0)
            return WriteOutput(text);
        text += std::string(name) + "\t" + CodeName(code) + "\t" + substitute + "\t" +
                std::to_string(scale) + "\n";
    }
}

static int Refuse(const std::string &why, int status)
{
    fprintf(stderr, "orvel: %s\n", why.c_str());
    return status;
}

// The list's file has no quoting.
static bool CanBeStored(const std::string &name)
{
    return name.find_first_of(",\r\n") == name.npos && name.size() < kNameSize;
}

static int AddFont(const FontSettings &font)
{
    if (!CanBeStored(font.name) || !CanBeStored(font.substitute) || font.name.empty())
        return Refuse("a font's name has 1 to 36 bytes and no comma", kWrongUsage);
    if (!StartLibrary())
        return kNotDone;
    int code = FindCode(font.code);
    if (code < 0)
        return Refuse("there is no font code \"" + font.code + "\"", kWrongUsage);
    if (FontIndex(font.name.c_str()) >= 0)
        return Refuse("\"" + font.name + "\" is registered already", kNotDone);
    if (!font.substitute.empty() && FontIndex(font.substitute.c_str()) < 0)
        return Refuse("the substitute \"" + font.substitute + "\" isn't registered", kNotDone);
    if (AddFontToList(font.name.c_str(), font.substitute.c_str(), WORD(code), short(font.scale),
                      font.isPrivate))
        return kDone;
    return Refuse("\"" + font.name + "\" could not be added", kNotDone);
}

static int RemoveFont(const std::string &name)
{
    if (!StartLibrary())
        return kNotDone;
    if (FontIndex(name.c_str()) < 0)
        return Refuse("\"" + name + "\" isn't registered", kNotDone);
    if (RemoveFontFromList(name.c_str()))
        return kDone;
    return Refuse("\"" + name + "\" can't be removed: the list keeps one font and must be writable",
                  kNotDone);
}

void AddFontsCommand(CLI::App *app, Command *chosen)
{
    auto font = std::make_shared<FontSettings>();
    CLI::App *fonts = app->add_subcommand("fonts", "list, add or remove registered Lao fonts");
    fonts->require_subcommand(1);
    fonts->footer("Example: orvel fonts add \"Alice_0\" --code Lao95");

    CLI::App *list =
        fonts->add_subcommand("list", "name, font code, substitute, scale; tabs between");
    list->footer("Example: orvel fonts list");
    list->callback([=] { *chosen = ListFonts; });

    CLI::App *add = fonts->add_subcommand("add", "register a font");
    add->add_option("name", font->name, "the font's name")->required();
    add->add_option("--code", font->code, "its font code, by name or number (default: Unicode)");
    add->add_option("--substitute", font->substitute, "the font that replaces it");
    add->add_option("--scale", font->scale, "the substitute's size in percent")
        ->check(CLI::Range(10, 1000));
    add->add_flag("--extended", font->isPrivate,
                  "it has the private-use characters U+E000 to U+E01F");
    add->footer("Example: orvel fonts add \"Saysettha OT\" --code Unicode");
    add->callback([=] { *chosen = [=] { return AddFont(*font); }; });

    CLI::App *remove = fonts->add_subcommand("remove", "take a font out of the list");
    remove->add_option("name", font->name, "the font's name")->required();
    remove->footer("Example: orvel fonts remove \"Alice_0\"");
    remove->callback([=] { *chosen = [=] { return RemoveFont(font->name); }; });
}

// orvel fonts: the list of registered Lao fonts, which LaoFonts.dat keeps. What the library would
// refuse without a word is checked first, so that the person hears why.
#include "commands.h"
#include "font_codes.h"
#include "messages.h"
#include "session.h"

#include "orvel.h"

constexpr int kNameSize = 37, kMostFonts = 127;
constexpr char kNameRule[] = "a font's name has 1 to 36 bytes, no comma and no blanks around it";

// What the command line says of a font; the defaults are those of a new one.
struct FontSettings {
    std::string name, substitute, code = "Unicode";
    std::string extended;    // of `set`: "yes", "no", or empty where it stays
    int scale = 100;         // of the substitute, in percent
    bool isPrivate = false;  // of `add`: it has the private-use characters
    bool setsSubstitute = false, setsScale = false;
};

static int ListFonts()
{
    if (!Start())
        return kNotDone;
    char name[kNameSize], substitute[kNameSize];
    int scale;
    std::string text;
    for (int number = 1;; ++number) {
        int code = GetLaoFontInfo(name, substitute, sizeof name, &scale, number);
        if (code < 0)
            return WriteOutput(text);
        text += std::string(name) + "\t" + FontCodeName(code) + "\t" + substitute + "\t" +
                std::to_string(scale) + (GetFontExtended(name) ? "\textended\n" : "\n");
    }
}

static bool IsBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// The list's file has no quoting, and blanks around a name don't count there.
static bool CanBeStored(const std::string &name)
{
    bool hasEdges = !name.empty() && (IsBlank(name.front()) || IsBlank(name.back()));
    return !hasEdges && name.find_first_of(",\r\n\x1A") == name.npos && name.size() < kNameSize;
}

// The list is read by the start, so the lock comes first.
static bool StartToChange()
{
    LockSettings();
    return Start();
}

// The library's own message of a list that can't be saved doesn't name the file.
static int TellUnsaved()
{
    TakeMessages();
    return Tell("the list of fonts is as it was: " + DescribeUnsaved("LaoFonts.dat"), kNotDone);
}

static bool HasFont(int number)
{
    char name[kNameSize], substitute[kNameSize];
    return GetLaoFontInfo(name, substitute, sizeof name, nullptr, number) >= 0;
}

static int AddFont(const FontSettings &font)
{
    if (!CanBeStored(font.name) || !CanBeStored(font.substitute) || font.name.empty())
        return Tell(kNameRule, kWrongUsage);
    if (!StartToChange())
        return kNotDone;
    int code = FindFontCode(font.code);
    if (code < 0)
        return Tell("there is no font code \"" + font.code + "\"", kWrongUsage);
    if (FontIndex(font.name.c_str()) >= 0)
        return Tell("\"" + font.name + "\" is registered already", kNotDone);
    if (HasFont(kMostFonts))
        return Tell("the list is full: it holds " + std::to_string(kMostFonts) + " fonts",
                    kNotDone);
    if (!font.substitute.empty() && FontIndex(font.substitute.c_str()) < 0)
        return Tell("the substitute \"" + font.substitute + "\" isn't registered", kNotDone);
    if (AddFontToList(font.name.c_str(), font.substitute.c_str(), WORD(code), short(font.scale),
                      font.isPrivate))
        return kDone;
    return TellUnsaved();
}

static int RemoveFont(const std::string &name)
{
    if (!StartToChange())
        return kNotDone;
    if (FontIndex(name.c_str()) < 0)
        return Tell("\"" + name + "\" isn't registered", kNotDone);
    if (!HasFont(2))
        return Tell("\"" + name + "\" can't be removed: the list keeps one font", kNotDone);
    return RemoveFontFromList(name.c_str()) ? int(kDone) : TellUnsaved();
}

static bool ChangeFont(const FontSettings &font)
{
    const char *name = font.name.c_str();
    bool done = !font.setsSubstitute || SetReplacementFontName(name, font.substitute.c_str());
    done = done && (!font.setsScale || SetReplacementFontSize(name, font.scale));
    return done && (font.extended.empty() || SetFontExtended(name, font.extended == "yes"));
}

static int SetFont(const FontSettings &font)
{
    if (!CanBeStored(font.substitute))
        return Tell(kNameRule, kWrongUsage);
    if (!StartToChange())
        return kNotDone;
    if (FontIndex(font.name.c_str()) < 0)
        return Tell("\"" + font.name + "\" isn't registered", kNotDone);
    if (!font.substitute.empty() && FontIndex(font.substitute.c_str()) < 0)
        return Tell("the substitute \"" + font.substitute + "\" isn't registered", kNotDone);
    if (!ChangeFont(font))
        return Tell("only fonts of the Unicode code have private-use characters", kNotDone);
    return WriteFontList() ? int(kDone) : TellUnsaved();
}

static int ShowDefault(const std::string &codeName)
{
    char name[kNameSize];
    if (!Start())
        return kNotDone;
    int code = FindFontCode(codeName);
    if (code < 0)
        return Tell("there is no font code \"" + codeName + "\"", kWrongUsage);
    if (!GetDefaultFontName(name, sizeof name, code))
        return Tell("no font of the code " + FontCodeName(code) + " is registered", kNotDone);
    return WriteOutput(std::string(name) + "\n");
}

typedef std::shared_ptr<FontSettings> SharedFont;

static void AddListing(CLI::App *fonts, Command *chosen)
{
    CLI::App *list = fonts->add_subcommand(
        "list", "name, font code, substitute, scale and \"extended\"; tabs between");
    list->footer("Example: orvel fonts list");
    list->callback([=] { *chosen = ListFonts; });
}

static void AddAdding(CLI::App *fonts, const SharedFont &font, Command *chosen)
{
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
}

static void AddRemoving(CLI::App *fonts, const SharedFont &font, Command *chosen)
{
    CLI::App *remove = fonts->add_subcommand("remove", "take a font out of the list");
    remove->add_option("name", font->name, "the font's name")->required();
    remove->footer("Example: orvel fonts remove \"Alice_0\"");
    remove->callback([=] { *chosen = [=] { return RemoveFont(font->name); }; });
}

static void AddSetting(CLI::App *fonts, const SharedFont &font, Command *chosen)
{
    CLI::App *set = fonts->add_subcommand("set", "change a font's substitute, scale or characters");
    set->add_option("name", font->name, "the font's name")->required();
    set->add_option("--substitute", font->substitute, "the font that replaces it; \"\" for none");
    set->add_option("--scale", font->scale, "the substitute's size in percent")
        ->check(CLI::Range(10, 1000));
    set->add_option("--extended", font->extended,
                    "yes or no: whether it has the private-use characters")
        ->check(CLI::IsMember({"yes", "no"}));
    set->footer("Example: orvel fonts set \"Alice_0\" --substitute \"Saysettha OT\" --scale 90");
    set->callback([=] {
        font->setsSubstitute = set->count("--substitute") > 0;
        font->setsScale = set->count("--scale") > 0;
        *chosen = [=] { return SetFont(*font); };
    });
}

static void AddDefault(CLI::App *fonts, const SharedFont &font, Command *chosen)
{
    CLI::App *standard = fonts->add_subcommand("default", "the first font of a font code");
    standard->add_option("code", font->code, "the code, by name or number")->required();
    standard->footer("Example: orvel fonts default Lao95");
    standard->callback([=] { *chosen = [=] { return ShowDefault(font->code); }; });
}

void AddFontsCommand(CLI::App *app, Command *chosen)
{
    SharedFont font = std::make_shared<FontSettings>();
    CLI::App *fonts = app->add_subcommand("fonts", "list and change the registered Lao fonts");
    fonts->require_subcommand(1);
    fonts->footer("Example: orvel fonts add \"Alice_0\" --code Lao95");
    AddListing(fonts, chosen);
    AddAdding(fonts, font, chosen);
    AddSetting(fonts, font, chosen);
    AddDefault(fonts, font, chosen);
    AddRemoving(fonts, font, chosen);
}

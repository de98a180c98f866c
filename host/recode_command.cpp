// orvel recode: text between the encodings of the old fonts, and UTF-8. Everything goes by way of
// the internal code, as in the library; what has no place becomes "?" and is counted.
#include <algorithm>
#include <cstring>

#include "commands.h"
#include "font_codes.h"
#include "messages.h"
#include "utf8.h"

#include "orvel.h"

constexpr int kUtf8 = -2;      // as a code of the command line
constexpr int kMapFont = -3;   // the same: a font of the map of document fonts, by its name
constexpr size_t kGrowth = 3;  // bytes that one byte can become in any code
constexpr WCHAR kReplacement = '?';
constexpr uint8_t kNoBreakSpace = 160;

constexpr int kNoFont = -1;  // characters as the plain fonts have them

struct Recoder {
    int from, to;      // font codes, or kUtf8; `from` also kMapFont
    std::string font;  // of kMapFont
    size_t lost;       // bytes or characters without a place
};

// The next character of UTF-8 as one unit; what is above U+FFFF or no UTF-8 has no place in any
// code.
static WCHAR TakeCharacter(std::string_view *text)
{
    size_t size = CharacterSize(*text);
    const char *bytes = text->data();
    unsigned character = uint8_t(bytes[0]);
    if (size > 1) {
        character &= 0x7Fu >> size;
        for (size_t i = 1; i < size; ++i)
            character = character << 6 | (uint8_t(bytes[i]) & 63u);
    } else if (character >= 0x80) {
        character = 0xFFFF;
    }
    text->remove_prefix(size);
    return WCHAR(character > 0xFFFF ? 0xFFFF : character);
}

static std::string CodeFromUtf8(Recoder *recoder, std::string_view text)
{
    std::vector<WCHAR> characters;
    std::string code;
    while (!text.empty()) {
        characters.push_back(TakeCharacter(&text));
        code += characters.back() == 0xA0 ? char(kNoBreakSpace) : '?';
        recoder->lost -= characters.back() == '?';
    }
    int length = UnicodeToLao(characters.data(), code.data(), DWORD(code.size() + 1), kNoFont);
    code.resize(size_t(std::max(length, 0)));
    recoder->lost += size_t(std::count(code.begin(), code.end(), '?'));
    return code;
}

static std::string Utf8FromInternal(Recoder *recoder, const std::string &code)
{
    std::vector<WCHAR> characters(2 * code.size() + 1);
    for (size_t i = 0; i < code.size(); ++i) {
        uint8_t byte = uint8_t(code[i]);
        characters[i] = byte < 0x80 ? WCHAR(byte) : byte == 0x8C ? WCHAR('-') : kReplacement;
    }
    int count = LaoToUnicode(code.c_str(), characters.data(), DWORD(characters.size()), kNoFont);
    std::string text;
    for (int i = 0; i < count; ++i)
        AppendUtf8(&text, char16_t(characters[size_t(i)]));
    recoder->lost += size_t(std::count(text.begin(), text.end(), '?') -
                            std::count(code.begin(), code.end(), '?'));
    return text;
}

// In place of RecodeString: with room, and what turned into "?" is counted.
static std::string RecodeWhole(Recoder *recoder, const std::string &text, int code)
{
    std::vector<char> buffer(kGrowth * text.size() + 1);
    memcpy(buffer.data(), text.c_str(), text.size() + 1);
    RecodeString(buffer.data(), DWORD(buffer.size()), code);
    std::string recoded = buffer.data();
    recoder->lost += size_t(std::count(recoded.begin(), recoded.end(), '?') -
                            std::count(text.begin(), text.end(), '?'));
    return recoded;
}

static std::string Utf8FromMapFont(const std::string &font, const std::string &text)
{
    std::vector<WCHAR> characters(2 * text.size() + 1);
    int count =
        LegacyToUnicode(text.c_str(), characters.data(), DWORD(characters.size()), font.c_str());
    std::string utf8;
    for (int i = 0; i < count; ++i)
        AppendUtf8(&utf8, char16_t(characters[size_t(i)]));
    return utf8;
}

static std::string RecodeText(Recoder *recoder, std::string_view text)
{
    std::string unicode;
    if (recoder->from == recoder->to)
        return std::string(text);
    if (recoder->from == kMapFont) {
        unicode = Utf8FromMapFont(recoder->font, std::string(text));
        if (recoder->to == kUtf8)
            return unicode;
        text = unicode;
    }
    std::string code = recoder->from == kUtf8 || recoder->from == kMapFont
                           ? CodeFromUtf8(recoder, text)
                           : RecodeWhole(recoder, std::string(text), recoder->from);
    PackLao(code.data());
    code.resize(strlen(code.c_str()));
    return recoder->to == kUtf8 ? Utf8FromInternal(recoder, code)
                                : RecodeWhole(recoder, code, -recoder->to);
}

// A NUL ends a text of the library, so it stands between texts.
static void RecodePart(Recoder *recoder, std::string_view part, std::string *output)
{
    for (;;) {
        size_t end = part.find('\0');
        *output += RecodeText(recoder, part.substr(0, end));
        if (end == part.npos)
            return;
        *output += '\0';
        part.remove_prefix(end + 1);
    }
}

static bool ReadCode(const std::string &name, int *code)
{
    *code = CLI::detail::to_lower(name) == "utf-8" ? kUtf8 : FindFontCode(name);
    if (*code < 0 && *code != kUtf8)
        *code = FontType(name.c_str());
    if (*code >= 0 || *code == kUtf8)
        return true;
    Tell("there is no font code or font \"" + name + "\"; the codes are: UTF-8" + ListFontCodes(),
         kWrongUsage);
    return false;
}

// Keyboard fonts, for instance, whose text looks like ",to5f", have no code of their own.
static bool IsMapFont(const std::string &name)
{
    WCHAR nothing;
    return LegacyToUnicode("", &nothing, 1, name.c_str()) == 0;
}

static int RunRecode(const std::string &from, const std::string &to,
                     const std::vector<std::string> &files)
{
    Recoder recoder = {};
    if (!Start())
        return kNotDone;
    bool isCode = FindFontCode(from) >= 0 || FontType(from.c_str()) >= 0;
    if (!isCode && IsMapFont(from)) {
        recoder.from = kMapFont;
        recoder.font = from;
    } else if (!ReadCode(from, &recoder.from)) {
        return kWrongUsage;
    }
    if (!ReadCode(to, &recoder.to))
        return kWrongUsage;
    int worst = ProcessParts(files, [&](const TextPart &part, std::string *output) {
        RecodePart(&recoder, part.text, output);
        return int(kDone);
    });
    if (!recoder.lost)
        return worst;
    return Tell(std::to_string(recoder.lost) + " characters have no place in " + to +
                    " and became \"?\"",
                kNotDone);
}

void AddRecodeCommand(CLI::App *app, Command *chosen)
{
    auto from = std::make_shared<std::string>(), to = std::make_shared<std::string>();
    auto files = std::make_shared<std::vector<std::string>>();
    CLI::App *recode =
        app->add_subcommand("recode", "recode text between the encodings of old fonts and UTF-8");
    recode
        ->add_option("--from", *from,
                     "a font code's name or number, UTF-8, or the name of a registered font or of "
                     "one of the font map of documents")
        ->required();
    recode
        ->add_option("--to", *to,
                     "a font code's name or number, a registered font's name, or UTF-8")
        ->required();
    recode->add_option("files", *files, "files; none or - reads standard input");
    recode->footer(
        "What has no place becomes \"?\" and is counted on standard error; exit status 1 then.\n"
        "Example: orvel recode --from Lao2000 --to UTF-8 old.txt");
    recode->callback([=] { *chosen = [=] { return RunRecode(*from, *to, *files); }; });
}

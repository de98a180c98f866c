// What stands for a \uN is passed over: it is the character once more, for those who know no
// Unicode. Bytes are taken for what they are in code page 1252; in a legacy font they are the
// font's own, and in any other font they go out as they came.
#include "documents/rtf_text.h"

#include <cstdio>

#include "documents/code_page.h"

struct SignWord {
    std::string_view word;
    WCHAR character;
};
constexpr SignWord kSignWords[] = {
    {"lquote", 0x2018}, {"rquote", 0x2019}, {"ldblquote", 0x201C}, {"rdblquote", 0x201D},
    {"bullet", 0x2022}, {"endash", 0x2013}, {"emdash", 0x2014},    {"zwbo", 0x200B},
};
constexpr SignWord kSigns[] = {{"\\", '\\'}, {"{", '{'}, {"}", '}'}, {"~", 0xA0}, {"-", 0xAD}};

// The character of a token that is one; 0 for every other one.
static WCHAR CharacterOfToken(const RtfToken &token)
{
    if (token.kind == kRtfWord)
        for (const SignWord &row : kSignWords)
            if (row.word == token.word)
                return row.character;
    if (token.kind == kRtfSign)
        for (const SignWord &row : kSigns)
            if (row.word == token.word)
                return row.character;
    return 0;
}

bool IsTextToken(const RtfToken &token)
{
    bool isByte = token.kind == kRtfSign && token.word == "'" && token.hasNumber;
    bool isUnicode = token.kind == kRtfWord && token.word == "u" && token.hasNumber;
    return token.kind == kRtfLetters || isByte || isUnicode || CharacterOfToken(token);
}

// Takes off so many characters that stand for one; each is a letter, a byte or a sign.
static void SkipFallback(std::string_view *raw, int count)
{
    RtfToken token;
    while (count > 0 && !raw->empty()) {
        if ((*raw)[0] != '\\') {
            count -= (*raw)[0] != '\r' && (*raw)[0] != '\n';
            raw->remove_prefix(1);
        } else if (TakeToken(raw, &token)) {
            --count;
        }
    }
}

static void ReadRtf(std::string_view raw, int fallback, Units *units)
{
    RtfToken token;
    while (TakeToken(&raw, &token)) {
        WCHAR character = CharacterOfToken(token);
        if (character) {
            AppendUnit(units, character);
        } else if (token.kind == kRtfSign && token.hasNumber) {
            AppendUnit(units, CharacterOf1252(static_cast<unsigned char>(token.number)));
        } else if (token.kind == kRtfWord && token.word == "u") {
            AppendUnit(units, WCHAR(token.number));
            SkipFallback(&raw, fallback);
        } else if (token.kind == kRtfLetters) {
            for (char c : token.raw)
                AppendUnit(units, CharacterOf1252(static_cast<unsigned char>(c)));
        }
    }
}

static void WriteUnit(WCHAR unit, Bytes *bytes)
{
    char text[16];
    int length = snprintf(text, sizeof text, "\\u%d?", int(short(unit)));
    AppendBytes(bytes, {text, size_t(length)});
}

// The signs that are markup, and those that RTF has words for.
static std::string_view WordOf(WCHAR unit)
{
    switch (unit) {
    case '\\': return "\\\\";
    case '{': return "\\{";
    case '}': return "\\}";
    case 0xA0: return "\\~";
    case 0xAD: return "\\-";
    default: return "";
    }
}

static bool IsAscii(WCHAR unit)
{
    return unit >= ' ' && unit < 0x80;
}

static void WriteUnits(const WCHAR *units, size_t count, Bytes *bytes)
{
    for (size_t i = 0; i < count; ++i) {
        std::string_view word = WordOf(units[i]);
        char letter = char(units[i]);
        if (!word.empty())
            AppendBytes(bytes, word);
        else if (IsAscii(units[i]))
            AppendBytes(bytes, {&letter, 1});
        else
            WriteUnit(units[i], bytes);
    }
}

// Some readers forget in notes how many characters stand for a \uN, and take one: text where it is
// another number says so itself.
static void WriteRtf(const WCHAR *units, size_t count, int fallback, Bytes *bytes)
{
    bool isOwn = false;
    for (size_t i = 0; i < count && fallback != 1; ++i)
        isOwn = isOwn || (WordOf(units[i]).empty() && !IsAscii(units[i]));
    AppendBytes(bytes, isOwn ? "{\\uc1 " : "");
    WriteUnits(units, count, bytes);
    AppendBytes(bytes, isOwn ? "}" : "");
}

// clang-format off
static void Read0(std::string_view raw, Units *units) { ReadRtf(raw, 0, units); }
static void Read1(std::string_view raw, Units *units) { ReadRtf(raw, 1, units); }
static void Read2(std::string_view raw, Units *units) { ReadRtf(raw, 2, units); }
static void Read3(std::string_view raw, Units *units) { ReadRtf(raw, 3, units); }
static void Write0(const WCHAR *units, size_t count, Bytes *bytes) { WriteRtf(units, count, 0, bytes); }
static void Write1(const WCHAR *units, size_t count, Bytes *bytes) { WriteRtf(units, count, 1, bytes); }
static void Write2(const WCHAR *units, size_t count, Bytes *bytes) { WriteRtf(units, count, 2, bytes); }
static void Write3(const WCHAR *units, size_t count, Bytes *bytes) { WriteRtf(units, count, 3, bytes); }
// clang-format on

const TextForm kRtfText[kMostFallback + 1] = {
    {Read0, Write0}, {Read1, Write1}, {Read2, Write2}, {Read3, Write3}};

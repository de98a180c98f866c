// The road of a text. Only Lao is handed over; a stretch of anything else stands there as one
// blank, which ends a run as the stretch itself would. So no byte of a text that is not Lao can act
// on the library.
#include "lao_text.h"

#include <cstring>

#include "utf8.h"

constexpr char kBreakMark = 45, kRealHyphen = '\x8C';
constexpr char kNoCode = ' ';

bool PrepareTrace(CodeTrace *trace)
{
    if (!FindTextFont(&trace->font))
        return false;
    for (size_t i = 0; i < trace->codes.size(); ++i) {
        WCHAR character = WCHAR(0x0E80 + i);
        char text[] = {kNoCode, 0};
        UnicodeToLao(&character, text, sizeof text, trace->font.index);
        trace->codes[i] = uint8_t(text[0]);
    }
    trace->joined.assign(256 * 256, 0);
    for (int first = 128; first < 256; ++first)
        for (int second = 128; second < 256; ++second) {
            char text[] = {char(first), char(second), 0};
            PackLao(text);
            if (!text[1])
                trace->joined[size_t(first * 256 + second)] = uint8_t(text[0]);
        }
    return true;
}

// A break that holds the halves of a broken character apart stays: without it they would become
// another one.
static bool IsOldBreak(std::string_view text)
{
    size_t size = kZeroWidthSpace.size();
    return text.size() == size || (text[size] & '\xC0') != '\x80';
}

static void RemoveOldBreaks(std::string_view source, LaoText *text)
{
    text->clean.clear();
    text->removed.clear();
    for (size_t found; (found = source.find(kZeroWidthSpace)) != source.npos;) {
        bool isOld = IsOldBreak(source.substr(found));
        text->clean += source.substr(0, isOld ? found : found + kZeroWidthSpace.size());
        if (isOld)
            text->removed.push_back(text->clean.size());
        source.remove_prefix(found + kZeroWidthSpace.size());
    }
    text->clean += source;
}

// One character for each Lao one, and one blank for each stretch of others.
static void ListCharacters(LaoText *text)
{
    const char *bytes = text->clean.data();
    size_t size = text->clean.size();
    text->characters.resize(size + 1);
    text->starts.resize(size + 1);
    size_t count = 0;
    for (size_t i = 0; i < size; ++count) {
        text->starts[count] = i;
        if (IsLaoAt(bytes + i, size - i)) {
            text->characters[count] = WCHAR(LaoAt(bytes + i));
            i += 3;
            continue;
        }
        text->characters[count] = kNoCode;
        while (i < size && !IsLaoAt(bytes + i, size - i))
            ++i;
    }
    text->starts[count] = size;
    text->characters[count] = 0;
    text->packed.assign(count, kNoCode);
}

void ReadLaoText(const CodeTrace &trace, std::string_view source, LaoText *text)
{
    RemoveOldBreaks(source, text);
    ListCharacters(text);
    int length = UnicodeToLao(text->characters.data(), text->packed.data(),
                              DWORD(text->packed.size() + 1), trace.font.index);
    text->packed.resize(size_t(length > 0 ? length : 0));
}

static uint8_t CodeOf(const CodeTrace &trace, WCHAR character)
{
    bool isLao = character >= 0x0E80 && character <= 0x0EFF;
    return isLao ? trace.codes[size_t(character - 0x0E80)] : uint8_t(kNoCode);
}

// The characters from `first` on that the library joined to this code: their number, 0 when there
// are none such.
static size_t CountJoined(const CodeTrace &trace, const LaoText &text, size_t first, uint8_t code)
{
    uint8_t made = CodeOf(trace, text.characters[first]);
    size_t count = 1;
    while (made && made != code) {
        made = trace.joined[size_t(made) * 256 + CodeOf(trace, text.characters[first + count])];
        ++count;
    }
    return made ? count : 0;
}

// Cuts the divided code into chunks and finds the place of each in the text. False when the code
// can't be traced back.
static bool TraceChunks(const CodeTrace &trace, LaoText *text)
{
    size_t character = 0, characters = text->starts.size();
    bool inRun = false, hasBreak = false;
    text->chunks.clear();
    for (size_t i = 0; i < text->code.size(); ++i) {
        uint8_t code = uint8_t(text->code[i]);
        if (code == kBreakMark) {
            hasBreak = true;
            continue;
        }
        bool isLao = code >= 128 && IsLaoCode(code);
        if (isLao && (hasBreak || !inRun))
            text->chunks.push_back(
                {text->starts[character], 0, i, 0, ChunkKind(text->side[i]), hasBreak});
        size_t joined = CountJoined(trace, *text, character, code);
        if (!joined || character + joined >= characters)
            return false;
        character += joined;
        if (isLao) {
            text->chunks.back().end = text->starts[character];
            text->chunks.back().codeEnd = i + 1;
        }
        inRun = isLao;
        hasBreak = false;
    }
    return true;
}

bool DivideLaoText(const CodeTrace &trace, std::string_view source, DWORD flags, LaoText *text)
{
    ReadLaoText(trace, source, text);
    size_t room = 2 * text->packed.size() + 1;  // a mark in front of each byte
    text->code.resize(room);
    text->side.resize(room);
    int done = WrapLaoEx(text->packed.c_str(), text->code.data(), text->side.data(), DWORD(room),
                         trace.font.name.c_str(), flags);
    text->code.resize(strlen(text->code.c_str()));
    return done && TraceChunks(trace, text);
}

void AppendMarked(const LaoText &text, const std::string &mark, std::string *output)
{
    size_t written = 0;
    for (const Chunk &chunk : text.chunks) {
        if (!chunk.hasBreak)
            continue;
        output->append(text.clean, written, chunk.start - written);
        *output += mark;
        written = chunk.start;
    }
    output->append(text.clean, written);
}

std::string Utf8FromCode(const CodeTrace &trace, const std::string &code)
{
    std::vector<WCHAR> characters(2 * code.size() + 1);
    for (size_t i = 0; i < code.size(); ++i)
        characters[i] = code[i] == kRealHyphen ? WCHAR('-') : WCHAR(uint8_t(code[i]));
    int count =
        LaoToUnicode(code.c_str(), characters.data(), DWORD(characters.size()), trace.font.index);
    std::string text;
    for (int i = 0; i < count; ++i)
        AppendUtf8(&text, char16_t(characters[size_t(i)]));
    return text;
}

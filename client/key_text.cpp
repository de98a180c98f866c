// Pieces of a text. An operation ends its memory of the last syllable at any byte that isn't Lao,
// but at a blank, and looks one byte behind a break. So a piece in front of something foreign gets
// one byte more, which the operation hands through and which is taken off the result again: a blank
// where the foreign character is a no-break space, else a byte that stands for nothing.
#include "key_text.h"

#include <algorithm>
#include <array>
#include <memory>

#include "orvel.h"
#include "utf8.h"

constexpr size_t kGrowth = 40;        // most bytes of a result for each byte of text, in any table
constexpr size_t kPieceSize = 16384;  // bytes of a piece behind which it ends where it can
constexpr char kForeign = '\xFF', kBlank = ' ', kNoBreakCode = '\xA0';
constexpr std::string_view kNoBreakSpace = "\xC2\xA0", kKeyPrefix = "##";

// Blocks that go from conversion to conversion, so that a line asks for no memory.
struct KeyBlocks {
    std::string code;
    std::unique_ptr<char[]> result;
    size_t resultRoom;
};
static KeyBlocks gBlocks;

// One conversion. Texts are of the current piece.
struct KeyWork {
    const CodeTable *codes;
    const KeyOperation *operation;
    KeyForm form;
    bool inBrackets, inSyllable;  // where coded text is
    bool hasKey;                  // the key's prefix is written
    std::string *code;            // internal code to be handed over
    std::string *output;
};

// ---- what is handed over ----

static bool IsKey(const KeyWork &work)
{
    return work.form == KeyForm::kKey || work.form == KeyForm::kShownKey;
}

static bool IsAsciiLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

static bool GoesOnSyllable(char c)
{
    return IsAsciiLetter(c) || (c >= '0' && c <= '9') || c == '*' || c == '#' || c == '&' ||
           c == '\'';
}

static void FollowCoded(KeyWork *work, char c)
{
    if (work->inBrackets) {
        work->inBrackets = c != ']';
        return;
    }
    work->inBrackets = c == '[';
    work->inSyllable = IsAsciiLetter(c) || (work->inSyllable && GoesOnSyllable(c));
}

// Line ends and tabs are text; other control bytes mean something to the library.
static bool IsPlainAscii(char c)
{
    return (c >= ' ' && c < 127) || c == '\n' || c == '\r' || c == '\t';
}

static char CodeOfHyphen(const KeyWork &work)
{
    if (work.form != KeyForm::kDecoded)
        return char(kRealHyphen);
    return work.inBrackets || !work.inSyllable ? 0 : '-';
}

static char CodeOfSign(const KeyWork &work, std::string_view character)
{
    uint8_t code = CodeOfCharacter(*work.codes, character);
    return IsKey(work) || IsLaoCode(code) ? char(code) : 0;
}

// The byte that is handed over for a character; 0 when it is foreign. A break mark is one to a
// table that knows it, and goes with all others.
static char CodeToHandOver(const KeyWork &work, std::string_view character)
{
    if (character == "-")
        return CodeOfHyphen(work);
    if (character.size() == 1)
        return IsPlainAscii(character[0]) ? character[0] : 0;
    if (character == kZeroWidthSpace)
        return work.form == KeyForm::kDecoded ? 0 : char(kBreakMark);
    if (character == kNoBreakSpace)
        return IsKey(work) ? kNoBreakCode : 0;
    return CodeOfSign(work, character);
}

// Takes what is most of any text, Lao and ASCII that are handed over as they are, up to the first
// character of another kind, which is left to the rules above, or to the end of a block: the bytes
// of the source that it was. Coded text has states to be followed.
static size_t TakeStretch(KeyWork *work, std::string_view source)
{
    const std::array<uint8_t, 128> &codes =
        IsKey(*work) ? work->codes->codes : work->codes->runCodes;
    char block[512];
    size_t at = 0, count = 0;
    while (at < source.size() && count < sizeof block) {
        char c = source[at], code = c;
        size_t size = 1;
        if (IsLaoAt(source.data() + at, source.size() - at)) {
            code = char(codes[LaoAt(source.data() + at) - 0x0E80]);
            size = 3;
        } else if (c == '-' || !IsPlainAscii(c)) {
            break;
        }
        if (!code)
            break;
        FollowCoded(work, code);
        block[count++] = code;
        at += size;
    }
    work->code->append(block, count);
    return at;
}

// ---- what comes back ----

// A table's own bytes: UTF-8 where they are that, else characters of the Latin code page.
static void AppendTableText(std::string_view text, std::string *output)
{
    while (!text.empty()) {
        size_t size = CharacterSize(text);
        WCHAR character = 0;
        if (size > 1 || uint8_t(text[0]) < 0x80)
            *output += text.substr(0, size);
        else if (MultiByteToWideChar(1252, 0, text.data(), 1, &character, 1))
            AppendUtf8(output, char16_t(character));
        text.remove_prefix(size);
    }
}

static void AppendForeignText(std::string_view result, std::string *output)
{
    constexpr char kMeaning[] = {kHiddenBreak, char(kRealHyphen), 0};
    for (size_t end; (end = result.find_first_of(kMeaning)) != result.npos;) {
        AppendTableText(result.substr(0, end), output);
        *output += result[end] == kHiddenBreak ? kZeroWidthSpace : "-";
        result.remove_prefix(end + 1);
    }
    AppendTableText(result, output);
}

// ASCII, of which most results are, stands for itself.
static void AppendText(std::string_view result, std::string *output)
{
    auto isForeign = [](char c) { return c < 0 || c == kHiddenBreak; };
    for (auto from = result.begin(), end = result.end(); from != end;) {
        auto foreign = std::find_if(from, end, isForeign);
        output->append(from, foreign);
        from = std::find_if_not(foreign, end, isForeign);
        if (foreign != from)
            AppendForeignText({foreign, from}, output);
    }
}

static void AppendDecoded(const KeyWork &work, std::string_view result)
{
    for (size_t mark; (mark = result.find(char(kBreakMark))) != result.npos;) {
        AppendTextOfCode(*work.codes, result.substr(0, mark), work.output);
        *work.output += kZeroWidthSpace;
        result.remove_prefix(mark + 1);
    }
    AppendTextOfCode(*work.codes, result, work.output);
}

static void AppendResult(const KeyWork &work, std::string_view result)
{
    switch (work.form) {
    case KeyForm::kKey: *work.output += result; break;
    case KeyForm::kShownKey: AppendTextOfCode(*work.codes, result, work.output); break;
    case KeyForm::kText: AppendText(result, work.output); break;
    case KeyForm::kDecoded: AppendDecoded(work, result); break;
    }
}

// ---- pieces ----

static char *ResultBlock(size_t room)
{
    if (room > gBlocks.resultRoom) {
        gBlocks.result = std::make_unique_for_overwrite<char[]>(room);
        gBlocks.resultRoom = room;
    }
    gBlocks.result[0] = 0;
    return gBlocks.result.get();
}

// Converts the piece with `end` behind it (0 for none), which isn't part of the result.
static bool ConvertPiece(KeyWork *work, char end)
{
    if (end)
        *work->code += end;
    size_t room = kGrowth * work->code->size() + kGrowth;
    char *block = ResultBlock(room);
    int done = (*work->operation)(work->code->c_str(), block, DWORD(room));
    std::string_view result = block;
    if (end && result.ends_with(end))
        result.remove_suffix(1);
    if (work->hasKey && result.starts_with(kKeyPrefix))
        result.remove_prefix(kKeyPrefix.size());
    work->hasKey = IsKey(*work);
    AppendResult(*work, result);
    work->code->clear();
    return done;
}

// Bytes from `at` on that are foreign, as far as the piece's end has the same meaning for all of
// them.
static size_t ForeignSize(KeyWork *work, std::string_view source, size_t at)
{
    size_t first = at;
    work->inSyllable = false;
    while (at < source.size()) {
        std::string_view character = source.substr(at, CharacterSize(source.substr(at)));
        bool isSpace = character == kNoBreakSpace;
        bool endsAlike = at == first || isSpace == source.substr(first).starts_with(kNoBreakSpace);
        if (!endsAlike || CodeToHandOver(*work, character))
            break;
        at += character.size();
    }
    return at - first;
}

static bool PassForeign(KeyWork *work, std::string_view foreign)
{
    if (!ConvertPiece(work, foreign.starts_with(kNoBreakSpace) ? kBlank : kForeign))
        return false;
    *work->output += foreign;
    return true;
}

static bool EndsPiece(const std::string &code)
{
    return code.size() >= kPieceSize && (code.back() == '\n' || code.back() == kBlank);
}

bool ConvertKeyText(const CodeTable &codes, KeyForm form, const KeyOperation &operation,
                    std::string_view source, bool inBrackets, std::string *output)
{
    KeyWork work = {&codes, &operation, form, inBrackets, false, false, &gBlocks.code, output};
    gBlocks.code.clear();
    for (size_t i = 0; i < source.size();) {
        if (work.code->size() < kPieceSize)
            i += TakeStretch(&work, source.substr(i));
        if (i == source.size())
            break;
        std::string_view character = source.substr(i, CharacterSize(source.substr(i)));
        char code = CodeToHandOver(work, character);
        if (!code) {
            size_t size = ForeignSize(&work, source, i);
            if (!PassForeign(&work, source.substr(i, size)))
                return false;
            i += size;
            continue;
        }
        *work.code += code;
        FollowCoded(&work, code);
        i += character.size();
        if (EndsPiece(*work.code) && !ConvertPiece(&work, 0))
            return false;
    }
    return ConvertPiece(&work, 0);
}

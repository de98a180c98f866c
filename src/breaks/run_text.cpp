// A character of Lao is told by a look into a table of its block: no character outside of that has
// a code that may stand in a run.
#include "breaks/run_text.h"

#include <array>
#include <cstring>
#include <iterator>

#include "fonts/unicode_tables.h"
#include "text/lao_code.h"

constexpr WCHAR kZeroWidthSpace = 0x200B, kLaoBlock = 0x0E80;
constexpr size_t kBlockSize = 128;

// Codes of the block's characters; 0 for those that stand in no run.
constexpr std::array<uint8_t, kBlockSize> MakeRunCodes()
{
    std::array<uint8_t, kBlockSize> codes = {};
    for (size_t i = 0; i < std::size(kUnicodeLaoTable); ++i)
        if (IsLaoByte(kUnicodeLaoTable[i]))
            codes[i] = kUnicodeLaoTable[i];
    return codes;
}
static constexpr std::array<uint8_t, kBlockSize> kRunCodes = MakeRunCodes();

constexpr bool HasNoLao(const uint8_t *codes, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        if (IsLaoByte(codes[i]))
            return false;
    return true;
}
static_assert(HasNoLao(kUnicodePunctuationTable, std::size(kUnicodePunctuationTable)));
static_assert(!IsLaoByte(kRealHyphen));

constexpr SignJoins kNoJoins = {};

// A run as it is read: a record of its own, so that the compiler keeps it at hand. The number of
// the last sign is kept, since to read it back out of the run would cost more than all the rest.
struct RunEnd {
    RunBytes run;
    const SignJoins *joins;
    uint8_t row;  // of the last code
};

static RunEnd StartRun(const RunBytes &run)
{
    return {run, run.joins ? run.joins : &kNoJoins, 0};
}

static inline void PutCode(RunEnd *end, uint8_t code, DWORD place)
{
    uint8_t joined = end->joins->joined[end->row][end->joins->column[code]];
    size_t at = end->run.count - (joined != 0);
    code = joined ? joined : code;
    end->row = end->joins->row[code];
    end->run.codes[at] = code;
    if (!joined)
        end->run.starts[at] = place;
    end->run.lasts[at] = place;
    end->run.count = at + 1;
}

static void EndRun(const RunEnd &end, RunBytes *run)
{
    run->count = end.run.count;
    run->codes[run->count] = 0;
}

// ---- 16-bit characters ----

static uint8_t CodeOfCharacter(WCHAR character)
{
    unsigned place = unsigned(character) - kLaoBlock;
    return place < kBlockSize ? kRunCodes[place] : 0;
}

static DWORD FindInCharacters(const RunText *text, DWORD start)
{
    const WCHAR *characters = static_cast<const WCHAR *>(text->units);
    while (start < text->length && !CodeOfCharacter(characters[start]))
        ++start;
    return start;
}

static DWORD ReadCharacters(const RunText *text, DWORD start, RunBytes *run)
{
    const WCHAR *characters = static_cast<const WCHAR *>(text->units);
    RunEnd made = StartRun(*run);
    DWORD i = start;
    for (; i < text->length && made.run.count < made.run.room; ++i) {
        uint8_t code = CodeOfCharacter(characters[i]);
        if (code)
            PutCode(&made, code, i);
        else if (characters[i] != kZeroWidthSpace)
            break;
    }
    EndRun(made, run);
    return i;
}

RunText RunTextOfCharacters(const WCHAR *characters, DWORD length)
{
    return {characters, length, 1, FindInCharacters, ReadCharacters};
}

// ---- UTF-8 ----

enum : DWORD { kLaoBytes = 3 };  // of a character of the block, and of U+200B

static bool IsContinuation(char byte)
{
    return (byte & 0xC0) == 0x80;
}

// U+0E80 to U+0EFF are the sequences that begin with E0 BA and E0 BB.
static uint8_t CodeOfBytes(const char *bytes, DWORD left)
{
    if (left < kLaoBytes || bytes[0] != '\xE0' || (bytes[1] & '\xFE') != '\xBA' ||
        !IsContinuation(bytes[2]))
        return 0;
    return kRunCodes[(bytes[1] & 1) << 6 | (bytes[2] & 63)];
}

// A mark that holds the halves of a broken character apart is none: without it they would become
// another character.
static bool IsMarkAt(const char *bytes, DWORD left)
{
    return left >= kLaoBytes && memcmp(bytes, "\xE2\x80\x8B", kLaoBytes) == 0 &&
           (left == kLaoBytes || !IsContinuation(bytes[kLaoBytes]));
}

static DWORD FindInUtf8(const RunText *text, DWORD start)
{
    const char *bytes = static_cast<const char *>(text->units);
    while (start < text->length && !CodeOfBytes(bytes + start, text->length - start)) {
        const void *next = memchr(bytes + start + 1, '\xE0', text->length - start - 1);
        start = next ? DWORD(static_cast<const char *>(next) - bytes) : text->length;
    }
    return start;
}

static DWORD ReadUtf8Run(const RunText *text, DWORD start, RunBytes *run)
{
    const char *bytes = static_cast<const char *>(text->units);
    RunEnd made = StartRun(*run);
    DWORD i = start;
    for (; i < text->length && made.run.count < made.run.room; i += kLaoBytes) {
        uint8_t code = CodeOfBytes(bytes + i, text->length - i);
        if (code)
            PutCode(&made, code, i);
        else if (!IsMarkAt(bytes + i, text->length - i))
            break;
    }
    EndRun(made, run);
    return i;
}

RunText RunTextOfUtf8(const char *bytes, DWORD length)
{
    return {bytes, length, kLaoBytes, FindInUtf8, ReadUtf8Run};
}

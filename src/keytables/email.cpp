// E-mail coding: Lao text in ASCII, and back, for where nothing else gets through. Coding is a
// conversion by the built-in e-mail table; decoding hands each coded stretch to the companion.
// Latin passages stand between brackets, which may stay open from one call to the next; the host
// keeps the word that tells.
#include <cassert>
#include <cstring>

#include "frame/companion.h"
#include "frame/messages.h"
#include "frame/strings.h"
#include "keytables/ascii_class.h"
#include "keytables/builtin_tables.h"
#include "keytables/convert.h"
#include "orvel.h"
#include "text/lao_code.h"

// Bytes that the companion may write for each one of coded text, and room beside them.
enum { kDecodeGrowth = 4, kDecodeSpare = 64 };

// ---- coding ----

// The bracket that belongs in front of a byte, 0 for none; the state follows it.
static char BracketBefore(char byte, DWORD *state)
{
    bool changes = *state ? IsLaoByte(byte) : IsAsciiLetter(byte);
    if (!changes)
        return 0;
    *state = !*state;
    return *state ? '[' : ']';
}

static size_t CountBrackets(const char *text, DWORD state)
{
    size_t count = 0;
    for (; *text; ++text)
        count += BracketBefore(*text, &state) != 0;
    return count;
}

// text has room for count more bytes.
static void InsertBrackets(char *text, size_t count, DWORD *state)
{
    const char *read = text + count;
    char *write = text;
    memmove(text + count, text, strlen(text) + 1);
    for (; *read; ++read) {
        if (char bracket = BracketBefore(*read, state))
            *write++ = bracket;
        assert(write <= read);
        *write++ = *read;
    }
    *write = 0;
}

int WINAPI EncodeEmail(const char *text, char *output, DWORD size, const char *font, DWORD *state)
{
    if (!text || !output || !state || strlen(text) >= size)
        return 0;
    memmove(output, text, strlen(text) + 1);
    int code = FontType(font);
    if (code < 0)
        return 1;  // not Lao text
    RecodeString(output, size, code);
    PackLao(output);
    size_t count = CountBrackets(output, *state);
    if (strlen(output) + count >= size)
        return WarningBox("Cannot process Lao text, selection is too large");
    InsertBrackets(output, count, state);
    return ConvertByConstantTable(output, size, &kBuiltInEmailTable);
}

// ---- decoding ----

// One call of decoding.
struct Decoder {
    const char *read;
    char *write, *end;  // of the work block, which has room for what is left to read
    DWORD *state;
};

static void CopyByte(Decoder *decoder)
{
    assert(decoder->write < decoder->end);
    *decoder->write++ = *decoder->read++;
}

// Inside of brackets, up to the one that closes them.
static void DecodeLatin(Decoder *decoder)
{
    while (*decoder->read && *decoder->read != ']')
        CopyByte(decoder);
    if (!*decoder->read)
        return;
    *decoder->state = 0;
    ++decoder->read;
}

static bool IsSeparator(char byte)
{
    return uint8_t(byte) == kBuiltInEmailTable.separator;
}

// Bytes that go to the companion together; a syllable starts with a letter.
static bool IsSyllableByte(char byte)
{
    bool isSign = byte == '*' || byte == '#' || byte == '&' || byte == '\'';
    return isSign || ((IsAsciiLetter(byte) || IsAsciiDigit(byte)) && !IsSeparator(byte));
}

// A separator behind the syllable is a break, but at the end of the text and before punctuation.
static void PassSeparator(Decoder *decoder)
{
    if (!IsSeparator(*decoder->read))
        return;
    char behind = *++decoder->read;
    if (behind && !IsAsciiPunctuation(behind))
        *decoder->write++ = char(kBreakMark);
}

// A companion that claims to have written more than there is room for isn't believed.
static void DecodeSyllable(Decoder *decoder)
{
    const char *start = decoder->read;
    while (IsSyllableByte(*decoder->read))
        ++decoder->read;
    int written = AddLaoSyllable(decoder->write, start, decoder->read);
    if (written > 0 && written < decoder->end - decoder->write)
        decoder->write += written;
    PassSeparator(decoder);
}

// Outside of brackets, up to one that opens them or behind one syllable.
static void DecodeCoded(Decoder *decoder)
{
    while (*decoder->read && *decoder->read != '[' && !IsAsciiLetter(*decoder->read))
        CopyByte(decoder);
    if (*decoder->read == '[') {
        *decoder->state = 1;
        ++decoder->read;
    } else if (*decoder->read) {
        DecodeSyllable(decoder);
    }
}

// Decodes in place: 1 done; 0 without memory or when the result doesn't fit size bytes (it is then
// cut).
static int DecodeEmailText(char *text, DWORD size, DWORD *state)
{
    size_t length = strlen(text);
    bool isHuge = length > (SIZE_MAX - kDecodeSpare) / kDecodeGrowth;
    size_t room = isHuge ? SIZE_MAX : kDecodeGrowth * length + kDecodeSpare;
    char *block = static_cast<char *>(CheckedGlobalAlloc(GPTR, room));
    if (!block)
        return 0;
    Decoder decoder = {text, block, block + room, state};
    while (*decoder.read) {
        if (*state)
            DecodeLatin(&decoder);
        else
            DecodeCoded(&decoder);
    }
    *decoder.write = 0;
    PackLao(block);
    bool fits = strlen(block) < size;
    CopyCut(text, size, block);
    GlobalFree(block);
    return fits;
}

int WINAPI DecodeEmail(const char *text, char *output, DWORD size, const char *, DWORD *state)
{
    if (!text || !output || !state || strlen(text) >= size)
        return 0;
    memmove(output, text, strlen(text) + 1);
    return DecodeEmailText(output, size, state);
}

// RecodeString: text between the code of a font and the internal code, in the caller's buffer. The
// library calls it at the start and at the end of every operation on a font's text. Each charset is
// a pair of tables, worked out at compile time: the internal byte for each byte, and the one or two
// bytes for each internal byte. A code for two signs that a charset lacks goes out as its two
// signs, so text can grow on its way out; it is then written from its end, where nothing unread is
// overwritten.
#include "charset_tables.h"
#include "font_codes.h"
#include "lao_signs.h"
#include "vesk.h"
#include <cassert>
#include <cstring>
#include <iterator>

constexpr uint8_t kUnknown = '?';

// What a sign becomes in a charset.
struct SignBytes {
    uint8_t bytes[2];
    uint8_t count;
};

struct Charset {
    uint8_t in[256];
    SignBytes out[256];
};

// ---- from charset to internal code ----

constexpr uint8_t SignOfCharacter(uint32_t character)
{
    if (character == 0xA0)
        return kNoBreakSpace;
    if (character && character < 0x80)
        return uint8_t(character);
    uint8_t sign = SignOfUnicode(character);
    return sign ? sign : kUnknown;
}

constexpr uint8_t SignFromFont2000(int code)
{
    return code < 0x80 ? uint8_t(code) : kFont2000[code - 0x80];
}

constexpr uint8_t SignFromIbm1133(int code)
{
    if (code < 0x80)
        return uint8_t(code);
    return code < 0xA0 ? kUnknown : SignOfCharacter(kIbm1133[code - 0xA0]);
}

constexpr uint8_t SignFromLaoBlock(int code)
{
    if (code <= 0xA0)
        return code < 0x80 ? uint8_t(code) : SignOfCharacter(uint32_t(code));
    return SignOfCharacter(kLaoBlock + uint32_t(code - 0xA0));
}

// ---- from internal code to charset ----

// The byte for the sign, or for another form of it; 0 for none.
constexpr uint8_t ByteOfSign(const uint8_t *inverse, uint8_t sign)
{
    if (inverse[sign])
        return inverse[sign];
    if (inverse[MainForm(sign)])
        return inverse[MainForm(sign)];
    for (const SignForm &row : kSignForms)
        if (row.main == MainForm(sign) && inverse[row.form])
            return inverse[row.form];
    return 0;
}

// The sign's byte, or those of its two signs, or "?".
constexpr SignBytes BytesOfSign(const uint8_t *inverse, uint8_t sign)
{
    uint8_t code = ByteOfSign(inverse, sign);
    if (code)
        return {{code, 0}, 1};
    const SignPair *pair = SignPairOf(MainForm(sign));
    if (!pair)
        return {{kUnknown, 0}, 1};
    uint8_t first = ByteOfSign(inverse, pair->first), second = ByteOfSign(inverse, pair->second);
    if (!first || !second)
        return {{kUnknown, 0}, 1};
    return {{first, second}, 2};
}

// The way out is the way in read backwards, with other forms of a sign and pairs where it has gaps.
constexpr void FillOutTable(Charset *charset)
{
    uint8_t inverse[256] = {};
    for (int code = 255; code > 0; --code)  // so that the lowest of several stays
        if (charset->in[code] != kUnknown || code == kUnknown)
            inverse[charset->in[code]] = uint8_t(code);
    if (!inverse[kOldBreakMark])  // an old mark goes out as one of today
        inverse[kOldBreakMark] = inverse[kBreakMark];
    for (int sign = 1; sign < 256; ++sign)
        charset->out[sign] = BytesOfSign(inverse, uint8_t(sign));
}

// In all four the byte of "-" is a hyphen that is seen, and another byte is the break mark.
constexpr Charset MakeCharset(uint8_t (*signFrom)(int), uint8_t breakByte)
{
    Charset charset = {};
    for (int code = 1; code < 256; ++code)
        charset.in[code] = signFrom(code);
    charset.in['-'] = kRealHyphen;
    charset.in[breakByte] = kBreakMark;
    FillOutTable(&charset);
    return charset;
}

constexpr uint8_t SignFromFont95(int code)
{
    return uint8_t(code);
}

constexpr Charset kCharset2 = MakeCharset(SignFromFont2000, kFontBreak);
constexpr Charset kCharset3 = MakeCharset(SignFromFont95, kFontBreak);
constexpr Charset kCharset4 = MakeCharset(SignFromIbm1133, kPublicBreak);
constexpr Charset kCharset5 = MakeCharset(SignFromLaoBlock, kPublicBreak);

// By font code; null: the code is the internal code.
static const Charset *const kCharsets[] = {
    // ORDER FontCode
    nullptr, nullptr, &kCharset2, &kCharset3, &kCharset4, &kCharset5, nullptr,
};
static_assert(std::size(kCharsets) == kFontCodeCount);

// ---- recoding in place ----

static void RecodeIn(const Charset *charset, uint8_t *text)
{
    for (; *text; ++text)
        *text = charset->in[*text];
}

struct OutExtent {
    size_t signs, bytes;  // of the beginning that fits
    bool fits;            // it is the whole text
};

// room is without the terminator. A sign of two bytes fits whole or not at all.
static OutExtent MeasureOut(const Charset *charset, const uint8_t *text, size_t room)
{
    OutExtent extent = {0, 0, true};
    for (; text[extent.signs]; ++extent.signs) {
        size_t count = charset->out[text[extent.signs]].count;
        if (count > room - extent.bytes)
            return {extent.signs, extent.bytes, false};
        extent.bytes += count;
    }
    return extent;
}

// From the last sign that fits to the first: a sign is never written in front of one that is still
// to be read, as each gives at least one byte.
static DWORD RecodeOut(const Charset *charset, uint8_t *text, size_t size)
{
    OutExtent extent = MeasureOut(charset, text, size - 1);
    size_t to = extent.bytes;
    text[to] = 0;
    for (size_t from = extent.signs; from-- > 0;) {
        const SignBytes *out = &charset->out[text[from]];
        to -= out->count;
        assert(to >= from);
        if (out->count == 2)
            text[to + 1] = out->bytes[1];
        text[to] = out->bytes[0];
    }
    return extent.fits;
}

DWORD WINAPI RecodeString(char *text, DWORD size, LONG code)
{
    if (!text || !size || code <= -kFontCodeCount || code >= kFontCodeCount)
        return 0;
    const Charset *charset = kCharsets[code < 0 ? -code : code];
    if (!charset)
        return 1;
    bool isTerminated = memchr(text, 0, size) != nullptr;
    if (!isTerminated)
        text[size - 1] = 0;
    uint8_t *bytes = reinterpret_cast<uint8_t *>(text);
    if (code < 0)
        return RecodeOut(charset, bytes, size) && isTerminated;
    RecodeIn(charset, bytes);
    return isTerminated;
}

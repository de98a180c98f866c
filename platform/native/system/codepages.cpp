// Bytes to UTF-16 and back, for the conversion of documents and the bridge to the companion. UTF-8
// that isn't well formed gives U+FFFD, lone surrogates give U+FFFD's bytes; 1252 goes by the
// system's own table of look-alikes ("best fit"), which is data.
#include <string.h>
#include <windows.h>

#include "system/best_fit_1252.h"

constexpr WCHAR kReplacement = 0xFFFD;

// Counts what it is given and stores it while there is room; without room it only counts.
struct WideSink {
    WCHAR *units;     // the caller's; null where it only asks for the size
    int room, count;  // units
    bool overflow;    // a unit found no room: the count means nothing
};

struct ByteSink {
    char *bytes;      // the caller's; null where it only asks for the size
    int room, count;  // bytes
    bool overflow;    // a character found no room: the count means nothing
};

static void PutUnit(WideSink *sink, unsigned unit)
{
    if (sink->room) {
        if (sink->count == sink->room) {
            sink->overflow = true;
            return;
        }
        sink->units[sink->count] = WCHAR(unit);
    }
    ++sink->count;
}

// A character's bytes are stored together or not at all.
static void PutBytes(ByteSink *sink, const char *bytes, int length)
{
    if (sink->room) {
        if (sink->overflow || length > sink->room - sink->count) {
            sink->overflow = true;
            return;
        }
        memcpy(sink->bytes + sink->count, bytes, size_t(length));
    }
    sink->count += length;
}

// Always 0, which both calls give for a failure.
static int Fail(DWORD code)
{
    SetLastError(code);
    return 0;
}

// --- UTF-8 ---

constexpr unsigned kBadSequence = ~0u;

// How many bytes follow this one; 0 for a byte that begins nothing.
static int FollowingBytes(unsigned char lead)
{
    if (lead < 0xC2 || lead > 0xF4)
        return 0;
    return lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
}

// Whether a code point can still come of these bits, with this many bytes to follow: none that is
// written longer than it needs, no surrogate.
static bool CanGoOn(unsigned bits, int toFollow)
{
    if (toFollow == 2)
        return bits >= 0x10;
    return toFollow == 0 || (bits >= 0x20 && (bits < 0xD800 >> 6 || bits > 0xDFFF >> 6));
}

// The code point at `*at`, or kBadSequence for bytes that are none. The bytes that are stepped over
// then are the system's choice: also the one that showed an overlong form or a surrogate, but not
// the one that showed a number above U+10FFFF.
static unsigned NextCodePoint(const unsigned char *text, int length, int *at)
{
    unsigned char byte = text[(*at)++];
    if (byte < 0x80)
        return byte;
    int toFollow = FollowingBytes(byte);
    if (toFollow == 0)
        return kBadSequence;
    unsigned point = byte & (0x3Fu >> toFollow);
    while (toFollow > 0) {
        if (*at >= length || (text[*at] & 0xC0) != 0x80)
            return kBadSequence;
        point = point << 6 | (text[*at] & 0x3Fu);
        --toFollow;
        if (toFollow == 1 && point >= 0x110000 >> 6)
            return kBadSequence;
        (*at)++;
        if (!CanGoOn(point, toFollow))
            return kBadSequence;
    }
    return point;
}

// False when the text isn't well formed.
static bool WidenUtf8(const char *text, int length, WideSink *sink)
{
    bool wellFormed = true;
    for (int at = 0; at < length && !sink->overflow;) {
        unsigned point = NextCodePoint(reinterpret_cast<const unsigned char *>(text), length, &at);
        if (point == kBadSequence) {
            wellFormed = false;
            point = kReplacement;
        }
        if (point >= 0x10000) {
            PutUnit(sink, 0xD7C0 + (point >> 10));
            PutUnit(sink, 0xDC00 + (point & 0x3FF));
        } else {
            PutUnit(sink, point);
        }
    }
    return wellFormed;
}

// One to four bytes, by the size of the code point.
static void PutUtf8(ByteSink *sink, unsigned point)
{
    char bytes[4];
    int length = point < 0x80 ? 1 : point < 0x800 ? 2 : point < 0x10000 ? 3 : 4;
    for (int i = length - 1; i > 0; --i) {
        bytes[i] = char(0x80 | (point & 0x3F));
        point >>= 6;
    }
    constexpr unsigned char kLeads[] = {0, 0x00, 0xC0, 0xE0, 0xF0};
    bytes[0] = char(kLeads[length] | point);
    PutBytes(sink, bytes, length);
}

// False when a surrogate stands alone, which comes out as the replacement.
static bool NarrowUtf8(const WCHAR *wide, int length, ByteSink *sink)
{
    bool wellFormed = true;
    for (int at = 0; at < length && !sink->overflow;) {
        unsigned point = wide[at++];
        bool isHigh = (point & 0xFC00) == 0xD800;
        if (isHigh && at < length && (wide[at] & 0xFC00) == 0xDC00) {
            point = 0x10000 + ((point & 0x3FF) << 10) + (wide[at++] & 0x3FFu);
        } else if ((point & 0xF800) == 0xD800) {
            wellFormed = false;
            point = kReplacement;
        }
        PutUtf8(sink, point);
    }
    return wellFormed;
}

// --- 1252 ---

// All bytes but these 32 are their own units.
static WCHAR WidenByte(unsigned char byte)
{
    return byte >= 0x80 && byte < 0xA0 ? kUpperHalf1252[byte - 0x80] : byte;
}

// The byte that stands for a unit, exactly or (where allowed) by its look; -1 when there is none.
static int NarrowUnit(WCHAR unit, bool takesBestFit)
{
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF))
        return unit;
    for (int i = 0; i < 32; ++i) {
        if (kUpperHalf1252[i] == unit)
            return 0x80 + i;
    }
    if (!takesBestFit)
        return -1;
    int low = 0, high = kBestFit1252Count;
    while (low < high) {
        int middle = (low + high) / 2;
        if (kBestFit1252[middle].first + kBestFit1252[middle].count <= unit)
            low = middle + 1;
        else
            high = middle;
    }
    const BestFitRun *run = &kBestFit1252[low];
    if (low == kBestFit1252Count || unit < run->first)
        return -1;
    return run->byte + (unit - run->first) * run->step;
}

// What becomes of a unit without a byte of its own.
struct Fallback {
    bool takesBestFit;  // a byte that looks alike will do
    char byte;          // where there is none
    bool used;          // `byte` was, at least once
};

static void Narrow1252(const WCHAR *wide, int length, Fallback *fallback, ByteSink *sink)
{
    for (int at = 0; at < length && !sink->overflow; ++at) {
        int byte = NarrowUnit(wide[at], fallback->takesBestFit);
        if (byte < 0) {
            fallback->used = true;
            byte = BYTE(fallback->byte);
        }
        char stored = char(byte);
        PutBytes(sink, &stored, 1);
    }
}

// --- the two calls ---

// Units up to and with the terminator.
static int WideLength(const WCHAR *wide)
{
    int length = 0;
    while (wide[length])
        ++length;
    return length + 1;
}

static bool IsKnownCodePage(UINT codePage)
{
    return codePage == CP_UTF8 || codePage == CP_ACP || codePage == 1252;
}

int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int length, LPWSTR wide,
                               int wideSize)
{
    bool wellFormed = true;
    if (!text || length == 0 || wideSize < 0 || (wideSize && !wide) || !IsKnownCodePage(codePage))
        return Fail(ERROR_INVALID_PARAMETER);
    if (length < 0)
        length = int(strlen(text)) + 1;
    if (flags & ~DWORD(MB_PRECOMPOSED | MB_ERR_INVALID_CHARS))
        return Fail(ERROR_INVALID_FLAGS);
    WideSink sink = {wide, wideSize, 0, false};
    if (codePage == CP_UTF8) {
        wellFormed = WidenUtf8(text, length, &sink);
    } else {
        for (int at = 0; at < length && !sink.overflow; ++at)
            PutUnit(&sink, WidenByte(BYTE(text[at])));
    }
    if (!wellFormed && (flags & MB_ERR_INVALID_CHARS))
        return Fail(ERROR_NO_UNICODE_TRANSLATION);
    return sink.overflow ? Fail(ERROR_INSUFFICIENT_BUFFER) : sink.count;
}

int WINAPI WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR wide, int length, LPSTR text,
                               int textSize, LPCSTR defaultChar, LPBOOL usedDefault)
{
    bool wellFormed = true;
    if (!wide || length == 0 || textSize < 0 || (textSize && !text) || !IsKnownCodePage(codePage))
        return Fail(ERROR_INVALID_PARAMETER);
    if (codePage == CP_UTF8 && (defaultChar || usedDefault))
        return Fail(ERROR_INVALID_PARAMETER);
    if (flags & ~DWORD(codePage == CP_UTF8 ? WC_ERR_INVALID_CHARS : WC_NO_BEST_FIT_CHARS))
        return Fail(ERROR_INVALID_FLAGS);
    if (length < 0)
        length = WideLength(wide);
    ByteSink sink = {text, textSize, 0, false};
    Fallback fallback = {!(flags & WC_NO_BEST_FIT_CHARS), defaultChar ? *defaultChar : '?', false};
    if (codePage == CP_UTF8)
        wellFormed = NarrowUtf8(wide, length, &sink);
    else
        Narrow1252(wide, length, &fallback, &sink);
    if (!wellFormed && (flags & WC_ERR_INVALID_CHARS))
        return Fail(ERROR_NO_UNICODE_TRANSLATION);
    if (usedDefault)
        *usedDefault = fallback.used;
    return sink.overflow ? Fail(ERROR_INSUFFICIENT_BUFFER) : sink.count;
}

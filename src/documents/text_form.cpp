// Text is read and written character by character. Bytes that are no UTF-8 go through as they are,
// each by itself: legacy text around them is converted all the same.
#include "documents/text_form.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

// ---- units ----

void FreeUnits(Units *units)
{
    free(units->data);
    *units = {};
}

WCHAR *MakeUnits(Units *units, size_t count)
{
    void *data = units->data;
    size_t wanted = units->length + count;
    if (units->failed || !GrowArray(&data, &units->room, wanted, sizeof(WCHAR)))
        units->failed = true;
    else
        units->data = static_cast<WCHAR *>(data);
    return units->failed ? nullptr : units->data + units->length;
}

void AppendUnit(Units *units, WCHAR unit)
{
    WCHAR *place = MakeUnits(units, 1);
    if (!place)
        return;
    *place = unit;
    ++units->length;
}

void AppendCharacter(Units *units, unsigned long character)
{
    if (character >= 0x10000) {
        AppendUnit(units, WCHAR(0xD800 + ((character - 0x10000) >> 10)));
        character = 0xDC00 + ((character - 0x10000) & 0x3FF);
    }
    AppendUnit(units, WCHAR(character));
}

// ---- UTF-8 ----

// The length of the character that begins here; 0 for bytes that begin none.
static size_t LengthOfCharacter(std::string_view text)
{
    uint8_t first = uint8_t(text[0]), second = text.size() > 1 ? uint8_t(text[1]) : 0;
    size_t length = first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    bool isBad = first > 0xF4 || length > text.size() || (first == 0xE0 && second < 0xA0) ||
                 (first == 0xED && second > 0x9F) || (first == 0xF0 && second < 0x90) ||
                 (first == 0xF4 && second > 0x8F);
    for (size_t i = 1; i < length && !isBad; ++i)
        isBad = (text[i] & 0xC0) != 0x80;
    return isBad ? 0 : length;
}

void ReadUtf8(std::string_view *text, Units *units)
{
    size_t length = LengthOfCharacter(*text);
    const char *bytes = text->data();
    unsigned long character = uint8_t(*bytes);
    if (length == 0) {
        AppendUnit(units, WCHAR(kKeptBytes + character));
        length = 1;
    } else {
        if (length > 1)
            character &= 0x7Fu >> length;
        for (size_t i = 1; i < length; ++i)
            character = character << 6 | (uint8_t(bytes[i]) & 0x3Fu);
        AppendCharacter(units, character);
    }
    text->remove_prefix(length);
}

static void PutUtf8(unsigned long character, Bytes *bytes)
{
    char *place = MakeRoom(bytes, 4);
    if (!place)
        return;
    int follow = character < 0x80 ? 0 : character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    constexpr uint8_t kLeads[] = {0, 0xC0, 0xE0, 0xF0};
    *place++ = char(kLeads[follow] | (character >> (6 * follow)));
    for (int i = follow - 1; i >= 0; --i)
        *place++ = char(0x80 | ((character >> (6 * i)) & 0x3F));
    bytes->length += size_t(follow) + 1;
}

size_t WriteUtf8(const WCHAR *units, size_t count, Bytes *bytes)
{
    unsigned long character = *units;
    bool isPair = (character & 0xFC00) == 0xD800 && count > 1 && (units[1] & 0xFC00) == 0xDC00;
    if (isPair)
        character = 0x10000 + ((character & 0x3FF) << 10) + (units[1] & 0x3FFu);
    if (IsKeptByte(*units)) {
        char byte = char(*units & 0xFF);
        AppendBytes(bytes, {&byte, 1});
    } else {
        PutUtf8(character, bytes);
    }
    return isPair ? 2 : 1;
}

// ---- XML ----

struct NamedCharacter {
    std::string_view reference;
    char character;
};
constexpr NamedCharacter kNamed[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};

// Null for a character that no XML has.
static unsigned long ReadNumber(std::string_view digits)
{
    unsigned base = 10;
    unsigned long number = 0;
    if (!digits.empty() && (digits[0] == 'x' || digits[0] == 'X')) {
        base = 16;
        digits.remove_prefix(1);
    }
    for (char c : digits) {
        unsigned digit = c >= '0' && c <= '9'                 ? unsigned(c - '0')
                         : (c | 32) >= 'a' && (c | 32) <= 'f' ? unsigned((c | 32) - 'a') + 10
                                                              : 16;
        number = number * base + digit;
        if (digit >= base || number > 0x10FFFF)
            return 0;
    }
    return (number & ~0x7FFUL) == 0xD800 ? 0 : number;
}

// Reads a reference at the beginning of a text, "&amp;" or "&#3713;", and steps behind it. False
// when there is none.
static bool ReadReference(std::string_view *text, Units *units)
{
    for (const NamedCharacter &row : kNamed) {
        if (!text->starts_with(row.reference))
            continue;
        AppendUnit(units, WCHAR(row.character));
        text->remove_prefix(row.reference.size());
        return true;
    }
    size_t end = text->substr(0, 40).find(';');
    if (!text->starts_with("&#") || end == text->npos)
        return false;
    unsigned long number = ReadNumber(text->substr(2, end - 2));
    if (!number)
        return false;
    AppendCharacter(units, number);
    text->remove_prefix(end + 1);
    return true;
}

// Characters that one, two or three bytes of UTF-8 give, and are nothing else: nearly all of Lao
// text, in legacy code and in Unicode. How many bytes of the text they are.
static size_t ReadPlainStretch(std::string_view raw, WCHAR *place, size_t *count)
{
    const uint8_t *bytes = reinterpret_cast<const uint8_t *>(raw.data());
    size_t at = 0, made = 0;
    while (at < raw.size()) {
        uint8_t byte = bytes[at];
        if (byte < 0x80 && byte != '&') {
            place[made++] = byte;
            ++at;
        } else if (byte >= 0xC2 && byte <= 0xDF && at + 1 < raw.size() &&
                   (bytes[at + 1] & 0xC0) == 0x80) {
            place[made++] = WCHAR((byte & 0x1F) << 6 | (bytes[at + 1] & 0x3F));
            at += 2;
        } else if (byte >= 0xE1 && byte <= 0xEC && at + 2 < raw.size() &&
                   (bytes[at + 1] & 0xC0) == 0x80 && (bytes[at + 2] & 0xC0) == 0x80) {
            place[made++] =
                WCHAR((byte & 0x0F) << 12 | (bytes[at + 1] & 0x3F) << 6 | (bytes[at + 2] & 0x3F));
            at += 3;
        } else {
            break;
        }
    }
    *count = made;
    return at;
}

static void ReadXml(std::string_view raw, Units *units)
{
    while (!raw.empty()) {
        size_t count = 0;
        WCHAR *place = MakeUnits(units, raw.size());
        if (!place)
            return;
        raw.remove_prefix(ReadPlainStretch(raw, place, &count));
        units->length += count;
        if (raw.empty())
            return;
        if (raw[0] != '&') {
            ReadUtf8(&raw, units);
        } else if (!ReadReference(&raw, units)) {
            AppendUnit(units, kKeptBytes + '&');
            raw.remove_prefix(1);
        }
    }
}

// What can't stand in a text, or would be read as something else: a CR becomes a line feed.
static std::string_view ReferenceFor(WCHAR unit, bool isValue)
{
    switch (unit) {
    case '&': return "&amp;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '\r': return "&#13;";
    case '"': return isValue ? "&quot;" : "";
    case '\'': return isValue ? "&apos;" : "";
    case '\n': return isValue ? "&#10;" : "";
    case '\t': return isValue ? "&#9;" : "";
    default: return "";
    }
}

static bool IsPlain(WCHAR unit)
{
    return (unit >= 0x800 && unit < 0xD800) ||
           (unit >= ' ' && unit < 0x7F && unit != '&' && unit != '<' && unit != '>' &&
            unit != '"' && unit != '\'');
}

// Units of one byte or of three that need no reference: how many of them.
static size_t WritePlainStretch(const WCHAR *units, size_t count, Bytes *bytes)
{
    char *place = MakeRoom(bytes, 3 * count);
    size_t at = 0;
    if (!place)
        return count;
    for (; at < count && IsPlain(units[at]); ++at) {
        WCHAR unit = units[at];
        if (unit < 0x80) {
            *place++ = char(unit);
            continue;
        }
        *place++ = char(0xE0 | (unit >> 12));
        *place++ = char(0x80 | ((unit >> 6) & 0x3F));
        *place++ = char(0x80 | (unit & 0x3F));
    }
    bytes->length = size_t(place - bytes->data);
    return at;
}

static void WriteXml(const WCHAR *units, size_t count, bool isValue, Bytes *bytes)
{
    for (size_t i = 0; i < count;) {
        i += WritePlainStretch(units + i, count - i, bytes);
        if (i == count)
            return;
        std::string_view reference = ReferenceFor(units[i], isValue);
        AppendBytes(bytes, reference);
        i += reference.empty() ? WriteUtf8(units + i, count - i, bytes) : 1;
    }
}

static void WriteXmlText(const WCHAR *units, size_t count, Bytes *bytes)
{
    WriteXml(units, count, false, bytes);
}

static void WriteXmlValue(const WCHAR *units, size_t count, Bytes *bytes)
{
    WriteXml(units, count, true, bytes);
}

static void ReadPlain(std::string_view raw, Units *units)
{
    while (!raw.empty())
        ReadUtf8(&raw, units);
}

static void WritePlain(const WCHAR *units, size_t count, Bytes *bytes)
{
    for (size_t i = 0; i < count;)
        i += WriteUtf8(units + i, count - i, bytes);
}

// The end of a section can't stand in it: there it is cut in two.
static void WriteCdata(const WCHAR *units, size_t count, Bytes *bytes)
{
    for (size_t i = 0; i < count;) {
        if (units[i] == '>' && i >= 2 && units[i - 1] == ']' && units[i - 2] == ']')
            AppendBytes(bytes, "]]><![CDATA[");
        i += WriteUtf8(units + i, count - i, bytes);
    }
}

const TextForm kXmlText = {ReadXml, WriteXmlText};
const TextForm kXmlValue = {ReadXml, WriteXmlValue};
const TextForm kCdataText = {ReadPlain, WriteCdata};
const TextForm kPlainUtf8 = {ReadPlain, WritePlain};

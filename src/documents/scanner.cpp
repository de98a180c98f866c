// The scanner keeps a window of the part. A piece is looked for in what is there; when its end
// isn't, more is read, and the window grows for a piece that is longer than it. Only texts are cut:
// a tag of any length has to be seen whole, up to a limit that no real document reaches.
#include "documents/scanner.h"

#include <cstring>

#include "frame/strings.h"
#include "xmlconv/byte_set.h"

constexpr size_t kReadSize = 256 * 1024;            // bytes at a time
constexpr size_t kLongestPiece = 64 * 1024 * 1024;  // of tags, comments and the like, in bytes
constexpr size_t kLongText = 64 * 1024;             // a longer text may be cut
constexpr size_t kLongestReference = 40;  // as "&#x0000EA5;"; no text is cut inside of one

constexpr ByteSet kSpaces = SetOf(" \t\r\n\f");
constexpr ByteSet kNameEnds = SetOf(" \t\r\n\f/>=");
constexpr ByteSet kTagStops = SetOf("\"'>");

void StartScanning(Scanner *scanner, const DocumentSource &source, bool isHtml)
{
    *scanner = {};
    scanner->source = source;
    scanner->isHtml = isHtml;
}

void StopScanning(Scanner *scanner)
{
    FreeBytes(&scanner->window);
}

static std::string_view Window(const Scanner *scanner)
{
    return TextOf(scanner->window).substr(scanner->used);
}

static bool FailAt(Scanner *scanner, ConversionFailure failure)
{
    scanner->failure = failure;
    return false;
}

// More of the part behind what is there. False at a failure; at the end nothing has been added.
static bool ReadMore(Scanner *scanner)
{
    Bytes *window = &scanner->window;
    size_t left = window->length - scanner->used;
    if (scanner->used > 0) {
        memmove(window->data, window->data + scanner->used, left);
        window->length = left;
        scanner->used = 0;
    }
    char *place = MakeRoom(window, kReadSize);
    if (!place)
        return FailAt(scanner, kFailMemory);
    size_t count = scanner->source.read(scanner->source.context, place, kReadSize);
    window->length += count;
    scanner->hasEnded = count == 0;
    return true;
}

static bool Give(Scanner *scanner, Piece *piece, PieceKind kind, size_t length)
{
    piece->kind = kind;
    piece->raw = Window(scanner).substr(0, length);
    scanner->used += length;
    scanner->position += length;
    return true;
}

// ---- where a piece ends: the place behind it; 0 where that can't be seen yet ----

static size_t EndBehind(std::string_view text, size_t from, std::string_view end)
{
    size_t found = text.find(end, from);
    return found == text.npos ? 0 : found + end.size();
}

// A bracket in quotes ends no tag.
static size_t EndOfTag(std::string_view text)
{
    for (size_t i = 1; i < text.size(); ++i) {
        char c = text[i];
        if (!kTagStops.has[uint8_t(c)] || c == 0)
            continue;
        if (c == '>')
            return i + 1;
        i = text.find(c, i + 1);
        if (i == text.npos)
            return 0;
    }
    return 0;
}

// A declaration may have others in it, between square brackets.
static size_t EndOfDeclaration(std::string_view text)
{
    int depth = 0;
    for (size_t i = 2; i < text.size(); ++i) {
        char c = text[i];
        if (c == '"' || c == '\'') {
            i = text.find(c, i + 1);
            if (i == text.npos)
                return 0;
        }
        depth += (c == '[') - (c == ']');
        if (c == '>' && depth <= 0)
            return i + 1;
    }
    return 0;
}

struct MarkupForm {
    std::string_view beginning, end;
    PieceKind kind;
};
constexpr MarkupForm kForms[] = {
    {"<!--", "-->", kOtherPiece}, {"<![CDATA[", "]]>", kCdataPiece}, {"<?", "?>", kOtherPiece}};

static size_t EndOfMarkup(const Scanner *scanner, std::string_view text, PieceKind *kind)
{
    for (const MarkupForm &form : kForms) {
        bool isPhp = scanner->isHtml && form.beginning == "<?";  // pages write "<?xml … >" too
        if (!text.starts_with(form.beginning))
            continue;
        *kind = form.kind;
        return EndBehind(text, form.beginning.size(), isPhp ? ">" : form.end);
    }
    *kind = kOtherPiece;
    if (text.starts_with("<!"))
        return scanner->isHtml ? EndBehind(text, 0, ">") : EndOfDeclaration(text);
    size_t end = EndOfTag(text);
    *kind = text.starts_with("</")            ? kClosingPiece
            : end > 2 && text[end - 2] == '/' ? kEmptyPiece
                                              : kOpeningPiece;
    return end;
}

// Where a long text of a part that goes on is cut: not inside of a character or a reference.
static size_t CutOfText(std::string_view text)
{
    size_t cut = text.size() - 1;  // what stands at the cut can be looked at
    size_t reference = text.rfind('&');
    if (reference != text.npos && reference > cut - kLongestReference)
        cut = reference;
    for (int i = 0; i < 3 && (text[cut] & 0xC0) == 0x80; ++i)
        --cut;
    return cut;
}

static bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// What a browser takes for text though it begins with a bracket: "a < b".
static bool IsTextOfHtml(const Scanner *scanner, std::string_view text)
{
    if (!scanner->isHtml || text.size() < 2)
        return false;
    char next = text[1];
    bool closes = next == '/' && text.size() > 2 && (IsLetter(text[2]) || text[2] == '>');
    return !IsLetter(next) && next != '!' && next != '?' && !closes;
}

static bool GiveText(Scanner *scanner, Piece *piece, size_t from)
{
    for (;;) {
        std::string_view text = Window(scanner);
        size_t end = text.find('<', from);
        if (end != text.npos || scanner->hasEnded)
            return Give(scanner, piece, kTextPiece, end == text.npos ? text.size() : end);
        if (text.size() > kLongText)
            return Give(scanner, piece, kTextPiece, CutOfText(text));
        if (!ReadMore(scanner))
            return false;
    }
}

static bool GiveMarkup(Scanner *scanner, Piece *piece)
{
    PieceKind kind;
    for (;;) {
        std::string_view text = Window(scanner);
        size_t end = EndOfMarkup(scanner, text, &kind);
        if (end != 0) {
            Give(scanner, piece, kind, end);
            break;
        }
        if (scanner->hasEnded)  // a page that was cut is shown as far as it goes
            return scanner->isHtml ? Give(scanner, piece, kOtherPiece, text.size())
                                   : FailAt(scanner, kFailCutTag);
        if (text.size() > kLongestPiece)
            return FailAt(scanner, kFailTooLarge);
        if (!ReadMore(scanner))
            return false;
    }
    if (kind == kOtherPiece || kind == kCdataPiece)
        return true;
    size_t start = kind == kClosingPiece ? 2 : 1;
    const char *name = piece->raw.data() + start;
    piece->name = {name, LengthUpTo(name, kNameEnds)};
    return !piece->name.empty() || scanner->isHtml || FailAt(scanner, kFailTagName);
}

// By its mark, or by the half of the first bracket that is 0.
static bool IsUtf16(std::string_view text)
{
    using namespace std::literals;
    return text.starts_with("\xFE\xFF") || text.starts_with("\xFF\xFE") ||
           text.starts_with("<\0"sv) || text.starts_with("\0<"sv);
}

bool NextPiece(Scanner *scanner, Piece *piece)
{
    piece->name = {};
    while (Window(scanner).size() < 3 && !scanner->hasEnded)
        if (!ReadMore(scanner))
            return false;
    std::string_view text = Window(scanner);
    if (text.empty())
        return Give(scanner, piece, kEndPiece, 0);
    if (scanner->position == 0 && IsUtf16(text))
        return FailAt(scanner, kFailEncoding);
    if (text[0] != '<')
        return GiveText(scanner, piece, 0);
    return IsTextOfHtml(scanner, text) ? GiveText(scanner, piece, 1) : GiveMarkup(scanner, piece);
}

// The place of "</name" without regard to case; npos where it isn't there.
static size_t FindClosing(std::string_view text, std::string_view name)
{
    for (size_t at = text.find("</"); at != text.npos; at = text.find("</", at + 1))
        if (EqualNoCase(text.substr(at + 2, name.size()), name))
            return at;
    return text.npos;
}

bool NextRawText(Scanner *scanner, std::string_view name, Piece *piece)
{
    piece->name = {};
    for (;;) {
        std::string_view text = Window(scanner);
        size_t end = FindClosing(text, name);
        if (end != text.npos || scanner->hasEnded)
            return Give(scanner, piece, kTextPiece, end == text.npos ? text.size() : end);
        if (text.size() > kLongText)  // the closing tag may have begun in the last bytes
            return Give(scanner, piece, kTextPiece, text.size() - name.size() - 2);
        if (!ReadMore(scanner))
            return false;
    }
}

// ---- attributes ----

static size_t SkipSpaces(std::string_view text, size_t at)
{
    while (at < text.size() && kSpaces.has[uint8_t(text[at])] && text[at])
        ++at;
    return at;
}

// A value without quotes, as HTML has it, ends at the next blank.
static size_t ReadValue(std::string_view tag, size_t at, Attribute *attribute)
{
    char quote = at < tag.size() ? tag[at] : 0;
    bool isQuoted = quote == '"' || quote == '\'';
    size_t start = at + isQuoted;
    size_t end = isQuoted ? tag.find(quote, start) : tag.find_first_of(" \t\r\n\f>", start);
    if (end == tag.npos)
        end = tag.size() - 1;
    attribute->valueStart = start;
    attribute->value = tag.substr(start, end - start);
    return end + isQuoted;
}

// A tag's last byte is its bracket, which ends every walk.
bool NextAttribute(std::string_view tag, size_t *place, Attribute *attribute)
{
    size_t at = *place;
    if (at == 0)
        at = 1 + LengthUpTo(tag.data() + 1, kNameEnds);
    for (;;) {
        at = SkipSpaces(tag, at);
        if (tag[at] == '/' && at + 2 < tag.size())  // one that closes nothing
            ++at;
        else
            break;
    }
    size_t length = LengthUpTo(tag.data() + at, kNameEnds);
    if (length == 0 || at + length >= tag.size())
        return false;
    *attribute = {tag.substr(at, length), {}, at, at + length, 0};
    at = SkipSpaces(tag, at + length);
    if (tag[at] == '=')
        attribute->end = ReadValue(tag, SkipSpaces(tag, at + 1), attribute);
    *place = attribute->end;
    return true;
}

// A token is short, but for letters and pictures, which come in stretches: so a window of a block
// and a little is enough, however long the document is.
#include "documents/rtf_tokens.h"

#include <cstdint>
#include <cstring>

constexpr size_t kReadSize = 256 * 1024;  // bytes at a time
constexpr size_t kLongestToken = 256;     // of those that aren't cut, in bytes

static bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

static bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

static int HexOf(char c)
{
    if (IsDigit(c))
        return c - '0';
    c = char(c | 32);
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

static void Take(std::string_view *text, size_t length, RtfKind kind, RtfToken *token)
{
    token->kind = kind;
    token->raw = text->substr(0, length);
    text->remove_prefix(length);
}

// A word, its number and the blank that ends it.
static void TakeWord(std::string_view *text, RtfToken *token)
{
    size_t at = 1;
    while (at < text->size() && at < 40 && IsLetter((*text)[at]))
        ++at;
    token->word = text->substr(1, at - 1);
    bool isNegative = at + 1 < text->size() && (*text)[at] == '-' && IsDigit((*text)[at + 1]);
    at += isNegative;
    while (at < text->size() && IsDigit((*text)[at])) {
        token->hasNumber = true;
        if (token->number < 100000000)
            token->number = 10 * token->number + ((*text)[at] - '0');
        ++at;
        if (at > kLongestToken / 2)
            break;
    }
    token->number = isNegative ? -token->number : token->number;
    at += at < text->size() && (*text)[at] == ' ';
    Take(text, at, kRtfWord, token);
}

static void TakeSign(std::string_view *text, RtfToken *token)
{
    size_t length = text->size() < 2 ? text->size() : 2;
    token->word = text->substr(1, length - 1);
    bool isByte =
        token->word == "'" && text->size() >= 4 && HexOf((*text)[2]) >= 0 && HexOf((*text)[3]) >= 0;
    if (isByte) {
        token->number = HexOf((*text)[2]) * 16 + HexOf((*text)[3]);
        token->hasNumber = true;
        length = 4;
    }
    Take(text, length, kRtfSign, token);
}

bool TakeToken(std::string_view *text, RtfToken *token)
{
    *token = {};
    if (text->empty())
        return false;
    char first = (*text)[0], next = text->size() > 1 ? (*text)[1] : 0;
    switch (first) {
    case '{': Take(text, 1, kRtfOpen, token); return true;
    case '}': Take(text, 1, kRtfClose, token); return true;
    case '\r':
    case '\n': Take(text, 1, kRtfLine, token); return true;
    case '\\':
        if (IsLetter(next))
            TakeWord(text, token);
        else
            TakeSign(text, token);
        return true;
    default: {
        size_t end = text->find_first_of("{}\\\r\n");
        Take(text, end == text->npos ? text->size() : end, kRtfLetters, token);
        return true;
    }
    }
}

void StartRtf(RtfScanner *scanner, const DocumentSource &source)
{
    *scanner = {};
    scanner->source = source;
}

void StopRtf(RtfScanner *scanner)
{
    FreeBytes(&scanner->window);
}

static bool ReadMore(RtfScanner *scanner)
{
    Bytes *window = &scanner->window;
    size_t left = window->length - scanner->used;
    if (scanner->used > 0)
        memmove(window->data, window->data + scanner->used, left);
    window->length = left;
    scanner->used = 0;
    char *place = MakeRoom(window, kReadSize);
    if (!place) {
        scanner->failure = kFailMemory;
        return false;
    }
    size_t count = scanner->source.read(scanner->source.context, place, kReadSize);
    window->length += count;
    scanner->hasEnded = count == 0;
    return true;
}

// Behind \bin come so many bytes, whatever they are.
bool NextToken(RtfScanner *scanner, RtfToken *token)
{
    while (scanner->window.length - scanner->used < kLongestToken && !scanner->hasEnded)
        if (!ReadMore(scanner))
            return false;
    std::string_view text = TextOf(scanner->window).substr(scanner->used);
    size_t before = text.size();
    if (scanner->binary) {
        *token = {};
        size_t count = before < scanner->binary ? before : scanner->binary;
        scanner->binary = before ? scanner->binary - count : 0;
        Take(&text, count, kRtfBinary, token);
    } else if (!TakeToken(&text, token)) {
        token->kind = kRtfEnd;
    }
    if (token->kind == kRtfWord && token->word == "bin" && token->number > 0)
        scanner->binary = size_t(token->number);
    scanner->used += before - text.size();
    return true;
}

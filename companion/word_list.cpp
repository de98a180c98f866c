// Dictionary text to sorted words. Files are hostile: each line is judged alone, a character
// without an internal code, an invalid sequence or an overlong line costs that line and no other.
#include "word_list.h"
#include "lao_signs.h"
#include "vesk.h"
#include <algorithm>
#include <cstdlib>
#include <cstring>

constexpr uint32_t kBadCharacter = 0xFFFFFFFF;
constexpr uint32_t kZeroWidthSpace = 0x200B;

struct Span {
    const char *start, *end;
};

// ---- characters ----

// Takes a character of up to three bytes from a span that isn't empty. Longer ones are no Lao.
static uint32_t TakeCharacter(Span *rest)
{
    uint8_t lead = uint8_t(*rest->start++);
    if (lead < 0x80)
        return lead;
    int more = lead >= 0xE0 && lead < 0xF0 ? 2 : lead >= 0xC2 && lead < 0xE0 ? 1 : 0;
    if (!more || rest->end - rest->start < more)
        return kBadCharacter;
    uint32_t character = lead & (more == 2 ? 0x0Fu : 0x1Fu);
    for (; more > 0; --more) {
        uint8_t next = uint8_t(*rest->start++);
        if ((next & 0xC0) != 0x80)
            return kBadCharacter;
        character = character << 6 | (next & 0x3Fu);
    }
    return character;
}

// The byte of a word's character; 0 for a character that no word can hold.
static uint8_t SignOfWordCharacter(uint32_t character)
{
    if (character == '-')
        return kRealHyphen;
    if (character >= ' ' && character < 0x7F)
        return uint8_t(character);
    return MainForm(SignOfUnicode(character));
}

static Span TrimBlanks(Span span)
{
    while (span.start < span.end && (*span.start == ' ' || *span.start == '\t'))
        ++span.start;
    while (span.start < span.end && (span.end[-1] == ' ' || span.end[-1] == '\t'))
        --span.end;
    return span;
}

static size_t WordOfSpan(char *word, Span span)
{
    size_t length = 0;
    for (Span rest = TrimBlanks(span); rest.start < rest.end;) {
        uint32_t character = TakeCharacter(&rest);
        if (character == kZeroWidthSpace)  // an invisible break is no part of a word
            continue;
        uint8_t sign = SignOfWordCharacter(character);
        if (!sign || length == kLongestWord)
            return 0;
        word[length++] = char(sign);
    }
    word[length] = 0;
    PackLao(word);
    return strlen(word);
}

static Span WithoutComment(Span line)
{
    const void *comment = memchr(line.start, '#', size_t(line.end - line.start));
    return comment ? Span{line.start, static_cast<const char *>(comment)} : line;
}

size_t WordOfLine(char *word, const char *line, size_t length)
{
    return WordOfSpan(word, WithoutComment({line, line + length}));
}

// ---- words from hosts, and back to files ----

// A file spells HO SUNG with LO out, so lists never hold its code for both.
static size_t NormalSigns(char *signs, uint8_t code)
{
    const SignPair *pair = code == kHoLo ? SignPairOf(kHoLo) : nullptr;
    signs[0] = char(pair ? pair->first : MainForm(code));
    signs[1] = char(pair ? pair->second : 0);
    if (code == kBreakMark || code == kOldBreakMark)
        return 0;
    return pair ? 2 : 1;
}

size_t NormalizeWord(char *word, const char *from)
{
    size_t length = 0;
    for (; *from; ++from) {
        char signs[2];
        size_t count = NormalSigns(signs, uint8_t(*from));
        if (length + count > kLongestWord)
            return 0;
        memcpy(word + length, signs, count);
        length += count;
    }
    word[length] = 0;
    PackLao(word);
    return strlen(word);
}

static size_t AppendCharacter(char *utf8, uint32_t character)
{
    if (character < 0x80) {
        *utf8 = char(character);
        return 1;
    }
    utf8[0] = char(0xE0 | character >> 12);  // all that is Lao has three bytes
    utf8[1] = char(0x80 | (character >> 6 & 0x3F));
    utf8[2] = char(0x80 | (character & 0x3F));
    return 3;
}

static uint32_t CharacterOfSign(uint8_t sign)
{
    if (sign == kRealHyphen)
        return '-';
    return sign < 0x80 ? sign : UnicodeOfSign(sign);
}

// Writes at most kUtf8PerSign bytes; 0 for a byte that stands for no character.
static size_t AppendSign(char *utf8, uint8_t sign)
{
    const SignPair *pair = SignPairOf(sign);
    if (pair) {
        size_t length = AppendCharacter(utf8, CharacterOfSign(pair->first));
        return length + AppendCharacter(utf8 + length, CharacterOfSign(pair->second));
    }
    uint32_t character = CharacterOfSign(sign);
    return character ? AppendCharacter(utf8, character) : 0;
}

size_t WordToUtf8(char *utf8, size_t size, const char *word)
{
    size_t length = 0;
    for (; *word; ++word) {
        if (size - length < kUtf8PerSign)
            return 0;
        size_t count = AppendSign(utf8 + length, uint8_t(*word));
        if (!count)
            return 0;
        length += count;
    }
    return length;
}

// ---- lists ----

// The words of a line go to *text, which has room for both; false for a line that is no entry.
static bool ReadEntry(WordEntry *entry, char **text, Span line, bool pairs)
{
    line = WithoutComment(line);
    const void *tab = pairs ? memchr(line.start, '\t', size_t(line.end - line.start)) : nullptr;
    if (pairs && !tab)
        return false;
    Span first = {line.start, tab ? static_cast<const char *>(tab) : line.end};
    char word[kLongestWord + 1], modern[kLongestWord + 1] = "";
    size_t wordLength = WordOfSpan(word, first);
    size_t modernLength = tab ? WordOfSpan(modern, {first.end + 1, line.end}) : 0;
    if (!wordLength || (tab && !modernLength))
        return false;
    *entry = {*text, tab ? *text + wordLength + 1 : nullptr};
    memcpy(*text, word, wordLength + 1);
    *text += wordLength + 1;
    if (tab) {
        memcpy(*text, modern, modernLength + 1);
        *text += modernLength + 1;
    }
    return true;
}

static bool IsEntryBefore(const WordEntry &a, const WordEntry &b)
{
    return strcmp(a.word, b.word) < 0;
}

// Of equal words the first of the file stays.
static void SortEntries(WordList *list)
{
    WordEntry *entries = list->entries;
    std::stable_sort(entries, entries + list->count, IsEntryBefore);
    uint32_t kept = 0;
    for (uint32_t i = 0; i < list->count; ++i)
        if (!kept || strcmp(entries[kept - 1].word, entries[i].word) != 0)
            entries[kept++] = entries[i];
    list->count = kept;
}

static size_t CountLines(Span content)
{
    size_t lines = 1;
    for (; content.start < content.end; ++content.start)
        lines += *content.start == '\n';
    return lines;
}

// A byte order mark belongs to no line.
TextLine FirstLine(const char *content, size_t size)
{
    const char *end = content + size;
    bool hasMark = size >= 3 && !memcmp(content, "\xEF\xBB\xBF", 3);
    TextLine before = {content, content, content + (hasMark ? 3 : 0)};
    return LineBehind(&before, end);
}

TextLine LineBehind(const TextLine *line, const char *end)
{
    TextLine next = {line->next, end, end};
    if (next.start == end)
        return next;
    const void *feed = memchr(next.start, '\n', size_t(end - next.start));
    if (feed) {
        next.end = static_cast<const char *>(feed);
        next.next = next.end + 1;
    }
    if (next.start < next.end && next.end[-1] == '\r')
        --next.end;
    return next;
}

static void ReadEntries(WordList *list, const char *content, size_t size, uint32_t room, bool pairs)
{
    const char *end = content + size;
    char *text = list->text;
    for (TextLine line = FirstLine(content, size); line.start < end;
         line = LineBehind(&line, end)) {
        if (list->count == room || size_t(text - list->text) > kMostWordBytes)
            return;
        if (ReadEntry(&list->entries[list->count], &text, {line.start, line.end}, pairs))
            ++list->count;
    }
}

int ParseWordList(WordList *list, const char *content, size_t size, bool pairs)
{
    *list = {};
    if (!size)
        return 1;
    uint32_t room = uint32_t(std::min<size_t>(CountLines({content, content + size}), kMostWords));
    // A word takes no more bytes than its line; its terminator takes the place of the line's end or
    // tab.
    list->text = static_cast<char *>(malloc(size + 1));
    list->entries = static_cast<WordEntry *>(malloc(room * sizeof(WordEntry)));
    if (!list->text || !list->entries) {
        FreeWordList(list);
        return 0;
    }
    ReadEntries(list, content, size, room, pairs);
    SortEntries(list);
    return 1;
}

void FreeWordList(WordList *list)
{
    free(list->text);
    free(list->entries);
    *list = {};
}

long FindInWordList(const WordList *list, const char *word)
{
    WordEntry key = {word, nullptr};
    const WordEntry *first = list->entries, *end = first + list->count;
    const WordEntry *found = std::lower_bound(first, end, key, IsEntryBefore);
    return found != end && !strcmp(found->word, word) ? long(found - first) : -1;
}

// The words of a dictionary file: internal code, packed, each sign in its main form, in the order
// of their bytes, none twice. A list owns one block of text and one of places in it.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr size_t kLongestWord = 255;             // bytes, of a word or a modern spelling
constexpr uint32_t kMostWords = (1u << 20) - 2;  // a handle keeps the number in 20 bits
constexpr size_t kMostWordBytes = 4u << 20;      // what goes into a trie

struct WordEntry {
    const char *word;    // terminated
    const char *modern;  // of an old spelling; else null
};

struct WordList {
    char *text;
    WordEntry *entries;
    uint32_t count;
};

// Reads the words of a dictionary file: UTF-8, a word a line, lines ending with LF or CR LF, "#"
// begins a comment, blanks around a word don't count. With pairs a line is an old spelling, a tab
// and the modern one. Lines that are no words are passed over, and so are words beyond the limits
// above. 0: no memory; the list is then empty. The content needs no terminator.
int ParseWordList(WordList *list, const char *content, size_t size, bool pairs);
void FreeWordList(WordList *list);

// The place of a word in the list, or -1.
long FindInWordList(const WordList *list, const char *word);

// Lines of a file's content, one by one; start is the content's end behind the last. A byte order
// mark stands in front of the first line's start.
struct TextLine {
    const char *start, *end;  // without the line's end
    const char *next;
};
TextLine FirstLine(const char *content, size_t size);
TextLine LineBehind(const TextLine *line, const char *end);

// A line of a dictionary file as word in the form of the lists; its length, or 0 for a comment or a
// line that is no word. word has kLongestWord + 1 bytes.
size_t WordOfLine(char *word, const char *line, size_t length);

// Brings a word of a host into the form of the lists: packed, main forms, no break marks. Its
// length, or 0 when it is empty or doesn't fit kLongestWord + 1 bytes.
size_t NormalizeWord(char *word, const char *from);

constexpr size_t kUtf8PerSign = 6;  // two characters of three bytes

// The word as UTF-8. Its length, or 0: a byte has no character, or no room. No terminator is
// counted.
size_t WordToUtf8(char *utf8, size_t size, const char *word);

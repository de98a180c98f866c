// Words in dictionaries: break scoring asks here for every byte of every run of Lao, which makes
// these the hottest lines of the module. FindWord remembers the last walk in each dictionary, byte
// for byte, so that the next length at the same place costs one step; hosts use their buffers
// again, so only the bytes count, never the pointer. FindWordLengths walks once for all lengths.
#include "dictionary.h"
#include "lao_signs.h"
#include <cassert>
#include <cstring>

constexpr uint32_t kRememberedBytes = 64;
constexpr int kShortestScored = 2, kLongestScored = 15;  // words that break scoring asks for
constexpr uint32_t kNumberBits = 20;
constexpr uint32_t kNumberMask = (1u << kNumberBits) - 1;
constexpr uint32_t kGenerationMask = 0x7FF;  // a handle stays positive as a LONG
static_assert(kMostWords < kNumberMask);

// The walk over the first `length` bytes of a text, and the cell behind each of them.
struct Walk {
    uint32_t revision;  // of the dictionary
    uint32_t length;
    uint8_t bytes[kRememberedBytes];
    uint32_t cells[kRememberedBytes];
};

// A walk of before can be wrong only in its revision, which is compared at each question.
struct LookupState {
    Walk walks[kDictionaryCount];  // ORDER Dictionary
};
static LookupState gLookup;

// How many bytes of the text the walk has gone already.
static uint32_t CommonLength(const Walk *walk, const uint8_t *text, uint32_t length)
{
    uint32_t most = length < walk->length ? length : walk->length, same = 0;
    while (same < most && walk->bytes[same] == text[same])
        ++same;
    return same;
}

// The cell behind the first length bytes of text, or 0 where no word begins so. A terminator is in
// no word and ends the walk.
static uint32_t CellOfText(Walk *walk, Dictionary *dictionary, const uint8_t *text, uint32_t length)
{
    const Trie *trie = FreshTrie(dictionary);
    if (!trie->cells)
        return 0;
    if (walk->revision != dictionary->revision)
        *walk = {};
    walk->revision = dictionary->revision;
    uint32_t at = CommonLength(walk, text, length);
    if (at == length)
        return walk->cells[at - 1];
    uint32_t cell = at ? walk->cells[at - 1] : trie->root;
    for (; at < length && cell; ++at) {
        cell = TrieStep(trie, cell, trie->classOf[text[at]]);
        if (at < kRememberedBytes) {
            walk->bytes[at] = text[at];
            walk->cells[at] = cell;
            walk->length = at + 1;
        }
    }
    return cell;
}

// A handle is the word's place in the list, counted from 1, below the number of unloadings so far:
// a handle of before an unloading is not taken for one of now.
static DWORD HandleOfOldWord(const char *text, DWORD length)
{
    constexpr int kOld = 1;  // ORDER Dictionary
    Dictionary *old = &gDictionaries.dictionaries[kOld];
    const uint8_t *bytes = reinterpret_cast<const uint8_t *>(text);
    if (!(CellOfText(&gLookup.walks[kOld], old, bytes, length) & kWordEnd))
        return 0;
    char found[kLongestWord + 1], word[kLongestWord + 1];
    assert(length <= kLongestWord);  // no entry is longer
    memcpy(found, text, length);
    found[length] = 0;
    NormalizeWord(word, found);
    long place = FindInWordList(&old->list, word);
    if (place < 0)
        return 0;
    return (gDictionaries.generation & kGenerationMask) << kNumberBits | DWORD(place + 1);
}

DWORD WINAPI FindWord(const char *text, DWORD length, DWORD, DWORD flags)
{
    if (!text || !length)
        return 0;
    if (flags & kNewWordHandle)
        return flags & kOldDictionary ? HandleOfOldWord(text, length) : 0;
    const uint8_t *bytes = reinterpret_cast<const uint8_t *>(text);
    for (int i = 0; i < kDictionaryCount; ++i) {
        if (!(flags >> i & 1))
            continue;
        uint32_t cell =
            CellOfText(&gLookup.walks[i], &gDictionaries.dictionaries[i], bytes, length);
        if (cell && (!(flags & kWholeWord) || cell & kWordEnd))
            return 1;
    }
    return 0;
}

// The first two bytes are one look into a table; each further one is a step.
static DWORD LengthsInTrie(const Trie *trie, const uint8_t *text)
{
    uint32_t first = trie->classOf[text[0]];
    if (!first)
        return 0;
    DWORD lengths = 0;
    uint32_t cell = trie->firstTwo[first * (trie->classCount + 1) + trie->runClassOf[text[1]]];
    for (int length = kShortestScored; cell; ++length) {
        uint8_t next = text[length];
        if (cell & kWordEnd)
            lengths |= 1u << (next == kRepeatSign || next == kEllipsis ? length : length - 1);
        if (length == kLongestScored)
            break;
        cell = TrieStep(trie, cell, trie->runClassOf[next]);
    }
    return lengths;
}

static DWORD LengthsIn(int index, const char *text, DWORD dictionaries)
{
    if (!text || !(dictionaries >> index & 1))
        return 0;
    return LengthsInTrie(FreshTrie(&gDictionaries.dictionaries[index]),
                         reinterpret_cast<const uint8_t *>(text));
}

// Each mask goes straight to its place: a pair of them put down one by one and fetched as one
// number makes the processor wait for longer than a step of the walk takes.
void WINAPI FindWordLengths(const char *text, DWORD dictionaries, WordLengths *lengths)
{
    if (!lengths)
        return;
    lengths->main = LengthsIn(0, text, dictionaries);  // ORDER Dictionary
    lengths->old = LengthsIn(1, text, dictionaries);
    lengths->user = LengthsIn(2, text, dictionaries);
}

DWORD WINAPI GetNewWord(char *buffer, DWORD size, DWORD handle)
{
    const WordList *old = &DictionaryOfBit(kOldDictionary)->list;
    uint32_t number = handle & kNumberMask;
    if (!buffer || !number || number > old->count ||
        handle >> kNumberBits != (gDictionaries.generation & kGenerationMask))
        return 0;
    const char *modern = old->entries[number - 1].modern;
    size_t length = strlen(modern);
    if (length >= size)
        return 0;
    memcpy(buffer, modern, length + 1);
    return 1;
}

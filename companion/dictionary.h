// The three dictionaries and their state. A dictionary is loaded at the first ReadLaoDict and stays
// until UnloadDictionaries; the user's changes with AddWord and DeleteWord.
#pragma once

#include "trie.h"
#include "vesk.h"

enum { kDictionaryCount = 3 };  // ORDER Dictionary: main, old, user

// The words as a sorted list, which changes, and as a trie, which look-ups walk. A trie that was
// read from a file comes without its list: only old spellings and the user's words are asked for
// it.
struct Dictionary {
    bool isLoaded;
    bool isTrieStale;   // the list has changed since the trie was built
    uint32_t revision;  // grows with every change of the words; what remembers places compares it
    uint32_t wordCount;
    WordList list;
    Trie trie;  // see FreshTrie
};

struct DictionaryState {
    Dictionary dictionaries[kDictionaryCount];  // ORDER Dictionary
    uint32_t generation;                        // of handles; grows with every unloading
};
extern DictionaryState gDictionaries;

// The dictionary of one bit, loaded or not; null for another number.
Dictionary *DictionaryOfBit(DWORD bit);

// The name of a dictionary's file.
const char *DictionaryFileName(DWORD bit);

// Frees all of them; handles given so far are worth nothing any more.
void ForgetDictionaries();

// Builds the trie of a list that has changed; many additions in a row so cost one build.
void RebuildTrie(Dictionary *dictionary);

// Puts a list, which the dictionary then owns, in the place of the old one. It is loaded then.
void ReplaceList(Dictionary *dictionary, const WordList *list);

// The trie of the list as it is now.
static inline const Trie *FreshTrie(Dictionary *dictionary)
{
    if (dictionary->isTrieStale)
        RebuildTrie(dictionary);
    return &dictionary->trie;
}

// A dictionary's trie as a file, written when the module is built, so that a program that divides
// one line of text doesn't spend ten times as long on building it. The list of words stays the
// truth: a trie belongs to one content of the list and counts for no other.
#pragma once

#include "dictionary_file.h"
#include "trie.h"

// Makes the file's content from the trie of `list`, a dictionary file's content with so many words.
// The caller frees it. 0: no memory.
int WriteTrieFile(FileContent *file, const Trie *trie, uint32_t wordCount, const FileContent *list);

// Takes trie and number of words from a file's content. 0, and an empty trie: it was made from
// another list or by another version, it is damaged, or there is no memory. A trie that is taken
// can be walked with any text, whoever wrote the file.
int ReadTrieFile(Trie *trie, uint32_t *wordCount, const FileContent *file, const FileContent *list);

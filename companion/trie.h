// A set of words as a double array, for walks byte by byte. A cell is one 32-bit number: the class
// of the byte that leads to it, whether a word ends there, and the base of its children, which
// stand at base + class. No two nodes have the same base, so the class alone tells whose child a
// cell is.
#pragma once

#include "word_list.h"

constexpr uint32_t kWordEnd = 0x100;  // a word ends at this cell
constexpr int kBaseShift = 9;
constexpr uint32_t kMostClasses = 0xFE;

// Owned by its dictionary; all blocks are its own.
struct Trie {
    uint32_t *cells;          // null: no words, every walk ends at once
    uint32_t cellCount;       // a step from any cell stays inside of it
    uint32_t root;            // the cell in front of the first byte
    uint32_t classCount;      // bytes that words hold have the classes 1 to classCount
    uint32_t *firstTwo;       // the cell behind two bytes, by their classes; 0 for none
    uint8_t classOf[256];     // 0: in no word
    uint8_t runClassOf[256];  // the same, and 0 for bytes that end a run of Lao text
};

// Builds the trie of a list. 0: no memory, or too many words; the trie is then empty.
int BuildTrie(Trie *trie, const WordList *list);
void FreeTrie(Trie *trie);

// Fills runClassOf and firstTwo of a trie that has all the rest. 0: no memory.
int FinishTrie(Trie *trie);

// The cell behind a byte of that class, or 0. Class 0 never leads on.
static inline uint32_t TrieStep(const Trie *trie, uint32_t cell, uint32_t byteClass)
{
    uint32_t next = trie->cells[(cell >> kBaseShift) + byteClass];
    return (next & 0xFF) == byteClass ? next : 0;
}

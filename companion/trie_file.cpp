// Layout: a head, then the cells as they stand in memory. A step adds a class to a cell's base, so
// the cells refer to each other by number alone and can stand anywhere. Both targets keep the
// lowest byte first; to a machine that doesn't the mark is another number.
#include "trie_file.h"
#include <cstdlib>
#include <cstring>

constexpr uint32_t kTrieFileMark = 0x6972544F;  // "OTri"
constexpr uint32_t kTrieFileVersion = 1;        // grows when BuildTrie gives other cells or classes

struct TrieFileHead {
    uint32_t mark;
    uint32_t version;
    uint32_t listSize;  // bytes of the list's content
    uint32_t reserved;  // 0
    uint64_t listSum;   // see SumBytes
    uint32_t wordCount;
    uint32_t classCount;
    uint32_t cellCount;
    uint32_t root;
    uint8_t classOf[256];
};
static_assert(sizeof(TrieFileHead) == 296);  // the same for all compilers

// Tells contents of a list apart, an edited one from the one before; it is no defence against a
// person who makes two with one sum. Eight bytes a step: this runs at each start.
static uint64_t SumBytes(const char *bytes, size_t size)
{
    uint64_t sum = size;
    for (size_t at = 0; at < size; at += sizeof sum) {
        uint64_t part = 0;
        memcpy(&part, bytes + at, size - at < sizeof part ? size - at : sizeof part);
        sum = (sum ^ part) * 0x9E3779B97F4A7C15;
        sum ^= sum >> 29;
    }
    return sum;
}

int WriteTrieFile(FileContent *file, const Trie *trie, uint32_t wordCount, const FileContent *list)
{
    TrieFileHead head = {kTrieFileMark,
                         kTrieFileVersion,
                         uint32_t(list->size),
                         0,
                         SumBytes(list->bytes, list->size),
                         wordCount,
                         trie->classCount,
                         trie->cellCount,
                         trie->root,
                         {}};
    memcpy(head.classOf, trie->classOf, sizeof head.classOf);
    size_t cellBytes = trie->cellCount * sizeof *trie->cells;
    *file = {static_cast<char *>(malloc(sizeof head + cellBytes)), sizeof head + cellBytes};
    if (!file->bytes)
        return 0;
    memcpy(file->bytes, &head, sizeof head);
    memcpy(file->bytes + sizeof head, trie->cells, cellBytes);
    return 1;
}

static bool IsOfList(const TrieFileHead *head, const FileContent *list)
{
    return head->mark == kTrieFileMark && head->version == kTrieFileVersion &&
           head->listSize == list->size && head->listSum == SumBytes(list->bytes, list->size);
}

// No byte has a class beyond the last, and the terminator has none, or walks would not end with the
// text.
static bool AreClassesGood(const Trie *trie)
{
    if (trie->classCount > kMostClasses || trie->classOf[0])
        return false;
    for (uint8_t byteClass : trie->classOf)
        if (byteClass > trie->classCount)
            return false;
    return true;
}

static bool IsBaseInside(const Trie *trie, uint32_t cell)
{
    return (cell >> kBaseShift) + trie->classCount < trie->cellCount;
}

// From each cell all classes lead to cells, and no cell can be reached by class 0.
static bool AreCellsGood(const Trie *trie)
{
    bool isGood = IsBaseInside(trie, trie->root);
    for (uint32_t i = 0; i < trie->cellCount; ++i)
        isGood &= IsBaseInside(trie, trie->cells[i]) && trie->cells[i] & 0xFF;
    return isGood;
}

// The head's sizes are those of the file.
static bool CopyTrie(Trie *trie, const TrieFileHead *head, const char *cells)
{
    size_t cellBytes = head->cellCount * sizeof *trie->cells;
    *trie = {};
    trie->cells = static_cast<uint32_t *>(malloc(cellBytes));
    if (!trie->cells)
        return false;
    memcpy(trie->cells, cells, cellBytes);
    trie->cellCount = head->cellCount;
    trie->root = head->root;
    trie->classCount = head->classCount;
    memcpy(trie->classOf, head->classOf, sizeof trie->classOf);
    return true;
}

int ReadTrieFile(Trie *trie, uint32_t *wordCount, const FileContent *file, const FileContent *list)
{
    *trie = {};
    TrieFileHead head;
    if (file->size < sizeof head)
        return 0;
    memcpy(&head, file->bytes, sizeof head);
    bool isWhole = file->size - sizeof head == uint64_t(head.cellCount) * sizeof *trie->cells;
    if (!isWhole || !head.cellCount || !IsOfList(&head, list))
        return 0;
    *wordCount = head.wordCount;
    if (CopyTrie(trie, &head, file->bytes + sizeof head) && AreClassesGood(trie) &&
        AreCellsGood(trie) && FinishTrie(trie))
        return 1;
    FreeTrie(trie);
    return 0;
}

// The building of a trie, once for each change of a dictionary that a look-up sees. It makes the
// double array from sorted words, node by node in the order of their depth: the nodes
// that most walks reach stand close together. The nodes that wait stand in a queue as ranges of the
// list, so no word however long costs stack, and a node that finds no hole within some tries goes
// to the end of the array, so no list however odd costs more than a bounded time for each node.
//
// Text can have one byte for HO SUNG with LO, where words have two. A node that the two lead on
// from has a twin of the node behind them as one more child: another cell with the same base.
#include "trie.h"
#include "lao_signs.h"
#include <cassert>
#include <cstdlib>
#include <cstring>

constexpr uint32_t kFreeCell = 0xFF;  // no class has this number
constexpr uint32_t kRow = 256;        // the places that one base can reach
constexpr uint32_t kMostCells = 1u << (32 - kBaseShift);
constexpr int kMostTries = 400;
constexpr uint32_t kGroups = 8;  // nodes with this many children and more are one group

// A node without children keeps the base 0, and the first row stays free: no step leads on from it.
constexpr uint32_t kFirstBase = kRow;

// A node whose children have no places yet.
struct WaitingNode {
    uint32_t low, high;  // the words that run through the node
    uint32_t cell;       // its place; 0 is the root
    uint32_t depth;
    uint32_t twin;        // the cell of its twin, if any
    uint32_t twinOfNext;  // the cell of the twin of its child by LO, if any
};

// One call of BuildTrie.
struct TrieBuild {
    Trie *trie;
    const WordList *list;
    WaitingNode *queue;  // room for all nodes, so that it never moves
    uint32_t queueEnd;
    uint8_t *baseTaken;          // one for each cell
    uint32_t firstTry[kGroups];  // by number of children: where the last such node found its place
    uint32_t end;                // no cell from here on is taken
};

// The children of one node, by the classes of their bytes.
struct ChildList {
    uint32_t count;
    uint8_t classes[kMostClasses];
    uint32_t lows[kMostClasses + 1];  // where the child's words start; behind the last, their end
};

static uint8_t ByteAt(const TrieBuild *build, uint32_t word, uint32_t depth)
{
    return uint8_t(build->list->entries[word].word[depth]);
}

// Bytes get small numbers as they are met, so that the children of a node stand close together.
static void NumberClasses(Trie *trie, const WordList *list)
{
    for (uint32_t i = 0; i < list->count; ++i)
        for (const char *p = list->entries[i].word; *p; ++p)
            if (uint8_t *place = &trie->classOf[uint8_t(*p)]; !*place)
                *place = uint8_t(++trie->classCount);
    if (trie->classOf[kHoSung] && trie->classOf[kLo])
        trie->classOf[kHoLo] = uint8_t(++trie->classCount);
    for (int code = 1; code < 256; ++code)
        trie->classOf[code] = trie->classOf[MainForm(uint8_t(code))];
}

// Equal beginnings of neighbours are one node, so this counts the nodes below the root.
static uint32_t CountNodes(const WordList *list)
{
    uint32_t count = 0;
    const char *before = "";
    for (uint32_t i = 0; i < list->count; ++i) {
        const char *word = list->entries[i].word;
        size_t same = 0;
        while (word[same] && word[same] == before[same])
            ++same;
        count += uint32_t(strlen(word) - same);
        before = word;
    }
    return count;
}

// Makes room for the row behind a base; new cells are free.
static bool GrowCells(TrieBuild *build, uint32_t base)
{
    Trie *trie = build->trie;
    if (base >= kMostCells - kRow)
        return false;
    if (trie->cellCount >= base + kRow)
        return true;
    uint32_t count = trie->cellCount + trie->cellCount / 2;
    if (count < base + 4 * kRow)
        count = base + 4 * kRow;
    void *cells = realloc(trie->cells, count * sizeof *trie->cells);
    if (!cells)
        return false;
    trie->cells = static_cast<uint32_t *>(cells);
    void *taken = realloc(build->baseTaken, count);
    if (!taken)
        return false;
    build->baseTaken = static_cast<uint8_t *>(taken);
    memset(build->baseTaken + trie->cellCount, 0, count - trie->cellCount);
    for (uint32_t i = trie->cellCount; i < count; ++i)
        trie->cells[i] = kFreeCell;
    trie->cellCount = count;
    return true;
}

static bool IsFree(const TrieBuild *build, uint32_t cell)
{
    return cell >= build->end || build->trie->cells[cell] == kFreeCell;
}

// Whether no other node has this base, and all places from it are free.
static bool CanStand(const TrieBuild *build, const ChildList *children, uint32_t base)
{
    if (base < build->end && build->baseTaken[base])
        return false;
    for (uint32_t i = 0; i < children->count; ++i)
        if (!IsFree(build, base + children->classes[i]))
            return false;
    return true;
}

// A base where all children find a free cell. The search goes on where a node with as many children
// found its place: what it left behind had no room for such a node, as a rule, and is filled by
// nodes with fewer.
static uint32_t FindBase(TrieBuild *build, const ChildList *children)
{
    uint32_t lowest = children->classes[0];
    uint32_t group = children->count < kGroups ? children->count : kGroups;
    uint32_t *firstTry = &build->firstTry[group - 1];
    int tries = 0;
    for (uint32_t cell = *firstTry; cell < build->end && tries < kMostTries; ++cell) {
        if (!IsFree(build, cell) || cell < kFirstBase + lowest)
            continue;
        ++tries;
        if (!CanStand(build, children, cell - lowest))
            continue;
        *firstTry = cell;
        return cell - lowest;
    }
    *firstTry = build->end;
    return build->end;
}

static int CompareBytes(const void *a, const void *b)
{
    return *static_cast<const uint8_t *>(a) - *static_cast<const uint8_t *>(b);
}

// The node's children in the order of the words; the node's own word, if any, is the first of them.
static void ListChildren(const TrieBuild *build, const WaitingNode *node, ChildList *children)
{
    children->count = 0;
    uint32_t low = node->low;
    if (low < node->high && !ByteAt(build, low, node->depth))
        ++low;
    for (uint32_t i = low; i < node->high; ++i)
        if (i == low || ByteAt(build, i, node->depth) != ByteAt(build, i - 1, node->depth)) {
            children->classes[children->count] =
                build->trie->classOf[ByteAt(build, i, node->depth)];
            children->lows[children->count++] = i;
        }
    children->lows[children->count] = node->high;
}

// The words behind HO SUNG that go on with LO are neighbours; is there one?
static bool LeadsToLo(const TrieBuild *build, uint32_t low, uint32_t high, uint32_t depth)
{
    for (uint32_t i = low; i < high; ++i)
        if (ByteAt(build, i, depth) == kLo)
            return true;
    return false;
}

// One more child for a node with the two-byte way; it has no words of its own.
static void AddTwin(const TrieBuild *build, const WaitingNode *node, ChildList *children)
{
    for (uint32_t i = 0; i < children->count; ++i) {
        uint32_t low = children->lows[i], high = children->lows[i + 1];
        if (ByteAt(build, low, node->depth) != kHoSung ||
            !LeadsToLo(build, low, high, node->depth + 1))
            continue;
        uint32_t end = children->lows[children->count];
        children->classes[children->count++] = build->trie->classOf[kHoLo];
        children->lows[children->count] = end;
        return;
    }
}

// The cell gets its base when its children have their places; the twin leads to the same ones.
static void SetBase(TrieBuild *build, const WaitingNode *node, uint32_t base)
{
    Trie *trie = build->trie;
    assert(base >= kFirstBase && base < kMostCells && !build->baseTaken[base]);
    build->baseTaken[base] = 1;
    *(node->cell ? &trie->cells[node->cell] : &trie->root) |= base << kBaseShift;
    if (node->twin)
        trie->cells[node->twin] |= base << kBaseShift;
}

static void PutCell(TrieBuild *build, uint32_t cell, uint32_t content)
{
    assert(IsFree(build, cell));
    build->trie->cells[cell] = content;
    if (cell >= build->end)
        build->end = cell + 1;
}

// Places the node's child number i and lets it wait for its own children.
static void PlaceChild(TrieBuild *build, const WaitingNode *node, const ChildList *children,
                       uint32_t i, uint32_t base)
{
    uint32_t cell = base + children->classes[i], low = children->lows[i];
    uint8_t code = ByteAt(build, low, node->depth);
    uint32_t end = ByteAt(build, low, node->depth + 1) ? 0 : kWordEnd;
    PutCell(build, cell, children->classes[i] | end);
    WaitingNode child = {low, children->lows[i + 1], cell, node->depth + 1, 0, 0};
    bool hasTwin = children->classes[children->count - 1] == build->trie->classOf[kHoLo];
    if (code == kHoSung && hasTwin)
        child.twinOfNext = base + build->trie->classOf[kHoLo];
    if (code == kLo && node->twinOfNext) {
        child.twin = node->twinOfNext;
        build->trie->cells[child.twin] |= end;
    }
    build->queue[build->queueEnd++] = child;
}

// Finds a base for the children of a node and places them; false without memory.
static bool PlaceChildren(TrieBuild *build, const WaitingNode *node)
{
    ChildList children;
    ListChildren(build, node, &children);
    if (!children.count)
        return true;
    uint32_t count = children.count;
    AddTwin(build, node, &children);
    ChildList sorted = children;
    qsort(sorted.classes, sorted.count, 1, CompareBytes);
    uint32_t base = FindBase(build, &sorted);
    if (!GrowCells(build, base))
        return false;
    SetBase(build, node, base);
    if (children.count > count)
        PutCell(build, base + children.classes[count], children.classes[count]);
    for (uint32_t i = 0; i < count; ++i)
        PlaceChild(build, node, &children, i, base);
    return true;
}

static bool PlaceAll(TrieBuild *build)
{
    build->end = kFirstBase;
    if (!GrowCells(build, kFirstBase))
        return false;
    build->queue[build->queueEnd++] = {0, build->list->count, 0, 0, 0, 0};
    for (uint32_t next = 0; next < build->queueEnd; ++next) {
        WaitingNode node = build->queue[next];
        if (!PlaceChildren(build, &node))
            return false;
    }
    // Every base is below the end. What was made room for behind that is not used.
    if (build->trie->cellCount > build->end + kRow)
        build->trie->cellCount = build->end + kRow;
    return true;
}

// Most positions of a text begin no word of the dictionary, or end after a step or two: the first
// two steps as one look into a table.
static bool FillFirstTwo(Trie *trie)
{
    uint32_t row = trie->classCount + 1;
    trie->firstTwo = static_cast<uint32_t *>(calloc(row * row, sizeof *trie->firstTwo));
    if (!trie->firstTwo)
        return false;
    for (uint32_t a = 1; a < row; ++a) {
        uint32_t cell = TrieStep(trie, trie->root, a);
        for (uint32_t b = 1; cell && b < row; ++b)
            trie->firstTwo[a * row + b] = TrieStep(trie, cell, b);
    }
    return true;
}

int FinishTrie(Trie *trie)
{
    for (int code = 1; code < 256; ++code)
        trie->runClassOf[code] = IsLaoSign(uint8_t(code)) ? trie->classOf[code] : 0;
    return FillFirstTwo(trie);
}

int BuildTrie(Trie *trie, const WordList *list)
{
    *trie = {};
    if (!list->count)
        return 1;
    NumberClasses(trie, list);
    TrieBuild build = {trie, list, nullptr, 0, nullptr, {}, 0};
    build.queue = static_cast<WaitingNode *>(malloc((CountNodes(list) + 1) * sizeof(WaitingNode)));
    bool isBuilt =
        trie->classCount <= kMostClasses && build.queue && PlaceAll(&build) && FinishTrie(trie);
    free(build.queue);
    free(build.baseTaken);
    if (!isBuilt)
        FreeTrie(trie);
    return isBuilt;
}

void FreeTrie(Trie *trie)
{
    free(trie->cells);
    free(trie->firstTwo);
    *trie = {};
}

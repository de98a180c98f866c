// Loading and unloading of the three dictionaries. A file that is missing or can't be read makes an
// empty dictionary that counts as loaded, so that the question that comes with every run of text
// touches no file system. The main dictionary's trie stands ready beside the module; where it isn't
// that of the list, because the user has another one, the trie is built from the list.
#include "dictionary.h"
#include "dictionary_file.h"
#include "runtime.h"
#include "trie_file.h"

#include <cstring>
#include <iterator>

// A row for each dictionary: how the library asks for it, and what its file holds.
struct DictionaryName {
    DWORD bit;
    const char *fileName;
    bool hasPairs;
    const char *trieName;  // null: the trie is always built
};
constexpr DictionaryName kNames[] = {
    // ORDER Dictionary
    {kMainDictionary, "MainDict.dat", false, "MainDict.trie"},
    {kOldDictionary, "OldDict.dat", true, nullptr},
    {kUserDictionary, "UserDict.dat", false, nullptr},
};
static_assert(std::size(kNames) == kDictionaryCount);

// Look-ups take bit i of their flags for the dictionary of row i.
static_assert(kNames[0].bit == 1 && kNames[1].bit == 2 && kNames[2].bit == 4);

DictionaryState gDictionaries;

// -1 for a number that is none of the three bits.
static int IndexOfBit(DWORD bit)
{
    for (int i = 0; i < kDictionaryCount; ++i)
        if (kNames[i].bit == bit)
            return i;
    return -1;
}

Dictionary *DictionaryOfBit(DWORD bit)
{
    int index = IndexOfBit(bit);
    return index < 0 ? nullptr : &gDictionaries.dictionaries[index];
}

const char *DictionaryFileName(DWORD bit)
{
    int index = IndexOfBit(bit);
    return index < 0 ? nullptr : kNames[index].fileName;
}

void RebuildTrie(Dictionary *dictionary)
{
    FreeTrie(&dictionary->trie);
    BuildTrie(&dictionary->trie, &dictionary->list);  // without memory it finds nothing
    dictionary->isTrieStale = false;
}

// The trie is built at the next look-up, not now: a host may add many words in a row.
void ReplaceList(Dictionary *dictionary, const WordList *list)
{
    FreeWordList(&dictionary->list);
    dictionary->list = *list;
    dictionary->wordCount = list->count;
    dictionary->isLoaded = true;
    dictionary->isTrieStale = true;
    ++dictionary->revision;
}

// Takes the trie that was made from this content of the dictionary's file, if there is one.
static bool LoadTrie(int index, const FileContent *content)
{
    Dictionary *dictionary = &gDictionaries.dictionaries[index];
    FileContent file = {};
    Trie trie;
    uint32_t wordCount;
    bool isTaken = kNames[index].trieName &&
                   ReadInstalledFile(kNames[index].trieName, &file) == kFileRead &&
                   ReadTrieFile(&trie, &wordCount, &file, content);
    FreeFileContent(&file);
    if (!isTaken)
        return false;
    WordList none = {};
    ReplaceList(dictionary, &none);
    FreeTrie(&dictionary->trie);
    dictionary->trie = trie;
    dictionary->isTrieStale = false;
    dictionary->wordCount = wordCount;
    return true;
}

static void LoadDictionary(int index)
{
    FileContent content;
    WordList list = {};
    bool isRead = ReadDictionaryFile(kNames[index].fileName, &content) == kFileRead;
    bool hasTrie = isRead && LoadTrie(index, &content);
    if (isRead && !hasTrie)
        ParseWordList(&list, content.bytes, content.size, kNames[index].hasPairs);
    FreeFileContent(&content);
    if (!hasTrie)
        ReplaceList(&gDictionaries.dictionaries[index], &list);
}

// Asked with every run of text, as a rule in the name's own letters.
static bool IsNameOf(const char *fileName, int index)
{
    const char *name = kNames[index].fileName;
    return !strcmp(fileName, name) || !CompareNoCase(fileName, name);
}

DWORD WINAPI ReadLaoDict(const char *fileName, DWORD dictionary)
{
    int index = IndexOfBit(dictionary);
    if (!fileName || index < 0 || !IsNameOf(fileName, index))
        return 0;
    if (!gDictionaries.dictionaries[index].isLoaded)
        LoadDictionary(index);
    uint32_t count = gDictionaries.dictionaries[index].wordCount;
    return count < 0xFFFF ? count : 0xFFFF;
}

DWORD WINAPI DictionariesRevision(void)
{
    DWORD sum = 0;
    for (const Dictionary &dictionary : gDictionaries.dictionaries)
        sum += dictionary.revision;  // each of them only grows
    return sum;
}

void ForgetDictionaries()
{
    for (Dictionary &dictionary : gDictionaries.dictionaries) {
        FreeWordList(&dictionary.list);
        FreeTrie(&dictionary.trie);
        dictionary.isLoaded = dictionary.isTrieStale = false;
        ++dictionary.revision;
    }
    ++gDictionaries.generation;
}

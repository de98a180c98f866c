// Writes the trie of a dictionary file: make_trie LIST TRIE. A step of the build, which runs on the
// machine that builds, for whatever target: both read the same file.
#include "trie_file.h"
#include <cstdio>
#include <vector>

static int Fail(const char *what)
{
    fprintf(stderr, "make_trie: %s\n", what);
    return 1;
}

static bool ReadAll(const char *path, std::vector<char> *bytes)
{
    FILE *file = fopen(path, "rb");
    if (!file)
        return false;
    char block[65536];
    while (size_t count = fread(block, 1, sizeof block, file))
        bytes->insert(bytes->end(), block, block + count);
    bool isRead = !ferror(file);
    fclose(file);
    return isRead;
}

static bool WriteAll(const char *path, const FileContent &content)
{
    FILE *file = fopen(path, "wb");
    if (!file)
        return false;
    bool isWritten = fwrite(content.bytes, 1, content.size, file) == content.size;
    return fclose(file) == 0 && isWritten;
}

int main(int argc, char **argv)
{
    std::vector<char> bytes;
    WordList words;
    Trie trie;
    FileContent file;
    if (argc != 3)
        return Fail("usage: make_trie LIST TRIE");
    if (!ReadAll(argv[1], &bytes))
        return Fail("the list can't be read");
    FileContent list = {bytes.data(), bytes.size()};
    if (!ParseWordList(&words, list.bytes, list.size, false) || !words.count)
        return Fail("the list has no words");
    if (!BuildTrie(&trie, &words) || !WriteTrieFile(&file, &trie, words.count, &list))
        return Fail("no memory");
    return WriteAll(argv[2], file) ? 0 : Fail("the trie can't be written");
}

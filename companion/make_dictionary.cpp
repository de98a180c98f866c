// Writes MainDict.dat: the words of the Lao dictionary inside ICU's data, read through ICU's public
// interface (udata_open and icu::BytesTrie), in the order of their characters. The eight 32-bit
// numbers in front of the trie are ICU's own format, which has stood since ICU 50: place of the
// trie, total size, kind of trie, and how its bytes stand for characters. Built on demand only; the
// list that it made is kept as data, so that a build needs no ICU.
#include <algorithm>
#include <cstdio>
#include <string>
#include <unicode/bytestrie.h>
#include <unicode/udata.h>
#include <unicode/unistr.h>
#include <unicode/uversion.h>
#include <vector>

enum { kTrieOffset = 0, kTrieKind = 4, kTransform = 5 };
enum { kTransformOffset = 0x01000000, kTransformKind = 0x7F000000, kFirstCharacter = 0x1FFFFF };

static const char kHead[] =
    "# The main dictionary: Lao words, one a line, in UTF-8.\n"
    "# Made by make_dictionary from the Lao dictionary in the data of ICU " U_ICU_VERSION ".\n"
    "# Copyright (C) 2016 and later: Unicode, Inc. and others;\n"
    "# Copyright (c) 2015 International Business Machines Corporation and others;\n"
    "# Copyright (C) 2013 Brian Eugene Wilson, Robert Martin Campbell.\n"
    "# Licence: BSD with two conditions, see MainDict-LICENSE.txt beside this file.\n";

static int Fail(const char *what)
{
    fprintf(stderr, "make_dictionary: %s\n", what);
    return 1;
}

// A byte of the trie stands for a character counted from the first one of the data. False for a
// format that isn't this one.
static bool ReadWords(const uint8_t *data, std::vector<std::string> *words)
{
    const int32_t *numbers = reinterpret_cast<const int32_t *>(data);
    bool isKnown =
        (numbers[kTrieKind] & 7) == 0 && (numbers[kTransform] & kTransformKind) == kTransformOffset;
    if (!isKnown)
        return false;
    int32_t first = numbers[kTransform] & kFirstCharacter;
    UErrorCode status = U_ZERO_ERROR;
    icu::BytesTrie::Iterator it(data + numbers[kTrieOffset], 0, status);
    while (it.next(status)) {
        icu::UnicodeString word;
        for (int32_t i = 0; i < it.getString().size(); ++i)
            word.append(UChar32(first + uint8_t(it.getString().data()[i])));
        words->emplace_back();
        word.toUTF8String(words->back());
    }
    return U_SUCCESS(status);
}

int main(int argc, char **argv)
{
    if (argc != 2)
        return Fail("usage: make_dictionary FILE");
    UErrorCode status = U_ZERO_ERROR;
    UDataMemory *memory = udata_open(U_ICUDATA_NAME "-brkitr", "dict", "laodict", &status);
    if (U_FAILURE(status))
        return Fail("this ICU has no Lao dictionary");
    std::vector<std::string> words;
    bool isRead = ReadWords(static_cast<const uint8_t *>(udata_getMemory(memory)), &words);
    udata_close(memory);
    if (!isRead)
        return Fail("the dictionary has a format that is not known here");
    std::sort(words.begin(), words.end());
    FILE *file = fopen(argv[1], "wb");
    if (!file)
        return Fail("the file can't be written");
    fputs(kHead, file);
    for (const std::string &word : words)
        fprintf(file, "%s\n", word.c_str());
    bool isWritten = !ferror(file);
    return fclose(file) == 0 && isWritten ? 0 : Fail("the file can't be written");
}

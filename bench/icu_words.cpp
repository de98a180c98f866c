// Lists the Lao dictionary inside ICU's data, read through ICU's public interface (udata_open and
// icu::BytesTrie). The eight 32-bit numbers in front of the trie are ICU's own format, which has
// stood since ICU 50: place of the trie, total size, kind of trie, and how its bytes stand for
// characters.
#include "icu_words.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <unicode/bytestrie.h>
#include <unicode/udata.h>
#include <unicode/unistr.h>

enum { kTrieOffset = 0, kTrieKind = 4, kTransform = 5 };
enum { kTransformOffset = 0x01000000, kTransformKind = 0x7F000000, kFirstCharacter = 0x1FFFFF };

// A byte of the trie stands for a character counted from the first one of the data. False for a
// format that isn't this one.
static bool ListWords(const uint8_t *data, std::string *list)
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
        word.append(u'\n').toUTF8String(*list);
    }
    return U_SUCCESS(status);
}

std::string ReadIcuWords()
{
    std::string list;
    UErrorCode status = U_ZERO_ERROR;
    UDataMemory *memory = udata_open(U_ICUDATA_NAME "-brkitr", "dict", "laodict", &status);
    bool isListed = U_SUCCESS(status) &&
                    ListWords(static_cast<const uint8_t *>(udata_getMemory(memory)), &list);
    udata_close(memory);
    if (isListed)
        return list;
    fprintf(stderr, "this ICU has no Lao dictionary of a known format\n");
    exit(1);
}

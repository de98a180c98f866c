// The peer for sort keys, by its public interface.
#include "icu_keys.h"

#include <cstdlib>
#include <memory>

#include <unicode/coll.h>
#include <unicode/unistr.h>

static icu::Collator &LaoCollator()
{
    UErrorCode status = U_ZERO_ERROR;
    static std::unique_ptr<icu::Collator> collator(
        icu::Collator::createInstance(icu::Locale("lo"), status));
    if (!collator)
        exit(1);
    return *collator;
}

constexpr int kMostKey = 8192;  // bytes

size_t MakeIcuKeys(const std::vector<std::u16string> &words)
{
    icu::Collator &collator = LaoCollator();
    uint8_t key[kMostKey];
    size_t size = 0;
    for (const std::u16string &word : words)
        size += size_t(collator.getSortKey(word.data(), int32_t(word.size()), key, sizeof key));
    return size;
}

size_t MakeIcuKeysFromUtf8(const std::vector<std::string> &words)
{
    icu::Collator &collator = LaoCollator();
    uint8_t key[kMostKey];
    size_t size = 0;
    for (const std::string &word : words)
        size += size_t(collator.getSortKey(icu::UnicodeString::fromUTF8(word), key, sizeof key));
    return size;
}

std::u16string Utf16Of(const std::string &text)
{
    icu::UnicodeString wide = icu::UnicodeString::fromUTF8(text);
    return {wide.getBuffer(), size_t(wide.length())};
}

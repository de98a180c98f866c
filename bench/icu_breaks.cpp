// The peer for breaks, by its public interface.
#include "icu_breaks.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

#include <unicode/brkiter.h>
#include <unicode/unistr.h>

struct IcuText {
    std::unique_ptr<icu::BreakIterator> iterator;
    icu::UnicodeString text;
};

IcuText *MakeIcuText(const std::string &utf8)
{
    UErrorCode status = U_ZERO_ERROR;
    IcuText *text = new IcuText;
    text->iterator.reset(icu::BreakIterator::createLineInstance(icu::Locale("lo"), status));
    text->text = icu::UnicodeString::fromUTF8(utf8);
    if (U_SUCCESS(status))
        return text;
    fprintf(stderr, "no line iterator: %s\n", u_errorName(status));
    exit(1);
}

size_t CountIcuBoundaries(IcuText *text)
{
    size_t count = 0;
    text->iterator->setText(text->text);
    text->iterator->first();
    while (text->iterator->next() != icu::BreakIterator::DONE)
        ++count;
    return count;
}

static bool IsLaoLetter(char16_t c)
{
    return c >= 0x0E80 && c <= 0x0EDF && !(c >= 0x0ED0 && c <= 0x0ED9);
}

void MarkByIcu(IcuText *text, const std::string &utf8, std::string *output)
{
    icu::UnicodeString plain = icu::UnicodeString::fromUTF8(utf8);
    icu::UnicodeString marked(plain.length() + plain.length() / 4, 0, 0);
    icu::BreakIterator &iterator = *text->iterator;
    iterator.setText(plain);
    int32_t start = iterator.first();
    for (int32_t end = iterator.next(); end != icu::BreakIterator::DONE;
         start = end, end = iterator.next()) {
        marked.append(plain, start, end - start);
        if (end < plain.length() && IsLaoLetter(plain[end - 1]) && IsLaoLetter(plain[end]))
            marked.append(char16_t(0x200B));
    }
    output->clear();
    marked.toUTF8String(*output);
}

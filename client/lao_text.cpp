// The library finds the chunks in the text itself; here the text is put together again, with new
// breaks and without old ones.
#include "lao_text.h"

#include <algorithm>

#include "utf8.h"

// Bytes of a text for each of its chunks, as a rule; where there are more chunks, it is divided
// again.
constexpr size_t kChunkSize = 8;

bool DivideLaoText(std::string_view source, DWORD flags, LaoText *text)
{
    std::vector<LaoChunk> *block = &text->block;
    block->resize(std::max(block->size(), source.size() / kChunkSize + 1));
    auto divide = [&] {
        return DivideUtf8(source.data(), DWORD(source.size()), block->data(), DWORD(block->size()),
                          flags);
    };
    int count = source.empty() ? 0 : divide();
    if (count > 0 && size_t(count) > block->size()) {
        block->resize(size_t(count));
        count = divide();
    }
    text->source = source;
    text->chunks = {block->data(), size_t(std::max(count, 0))};
    return count >= 0;
}

// The next old break from a place on, or the text's end. A break that holds the halves of a broken
// character apart stays: without it they would become another one.
static size_t FindOldBreak(std::string_view source, size_t from)
{
    for (size_t at = source.find(kZeroWidthSpace, from); at != source.npos;
         at = source.find(kZeroWidthSpace, at + 1)) {
        size_t behind = at + kZeroWidthSpace.size();
        if (behind == source.size() || !IsContinuation(source[behind]))
            return at;
    }
    return source.size();
}

// A place in a text that is written from its start to its end, without its old breaks.
struct CleanPlace {
    std::string_view source;
    size_t written;   // bytes of it that have gone out, or were left out
    size_t oldBreak;  // the next one, or the end
};

static void AppendUpTo(CleanPlace *place, size_t to, std::string *output)
{
    while (place->oldBreak < to) {
        output->append(place->source, place->written, place->oldBreak - place->written);
        place->written = place->oldBreak + kZeroWidthSpace.size();
        place->oldBreak = FindOldBreak(place->source, place->written);
    }
    output->append(place->source, place->written, to - place->written);
    place->written = to;
}

void AppendMarked(const LaoText &text, std::string_view mark, std::string *output)
{
    CleanPlace place = {text.source, 0, FindOldBreak(text.source, 0)};
    output->reserve(output->size() + text.source.size() + text.chunks.size() * mark.size());
    for (const LaoChunk &chunk : text.chunks) {
        if (!chunk.hasBreak)
            continue;
        AppendUpTo(&place, chunk.start, output);
        *output += mark;
    }
    AppendUpTo(&place, text.source.size(), output);
}

std::string CleanText(const LaoText &text, size_t from, size_t to)
{
    std::string clean;
    CleanPlace place = {text.source.substr(0, to), from, 0};
    place.oldBreak = FindOldBreak(place.source, from);
    AppendUpTo(&place, to, &clean);
    return clean;
}

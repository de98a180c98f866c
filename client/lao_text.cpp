// The road of a text to its chunks. A stretch of anything but Lao is handed over as one blank,
// which ends a run as the stretch itself would, so that no byte that isn't Lao acts on the library.
#include "lao_text.h"

#include <algorithm>

#include "utf8.h"

constexpr WCHAR kForeign = ' ';

// A break that holds the halves of a broken character apart stays: without it they would become
// another one.
static bool IsOldBreakAt(std::string_view text)
{
    return text.starts_with(kZeroWidthSpace) &&
           (text.size() == kZeroWidthSpace.size() || !IsContinuation(text[kZeroWidthSpace.size()]));
}

static void AddCharacter(LaoText *text, WCHAR character, size_t start)
{
    text->characters.push_back(character);
    text->starts.push_back(start);
}

static void ListCharacters(std::string_view source, LaoText *text)
{
    text->characters.clear();
    text->starts.clear();
    text->oldBreaks.clear();
    for (size_t i = 0; i < source.size();) {
        if (IsLaoAt(source.data() + i, source.size() - i)) {
            AddCharacter(text, WCHAR(LaoAt(source.data() + i)), i);
            i += 3;
        } else if (source[i] == kZeroWidthSpace[0] && IsOldBreakAt(source.substr(i))) {
            text->oldBreaks.push_back(i);
            AddCharacter(text, kBreakSign, i);
            i += kZeroWidthSpace.size();
        } else {
            if (text->characters.empty() || text->characters.back() != kForeign)
                AddCharacter(text, kForeign, i);
            ++i;
        }
    }
    text->starts.push_back(source.size());
}

bool DivideLaoText(std::string_view source, DWORD flags, LaoText *text)
{
    ListCharacters(source, text);
    DWORD count = DWORD(text->characters.size());
    text->chunks.resize(count);
    int chunks = DivideText(text->characters.data(), count, text->chunks.data(), count, flags);
    text->chunks.resize(size_t(std::max(chunks, 0)));
    return chunks >= 0 || count == 0;
}

// Appends the bytes of the text from one place to another without the old breaks among them, of
// which *old is the first.
static void AppendClean(std::string_view source, const LaoText &text, size_t from, size_t to,
                        size_t *old, std::string *output)
{
    for (; *old < text.oldBreaks.size() && text.oldBreaks[*old] < to; ++*old) {
        *output += source.substr(from, text.oldBreaks[*old] - from);
        from = text.oldBreaks[*old] + kZeroWidthSpace.size();
    }
    *output += source.substr(from, to - from);
}

void AppendMarked(std::string_view source, const LaoText &text, std::string_view mark,
                  std::string *output)
{
    size_t written = 0, old = 0;
    for (const LaoChunk &chunk : text.chunks) {
        if (!chunk.hasBreak)
            continue;
        size_t start = text.starts[chunk.start];
        AppendClean(source, text, written, start, &old, output);
        *output += mark;
        written = start;
    }
    AppendClean(source, text, written, source.size(), &old, output);
}

std::string ChunkText(std::string_view source, const LaoText &text, const LaoChunk &chunk)
{
    size_t start = text.starts[chunk.start];
    auto first = std::lower_bound(text.oldBreaks.begin(), text.oldBreaks.end(), start);
    size_t old = size_t(first - text.oldBreaks.begin());
    std::string clean;
    AppendClean(source, text, start, text.starts[chunk.end], &old, &clean);
    return clean;
}

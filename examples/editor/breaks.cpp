// Break marks: where a line of Lao may end. The library divides the text as it stands; the marks
// are this program's to write.
#include "commands.h"
#include "division.h"
#include "document.h"
#include "library.h"

constexpr DWORD kPlaceByOption = 0;

std::vector<LaoChunk> Divide(const std::wstring &text, DWORD place)
{
    std::vector<LaoChunk> chunks(text.size() + 1);
    DWORD length = DWORD(text.size()), room = DWORD(chunks.size());
    int count = gOrvel.DivideText(text.data(), length, chunks.data(), room, kInsertBreaks | place);
    chunks.resize(size_t(count > 0 ? count : 0));
    return chunks;
}

void InsertMarks()
{
    std::wstring text = ReadText(), clean = WithoutMarks(text);
    std::vector<LaoChunk> chunks = Divide(clean, kPlaceByOption);
    std::wstring marked;
    size_t written = 0;
    for (const LaoChunk &chunk : chunks) {
        if (!chunk.hasBreak)
            continue;
        marked.append(clean, written, chunk.start - written);
        marked += kBreak;
        written = chunk.start;
    }
    marked.append(clean, written);
    ReplaceRange({0, text.size()}, marked);
}

void RemoveMarks()
{
    std::wstring text = ReadText();
    ReplaceRange({0, text.size()}, WithoutMarks(text));
}

// Cuts input into pieces. The end of a piece is the last line end within the limit; without one the
// last byte before which a run of Lao has ended, and a run longer than the limit is read to its
// end.
#include "pieces.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

#include "utf8.h"

// In bytes. A piece ends behind a line where it can, however short; the first size is where it may
// end elsewhere, the second where bytes that are no UTF-8 at all may be cut too: they could be a
// text in an old font, without any ASCII, but no such text is so long.
constexpr size_t kPieceSize = 64 * 1024;
constexpr size_t kLongestText = 1024 * 1024;
constexpr size_t kCharacterSize = 4;  // the last bytes may be half of a character

PieceReader StartReading(int file)
{
    return {.file = file,
            .buffer = {},
            .used = 0,
            .ended = false,
            .failure = 0,
            .line = 1,
            .column = 1};
}

// Takes what is there, as a pipe gives it: who sends a line may be waiting for the answer.
static void Fill(PieceReader *reader)
{
    size_t old = reader->buffer.size(), room = old > kPieceSize ? old : kPieceSize;
    reader->buffer.resize(old + room);
    ssize_t got;
    do
        got = read(reader->file, reader->buffer.data() + old, unsigned(room));
    while (got < 0 && errno == EINTR);
    reader->buffer.resize(old + size_t(got > 0 ? got : 0));
    reader->ended = got <= 0;
    reader->failure = got < 0 ? errno : 0;
}

// Whether no character, which has four bytes at most, can reach over the beginning of this byte.
static bool IsStray(std::string_view text, size_t at)
{
    return at > 2 && IsContinuation(text[at - 1]) && IsContinuation(text[at - 2]) &&
           IsContinuation(text[at - 3]);
}

// Whether the byte begins a character that is neither Lao nor a break mark inside of Lao. A byte
// that is no UTF-8 may be a sign of an old font, which belongs to the one in front of it; but no
// text is so long.
static bool EndsRun(std::string_view text, size_t at)
{
    size_t left = text.size() - at;
    bool isLong = text.size() > kLongestText;
    if (IsContinuation(text[at]))
        return isLong && IsStray(text, at);
    bool isOfRun = IsLaoAt(&text[at], left) || IsZeroWidthSpaceAt(&text[at], left);
    return !isOfRun && (isLong || CharacterSize(text.substr(at)) > 1);
}

// A place that is sure to be outside of a run: behind an ASCII byte, which nothing can go on from.
static size_t FindRunEnd(std::string_view text)
{
    for (size_t i = text.size(); i > kCharacterSize; --i)
        if (uint8_t(text[i - 1]) < 0x80)
            return i;
    for (size_t i = text.size() - kCharacterSize; i > 0; --i)
        if (EndsRun(text, i))
            return i;
    return 0;
}

// Bytes of the next piece; 0: more must be read before one can end.
static size_t FindPieceEnd(const PieceReader &reader)
{
    std::string_view text = reader.buffer;
    size_t lineEnd = text.rfind('\n');
    if (lineEnd != text.npos)
        return lineEnd + 1;
    if (reader.ended)
        return text.size();
    return text.size() < kPieceSize ? 0 : FindRunEnd(text);
}

// Moves line and column behind a piece that was given out.
static void PassPiece(PieceReader *reader, std::string_view given)
{
    size_t lineEnd = given.rfind('\n');
    if (lineEnd != given.npos) {
        reader->line += size_t(std::count(given.begin(), given.end(), '\n'));
        reader->column = 1;
        given.remove_prefix(lineEnd + 1);
    }
    reader->column += CountCharacters(given);
}

std::string_view ReadPiece(PieceReader *reader)
{
    PassPiece(reader, std::string_view(reader->buffer).substr(0, reader->used));
    reader->buffer.erase(0, reader->used);
    while ((reader->used = FindPieceEnd(*reader)) == 0 && !reader->ended)
        Fill(reader);
    return std::string_view(reader->buffer).substr(0, reader->used);
}

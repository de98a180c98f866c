// What the two roads of a conversion share: how a run becomes text, what is written of it, and the
// memory of the last syllable.
#pragma once

#include <cstddef>
#include <cstdint>

#include "keytables/key_table.h"

enum { kRunRoom = 36 };  // bytes of a run's text, terminator included

// One call.
struct Conversion {
    const KeyTable *table;
    char *output;
    size_t length;  // of the output with its terminator; from size on nothing more is written
    size_t size;
    bool showsFailures;  // "[?]" behind what is no syllable
};

// What a run's text is to a repeat sign behind it.
enum RunMemory : uint8_t {
    kKeepsWord,    // nothing: a syllable of which a piece is missing
    kBecomesWord,  // the text that is repeated
    kForgetsWord,  // no syllable: there is nothing to repeat
};

inline bool IsFull(const Conversion *conversion)
{
    return conversion->length >= conversion->size;
}

// What doesn't fit isn't written in part, and nothing is written behind it.
void WriteBytes(Conversion *conversion, const char *bytes, size_t count);
void WriteText(Conversion *conversion, const char *text);

// The text of a repeat sign, or else of an ellipsis.
void WriteWordSign(Conversion *conversion, bool repeats);

// A byte that isn't Lao.
void WritePlainByte(Conversion *conversion, char byte);

void WriteSeparator(Conversion *conversion);

// Renders a run of count bytes, with anything but Lao behind them, as one syllable: its text
// (kRunRoom bytes). Remembers nothing.
RunMemory RenderRun(const Conversion *conversion, const uint8_t *run, int count, char *text);

// text has length bytes, fewer than kRunRoom.
void RememberRun(const char *text, size_t length, RunMemory memory);

// 1 when all fitted; else 0 after the message.
int EndConversion(const Conversion *conversion);

// A romanization has no words of its own where the option divides by syllables alone.
bool NeedsWords(const KeyTable *table);

// The font whose code leaves the internal code as it is. Where it isn't registered no breaks are
// found, and each run of Lao is one syllable.
constexpr char kWorkFont[] = "Saysettha Lao";

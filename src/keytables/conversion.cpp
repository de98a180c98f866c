// Writing into the output of a conversion, and rendering of its runs.
#include "keytables/conversion.h"

#include <cassert>
#include <cstring>

#include "frame/messages.h"
#include "frame/records.h"
#include "frame/strings.h"
#include "keytables/render.h"

enum : uint8_t { kBlank = 32, kNoBreakSpace = 160 };

// What outlives a call; RememberRun and the rules of the signs change it, nothing else.
struct ConversionState {
    char lastWord[kRunRoom];  // text of the last syllable that was rendered in full
};
static ConversionState gConversion;

// ---- writing ----

void WriteBytes(Conversion *conversion, const char *bytes, size_t count)
{
    assert(conversion->length >= 1);  // the terminator counts
    size_t start = conversion->length - 1;
    conversion->length += count;
    if (IsFull(conversion))
        return;
    memcpy(conversion->output + start, bytes, count);
    conversion->output[start + count] = 0;
}

void WriteText(Conversion *conversion, const char *text)
{
    WriteBytes(conversion, text, strlen(text));
}

static void ForgetWord()
{
    gConversion.lastWord[0] = 0;
}

// One byte alone is no syllable to repeat.
void WriteWordSign(Conversion *conversion, bool repeats)
{
    if (conversion->table->type == kEmailTable) {
        WriteText(conversion, repeats ? "#" : "&");
        return;
    }
    if (repeats && gConversion.lastWord[0] && gConversion.lastWord[1]) {
        WriteText(conversion, gConversion.lastWord);
        return;
    }
    ForgetWord();
    WriteText(conversion, repeats ? "(rep.)" : "(etc.)");
}

void WritePlainByte(Conversion *conversion, char byte)
{
    WriteBytes(conversion, &byte, 1);
    if (uint8_t(byte) != kBlank && uint8_t(byte) != kNoBreakSpace)
        ForgetWord();
}

void WriteSeparator(Conversion *conversion)
{
    if (conversion->table->separator)
        WriteBytes(conversion, reinterpret_cast<const char *>(&conversion->table->separator), 1);
}

int EndConversion(const Conversion *conversion)
{
    if (IsFull(conversion))
        return WarningBox("Cannot complete converting Lao text, selection is too large");
    return 1;
}

// ---- runs ----

bool NeedsWords(const KeyTable *table)
{
    return table->type != kRomanTable || (gProcess.options->breakMode & kWordBreaks);
}

void RememberRun(const char *text, size_t length, RunMemory memory)
{
    assert(length < kRunRoom);
    if (memory == kKeepsWord)
        return;
    size_t kept = memory == kBecomesWord ? length : 0;
    memcpy(gConversion.lastWord, text, kept);
    gConversion.lastWord[kept] = 0;
}

// The text of the first pattern that matches at the run, or null.
static const char *FindChange(const Conversion *conversion, const uint8_t *run)
{
    EntryRange range = EntriesOf(conversion->table, kChangeSection);
    for (int i = range.begin; i < range.end; ++i)
        if (const char *text = MatchChangeEntry(run, conversion->table, i))
            return text;
    return nullptr;
}

RunMemory RenderRun(const Conversion *conversion, const uint8_t *run, int count, char *text)
{
    if (const char *change = count >= 2 ? FindChange(conversion, run) : nullptr) {
        CopyCut(text, kRunRoom, change);
        return kBecomesWord;
    }
    SyllableParts parts;
    ResetVariants();
    int isSyllable = ParseSyllable(run, count, &parts);
    int isWhole = RenderSyllable(&parts, text, kRunRoom, conversion->table);
    if (isSyllable)
        return isWhole ? kBecomesWord : kKeepsWord;
    size_t length = strlen(text);
    if (conversion->showsFailures)
        CopyWhole(text + length, kRunRoom - length, "[?]");
    return kForgetsWord;
}

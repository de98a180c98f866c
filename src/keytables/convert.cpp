// The conversion, shared by sort keys, romanization and e-mail coding. Two passes of the break
// inserter divide a copy of the text; marks of work stand in it for breaks and for the two word
// signs. Then each run between marks is rendered as one syllable, from the copy into the text.
#include "keytables/convert.h"

#include <cassert>
#include <cstring>

#include "frame/messages.h"
#include "frame/records.h"
#include "frame/strings.h"
#include "keytables/ascii_class.h"
#include "keytables/builtin_tables.h"
#include "keytables/render.h"
#include "orvel.h"
#include "text/lao_code.h"

enum : uint8_t {
    kRepeatMark = 19,
    kEllipsisMark = 20,
    kPrimaryBreakMark = 21,    // here a separator may be written
    kSecondaryBreakMark = 22,  // here by an e-mail table only
};

// Runs end at the marks of work, and no text that comes in has them.
static_assert(!IsLaoByte(kRepeatMark) && !IsLaoByte(kEllipsisMark) &&
              !IsLaoByte(kPrimaryBreakMark) && !IsLaoByte(kSecondaryBreakMark));

enum : uint8_t { kBlank = 32, kNoBreakSpace = 160 };
constexpr DWORD kMarkWords = kInsertBreaks | kBothBreaks;
constexpr DWORD kMarkSyllables = kInsertBreaks | kSyllableBreaks;
enum { kRunRoom = 36, kWorkGrowth = 16 };

// The font whose code leaves the internal code as it is. Where it isn't registered no breaks are
// found, and each run of Lao is one syllable.
constexpr char kWorkFont[] = "Saysettha Lao";

// What outlives a call; the rules of RenderRun and of the signs change it, nothing else.
struct ConvertState {
    char lastWord[kRunRoom];  // text of the last syllable that was rendered in full
};
static ConvertState gConvert;

// One call.
struct Conversion {
    const KeyTable *table;
    const uint8_t *cursor;  // in the copy
    char *output;
    size_t length;  // of the output with its terminator; from size on nothing more is written
    size_t size;
    bool showsFailures;  // "[?]" behind what is no syllable
};

// ---- dividing ----

static void ReplaceByte(char *text, uint8_t from, uint8_t to)
{
    for (; *text; ++text)
        if (uint8_t(*text) == from)
            *text = char(to);
}

// A romanization has no words of its own where the option divides by syllables alone.
static bool NeedsWords(const KeyTable *table)
{
    return table->type != kRomanTable || (gProcess.options->breakMode & kWordBreaks);
}

// Room for the divided text: as much as the text has, but no more than both passes and the work
// font's code can make of it.
static DWORD WorkRoom(size_t length, DWORD size)
{
    return length < size / kWorkGrowth ? DWORD(kWorkGrowth * (length + 1)) : size;
}

// Copies text to work with a mark at each break. A side buffer that a host has armed is used up and
// not written: its room is that of another text.
static int MarkBreaks(const char *text, char *work, DWORD size, DWORD flags, uint8_t mark)
{
    if (!WrapLaoEx(text, work, nullptr, size, kWorkFont, flags))
        return 0;
    ReplaceByte(work, kBreakMark, mark);
    return 1;
}

// The marks of words end runs for the second pass, so that it divides what is left. What fits work
// fits text.
static int DivideText(char *text, char *work, DWORD size, const KeyTable *table)
{
    uint8_t mark = kPrimaryBreakMark;
    if (table->replacementBreak) {
        CopyCut(work, size, text);
        ReplaceByte(work, table->replacementBreak, mark);
        return 1;
    }
    if (NeedsWords(table)) {
        if (!MarkBreaks(text, work, size, kMarkWords, mark))
            return 0;
        CopyCut(text, size, work);
        mark = kSecondaryBreakMark;
    }
    return MarkBreaks(text, work, size, kMarkSyllables, mark);
}

// ---- writing ----

// What doesn't fit isn't written in part, and nothing is written behind it.
static void WriteBytes(Conversion *conversion, const char *bytes, size_t count)
{
    assert(conversion->length >= 1);  // the terminator counts
    size_t start = conversion->length - 1;
    conversion->length += count;
    if (conversion->length >= conversion->size)
        return;
    memcpy(conversion->output + start, bytes, count);
    conversion->output[start + count] = 0;
}

static void WriteText(Conversion *conversion, const char *text)
{
    WriteBytes(conversion, text, strlen(text));
}

static void ForgetWord()
{
    gConvert.lastWord[0] = 0;
}

static bool IsBreak(uint8_t byte)
{
    return byte == kPrimaryBreakMark || byte == kSecondaryBreakMark;
}

// Passes the marks at the cursor: whether a separator belongs there. Punctuation one byte behind
// them takes it away.
static bool PassBreaks(Conversion *conversion)
{
    bool separates = false;
    for (; IsBreak(*conversion->cursor); ++conversion->cursor)
        separates |=
            *conversion->cursor == kPrimaryBreakMark || conversion->table->type == kEmailTable;
    if (!separates || !conversion->cursor[0])
        return false;
    char behind = char(conversion->cursor[1]);
    return behind && !IsAsciiPunctuation(behind);
}

// A repeat sign writes the last syllable again; one byte alone is no syllable to repeat.
static void ConvertWordSign(Conversion *conversion)
{
    bool repeats = *conversion->cursor++ == kRepeatMark;
    if (conversion->table->type == kEmailTable) {
        WriteText(conversion, repeats ? "#" : "&");
        return;
    }
    if (repeats && gConvert.lastWord[0] && gConvert.lastWord[1]) {
        WriteText(conversion, gConvert.lastWord);
        return;
    }
    ForgetWord();
    WriteText(conversion, repeats ? "(rep.)" : "(etc.)");
}

static void CopyPlainByte(Conversion *conversion)
{
    char byte = char(*conversion->cursor++);
    WriteBytes(conversion, &byte, 1);
    if (uint8_t(byte) != kBlank && uint8_t(byte) != kNoBreakSpace)
        ForgetWord();
}

// ---- runs ----

// The text of the first pattern that matches at the cursor, or null.
static const char *FindChange(const Conversion *conversion)
{
    EntryRange range = EntriesOf(conversion->table, kChangeSection);
    for (int i = range.begin; i < range.end; ++i)
        if (const char *text = MatchChangeEntry(conversion->cursor, conversion->table, i))
            return text;
    return nullptr;
}

// The run's text (kRunRoom bytes), and what of it is remembered.
static void RenderRun(const Conversion *conversion, int count, char *text)
{
    const char *change = count >= 2 ? FindChange(conversion) : nullptr;
    if (change) {
        CopyCut(text, kRunRoom, change);
        CopyCut(gConvert.lastWord, kRunRoom, text);
        return;
    }
    SyllableParts parts;
    ResetVariants();
    int isSyllable = ParseSyllable(conversion->cursor, count, &parts);
    int isWhole = RenderSyllable(&parts, text, kRunRoom, conversion->table);
    if (isSyllable && isWhole)
        CopyCut(gConvert.lastWord, kRunRoom, text);
    if (isSyllable)
        return;
    ForgetWord();
    size_t length = strlen(text);
    if (conversion->showsFailures)
        CopyWhole(text + length, kRunRoom - length, "[?]");
}

// A run is one syllable, or what is left of a misspelt one; it goes as a whole.
static void ConvertRun(Conversion *conversion)
{
    char text[kRunRoom];
    int count = 0;
    while (IsLaoByte(conversion->cursor[count]))
        ++count;
    RenderRun(conversion, count, text);
    WriteText(conversion, text);
    conversion->cursor += count;
}

static void ConvertNext(Conversion *conversion)
{
    uint8_t byte = *conversion->cursor;
    if (byte == kRepeatMark || byte == kEllipsisMark)
        ConvertWordSign(conversion);
    else if (IsLaoByte(byte))
        ConvertRun(conversion);
    else
        CopyPlainByte(conversion);
}

static void ConvertDivided(Conversion *conversion)
{
    const KeyTable *table = conversion->table;
    conversion->output[0] = 0;
    while (IsBreak(*conversion->cursor))
        ++conversion->cursor;
    while (*conversion->cursor && conversion->length < conversion->size) {
        if (PassBreaks(conversion) && table->separator)
            WriteBytes(conversion, reinterpret_cast<const char *>(&table->separator), 1);
        if (*conversion->cursor)  // a break may be the last of all
            ConvertNext(conversion);
    }
}

// Divides the text into the work buffer and writes the result over the text.
static int ConvertThrough(char *work, DWORD room, char *text, Conversion *conversion)
{
    if (!DivideText(text, work, room, conversion->table))
        return 0;
    ReplaceByte(work, kRepeatSign, kRepeatMark);
    ReplaceByte(work, kEllipsis, kEllipsisMark);
    ConvertDivided(conversion);
    if (conversion->length >= conversion->size)
        return WarningBox("Cannot complete converting Lao text, selection is too large");
    return 1;
}

static int ConvertUnder(char *text, DWORD size, const KeyTable *table, bool showsFailures)
{
    DWORD room = WorkRoom(strlen(text), size);
    char *work = static_cast<char *>(CheckedGlobalAlloc(GPTR, room));
    if (!work)
        return 0;
    Conversion conversion = {table, AsBytes(work), text, 1, size, showsFailures};
    int done = ConvertThrough(work, room, text, &conversion);
    GlobalFree(work);
    return done;
}

int ConvertByKeyTable(char *text, DWORD size, KeyTable *table)
{
    bool showsFailures = strchr(table->sequence, '?');  // before a sort table's is replaced
    if (table->type == kSortTable)
        CopyCut(table->sequence, sizeof table->sequence,
                gProcess.options->sortMode == kNaturalSort ? kNaturalOrder : kVowelsLast);
    return ConvertUnder(text, size, table, showsFailures);
}

int ConvertByConstantTable(char *text, DWORD size, const KeyTable *table)
{
    return ConvertUnder(text, size, table, strchr(table->sequence, '?'));
}

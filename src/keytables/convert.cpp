// The conversion, shared by sort keys, romanization and e-mail coding, on its plain road, which can
// be read beside the rules. Two passes of the break inserter divide a copy of the text; marks of
// work stand in it for breaks and for the two word signs. Then each run between marks is rendered
// as one syllable, from the copy into the text. The fast road is asked first.
#include "keytables/convert.h"

#include <cassert>
#include <cstring>

#include "frame/messages.h"
#include "frame/records.h"
#include "frame/strings.h"
#include "keytables/ascii_class.h"
#include "keytables/builtin_tables.h"
#include "keytables/conversion.h"
#include "keytables/fast_convert.h"
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

constexpr DWORD kMarkWords = kInsertBreaks | kBothBreaks;
constexpr DWORD kMarkSyllables = kInsertBreaks | kSyllableBreaks;
enum { kWorkGrowth = 16 };

static_assert(sizeof kVowelsLast == sizeof kNaturalOrder);

// ---- dividing ----

static void ReplaceByte(char *text, uint8_t from, uint8_t to)
{
    for (; *text; ++text)
        if (uint8_t(*text) == from)
            *text = char(to);
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

// ---- the output ----

static bool IsBreak(uint8_t byte)
{
    return byte == kPrimaryBreakMark || byte == kSecondaryBreakMark;
}

// Passes the marks at the cursor: whether a separator belongs there. Punctuation one byte behind
// them takes it away.
static bool PassBreaks(const uint8_t **cursor, TableType type)
{
    bool separates = false;
    for (; IsBreak(**cursor); ++*cursor)
        separates |= **cursor == kPrimaryBreakMark || type == kEmailTable;
    if (!separates || !**cursor)
        return false;
    char behind = char((*cursor)[1]);
    return behind && !IsAsciiPunctuation(behind);
}

// A run is one syllable, or what is left of a misspelt one; it goes as a whole.
static void ConvertRun(Conversion *conversion, const uint8_t **cursor)
{
    char text[kRunRoom];
    int count = 0;
    while (IsLaoByte((*cursor)[count]))
        ++count;
    RunMemory memory = RenderRun(conversion, *cursor, count, text);
    RememberRun(text, strlen(text), memory);
    WriteText(conversion, text);
    *cursor += count;
}

static void ConvertNext(Conversion *conversion, const uint8_t **cursor)
{
    uint8_t byte = **cursor;
    if (IsLaoByte(byte)) {
        ConvertRun(conversion, cursor);
        return;
    }
    ++*cursor;
    if (byte == kRepeatMark || byte == kEllipsisMark)
        WriteWordSign(conversion, byte == kRepeatMark);
    else
        WritePlainByte(conversion, char(byte));
}

static void ConvertDivided(Conversion *conversion, const uint8_t *cursor)
{
    conversion->output[0] = 0;
    while (IsBreak(*cursor))
        ++cursor;
    while (*cursor && !IsFull(conversion)) {
        if (PassBreaks(&cursor, conversion->table->type))
            WriteSeparator(conversion);
        if (*cursor)  // a break may be the last of all
            ConvertNext(conversion, &cursor);
    }
}

// Divides the text into the work buffer and writes the result over the text.
static int ConvertThrough(char *work, DWORD room, char *text, Conversion *conversion)
{
    if (!DivideText(text, work, room, conversion->table))
        return 0;
    ReplaceByte(work, kRepeatSign, kRepeatMark);
    ReplaceByte(work, kEllipsis, kEllipsisMark);
    ConvertDivided(conversion, AsBytes(work));
    return EndConversion(conversion);
}

static int ConvertPlainly(char *text, DWORD size, const KeyTable *table, bool showsFailures)
{
    DWORD room = WorkRoom(strlen(text), size);
    char *work = static_cast<char *>(CheckedGlobalAlloc(GPTR, room));
    if (!work)
        return 0;
    Conversion conversion = {table, text, 1, size, showsFailures};
    int done = ConvertThrough(work, room, text, &conversion);
    GlobalFree(work);
    return done;
}

static int ConvertUnder(char *text, DWORD size, const KeyTable *table, bool showsFailures)
{
    Conversion conversion = {table, text, 1, size, showsFailures};
    int done = ConvertFast(&conversion);
    return done == kNoFastRoad ? ConvertPlainly(text, size, table, showsFailures) : done;
}

// Whether a "?" stood in the sequence, before a sort table's is replaced.
static bool TakeSequence(KeyTable *table)
{
    const char *wanted = gProcess.options->sortMode == kNaturalSort ? kNaturalOrder : kVowelsLast;
    bool isSort = table->type == kSortTable;
    if (isSort && memcmp(table->sequence, wanted, sizeof kVowelsLast) == 0)
        return false;
    bool showsFailures = strchr(table->sequence, '?');
    if (isSort)
        CopyCut(table->sequence, sizeof table->sequence, wanted);
    return showsFailures;
}

int ConvertByKeyTable(char *text, DWORD size, KeyTable *table)
{
    bool showsFailures = TakeSequence(table);
    return ConvertUnder(text, size, table, showsFailures);
}

int ConvertByConstantTable(char *text, DWORD size, const KeyTable *table)
{
    return ConvertUnder(text, size, table, strchr(table->sequence, '?'));
}

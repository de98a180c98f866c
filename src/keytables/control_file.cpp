// The reader of control files: text that people write becomes a KeyTable. A file is lines of
// tokens: section keywords, entry lines of a key and a value, and Sequence lines. A section begins
// at its keyword and ends where the next one begins, so each keyword notes how many entries stand
// in front of it. Lines that make no sense are skipped without a word, so that a file can carry
// free text; a value that is too long and a file that is too long are told.
#include "keytables/control_file.h"

#include <cstdio>
#include <cstring>

#include "frame/paths.h"
#include "frame/strings.h"
#include "keytables/ascii_class.h"
#include "orvel.h"
#include "runtime.h"
#include "text/lao_code.h"

enum : uint8_t { kKo = 161 };
constexpr char kTextEnd = 26;  // of the old text files
enum { kLineRoom = 128, kInSequence = -1 };

// Lives as long as the library: the font of the file read last, and one line's decoded value.
struct ControlFileState {
    char decoded[kLineRoom];  // result of DecodeByteEscapes
    char romanFont[kRomanFontRoom];
};
static ControlFileState gControlFile = {{}, "Arial"};

// The reading of one file.
struct ControlReader {
    KeyTable *table;
    int count;    // entries so far
    int section;  // a KeySection, or kInSequence
};

constexpr const char *kKeywords[] = {
    // ORDER KeySection, behind the first
    "Sequence", "Initial", "Cluster", "Vowel", "Final", "Tone", "Change", "Number",
};
static_assert(sizeof kKeywords / sizeof *kKeywords == 1 + kSectionCount);
static_assert(kInSequence + 1 == 0 && kMostEntries <= INT16_MAX);

const char *RomanFontName()
{
    return gControlFile.romanFont;
}

void SetRomanFontName(const char *name)
{
    CopyCut(gControlFile.romanFont, sizeof gControlFile.romanFont, name);
}

// Leaves *text behind the number's digits. Counting modulo 256 all along can't overflow.
static char ReadByteValue(const char **text)
{
    unsigned value = 0;
    for (; IsAsciiDigit(**text); ++*text)
        value = (value * 10 + unsigned(**text - '0')) & 255;
    return char(value);
}

// text with "#" and a decimal number replaced by the byte of that value, modulo 256. Valid until
// the next call. A line has at most 127 bytes, and so has what comes of it.
static const char *DecodeByteEscapes(const char *text)
{
    char *write = gControlFile.decoded;
    const char *last = write + sizeof gControlFile.decoded - 1;
    while (*text && write < last) {
        char c = *text++;
        *write++ = c == '#' ? ReadByteValue(&text) : c;
    }
    *write = 0;
    return gControlFile.decoded;
}

// The next token at *rest, which moves behind it; null at the end of the line.
static char *TakeToken(char **rest, const char *delimiters)
{
    char *token = *rest + strspn(*rest, delimiters);
    if (!*token)
        return nullptr;
    char *end = token + strcspn(token, delimiters);
    *rest = *end ? end + 1 : end;
    *end = 0;
    return token;
}

static const char *DecodeIfEscaped(const char *token)
{
    return token && strchr(token, '#') ? DecodeByteEscapes(token) : token;
}

// Whether both begin with the same three letters.
static bool SharesThreeLetters(const char *token, const char *word)
{
    char start[4], wanted[4];
    CopyCut(start, sizeof start, token);
    CopyCut(wanted, sizeof wanted, word);
    return EqualNoCase(start, wanted);
}

// Of the keywords, which all begin differently, those in "C" are no comments.
static bool IsComment(const char *line)
{
    return AsciiUpper(line[0]) == 'C' && !SharesThreeLetters(line, "Cha") &&
           !SharesThreeLetters(line, "Clu");
}

// Takes a keyword: whether it was one.
static bool TakeKeyword(ControlReader *reader, const char *token)
{
    for (int section = kInSequence; section < kSectionCount; ++section) {
        if (!SharesThreeLetters(token, kKeywords[section + 1]))
            continue;
        reader->section = section;
        if (section != kInSequence)
            reader->table->first[section] = int16_t(reader->count);
        return true;
    }
    return false;
}

static void ReadSequence(KeyTable *table, const char *sequence, const char *separator, char *rest)
{
    CopyCut(table->sequence, sizeof table->sequence, sequence);
    for (char *c = table->sequence; *c; ++c)
        *c = AsciiUpper(*c);
    if (!separator)
        return;
    table->separator = uint8_t(*separator);
    const char *replacement = DecodeIfEscaped(TakeToken(&rest, " \t\n"));
    if (replacement)
        table->replacementBreak = uint8_t(*replacement);
    char *font = TakeToken(&rest, "\t\n");  // a font's name may hold blanks
    if (font && *TrimSpaces(font))
        SetRomanFontName(font);
}

// A vowel or a tone may be written around the letter KO.
static void RemoveKo(char *key)
{
    char *write = key;
    for (const char *read = key; *read; ++read)
        if (uint8_t(*read) != kKo)
            *write++ = *read;
    *write = 0;
}

// Tone marks for tall letters become the common ones, as rendering looks them up.
static void RaiseTones(char *key)
{
    for (; *key; ++key)
        if (uint8_t(*key) >= 200 && uint8_t(*key) <= 204)
            *key = char(*key + 50);
}

// Rewrites a key as its section wants it. False when the entry is to be dropped.
static bool PrepareKey(char *key, int section)
{
    if (*key == '0')
        *key = 0;
    if (section >= kChangeSection)
        return true;
    if (*key && !IsLaoByte(*key))
        return false;
    if (section == kVowelSection || section == kToneSection)
        RemoveKo(key);
    if (section == kToneSection)
        RaiseTones(key);
    return true;
}

// False when the value is too long, also for an entry that would be dropped.
static bool ReadEntry(ControlReader *reader, char *key, const char *value)
{
    KeyTableEntry *entry = &reader->table->entries[reader->count];
    if (value && strlen(value) >= sizeof entry->value)
        return false;
    if (!PrepareKey(key, reader->section))
        return true;
    *entry = {};
    CopyCut(entry->key, sizeof entry->key, key);
    CopyCut(entry->value, sizeof entry->value, value ? value : "");
    ++reader->count;
    return true;
}

// False when reading has to stop.
static bool ReadControlLine(ControlReader *reader, char *line)
{
    if (reader->count == kMostEntries)
        return false;  // a full table takes no line more, be it empty
    char *rest = line;
    char *token = IsComment(line) ? nullptr : TakeToken(&rest, " \t\n");
    if (!token || TakeKeyword(reader, token) || strlen(token) >= kTokenRoom)
        return true;
    const char *second = DecodeIfEscaped(TakeToken(&rest, " \t\n"));
    if (reader->section != kInSequence)
        return ReadEntry(reader, token, second);
    ReadSequence(reader->table, token, second, rest);
    return true;
}

// Where lines come from: a file, or a content in memory.
struct LineSource {
    FILE *file;                 // opened as text, null for a content
    const char *content, *end;  // what is left of it
};

// The next line, as fgets gives one: at most kLineRoom - 1 bytes of it. As in a file opened as text
// CR LF is one line end, and byte 26 ends the content.
static bool TakeContentLine(LineSource *source, char *line)
{
    int length = 0;
    while (source->content < source->end && *source->content != kTextEnd &&
           length < kLineRoom - 1 && (length == 0 || line[length - 1] != '\n')) {
        const char *byte = source->content++;
        if (*byte != '\r' || source->content == source->end || *source->content != '\n')
            line[length++] = *byte;
    }
    line[length] = 0;
    return length > 0;
}

static bool TakeLine(LineSource *source, char *line)
{
    return source->file ? fgets(line, kLineRoom, source->file) != nullptr
                        : TakeContentLine(source, line);
}

// Only what was read to its end is good.
static bool ReadControlLines(KeyTable *table, LineSource *source)
{
    ControlReader reader = {table, 0, kInSequence};
    char line[kLineRoom];
    bool goesOn = true;
    while (goesOn && TakeLine(source, line))
        goesOn = ReadControlLine(&reader, line);
    table->first[kSectionCount] = int16_t(reader.count);
    return goesOn && (!source->file || feof(source->file));
}

static int TellControlFile(const char *text)
{
    OrvelMsg(nullptr, text, nullptr, MB_ICONSTOP);
    return 0;
}

int TellMissingControlFile()
{
    return TellControlFile("The specified control file does not exist");
}

static int ReadControlTable(KeyTable *table, const char *name, LineSource *source, TableType type)
{
    CopyCut(table->name, sizeof table->name, name);
    table->separator = table->replacementBreak = 0;
    table->type = type;
    memset(table->first, 0, sizeof table->first);
    if (!ReadControlLines(table, source))
        return TellControlFile(
            "The specified control file contains illegal entries or is too long");
    return 1;
}

int LoadControlFile(KeyTable *table, const char *file, TableType type)
{
    const char *path = DataFilePath(file);
    FILE *stream = path ? OpenDataFile(path, "rt") : nullptr;
    if (!stream)
        return TellMissingControlFile();
    LineSource source = {stream, nullptr, nullptr};
    int isGood = ReadControlTable(table, file, &source, type);
    fclose(stream);
    return isGood;
}

int LoadControlText(KeyTable *table, const char *content, size_t size, TableType type)
{
    LineSource source = {nullptr, content, content + size};
    return ReadControlTable(table, "own table", &source, type);
}

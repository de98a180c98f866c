// The user's own words. The file is the truth: every change reads it afresh, so that words that
// another process or a text editor has put there stay, changes the one line, and takes the list
// from the new content. Comments and lines that are no words are kept as they are.
#include "user_words.h"
#include "dictionary.h"
#include "dictionary_file.h"
#include <algorithm>
#include <cstdlib>
#include <cstring>

enum WordResult : LONG {
    kDone = 0,
    kTooShort = 1,  // of AddWord
    kNotThere = 1,  // of DeleteWord
    kAlreadyThere = 2,
    kNotSaved = 3
};

constexpr size_t kShortestWord = 2;
constexpr size_t kLongestLine = kLongestWord * 6 + 8;  // as UTF-8, with line ends

// Numbers of GetWord: places in the list, in Lao order.
struct UserOrder {
    uint32_t *places;
    uint32_t count;
    uint32_t revision;  // of the dictionary
};
static UserOrder gOrder;

static bool IsLowerPlace(uint32_t a, uint32_t b)
{
    const WordEntry *entries = DictionaryOfBit(kUserDictionary)->list.entries;
    return CompareLao(entries[a].word, entries[b].word) < 0;
}

static void SortByLao(UserOrder *order, const Dictionary *user)
{
    ForgetUserOrder();
    *order = {static_cast<uint32_t *>(malloc((user->list.count + 1) * sizeof(uint32_t))), 0,
              user->revision};
    if (!order->places)
        return;
    order->count = user->list.count;
    for (uint32_t i = 0; i < order->count; ++i)
        order->places[i] = i;
    std::sort(order->places, order->places + order->count, IsLowerPlace);
}

void ForgetUserOrder(void)
{
    free(gOrder.places);
    gOrder = {};
}

DWORD WINAPI GetWord(char *buffer, DWORD size, DWORD number, DWORD dictionary)
{
    const Dictionary *user = DictionaryOfBit(kUserDictionary);
    if (!buffer || dictionary != kUserDictionary || !number || number > user->list.count)
        return 0;
    if (!gOrder.places || gOrder.revision != user->revision)
        SortByLao(&gOrder, user);
    if (number > gOrder.count)
        return 0;
    const char *word = user->list.entries[gOrder.places[number - 1]].word;
    size_t length = strlen(word);
    if (length >= size)
        return 0;
    memcpy(buffer, word, length + 1);
    return 1;
}

// ---- changes ----

// One change of the file: its content from before and to be, and the list of the content to be.
struct UserChange {
    FileContent before;
    FileContent after;
    WordList list;
};

static const char *UserFile(void)
{
    return DictionaryFileName(kUserDictionary);
}

// A word of the file that another process put there is found too. 0: unreadable, or no memory.
static int ReadUserFile(UserChange *change)
{
    if (ReadDictionaryFile(UserFile(), &change->before) == kFileUnreadable)
        return 0;
    return ParseWordList(&change->list, change->before.bytes, change->before.size, false);
}

// Takes the list over into the dictionary.
static void AdoptList(UserChange *change)
{
    ReplaceList(DictionaryOfBit(kUserDictionary), &change->list);
    change->list = {};
}

static int ParseAfter(UserChange *change)
{
    FreeWordList(&change->list);
    return ParseWordList(&change->list, change->after.bytes, change->after.size, false);
}

static LONG SaveChange(UserChange *change)
{
    if (!WriteDictionaryFile(UserFile(), change->after.bytes, change->after.size))
        return kNotSaved;
    AdoptList(change);
    return kDone;
}

// The content with one more line; a last line without an end gets one.
static int AppendLine(UserChange *change, const char *word)
{
    char line[kLongestLine];
    size_t length = WordToUtf8(line, sizeof line - 1, word);
    if (!length)
        return 0;
    line[length++] = '\n';
    size_t size = change->before.size;
    char *bytes = static_cast<char *>(malloc(size + 1 + length));
    if (!bytes)
        return 0;
    if (size)
        memcpy(bytes, change->before.bytes, size);
    if (size && bytes[size - 1] != '\n')
        bytes[size++] = '\n';
    memcpy(bytes + size, line, length);
    change->after = {bytes, size + length};
    return 1;
}

static LONG AddToFile(UserChange *change, const char *word)
{
    if (!ReadUserFile(change))
        return kNotSaved;
    if (FindInWordList(&change->list, word) >= 0) {
        AdoptList(change);
        return kAlreadyThere;
    }
    // A word that the file would not give back is refused: "#" in it, blanks around it, codes that
    // stand for no sign; and a word more than a list can hold.
    if (!AppendLine(change, word) || !ParseAfter(change) || FindInWordList(&change->list, word) < 0)
        return kNotSaved;
    return SaveChange(change);
}

static bool IsLineOf(const TextLine *line, const char *word)
{
    char found[kLongestWord + 1];
    return WordOfLine(found, line->start, size_t(line->end - line->start)) && !strcmp(found, word);
}

// The content without the lines that are the word.
static int RemoveLines(UserChange *change, const char *word)
{
    const char *from = change->before.bytes, *end = from + change->before.size;
    char *to = static_cast<char *>(malloc(change->before.size + 1));
    if (!to)
        return 0;
    change->after = {to, 0};
    for (TextLine line = FirstLine(from, change->before.size); from < end;
         line = LineBehind(&line, end)) {
        const char *keptTo = IsLineOf(&line, word) ? line.start : line.next;
        memcpy(to, from, size_t(keptTo - from));
        to += keptTo - from;
        from = line.next;
    }
    change->after.size = size_t(to - change->after.bytes);
    return 1;
}

static LONG DeleteFromFile(UserChange *change, const char *word)
{
    if (!ReadUserFile(change))
        return kNotSaved;
    if (FindInWordList(&change->list, word) < 0) {
        AdoptList(change);
        return kNotThere;
    }
    if (!RemoveLines(change, word) || !ParseAfter(change))
        return kNotSaved;
    return SaveChange(change);
}

static LONG ChangeUserFile(LONG (*work)(UserChange *, const char *), const char *word)
{
    UserChange change = {};
    int isLocked = LockDictionaryFile(UserFile());
    LONG result = work(&change, word);
    if (isLocked)
        UnlockDictionaryFile(UserFile());
    FreeFileContent(&change.before);
    FreeFileContent(&change.after);
    FreeWordList(&change.list);
    return result;
}

LONG WINAPI AddWord(const char *word)
{
    char normal[kLongestWord + 1];
    if (!word)
        return kTooShort;
    if (strlen(word) > kLongestWord)
        return kNotSaved;
    if (NormalizeWord(normal, word) < kShortestWord)
        return kTooShort;
    return ChangeUserFile(AddToFile, normal);
}

LONG WINAPI DeleteWord(const char *word)
{
    char normal[kLongestWord + 1];
    if (!word || strlen(word) > kLongestWord || !NormalizeWord(normal, word))
        return kNotThere;
    return ChangeUserFile(DeleteFromFile, normal);
}

// The user's own words. The file is the truth: every change reads it afresh, so that words that
// another process or a text editor has put there stay, changes only the lines in question, and
// takes the list from the new content. Comments and lines that are no words are kept as they are.
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
constexpr size_t kLongestLine = (kLongestWord + 1) * kUtf8PerSign;  // bytes of a word as UTF-8

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

void ForgetUserOrder()
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

static const char *UserFile()
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

// A word of a call to AddWords.
struct AddedWord {
    char *word;   // in the form of the lists; the call's
    int *result;  // the caller's
};

// For qsort: words by their bytes; of equal ones the first of the call comes first.
static int CompareAdded(const void *left, const void *right)
{
    const AddedWord *one = static_cast<const AddedWord *>(left);
    const AddedWord *other = static_cast<const AddedWord *>(right);
    int order = strcmp(one->word, other->word);
    return order ? order : one->result < other->result ? -1 : 1;
}

// The line of a word in the file, without its end: its length, or 0 for a word that the file would
// not give back: "#" in it, blanks around it, codes that stand for no sign.
static size_t LineOfWord(char *line, const char *word)
{
    char back[kLongestWord + 1];
    size_t length = WordToUtf8(line, kLongestLine, word);
    return length && WordOfLine(back, line, length) && !strcmp(back, word) ? length : 0;
}

// The content from before with room for the lines of more words; a last line without an end gets
// one.
static int CopyContent(UserChange *change, const AddedWord *words, size_t count)
{
    size_t size = change->before.size, room = size + 1;
    for (size_t i = 0; i < count; ++i)
        room += kLongestLine + 1 - (kLongestWord - strlen(words[i].word)) * kUtf8PerSign;
    char *bytes = static_cast<char *>(malloc(room));
    if (!bytes)
        return 0;
    if (size)
        memcpy(bytes, change->before.bytes, size);
    if (size && bytes[size - 1] != '\n')
        bytes[size++] = '\n';
    change->after = {bytes, size};
    return 1;
}

static LONG AppendWord(UserChange *change, const char *word)
{
    char line[kLongestLine];
    size_t length = LineOfWord(line, word);
    if (!length)
        return kNotSaved;
    char *end = change->after.bytes + change->after.size;
    memcpy(end, line, length);
    end[length] = '\n';
    change->after.size += length + 1;
    return kDone;
}

// Appends what is new of sorted words, and gives each its result. The number of new words.
static uint32_t AppendWords(UserChange *change, const AddedWord *words, size_t count)
{
    uint32_t added = 0;
    for (size_t i = 0; i < count; ++i) {
        bool isThere = FindInWordList(&change->list, words[i].word) >= 0 ||
                       (i > 0 && !strcmp(words[i - 1].word, words[i].word) &&
                        *words[i - 1].result != kNotSaved);
        *words[i].result = isThere ? int(kAlreadyThere) : AppendWord(change, words[i].word);
        added += *words[i].result == kDone;
    }
    return added;
}

// All or nothing: with words that a list has no room for the file stays as it was.
static int SaveWords(UserChange *change, uint32_t added)
{
    uint32_t before = change->list.count;
    if (!added) {
        AdoptList(change);
        return 1;
    }
    return ParseAfter(change) && change->list.count == before + added &&
           SaveChange(change) == kDone;
}

static void AddToFile(UserChange *change, const AddedWord *words, size_t count)
{
    int isSaved = ReadUserFile(change) && CopyContent(change, words, count) &&
                  SaveWords(change, AppendWords(change, words, count));
    for (size_t i = 0; !isSaved && i < count; ++i)
        if (*words[i].result == kDone)
            *words[i].result = kNotSaved;
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

static void FreeChange(UserChange *change)
{
    FreeFileContent(&change->before);
    FreeFileContent(&change->after);
    FreeWordList(&change->list);
}

// A copy of the word in the form of the lists, which the caller frees; null, with the reason in
// *result, for a word that is wrong by itself.
static char *NormalCopy(const char *word, int *result)
{
    char normal[kLongestWord + 1];
    bool isLong = word && strlen(word) > kLongestWord;
    bool isShort = !word || (!isLong && NormalizeWord(normal, word) < kShortestWord);
    char *copy = isLong || isShort ? nullptr : static_cast<char *>(malloc(strlen(normal) + 1));
    if (copy)
        strcpy(copy, normal);
    *result = isShort ? kTooShort : copy ? kDone : kNotSaved;
    return copy;
}

static size_t CollectWords(AddedWord *added, const char *const *words, int *results, DWORD count)
{
    size_t good = 0;
    for (DWORD i = 0; i < count; ++i)
        if (char *copy = NormalCopy(words[i], &results[i]))
            added[good++] = {copy, &results[i]};
    qsort(added, good, sizeof *added, CompareAdded);
    return good;
}

DWORD WINAPI AddWords(const char *const *words, int *results, DWORD count)
{
    if (!words || !results)
        return 0;
    AddedWord *added = static_cast<AddedWord *>(calloc(size_t(count) + 1, sizeof(AddedWord)));
    if (!added)
        return 0;
    size_t good = CollectWords(added, words, results, count);
    UserChange change = {};
    LockUserFile();
    AddToFile(&change, added, good);
    UnlockUserFile();
    FreeChange(&change);
    for (size_t i = 0; i < good; ++i)
        free(added[i].word);
    free(added);
    return 1;
}

LONG WINAPI AddWord(const char *word)
{
    int result = kNotSaved;
    AddWords(&word, &result, 1);
    return result;
}

LONG WINAPI DeleteWord(const char *word)
{
    char normal[kLongestWord + 1];
    if (!word || strlen(word) > kLongestWord || !NormalizeWord(normal, word))
        return kNotThere;
    UserChange change = {};
    LockUserFile();
    LONG result = DeleteFromFile(&change, normal);
    UnlockUserFile();
    FreeChange(&change);
    return result;
}

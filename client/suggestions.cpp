// A slip of one sign makes the text around it fall into pieces. So the stretch and its neighbours
// are tried again with each sign left out, put in, exchanged or swapped, all tries as one text with
// blanks between, and the library divides them in one call. A try counts when less of it is bad
// and a word of the dictionaries covers the change. It is the better the fewer chunks it needs, and
// then the commoner its kind of slip is.
#include "suggestions.h"

#include <algorithm>
#include <string_view>

#include "utf8.h"

constexpr DWORD kInsertBoth = kInsertBreaks | kBothBreaks;
constexpr size_t kNeighbours = 2;  // chunks on each side that are divided anew
constexpr size_t kMostSigns = 64;  // of the stretch with its neighbours
constexpr size_t kSignSize = 3;    // bytes of UTF-8

// Kinds of slips, the commonest first.
enum SlipKind : int { kVowelSlip, kToneSlip, kOrderSlip, kAmSlip, kLookAlikeSlip, kOtherSlip };

typedef std::u16string Signs;
typedef std::u16string_view SignsView;

constexpr SignsView kConsonants = u"ກຂຄງຈສຊຍດຕຖທນບປຜຝພຟມຢຣລວຫອຮໜໝ";
constexpr SignsView kVowels = u"ະັາຳິີຶືຸູົຼຽເແໂໃໄໍ";
constexpr SignsView kTones = u"່້໊໋";
constexpr SignsView kLeadVowels = u"ເແໂໃໄ";
constexpr char16_t kNiggahita = u'ໍ', kAa = u'າ', kAm = u'ຳ';

// Signs of one group are taken for each other: by their looks, or by their sound.
constexpr SignsView kLookAlikes[] = {
    u"ບປ", u"ຜພ", u"ຝຟ", u"ຂຊ", u"ຣຮ", u"ຣລ", u"ຄດ", u"ສຊ", u"ດຕ", u"ຖທ", u"ຢຍ",
    u"ໃໄ", u"ິີ",   u"ຶື",   u"ິຶ",   u"ີື",   u"ຸູ",   u"ັົ",   u"ໍົ",   u"ະັ",  u"ໜນ", u"ໝມ",
};

// ---- tries ----

struct Try {
    size_t start, end;            // in the text of all tries
    size_t changeFrom, changeTo;  // the signs that the change touches, from the try's start
    SlipKind kind;
};

struct Tries {
    Signs text;  // all of them, a blank behind each
    std::vector<Try> list;
};

static bool IsOneOf(char16_t sign, SignsView signs)
{
    return signs.find(sign) != SignsView::npos;
}

static bool AreLookAlike(char16_t one, char16_t other)
{
    return std::ranges::any_of(
        kLookAlikes, [=](SignsView group) { return IsOneOf(one, group) && IsOneOf(other, group); });
}

static SlipKind KindOfSign(char16_t sign)
{
    if (IsOneOf(sign, kVowels))
        return kVowelSlip;
    return IsOneOf(sign, kTones) ? kToneSlip : kOtherSlip;
}

static SlipKind KindOfExchange(char16_t before, char16_t after)
{
    if (IsOneOf(before, kTones) && IsOneOf(after, kTones))
        return kToneSlip;
    return AreLookAlike(before, after) ? kLookAlikeSlip : kOtherSlip;
}

// The signs with `count` of them from `at` on replaced.
static void AddTry(Tries *tries, SignsView signs, size_t at, size_t count, SignsView instead,
                   SlipKind kind)
{
    size_t from = instead.empty() && at > 0 ? at - 1 : at;  // what was taken out lies between two
    size_t to = at + std::max<size_t>(instead.size(), 1);
    Try added = {tries->text.size(), 0, from, to, kind};
    tries->text += signs.substr(0, at);
    tries->text += instead;
    tries->text += signs.substr(at + count);
    added.end = tries->text.size();
    tries->text += u' ';
    tries->list.push_back(added);
}

static void AddSign(Tries *tries, SignsView signs, size_t at, char16_t sign)
{
    AddTry(tries, signs, at, 0, {&sign, 1}, KindOfSign(sign));
    if (at < signs.size() && signs[at] != sign)
        AddTry(tries, signs, at, 1, {&sign, 1}, KindOfExchange(signs[at], sign));
}

static void RemoveSign(Tries *tries, SignsView signs, size_t at)
{
    bool isDoubled = at > 0 && signs[at - 1] == signs[at];
    AddTry(tries, signs, at, 1, {}, isDoubled ? kVowelSlip : KindOfSign(signs[at]));
}

static void ChangePair(Tries *tries, SignsView signs, size_t at)
{
    const char16_t swapped[] = {signs[at + 1], signs[at]};
    bool hasLead = IsOneOf(swapped[0], kLeadVowels) || IsOneOf(swapped[1], kLeadVowels);
    if (swapped[0] != swapped[1])
        AddTry(tries, signs, at, 2, {swapped, 2}, hasLead ? kOrderSlip : kOtherSlip);
    if (signs[at] == kNiggahita && signs[at + 1] == kAa)
        AddTry(tries, signs, at, 2, {&kAm, 1}, kAmSlip);
}

static Tries AllTries(SignsView signs, size_t from, size_t to)
{
    Tries tries;
    for (size_t at = from; at <= to; ++at) {
        for (SignsView group : {kConsonants, kVowels, kTones})
            for (char16_t sign : group)
                AddSign(&tries, signs, at, sign);
        if (at < to)
            RemoveSign(&tries, signs, at);
        if (at + 1 < to)
            ChangePair(&tries, signs, at);
    }
    return tries;
}

// ---- judging them ----

static std::vector<LaoChunk> Divide(SignsView signs)
{
    std::vector<LaoChunk> chunks(signs.size());
    int count = DivideText(reinterpret_cast<const WCHAR *>(signs.data()), DWORD(signs.size()),
                           chunks.data(), DWORD(chunks.size()), kInsertBoth);
    chunks.resize(size_t(std::max(count, 0)));
    return chunks;
}

static bool IsBad(const LaoChunk &chunk)
{
    return chunk.kind == kBadStretch;
}

struct Suggestion {
    size_t chunks;  // of the try
    SlipKind kind;
    std::string word;
};

// The longest word of the dictionaries that the change touches; empty when there is none.
static SignsView ChangedWord(const Tries &tries, const Try &one, const LaoChunk *first,
                             const LaoChunk *last)
{
    SignsView word;
    for (const LaoChunk *chunk = first; chunk < last; ++chunk) {
        bool isWord = chunk->kind == kMainWord || chunk->kind == kUserWord;
        bool isTouched =
            chunk->start < one.start + one.changeTo && chunk->end > one.start + one.changeFrom;
        if (isWord && isTouched && chunk->end - chunk->start > word.size())
            word = SignsView(tries.text).substr(chunk->start, chunk->end - chunk->start);
    }
    return word;
}

static std::string ToUtf8(SignsView signs)
{
    std::string text;
    for (char16_t sign : signs)
        AppendUtf8(&text, sign);
    return text;
}

static std::vector<Suggestion> Judge(const Tries &tries, size_t badBefore)
{
    std::vector<LaoChunk> chunks = Divide(tries.text);
    std::vector<Suggestion> suggestions;
    const LaoChunk *first = chunks.data(), *end = first + chunks.size();
    for (const Try &one : tries.list) {
        const LaoChunk *last =
            std::find_if(first, end, [&](const LaoChunk &chunk) { return chunk.start >= one.end; });
        SignsView word = ChangedWord(tries, one, first, last);
        if (!word.empty() && size_t(std::count_if(first, last, IsBad)) < badBefore)
            suggestions.push_back({size_t(last - first), one.kind, ToUtf8(word)});
        first = last;
    }
    return suggestions;
}

static std::vector<std::string> BestWords(std::vector<Suggestion> suggestions)
{
    std::ranges::stable_sort(suggestions, [](const Suggestion &one, const Suggestion &other) {
        return std::pair(one.chunks, one.kind) < std::pair(other.chunks, other.kind);
    });
    std::vector<std::string> words;
    for (const Suggestion &suggestion : suggestions) {
        if (words.size() == kMostSuggestions)
            break;
        if (std::ranges::find(words, suggestion.word) == words.end())
            words.push_back(suggestion.word);
    }
    return words;
}

// ---- the stretch and its neighbours ----

// Chunks of one run stand side by side; each but the first has a break.
static size_t ChunkBefore(const LaoText &text, size_t chunk, size_t steps)
{
    while (steps-- && chunk > 0 && text.chunks[chunk].hasBreak)
        --chunk;
    return chunk;
}

static size_t ChunkBehind(const LaoText &text, size_t chunk, size_t steps)
{
    while (steps-- && chunk + 1 < text.chunks.size() && text.chunks[chunk + 1].hasBreak)
        ++chunk;
    return chunk;
}

// The signs from one chunk to another, without old breaks.
static Signs SignsOf(const LaoText &text, size_t first, size_t last)
{
    Signs signs;
    std::string clean = CleanText(text, text.chunks[first].start, text.chunks[last].end);
    for (size_t i = 0; i < clean.size(); i += kSignSize)
        signs += LaoAt(clean.data() + i);
    return signs;
}

std::vector<std::string> SuggestWords(const LaoText &text, size_t bad)
{
    size_t first = ChunkBefore(text, bad, kNeighbours), last = ChunkBehind(text, bad, kNeighbours);
    if (text.chunks[last].end - text.chunks[first].start > kSignSize * kMostSigns)
        return {};
    Signs signs = SignsOf(text, first, last);
    size_t before = ChunkBefore(text, bad, 1), behind = ChunkBehind(text, bad, 1);
    size_t from = before > first ? SignsOf(text, first, before - 1).size() : 0;
    size_t to = from + SignsOf(text, before, behind).size();
    size_t badBefore = size_t(std::count_if(text.chunks.begin() + long(first),
                                            text.chunks.begin() + long(last) + 1, IsBad));
    return BestWords(Judge(AllTries(signs, from, to), badBefore));
}

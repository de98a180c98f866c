// Sort keys: worked examples, and the order of the whole dictionary against a
// comparison that is made from the printed order alone.
#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <sstream>

#include "frame/strings.h"
#include "keytables/key_support.h"
#include "text/syllable_parser.h"

using SortKeys = KeyTables;

static const struct {
    const char *text;
    WORD sortMode;
    const char *key;
} kKeyRows[] = {
    // clang-format off
    {"ກາ", 0, "##01000030"}, {"ກາ", 1, "##01003000"},
    {"ກາ", 2, "##01000030"},  // anything but 1
    {"ກິນ", 0, "##01013040"}, {"ກິນ", 1, "##01004130"},
    {"abc 1,2", 0, "##abc 1,2"},
    {"ກາໆ", 0, "##01000030 "},  // repeat sign and ellipsis are blanks
    {"ໆຯ", 0, "##  "}, {"ກາ x", 0, "##01000030 x"}, {"໑", 0, "##\xE1"},
    // clang-format on
};

TEST_F(SortKeys, AreTheDigitsOfThePlaces)
{
    for (const auto &row : kKeyRows) {
        SetOrvelOption("s", row.sortMode, 0);
        EXPECT_EQ(KeyOf(CodeOfText(row.text)), row.key) << row.text;
    }
    EXPECT_EQ(KeyOf(""), "##");
}

// ---- the order, made from the printed lists ----

static const char kInitialOrder[] =
    "ກ ຂ ຄ ງ ຈ ສ ຊ ຍ ດ ຕ ຖ ທ ນ ບ ປ ຜ ຝ ພ ຟ ມ ຢ ຣ ລ ວ ຫ ຫງ ຫຍ ຫນ ຫມ ຫຣ ຫລ ຫວ ອ ຮ";
static const char kVowelOrder[] = "xະ xັ xາ xິ xີ xຶ xື xຸ xູ ເxະ ເxັ ເx ແxະ ແxັ ແx ໂxະ xົ ໂx ເxາະ "
                                  "xັອ xໍ xອ ເxິ ເxີ ເxັຍ ເxຍ xຽ ເxຶອ ເxືອ xົວະ xັວ xົວ xວ ໄx ໃx ເxົາ xຳ";
static const char kFinalOrder[] = "ກ ຂ ຄ ງ ຈ ສ ຊ ຍ ດ ຕ ຖ ທ ນ ບ ປ ຜ ຝ ພ ຟ ມ ຢ ຣ ລ ວ ຫ ອ ຮ";

typedef std::map<std::string, int> Ranks;

static Ranks RanksOf(const char *order)
{
    Ranks ranks;
    std::istringstream items(order);
    for (std::string item; items >> item;) {
        std::erase(item, 'x');
        ranks.emplace(CodeOfText(item), int(ranks.size()) + 1);
    }
    return ranks;
}

static int RankIn(const Ranks &ranks, const std::string &text)
{
    auto found = ranks.find(text);
    return found == ranks.end() ? 0 : found->second;
}

// One sign for each code: a charset without two-sign codes takes them apart; ໜ and ໝ are the
// letters that they are made of, the subscript is ຣ.
static std::string SingleSigns(const std::string &code)
{
    char apart[64];
    strcpy(apart, code.c_str());
    EXPECT_EQ(RecodeString(apart, sizeof apart, -5) + RecodeString(apart, sizeof apart, 5), 2);
    std::string signs;
    for (const char *c = apart; *c; ++c)
        signs += *c == '\xCE'   ? "\xB9\xAD"
                 : *c == '\xCF' ? "\xB9\xB4"
                 : *c == '\xF9' ? "\xEB"
                                : std::string(1, *c);
    return signs;
}

static std::string TextOf(const uint8_t *field)
{
    return reinterpret_cast<const char *>(field);
}

typedef std::array<int, 5> SyllablePlace;  // initial, cluster, final, vowel, tone

struct PrintedOrder {
    Ranks initials = RanksOf(kInitialOrder), vowels = RanksOf(kVowelOrder),
          finals = RanksOf(kFinalOrder);
    bool isNatural = false;
};

static SyllablePlace PlaceOf(const PrintedOrder &order, const SyllableParts &parts)
{
    std::string initial = SingleSigns(TextOf(parts.initial)), vowel, tone = TextOf(parts.tone);
    for (char c : SingleSigns(TextOf(parts.vowel)))
        (uint8_t(c) >= 250 ? tone : vowel) += c;
    std::string final = TextOf(parts.final);
    if (final.size() > 1 && uint8_t(final[1]) == 254)
        tone = final[1];
    final = final.substr(0, 1);
    int cluster = 0;
    if (!order.initials.count(initial) && initial.size() == 2) {
        cluster = uint8_t(initial[1]) == 235 ? 1 : uint8_t(initial[1]) == 236 ? 2 : 3;
        initial.pop_back();
    }
    if (!final.empty() && order.vowels.count(vowel + final)) {
        vowel += final;
        final.clear();
    }
    int toneRank = tone.empty() ? 0 : uint8_t(tone.back()) - 249;
    SyllablePlace place = {RankIn(order.initials, initial), cluster, RankIn(order.finals, final),
                           RankIn(order.vowels, vowel), toneRank};
    if (order.isNatural)
        std::swap(place[2], place[3]);
    return place;
}

// Words as the library divides them.
static std::vector<SyllablePlace> PlacesOf(const PrintedOrder &order, std::string word)
{
    for (int mode : {13, 5}) {  // words, then syllables
        char divided[200];
        EXPECT_EQ(WrapText(word.c_str(), divided, sizeof divided, kInternal, WORD(mode)), 1);
        word = divided;
        std::replace(word.begin(), word.end(), '-', '|');
    }
    std::vector<SyllablePlace> places;
    std::istringstream pieces(word);
    for (std::string piece; std::getline(pieces, piece, '|');) {
        SyllableParts parts;
        ResetVariants();
        ParseSyllable(AsBytes(piece.c_str()), int(piece.size()), &parts);
        if (parts.initial[0])  // a stretch without a consonant has no place
            places.push_back(PlaceOf(order, parts));
    }
    return places;
}

struct SortedWord {
    std::string key, word;
    std::vector<SyllablePlace> places;
};

// Each neighbour is compared: the order of keys is the order of places, so all pairs agree.
// Some initials that the chart sets apart are looked up as others: ຫຼ and ຫຣ, ໜ and ຫນ, ໝ and ຫມ.
TEST_F(SortKeys, PutTheDictionaryInThePrintedOrder)
{
    for (bool isNatural : {false, true}) {
        SetOrvelOption("s", isNatural, 0);
        PrintedOrder order;
        order.isNatural = isNatural;
        std::vector<SortedWord> words;
        for (const std::string &word : DictionaryWords())
            if (word.find_first_of("\xC5\xC6 ") == std::string::npos)
                words.push_back({KeyOf(word), word, PlacesOf(order, word)});
        ASSERT_GT(words.size(), 30000u);
        std::sort(words.begin(), words.end(),
                  [](const SortedWord &a, const SortedWord &b) { return a.key < b.key; });
        for (size_t i = 1; i < words.size(); ++i)
            ASSERT_TRUE((words[i - 1].key <=> words[i].key) ==
                        (words[i - 1].places <=> words[i].places))
                << TextOfCode(words[i - 1].word) << ", " << TextOfCode(words[i].word);
    }
}

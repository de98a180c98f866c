// AddLaoSyllable: rows, limits, and the whole dictionary there and back.
#include "companion/support.h"

#include <algorithm>
#include <map>

#include "companion/email_coder.h"
#include "support/guarded.h"

static std::string Decoded(const std::string &code)
{
    Guarded<char> output(3 * code.size() + 1);
    DWORD count = AddLaoSyllable(output.data(), code.data(), code.data() + code.size());
    EXPECT_LE(count, 3 * code.size()) << code;
    output.data()[count] = 0;
    PackLao(output.data());
    return output.data();
}

static std::string Packed(std::string text)
{
    PackLao(text.data());
    return text.c_str();
}

TEST(Email, DecodesByTheChart)
{
    const struct {
        const char *code, *lao;
    } rows[] = {
        {"sa", "\246\275"},
        {"baay", "\256\276\250"},
        {"dii", "\251\363"},
        {"Khao2", "\300\242\235\276"},
        {"hnaam", "\316\276\264"},
        {"hmaa", "\317\276"},
        {"hraay", "\271\371\276\250"},
        {"hlaay", "\271\354\276\250"},
        {"Laa", "\315\276"},
        {"Raa", "\271\353\276"},
        {"aa", "\272\276"},
        {"zaa", "\272\276"},
        {"zwaay", "\272\270\276\250"},
        {"mia", "\300\264\250"},
        {"viang", "\270\274\244"},
        {"phOO1", "\262\322"},
        {"nOOn", "\255\272\255"},
        {"hua", "\273\366\270"},
        {"huan", "\273\270\255"},
        {"kon", "\241\366\255"},
        {"ko", "\302\241\275"},
        {"kE", "\301\241\275"},
        {"kEng", "\301\241\361\244"},
        {"ke'", "\301\241\275"},
        {"kamm", "\241\361\264"},
        {"kam", "\241\277"},
        {"nam2", "\255\325"},
        {"kayy", "\241\361\250"},
        {"kay", "\303\241"},
        {"kaay", "\241\276\250"},
        {"leuay2", "\300\354\234\272\250"},
        {"kraa", "\241\353\276"},
        {"kRaa", "\241\371\276"},
        {"khwaay", "\243\270\276\250"},
        {"kaar*", "\241\276\353\376"},
        {"k", "\241"},
        {"k1", "\241\372"},
        // not one syllable
        {"sabaay", "\246\361\256\272\276\250"},
        {"kaa#", "\241\276\305"},
        {"kaa#kaa", "\241\276\305\241\276"},
        {"kaa&", "\241\276\306"},
        {"kaa5", "\241\2765"},
        {"'kaa", "'\241\276"},
        {"kaa12", "\241\372\2762"},
        {"Bkaa", "B\241\276"},
        {"kaaZ", "\241\276Z"},
        {"O", "O"},
        {"kO", "\300\241\276\275"},
        {"", ""},
        {"kaa-dii", "\241\276-\251\363"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(Show(Decoded(row.code)), Show(row.lao)) << row.code;
    char output[4];
    const char code[] = "kaa";
    EXPECT_EQ(AddLaoSyllable(nullptr, code, code + 3), 0u);
    EXPECT_EQ(AddLaoSyllable(output, nullptr, code + 3), 0u);
    EXPECT_EQ(AddLaoSyllable(output, code, nullptr), 0u);
    EXPECT_EQ(AddLaoSyllable(output, code + 3, code), 0u);
}

// Any bytes at all: three for each byte read, and nothing behind the end is looked at.
TEST(Email, NeverWritesMoreThanThreeBytesForEach)
{
    const std::string letters = "aaeeiouOEkhKnggmrRlwvyYNLGVsz'*#&1234-5\341";
    for (int round = 0; round < 60000; ++round) {
        std::vector<char> code(1 + NextRandom() % 12);
        for (char &c : code)
            c = letters[NextRandom() % letters.size()];
        code.shrink_to_fit();
        Guarded<char> output(3 * code.size());
        ASSERT_LE(AddLaoSyllable(output.data(), code.data(), code.data() + code.size()),
                  3 * code.size());
    }
}

struct SyllableCounts {
    std::map<std::string, int> spellings;  // of one code, with how often they stand in words
};

static std::map<std::string, SyllableCounts> CountDictionary(int *uncut)
{
    std::map<std::string, SyllableCounts> codes;
    for (const std::string &word : MainWords()) {
        std::vector<std::string> syllables = SplitSyllables(word);
        *uncut += syllables.empty();
        for (const std::string &syllable : syllables) {
            Syllable parts;
            EXPECT_TRUE(ParseSyllable(syllable, &parts));
            ++codes[CodeOfSyllable(parts)].spellings[syllable];
        }
    }
    return codes;
}

// Why a spelling does not come back, and for two spellings of a sound what they differ in. No
// reason means that it should have come back.
struct Loss {
    std::string reason, lost, kept;
};

static Loss FindLoss(const std::string &syllable, const std::string &back)
{
    Syllable lost, found;
    ParseSyllable(syllable, &lost);
    if (back == "O")
        return {"the lone letter O", "", ""};
    if (lost.final.size() > 1)
        return {"letters in front of a silenced one", "", ""};
    if (!ParseSyllable(back, &found))
        return {};
    if (lost.initial != found.initial && lost.initial[0] == found.initial[0])
        return {"a cluster in another spelling", lost.initial.substr(1), found.initial.substr(1)};
    if (lost.initial != found.initial)
        return {"an initial in another spelling", lost.initial, found.initial};
    if (lost.vowel != found.vowel)
        return {"a vowel in another spelling", lost.vowel, found.vowel};
    if (uint8_t(lost.final[0]) == 184)
        return {"WO that is read as final", "", ""};
    return {lost.tone.empty() ? "" : "signs in another order", "", ""};
}

// The initials, clusters and vowels of what came back.
static void CountPieces(std::map<std::string, int> *pieces, const std::string &syllable, int count)
{
    Syllable parts;
    ParseSyllable(syllable, &parts);
    (*pieces)[parts.vowel] += count;
    (*pieces)[parts.initial] += count;
    if (parts.initial.size() > 1)
        (*pieces)[parts.initial.substr(1)] += count;
}

// Each syllable of the dictionary comes back, or another spelling of the same sound does, and of
// two spellings the one that more words use.
TEST(Email, TheDictionaryComesBack)
{
    int uncut = 0, back = 0, all = 0;
    std::map<std::string, int> reasons, kept;
    std::map<std::pair<std::string, std::string>, int> lost;
    for (const auto &[code, counts] : CountDictionary(&uncut)) {
        std::string decoded = Decoded(code);
        for (const auto &[syllable, count] : counts.spellings) {
            all += count;
            if (decoded == Packed(syllable)) {
                back += count;
                CountPieces(&kept, syllable, count);
                continue;
            }
            Loss loss = FindLoss(syllable, decoded);
            EXPECT_NE(loss.reason, "")
                << code << ": " << Show(syllable) << " comes back as " << Show(decoded);
            reasons[loss.reason] += count;
            if (!loss.lost.empty())
                lost[{loss.lost, loss.kept}] += count;
        }
    }
    for (const auto &[spellings, count] : lost)
        EXPECT_LT(count, kept[spellings.second])
            << Show(spellings.first) << " instead of " << Show(spellings.second);
    std::string report;
    for (const auto &[reason, count] : reasons)
        report += "\n  " + std::to_string(count) + " " + reason;
    printf("%d of %d syllables come back, %d words could not be cut; the others:%s\n", back, all,
           uncut, report.c_str());
    EXPECT_GT(all, 70000);
    EXPECT_LT(all - back, all / 500);
}

// What was decoded has the same code again, so a text that went through once stays as it is.
TEST(Email, DecodingIsStable)
{
    int uncut = 0;
    for (const auto &[code, counts] : CountDictionary(&uncut)) {
        Syllable parts;
        std::string decoded = Decoded(code);
        if (decoded != "O" && ParseSyllable(decoded, &parts)) {
            EXPECT_EQ(CodeOfSyllable(parts), code) << Show(decoded);
        }
    }
}

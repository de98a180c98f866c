// AddLaoSyllable: rows and limits. The whole dictionary goes there and back through the library,
// whose tests count what is lost.
#include "companion/support.h"

#include "email_syllable.h"
#include "support/guarded.h"

static std::string Decoded(const std::string &code)
{
    Guarded<char> output(4 * code.size());
    DWORD count = AddLaoSyllable(output.data(), code.data(), code.data() + code.size());
    EXPECT_LE(count, 4 * code.size()) << code;
    return Packed(std::string(output.data(), count));
}

TEST(Email, DecodesByTheChart)
{
    const struct {
        const char *code, *lao;
    } rows[] = {
        // clang-format off
        // what the library's coder seldom writes
        {"Laa", "\315\276"}, {"Raa", "\271\353\276"}, {"zaa", "\272\276"}, {"aa", "\272\276"},
        {"ke'", "\301\241\275"}, {"kRaa", "\241\371\276"}, {"k1", "\241\372"}, {"", ""},
        {"zwaay", "\272\270\276\250"}, {"kamm", "\241\361\264"}, {"kayy", "\241\361\250"}, {"ko", "\302\241\275"},
        // a consonant without a vowel: a final only at the end
        {"pt", "\257\251"}, {"ptaa", "\257\252\276"}, {"kt*", "\241\251\376"},
        {"thew", "\300\352\270\275"}, {"Haow1", "\300\271\270\211\276"}, {"erw", "\300\272\270\363"}, {"vew", "\300\270\361\270"},
        // not one syllable
        {"sabaay", "\246\361\256\272\276\250"}, {"kaa#kaa", "\241\276\305\241\276"},
        {"kaa&", "\241\276\306"}, {"kaa5", "\241\2765"}, {"'kaa", "'\241\276"},
        {"kaa12", "\241\372\2762"}, {"Bkaa", "B\241\276"}, {"kaaZ", "\241\276Z"},
        {"O", "\300\272\276\275"}, {"kO", "\300\241\276\275"}, {"kaa-dii", "\241\276-\251\363"},
        {"rwee", "\353\300\270"}, {"zlee", "\272\300\354"},  // these lead no cluster
        // clang-format on
    };
    for (const auto &row : rows)
        EXPECT_EQ(ShowCode(Decoded(row.code)), ShowCode(row.lao)) << row.code;
    char output[4];
    const char code[] = "kaa";
    EXPECT_EQ(AddLaoSyllable(nullptr, code, code + 3), 0u);
    EXPECT_EQ(AddLaoSyllable(output, nullptr, code + 3), 0u);
    EXPECT_EQ(AddLaoSyllable(output, code, nullptr), 0u);
    EXPECT_EQ(AddLaoSyllable(output, code + 3, code), 0u);
}

// Any bytes at all: four for each byte read, nothing behind the end is looked at, and what comes
// from memory is what would be worked out.
TEST(Email, NeverWritesMoreThanFourBytesForEach)
{
    const std::string letters = "aaeeiouOEkhKnggmrRlwvyYNLGVsz'*#&1234-5\341";
    for (int round = 0; round < 60000; ++round) {
        std::vector<char> code(1 + NextRandom() % (round % 2 ? 3 : 12));
        for (char &c : code)
            c = NextRandom() % 500 ? letters[NextRandom() % letters.size()] : char(0);
        code.shrink_to_fit();
        const char *start = code.data(), *end = start + code.size();
        Guarded<char> output(4 * code.size()), plain(4 * code.size());
        DWORD count = AddLaoSyllable(output.data(), start, end);
        ASSERT_LE(count, 4 * code.size());
        ASSERT_EQ(DecodeStretch(plain.data(), start, end), count);
        ASSERT_EQ(memcmp(plain.data(), output.data(), count), 0);
    }
}

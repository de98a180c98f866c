// E-mail coding: worked examples, brackets from call to call, sizes, and what of the dictionary and
// of real texts comes back.
#include <cstring>

#include "keytables/builtin_tables.h"
#include "keytables/key_support.h"
#include "testing/testing.h"
#include "text/lao_code.h"

using EmailCoding = KeyTables;

struct CodedRow {
    const char *given;  // UTF-8
    DWORD before;
    const char *result;  // UTF-8
    DWORD after;
};

// What comes back of the dictionary and of real text is proved below.
static const CodedRow kEncodeRows[] = {
    // clang-format off
    {"ກາ 12, ກາ!", 0, "kaa 12, kaa!", 0}, {"", 1, "", 1},  // without letters no brackets
    {"abc", 0, "[abc", 1},                 // they stay open at the end
    {"ກາ", 1, "]kaa", 0}, {" ກາ", 1, " ]kaa", 0}, {"12 abc 12 ກາ", 0, "12 [abc 12 ]kaa", 0},
    {"abcກາabc", 0, "[abc]kaa[abc", 1}, {"a", 7, "a", 7},  // any value but 0 is inside
    {"ກາໆ ຯ", 0, "kaa# &", 0}, {"໑", 1, "\xE1", 1},  // a digit is no Lao letter
    {"ກ່າກ້າກ໊າກ໋າ", 0, "kaa1-kaa2-kaa3-kaa4", 0}, {"[ກາ]", 0, "[kaa]", 0},  // brackets of the text's own
    // clang-format on
};

static const CodedRow kDecodeRows[] = {
    // clang-format off
    {"sa-baay-dii", 0, "ສະ|ບາຍ|ດີ", 0}, {"sa-", 0, "ສະ", 0}, {"sa-, x", 0, "ສະ, ຊ", 0},
    {"sa- dii", 0, "ສະ| ດີ", 0},  // a blank is no punctuation
    {"sa--dii", 0, "ສະ|ດີ", 0},   // the second one is a byte of text: a break
    {"sa-[abc", 0, "ສະabc", 1}, {"abc]kaa", 1, "abcກາ", 0}, {"abc", 7, "abc", 7},
    {"[a[b]kaa", 0, "a[bກາ", 0}, {"]kaa", 0, "]ກາ", 0},  // brackets inside, and one that closes nothing
    {"12 #&*' kaa", 0, "12 #&*' ກາ", 0},  // only a letter starts a syllable
    {"kaa# kaa&", 0, "ກາໆ ກາຯ", 0}, {"kaa1,kaa2.", 0, "ກ່າ,ກ້າ.", 0}, {"[]", 0, "", 0}, {"[", 0, "", 1},
    // clang-format on
};

TEST_F(EmailCoding, WritesLaoInLettersAndReadsThem)
{
    DWORD state = 0;
    EXPECT_EQ(EncodedOf("a-b\x1F c", &state), "[ab c");  // breaks go, inside of brackets too
    for (const CodedRow &row : kEncodeRows) {
        state = row.before;
        EXPECT_EQ(EncodedOf(*row.given ? CodeOfText(row.given) : "", &state), row.result);
        EXPECT_EQ(state, row.after) << row.given;
    }
    for (const CodedRow &row : kDecodeRows) {
        state = row.before;
        EXPECT_EQ(TextOfCode(DecodedOf(row.given, &state)), row.result) << row.given;
        EXPECT_EQ(state, row.after) << row.given;
    }
}

TEST_F(EmailCoding, CutsWhatItDecodes)
{
    const std::string coded = "kam-kam-E-E-E-E-E-E-E";
    DWORD state = 0;
    const std::string decoded = DecodedOf(coded, &state);
    for (DWORD size = 0; size < 40; ++size) {
        state = 0;
        std::string result = DecodedOf(coded, &state, size);
        bool refused = size <= coded.size(), fits = size > decoded.size();
        if (refused)
            EXPECT_EQ(result.substr(0, 9), size ? "failed: Z" : "failed: ");  // untouched
        else
            EXPECT_EQ(result, fits ? decoded : "failed: " + decoded.substr(0, size - 1)) << size;
    }
}

TEST_F(EmailCoding, NeedsRoomStateAndMemory)
{
    char output[8] = "xxx";
    DWORD state = 0;
    EXPECT_EQ(DecodeEmail("abcdefgh", output, 8, kInternal, &state), 0);
    EXPECT_EQ(EncodeEmail("a", output, 8, kInternal, nullptr), 0);
    EXPECT_EQ(DecodeEmail("a", output, 8, kInternal, nullptr), 0);
    EXPECT_STREQ(output, "xxx");
    EXPECT_EQ(DecodeEmail("kaa", output, 8, nullptr, &state), 1);  // the font isn't looked at
    EXPECT_STREQ(output, "\xA1\xBE");
    if (!FailAllocationAfter(0))
        return;
    ExpectBoxes boxes({"Out of memory"});
    EXPECT_EQ(DecodeEmail("kaa", output, 8, kInternal, &state), 0);
    EXPECT_STREQ(output, "kaa");
}

// ---- there and back ----

static std::string WithoutBreaks(std::string code)
{
    std::erase(code, char(kBreakMark));
    std::erase(code, char(kHiddenBreak));
    PackLao(code.data());
    return code.c_str();
}

static std::string ThereAndBack(const std::string &code)
{
    DWORD state = 0, back = 0;
    return WithoutBreaks(DecodedOf(EncodedOf(code, &state, 60000), &back, 60000));
}

// What doesn't come back comes back as another spelling of the same letters, which stays: initials
// with a twin (ຫມ and ໝ, ຫນ and ໜ, ຮຣ and ຫຼ), the subscript, signs behind a silenced letter,
// readings of WO, and what is no syllable.
static void ExpectLosses(const std::vector<std::string> &texts, size_t count, size_t most)
{
    EXPECT_EQ(texts.size(), count);
    size_t lost = 0;
    for (const std::string &text : texts)
        lost += ThereAndBack(text) != WithoutBreaks(text);
    EXPECT_LE(lost, most);
}

TEST_F(EmailCoding, BringsTheDictionaryBack)
{
    ExpectLosses(DictionaryWords(), 43642, 1375);
}

TEST_F(EmailCoding, BringsRealTextBack)
{
    SetOrvelOption("b", 4, 0);  // words are found though the option asks for none
    const size_t rows[][2] = {{91, 2}, {3747, 26}, {10043, 1821}};
    for (size_t i = 0; i < std::size(kCorpusFiles); ++i) {
        std::vector<std::string> lines;
        for (const std::string &line : SplitLines(ReadCorpus(kCorpusFiles[i])))
            lines.push_back(CodeOfText(line));
        ExpectLosses(lines, rows[i][0], rows[i][1]);
    }
}

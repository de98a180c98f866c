// E-mail coding: worked examples, brackets from call to call, sizes, and what of the dictionary and
// of real texts comes back.
#include <cstring>

#include "keytables/builtin_tables.h"
#include "keytables/key_support.h"
#include "text/lao_code.h"

class EmailCoding : public KeyTables
{
};

struct CodedRow {
    const char *text;  // UTF-8
    DWORD before;
    const char *coded;
    DWORD after;
};

static const CodedRow kEncodeRows[] = {
    {"ກາ abc ກາ", 0, "kaa [abc ]kaa", 0},
    {"ສະບາຍດີ", 0, "sa-baay-dii", 0},
    {"ເຂົ້າ", 0, "Khao2", 0},
    {"", 0, "", 0},
    {"", 1, "", 1},
    {"ກາ 12, ກາ!", 0, "kaa 12, kaa!", 0},  // without letters no brackets
    {"abc", 0, "[abc", 1},                 // they stay open at the end
    {"abc", 1, "abc", 1},                  // and are open at the start
    {"ກາ", 1, "]kaa", 0},
    {" ກາ", 1, " ]kaa", 0},
    {"12 abc 12 ກາ", 0, "12 [abc 12 ]kaa", 0},
    {"abcກາabc", 0, "[abc]kaa[abc", 1},
    {"a", 7, "a", 7},  // any value but 0 is inside
    {"ກາໆ ຯ", 0, "kaa# &", 0},
    {"໑", 1, "\xE1", 1},  // a digit is no Lao letter
    {"ກ່າກ້າກ໊າກ໋າ", 0, "kaa1-kaa2-kaa3-kaa4", 0},
    {"ກາຣ໌", 0, "kaar*", 0},
    {"[ກາ]", 0, "[kaa]", 0},  // brackets of the text's own
};

TEST_F(EmailCoding, WritesLaoInLetters)
{
    for (const CodedRow &row : kEncodeRows) {
        DWORD state = row.before;
        std::string text = *row.text ? CodeOfText(row.text) : "";
        EXPECT_EQ(EncodedOf(text, &state), row.coded) << row.text;
        EXPECT_EQ(state, row.after) << row.text;
    }
    DWORD state = 0;
    EXPECT_EQ(EncodedOf("a-b\x1F c", &state), "[ab c");  // breaks go, inside of brackets too
}

struct DecodedRow {
    const char *coded;
    DWORD before;
    const char *text;  // UTF-8, breaks as "|"
    DWORD after;
};

static const DecodedRow kDecodeRows[] = {
    {"kaa [abc ]kaa", 0, "ກາ abc ກາ", 0},
    {"sa-baay-dii", 0, "ສະ|ບາຍ|ດີ", 0},
    {"Khao2", 0, "ເຂົ້າ", 0},
    {"", 0, "", 0},
    {"sa-", 0, "ສະ", 0},
    {"sa-, x", 0, "ສະ, ຊ", 0},
    {"sa- dii", 0, "ສະ| ດີ", 0},  // a blank is no punctuation
    {"sa--dii", 0, "ສະ|ດີ", 0},   // the second one is a byte of text: a break
    {"sa-[abc", 0, "ສະabc", 1},
    {"abc]kaa", 1, "abcກາ", 0},
    {"abc", 1, "abc", 1},
    {"abc", 7, "abc", 7},
    {"[a[b]kaa", 0, "a[bກາ", 0},          // a bracket inside of brackets
    {"]kaa", 0, "]ກາ", 0},                // and one that closes nothing
    {"12 #&*' kaa", 0, "12 #&*' ກາ", 0},  // only a letter starts a syllable
    {"kaa# kaa&", 0, "ກາໆ ກາຯ", 0},
    {"kaa1,kaa2.", 0, "ກ່າ,ກ້າ.", 0},
    {"[]", 0, "", 0},
    {"[", 0, "", 1},
};

TEST_F(EmailCoding, ReadsItsLettersAgain)
{
    for (const DecodedRow &row : kDecodeRows) {
        DWORD state = row.before;
        std::string decoded = DecodedOf(row.coded, &state);
        EXPECT_EQ(TextOfCode(decoded), row.text) << row.coded;
        EXPECT_EQ(state, row.after) << row.coded;
    }
}

// A document in pieces, cut between letters and signs of one run or passage, is coded as a whole
// but for the runs that were cut.
TEST_F(EmailCoding, KeepsBracketsFromCallToCall)
{
    DWORD state = 0, back = 0;
    std::string coded, decoded;
    for (const char *piece : {"ກາ ab", "c de", " 12 ", "f ກາ", "ກາ g", "", "."})
        coded += EncodedOf(*piece ? CodeOfText(piece) : "", &state);
    EXPECT_EQ(coded, "kaa [abc de 12 f ]kaakaa [g.");
    EXPECT_EQ(state, 1u);
    for (const char *piece : {"kaa [ab", "c de 12 f ", "]kaa [g", "."})
        decoded += DecodedOf(piece, &back);
    EXPECT_EQ(TextOfCode(decoded), "ກາ abc de 12 f ກາ g.");
    EXPECT_EQ(back, 1u);
}

TEST_F(EmailCoding, StaysInItsBuffers)
{
    const std::string text = CodeOfText("ກາ abກາໜ່ອຍ");
    const std::string coded = "kaa [ab]kaa-hnOOy1";
    for (DWORD size = 0; size < 40; ++size) {
        DWORD state = 0;
        ExpectBoxes boxes({});
        std::string result = EncodedOf(text, &state, size);
        bool refused = size <= text.size(), fits = size >= coded.size() + 2;
        EXPECT_EQ(result.starts_with("failed: "), !fits) << size;
        EXPECT_EQ(boxes.shown.size(), size_t(!refused && !fits)) << size;
        boxes.pieces.assign(boxes.shown.size(), "too large");
        bool hasBrackets = size > text.size() + 2;
        EXPECT_EQ(boxes.shown.size() == 1 && boxes.shown[0].text == kCannotProcess,
                  !refused && !hasBrackets);
        EXPECT_TRUE(!fits || result == coded) << result;
    }
    DWORD state = 0;
    {
        ExpectBoxes boxes({kCannotProcess});
        EXPECT_EQ(EncodedOf("abc", &state, 4), "failed: abc");
    }
    EXPECT_EQ(state, 0u);  // nothing was bracketed
}

TEST_F(EmailCoding, CutsWhatItDecodes)
{
    const std::string whole = CodeOfText("ກຳ") + "-" + CodeOfText("ກຳ");
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

TEST_F(EmailCoding, RefusesAndCopies)
{
    char output[8] = "xxx";
    DWORD state = 0;
    EXPECT_EQ(EncodeEmail("abcdefgh", output, 8, kInternal, &state), 0);
    EXPECT_EQ(DecodeEmail("abcdefgh", output, 8, kInternal, &state), 0);
    EXPECT_STREQ(output, "xxx");
    EXPECT_EQ(EncodeEmail("a\xA1", output, 8, "no such font", &state), 1);
    EXPECT_STREQ(output, "a\xA1");
    EXPECT_EQ(state, 0u);
    EXPECT_EQ(DecodeEmail("kaa", output, 8, "no such font", &state), 1);  // it isn't read
    EXPECT_STREQ(output, "\xA1\xBE");
    EXPECT_EQ(DecodeEmail("kaa", output, 8, nullptr, &state), 1);
    EXPECT_EQ(EncodeEmail(nullptr, output, 8, kInternal, &state), 0);
    EXPECT_EQ(EncodeEmail("a", nullptr, 8, kInternal, &state), 0);
    EXPECT_EQ(EncodeEmail("a", output, 8, kInternal, nullptr), 0);
    EXPECT_EQ(DecodeEmail("a", output, 8, kInternal, nullptr), 0);
    if (!FailAllocationAfter(0))
        return;
    ExpectBoxes boxes({"Out of memory"});
    EXPECT_EQ(DecodeEmail("kaa", output, 8, kInternal, &state), 0);
    EXPECT_STREQ(output, "kaa");
}

// Text that a mail program may have changed, and any other: bounded, and read to its end.
TEST_F(EmailCoding, ReadsAnyBytes)
{
    const std::string bytes = "kKnNhaeiouOEg1234*#&'-[] ,.\xA1\xBE\xC0\x1F\x80\xFF";
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (unsigned i = NextRandom() % 30; i > 0; --i)
            text += bytes[NextRandom() % bytes.size()];
        DWORD state = NextRandom() & 1, size = NextRandom() % 40;
        ExpectBoxes boxes({});
        std::string result = DecodedOf(text, &state, size);
        EXPECT_EQ(result.starts_with("failed"), size <= text.size() || result.size() == size + 7);
        EXPECT_LE(state, 1u);
        EncodedOf(text, &state, size);
        boxes.pieces.assign(boxes.shown.size(), "too large");
    }
}

// ---- there and back ----

static std::string WithoutBreaks(std::string code)
{
    std::erase(code, char(kBreakMark));
    std::erase(code, char(kOldBreakMark));
    PackLao(code.data());
    return code.c_str();
}

static std::string ThereAndBack(const std::string &code)
{
    DWORD state = 0, back = 0;
    return WithoutBreaks(DecodedOf(EncodedOf(code, &state, 60000), &back, 60000));
}

static std::string Replaced(std::string text, const std::string &from, const std::string &to)
{
    for (size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

// Two spellings that are coded alike, of which the first comes back as the second.
static const struct {
    const char *lost, *kept;
} kTwins[] = {
    {"ຫມ", "ໝ"},
    {"ຫນ", "ໜ"},
    {"ຮຣ", "ຫຼ"},
    {"ຫຣ", "ຫຼ"},
};

enum LossClass {
    kTwinInitial,
    kSubscript,
    kNoSyllable,
    kSilenced,
    kWoReading,
    kOtherLoss,
    kLossClasses
};

static const char *const kLossNames[kLossClasses] = {
    "an initial with a twin",         "the subscript",   "no syllable",
    "signs behind a silenced letter", "a reading of WO", "other"};

static LossClass ClassOfLoss(const std::string &word, const std::string &back)
{
    std::string text = TextOfCode(word), result = TextOfCode(back), twin = text;
    for (const auto &pair : kTwins)
        twin = Replaced(twin, pair.lost, pair.kept);
    if (twin == result)
        return kTwinInitial;
    if (Replaced(twin, "ຼ", "ຣ") == Replaced(result, "ຼ", "ຣ"))
        return kSubscript;
    if (RomanOf(word, 60000).find("[?]") != std::string::npos)
        return kNoSyllable;
    if (text.find("໌") != std::string::npos || text.find("ໆ") != std::string::npos)
        return kSilenced;
    return text.find("ວ") != std::string::npos ? kWoReading : kOtherLoss;
}

struct LossCount {
    size_t all, lost, byClass[kLossClasses];
};

static LossCount CountLosses(const std::vector<std::string> &texts)
{
    LossCount count = {texts.size(), 0, {}};
    LoadRomanFile(ControlFileOf(kBuiltInRomanTable, "I2VF?"));
    for (const std::string &text : texts) {
        std::string wanted = WithoutBreaks(text), back = ThereAndBack(text);
        if (back == wanted)
            continue;
        ++count.lost;
        ++count.byClass[ClassOfLoss(wanted, back)];
    }
    return count;
}

static void ExpectNoMore(const char *name, const LossCount &count, const LossCount &most)
{
    EXPECT_EQ(count.all, most.all) << name;
    EXPECT_LE(count.lost, most.lost) << name;
    for (int i = 0; i < kLossClasses; ++i)
        EXPECT_LE(count.byClass[i], most.byClass[i]) << name << " " << kLossNames[i];
}

TEST_F(EmailCoding, BringsTheDictionaryBack)
{
    ExpectNoMore("dictionary", CountLosses(DictionaryWords()),
                 {30550, 206, {64, 6, 91, 11, 31, 3}});
}

TEST_F(EmailCoding, BringsRealTextBack)
{
    const LossCount most[] = {
        {91, 2, {0, 0, 2, 0, 0, 0}},
        {3747, 28, {0, 2, 12, 0, 2, 12}},
        {10043, 1838, {586, 19, 1179, 23, 10, 21}},
    };
    for (size_t i = 0; i < std::size(kCorpusFiles); ++i) {
        std::vector<std::string> lines;
        for (const std::string &line : SplitLines(ReadCorpus(kCorpusFiles[i])))
            lines.push_back(CodeOfText(line));
        ExpectNoMore(kCorpusFiles[i], CountLosses(lines), most[i]);
    }
}

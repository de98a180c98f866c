// WrapText from the host's text to marks and side buffer: tables of small texts, every buffer size,
// real text.
#include <cstring>

#include "breaks/lengths.h"
#include "frame/companion.h"
#include "support/corpus.h"
#include "support/guarded.h"
#include "support/message_boxes.h"
#include "support/started_library.h"
#include "testing/testing.h"

constexpr char kTooLarge[] = "Cannot process Lao text, selection too large";
constexpr char kCannotComplete[] = "Cannot complete checking Lao text, selection is too large";

class Wrapping : public StartedLibrary
{
  protected:
    void SetUp() override
    {
        StartedLibrary::SetUp();
        ASSERT_EQ(AddFontToList("Internal", "", 0, 100, 0), 1);
    }
};

struct Wrapped {
    int result;
    std::string code, side;
};

static Wrapped Wrap(const std::string &source, DWORD size, DWORD flags,
                    const char *font = "Internal")
{
    Guarded<char> buffer(size);
    Guarded<BYTE> side(size);
    Wrapped wrapped = {};
    wrapped.result = WrapLaoEx(source.c_str(), buffer.data(), side.data(), size, font, flags);
    if (size > source.size()) {
        EXPECT_LT(strnlen(buffer.data(), size), size) << "no terminator";
        wrapped.code = buffer.data();
        for (size_t i = 0; i < wrapped.code.size(); ++i)
            wrapped.side += char('0' + side.data()[i]);
    }
    return wrapped;
}

struct WrapRow {
    const char *source;
    WORD dictionaries, breakMode;
    DWORD flags;
    const char *code, *side;
};

// ການາ in each mode, and what surrounds runs.
static const WrapRow kWrapRows[] = {
    // clang-format off
    {"\xA1\xBE-\xAD\xBE \xC0\xA1\xF6\xBE\xA1\xBE", 0, 12, 5, "\xA1\xBE-\xAD\xBE \xC0\xA1\xF6\xBE-\xA1\xBE", "0001000000010"},
    {"\xA1\xBE", 0, 12, 5, "\xA1\xBE", "00"}, {"\xA1", 0, 12, 5, "\xA1", "0"}, {"", 0, 12, 5, "", ""},
    // no insertion: flags 0 whatever the mode; words alone without main or user dictionary
    {"\xA1\xBE-\xAD\xBE", 0, 4, 0, "\xA1\xBE\xAD\xBE", "0000"}, {"\xA1\xBE\xAD\xBE", 2, 8, 1, "\xA1\xBE\xAD\xBE", "0000"},
    {"\xA1\xBE\xAD\xBE", 0, 12, 9, "\xA1\xBE\xAD\xBE", "0000"}, {"\xA1\xBE\xAD\xBE", 0, 12, 13, "\xA1\xBE-\xAD\xBE", "00010"},
    // the mode of the options, for each value of the insert bits
    {"\xA1\xBE\xAD\xBE", 0, 4, 1, "\xA1\xBE-\xAD\xBE", "00010"}, {"\xA1\xBE\xAD\xBE", 0, 4, 2, "\xA1\xBE-\xAD\xBE", "00010"},
    // a bad stretch at a start is reported and gets no mark; inside of a run it gets both
    {"\xFA\xA1\xBE \xA1\xBE\xAD\xBE", 0, 12, 5, "\xFA-\xA1\xBE \xA1\xBE-\xAD\xBE", "5010000010"},
    {"\xA1\xBE\xBE\xA1\xBE", 0, 12, 5, "\xA1\xBE-\xBE-\xA1\xBE", "0005010"},
    // old marks vanish from all text, digits end a run, bytes 1 to 5 act as markers
    {"a-b\x1F", 0, 12, 5, "ab", "00"}, {"\xA1\xBE\xE1\xAD\xBE", 0, 12, 5, "\xA1\xBE\xE1\xAD\xBE", "00000"},
    {"\xA1\xBE\x01\xAD\xBE", 0, 12, 5, "\xA1\xBE-\xAD\xBE", "00010"}, {"\x04\x05" "ab\x03", 0, 12, 5, "ab", "40"},
    // clang-format on
};

TEST_F(Wrapping, WritesMarksAndSideBuffer)
{
    for (const WrapRow &row : kWrapRows) {
        SetOrvelOption("d", row.dictionaries, 0);
        SetOrvelOption("b", row.breakMode, 0);
        Wrapped wrapped = Wrap(row.source, 40, row.flags);
        EXPECT_EQ(wrapped.result, 1) << ShowCode(row.source);
        EXPECT_EQ(ShowCode(wrapped.code), ShowCode(row.code))
            << ShowCode(row.source) << " flags " << row.flags;
        EXPECT_EQ(wrapped.side, row.side) << ShowCode(row.source) << " flags " << row.flags;
    }
}

// A word of several dictionaries counts as the user's, then as one of the main dictionary.
TEST_F(Wrapping, SideBufferTellsTheDictionaries)
{
    ReplaceDictionary("MainDict.dat", "ກາ\nນາ\n");
    ReplaceDictionary("UserDict.dat", "ສາ\nນາ\n");
    ReplaceDictionary("OldDict.dat", "ມາ\tໝາ\nກາ\tໝາ\n");
    SetOrvelOption("d", 7, 0);
    Wrapped wrapped = Wrap(CodeOfText("ປາກາສານາມາ"), 40, 13);
    EXPECT_EQ(wrapped.side, "00020030030040") << TextOfCode(wrapped.code);
    EXPECT_EQ(TextOfCode(wrapped.code), "ປາ|ກາ|ສາ|ນາ|ມາ");
    EXPECT_EQ(Wrap(CodeOfText("ມາ"), 40, 13).side, "40");
    Guarded<char> modern(3);
    EXPECT_EQ(FindOldWord(CodeOfText("ມາ").c_str(), modern.data(), 3), 1);
    EXPECT_EQ(TextOfCode(modern.data()), "ໝາ");
    EXPECT_EQ(FindOldWord(CodeOfText("ມ").c_str(), modern.data(), 3), 0);
    EXPECT_EQ(Wrap("\xA1\xBE-\xAD\xBE", 20, 5, "no such font").code, "\xA1\xBE-\xAD\xBE");
}

TEST_F(Wrapping, ALongRunIsToldOnceAndMarked)
{
    std::string run;
    while (run.size() < 40000)
        run += "\xA1\xBE\xAD";
    SetOrvelOption("d", 0, 0);
    for (int round = 0; round < 2; ++round) {
        ExpectBoxes boxes({"The Lao text is too long to process correctly!"});
        Wrapped wrapped = Wrap(run, 80000, 5);
        EXPECT_EQ(wrapped.side.find('5'), std::string::npos);
        EXPECT_GT(std::count(wrapped.code.begin(), wrapped.code.end(), '-'), 13000);
    }
}

// Every size, with guards behind both buffers: refused with a message, cut with a message, or
// whole.
TEST_F(Wrapping, WritesNothingBehindItsBuffers)
{
    const std::string source = "\xFA\xA1\xBE\xAD\xBE \xA1\xBE\xC0\xA1\xF6\xBE";
    const std::string whole = "\xFA-\xA1\xBE-\xAD\xBE \xA1\xBE-\xC0\xA1\xF6\xBE";
    SetOrvelOption("d", 0, 0);
    for (DWORD size = 0; size < 30; ++size) {
        // The merged text holds a marker for the bad start too, which becomes no mark.
        bool fits = size > whole.size() + 1;
        ExpectBoxes boxes(size <= source.size() ? std::vector<std::string>{kTooLarge}
                          : fits                ? std::vector<std::string>{}
                                                : std::vector<std::string>{kCannotComplete});
        Wrapped wrapped = Wrap(source, size, 5);
        EXPECT_EQ(wrapped.result, fits) << size;
        if (size > source.size()) {
            EXPECT_EQ(whole.substr(0, wrapped.code.size()), wrapped.code) << size;
        }
    }
}

// In the code of each font the marks are that code's own, and come out again.
TEST_F(Wrapping, MarksAreTheFontsOwn)
{
    const std::string code = CodeOfText("ສະບາຍດີຊາວລາວ");
    for (int font = 0; font < 7; ++font) {
        std::string name = "Code " + std::to_string(font);
        AddFontToList(name.c_str(), "", WORD(font), 100, 0);
        char source[64], marked[128], unmarked[128];
        strcpy(source, code.c_str());
        ASSERT_NE(RecodeString(source, sizeof source, -font), 0);
        ASSERT_EQ(WrapText(source, marked, sizeof marked, name.c_str(), 13), 1);
        char mark = char(GetBreakChar(name.c_str()));
        EXPECT_EQ(std::count(marked, marked + strlen(marked), mark), 2) << font;
        ASSERT_EQ(WrapText(marked, unmarked, sizeof unmarked, name.c_str(), 0), 1);
        EXPECT_STREQ(unmarked, source) << font;
    }
    EXPECT_EQ(GetBreakChar("no such font"), 0);
}

// An armed side buffer serves one call, however that ends, and is cancelled by one of its own.
TEST_F(Wrapping, PendingSideBufferServesOneCall)
{
    BYTE side[20] = {9};
    char buffer[20];
    EXPECT_EQ(SetBreakBuf(nullptr), 0);
    EXPECT_EQ(SetBreakBuf(side), 1);
    EXPECT_EQ(SetBreakBuf(side), 0);
    {
        ExpectBoxes boxes({kTooLarge});
        EXPECT_EQ(WrapText("\xA1\xBE", buffer, 2, "Internal", 5), 0);
    }
    EXPECT_EQ(SetBreakBuf(side), 1);
    EXPECT_EQ(WrapLaoEx("\xA1\xBE", buffer, nullptr, sizeof buffer, "Internal", 5), 1);
    EXPECT_EQ(side[0], 9);
    EXPECT_EQ(SetBreakBuf(side), 1);
    EXPECT_EQ(WrapText(nullptr, buffer, 20, "Internal", 5), 0);
    EXPECT_EQ(WrapText("\xA1\xBE", nullptr, 20, "Internal", 5), 0);
    if (!FailAllocationAfter(0))
        GTEST_SKIP() << "allocations can't be made to fail here";
    ExpectBoxes boxes({"Out of memory"});
    EXPECT_EQ(WrapText("\xA1\xBE-\xAD\xBE", buffer, sizeof buffer, "Internal", 5), 0);
    EXPECT_STREQ(buffer, "\xA1\xBE\xAD\xBE");
}

// The plain programme: the parser for each length, FindWord for each length, and all values of a
// position compared.
static std::string MarkPlainly(const std::string &run)
{
    const uint8_t *text = reinterpret_cast<const uint8_t *>(run.c_str());
    std::vector<int> best(run.size() + 1, 0), chosen(run.size() + 1, 0);
    best[run.size()] = 1;
    for (size_t i = run.size(); i-- > 0;) {
        uint32_t syllables = SyllableLengthMask(text + i), words = DictionaryWordMask(text + i, 1);
        for (int n = 2; n <= 15; ++n) {
            bool isWord = words & LengthBit(n);
            if (!isWord && !(syllables & LengthBit(n)))
                continue;
            int value = best[i + size_t(n)] ? best[i + size_t(n)] + n * n * (isWord ? 2 : 1) : 1;
            if (value >= best[i]) {
                best[i] = value;
                chosen[i] = n;
            }
        }
        if (i > 0 && text[i - 1] >= 192 && text[i - 1] <= 196)
            best[i] = 0;
    }
    std::string marked;
    for (size_t i = 0; i < run.size();) {
        size_t n = best[i] ? size_t(chosen[i]) : 1;
        while (!best[i] && i + n < run.size() && !best[i + n])
            ++n;
        marked += (i ? "-" : "") + run.substr(i, n);
        i += n;
    }
    return marked;
}

static std::string WrapPlainly(const std::string &code)
{
    std::string marked;
    for (size_t i = 0; i < code.size();) {
        size_t end = i;
        while (end < code.size() && IsLaoCode(code[end]))
            ++end;
        marked += end > i ? MarkPlainly(code.substr(i, end - i)) : code.substr(i, 1);
        i = std::max(end, i + 1);
    }
    return marked;
}

TEST_F(Wrapping, RealTextIsMarkedAsThePlainProgrammeMarksIt)
{
    for (const char *name : kCorpusFiles) {
        std::string code = CodeOfText(ReadCorpus(name));
        std::erase(code, char(45));
        std::vector<char> buffer(2 * code.size() + 2);
        ASSERT_EQ(WrapText(code.c_str(), buffer.data(), DWORD(buffer.size()), "Internal", 13), 1);
        ASSERT_TRUE(WrapPlainly(code) == buffer.data()) << name;  // too long to print
        std::string unmarked = buffer.data();
        std::erase(unmarked, char(45));
        EXPECT_TRUE(unmarked == code) << name;
    }
}

TEST_F(Wrapping, UserWordsChangeTheDivision)
{
    const std::string code = CodeOfText("ກາສານາ");
    ReplaceDictionary("MainDict.dat", "ກາສາ\n");
    SetOrvelOption("d", 5, 0);
    EXPECT_EQ(CountUserWords(), 0);
    EXPECT_EQ(TextOfCode(Wrap(code, 40, 13).code), "ກາສາ|ນາ");
    EXPECT_EQ(AddUserWord(CodeOfText("ສານາ").c_str()), 0);
    EXPECT_EQ(AddUserWord(CodeOfText("ກາສານາ").c_str()), 0);
    EXPECT_EQ(AddUserWord(CodeOfText("ກາສານາ").c_str()), 2);
    EXPECT_EQ(AddUserWord("\xA1"), 1);
    EXPECT_EQ(CountUserWords(), 2);
    EXPECT_EQ(Wrap(code, 40, 13).code, code);
    EXPECT_EQ(DeleteUserWord(CodeOfText("ກາສານາ").c_str()), 0);
    EXPECT_NE(DeleteUserWord(CodeOfText("ກາສານາ").c_str()), 0);
    EXPECT_EQ(CountUserWords(), 1);
}

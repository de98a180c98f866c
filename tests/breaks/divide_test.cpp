// DivideText against WrapText: real text with its marks in and the chunks' kinds are what WrapText
// makes of its code, whichever signs were joined on the way.
#include <algorithm>
#include <cstring>
#include <random>

#include "support/corpus.h"
#include "support/started_library.h"

constexpr int kNoFont = -1;

// One blank for each stretch that isn't Lao: WrapText would take some of its bytes for marks.
static std::vector<WCHAR> CharactersOf(const std::string &utf8)
{
    std::vector<WCHAR> characters = WideOf(utf8);
    for (WCHAR &character : characters)
        if ((character & 0xFF80) != 0x0E80 && character != 0x200B)
            character = ' ';
    return characters;
}

static std::string CodeOf(const std::vector<WCHAR> &characters)
{
    std::string code(characters.size(), '?');
    code.resize(
        size_t(UnicodeToLao(characters.data(), code.data(), DWORD(code.size() + 1), kNoFont)));
    return code;
}

// The text without old marks and with one in front of each chunk that has a break.
static std::vector<WCHAR> Mark(const std::vector<WCHAR> &characters,
                               const std::vector<LaoChunk> &chunks)
{
    std::vector<WCHAR> marked;
    size_t chunk = 0;
    for (DWORD i = 0; i < characters.size(); ++i) {
        if (chunk < chunks.size() && chunks[chunk].start == i && chunks[chunk++].hasBreak)
            marked.push_back(0x200B);
        if (characters[i] != 0x200B)
            marked.push_back(characters[i]);
    }
    return marked;
}

// The same text as UTF-8: the same chunks, their places in bytes.
static void ExpectSameOfUtf8(const std::vector<WCHAR> &characters, DWORD flags,
                             const std::vector<LaoChunk> &wanted)
{
    std::string text;
    std::vector<DWORD> starts;
    for (WCHAR character : characters) {
        starts.push_back(DWORD(text.size()));
        char bytes[4];
        text.append(bytes, size_t(WideCharToMultiByte(CP_UTF8, 0, &character, 1, bytes, 4, nullptr,
                                                      nullptr)));
    }
    std::vector<LaoChunk> chunks(wanted.size());
    ASSERT_EQ(
        DivideUtf8(text.data(), DWORD(text.size()), chunks.data(), DWORD(chunks.size()), flags),
        int(wanted.size()));
    for (size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(chunks[i].start, starts[wanted[i].start]);
        EXPECT_EQ(chunks[i].end, starts[wanted[i].end - 1] + 3);
        EXPECT_EQ(chunks[i].kind, wanted[i].kind);
        EXPECT_EQ(chunks[i].hasBreak, wanted[i].hasBreak);
    }
}

static void ExpectAsWrapped(const std::vector<WCHAR> &characters, DWORD flags)
{
    std::vector<LaoChunk> chunks(characters.size());
    DWORD length = DWORD(characters.size());
    int count = DivideText(characters.data(), length, chunks.data(), length, flags);
    ASSERT_GE(count, 0);
    ASSERT_LE(size_t(count), chunks.size());
    chunks.resize(size_t(count));
    ExpectSameOfUtf8(characters, flags, chunks);
    std::string code = CodeOf(characters), wrapped(2 * code.size() + 1, 0), kinds, found;
    std::vector<BYTE> side(wrapped.size());
    ASSERT_EQ(WrapLaoEx(code.c_str(), wrapped.data(), side.data(), DWORD(wrapped.size()),
                        "Saysettha Lao", flags),
              1);
    wrapped.resize(strlen(wrapped.c_str()));
    EXPECT_EQ(ShowCode(CodeOf(Mark(characters, chunks))), ShowCode(wrapped));
    for (size_t i = 0; i < wrapped.size(); ++i)
        if (side[i])
            kinds += char('0' + side[i]);
    for (const LaoChunk &chunk : chunks) {
        EXPECT_LT(chunk.start, chunk.end);
        if (chunk.kind && (chunk.hasBreak || chunk.kind >= kOldWord))  // wrapping keeps the rest
            found += char('0' + chunk.kind);
    }
    EXPECT_EQ(found, kinds);
}

class Dividing : public StartedLibrary
{
};

TEST_F(Dividing, IsAsWrapping)
{
    std::mt19937 random(1);
    ReplaceDictionary("OldDict.dat", "ຫມາ\tໝາ\n");
    SetOrvelOption("d", kMainDictionary | kOldDictionary | kUserDictionary, 0);
    for (const char *file : kCorpusFiles)
        for (const std::string &line : SplitLines(ReadCorpus(file))) {
            std::vector<WCHAR> characters = CharactersOf(line);
            for (DWORD flags : {0, 5, 9, 15})
                ExpectAsWrapped(characters, flags);
            std::shuffle(characters.begin(), characters.end(), random);  // signs in every order
            ExpectAsWrapped(characters, kInsertBreaks | kBothBreaks);
            if (HasFailure())
                FAIL() << file << ": " << line;
        }
}

// Both roads, and the border between them: what is longer than a short run, and stretches of any
// length that can't be divided.
TEST_F(Dividing, IsAsWrappingInRunsOfAnyLength)
{
    for (const std::u16string piece :
         {u"\u0e81\u0eb2", u"\u0ec9", u"\u0e81\u0ec9\u0ec9", u"\u0ecd\u0ec9\u0eb2"})
        for (size_t length : {1, 2, 31, 33, 64, 126, 127, 254, 255, 256, 300, 900}) {
            std::vector<WCHAR> characters;
            while (characters.size() < length)
                characters.insert(characters.end(), piece.begin(), piece.end());
            ExpectAsWrapped(characters, kInsertBreaks | kBothBreaks);
        }
}

TEST_F(Dividing, CountsWhatHasNoRoomAndRefusesWhatItMust)
{
    const std::vector<WCHAR> text = {0x0E81, 0x0EB2, 0x200B, 0x0E99, 0x0EB2, ' ', 0x200B};
    LaoChunk chunks[3] = {{7, 7, 7, 7}, {7, 7, 7, 7}, {7, 7, 7, 7}};
    EXPECT_EQ(DivideText(text.data(), 7, chunks, 1, kInsertBreaks | kSyllableBreaks), 2);
    EXPECT_EQ(chunks[0].end, 2u) << "an old mark belongs to neither";
    EXPECT_EQ(chunks[1].start, 7u) << "not written";
    EXPECT_EQ(DivideText(text.data(), 7, nullptr, 0, kInsertBreaks | kSyllableBreaks), 2);
    EXPECT_EQ(DivideText(nullptr, 7, chunks, 3, kInsertBreaks), -1);
    EXPECT_EQ(DivideText(text.data(), 7, nullptr, 3, kInsertBreaks), -1);
    EXPECT_EQ(DivideText(text.data(), 0, chunks, 3, kInsertBreaks), 0);
}

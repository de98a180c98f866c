// Internal code to Unicode and back: single signs, private-use characters, borders of the tables,
// every capacity.
#include <cstring>

#include "fonts/font_table.h"
#include "frame/companion.h"
#include "support/corpus.h"
#include "support/guarded.h"
#include "support/message_boxes.h"
#include "support/started_library.h"
#include "testing/testing.h"

class UnicodeMapping : public StartedLibrary
{
  protected:
    void SetUp() override
    {
        StartedLibrary::SetUp();
        ReplaceFonts("Plain,Unicode,,100,0\nPrivate,Unicode,,100,1\n");
    }
};

typedef std::vector<unsigned> Units;

// The characters of a text whose kept character is 'k' everywhere.
static Units ToUnicode(const std::string &text, int font = 0)
{
    std::vector<WCHAR> characters(2 * text.size() + 1, 'k');
    int count = LaoToUnicode(text.c_str(), characters.data(), DWORD(characters.size()), font);
    return Units(characters.begin(), characters.begin() + std::max(count, 0));
}

static int ToByte(unsigned character, int font = 0)
{
    WCHAR characters[] = {WCHAR(character), 0};
    char text[] = "k";
    EXPECT_EQ(UnicodeToLao(characters, text, 2, font), 1);
    return uint8_t(text[0]);
}

// Plain characters, and those of a private font with bit 7 of the mode word set.
TEST_F(UnicodeMapping, BytesToCharacters)
{
    const struct {
        const char *text;
        Units plain, extended;
    } rows[] = {
        // clang-format off
        {"-", {0x200B}, {0x200B}}, {"a\x8C\xC7", {'k', 'k', 'k'}, {'k', 'k', 'k'}},
        {"\xA1\xBE", {0x0E81, 0x0EB2}, {0x0E81, 0x0EB2}}, {"\xC8", {0x0EC8}, {0xE001}},
        {"\x84\x9D", {0x0EB1, 0x0EC8, 0x0EBB, 0x0EC9}, {0xE007, 0xE013}},
        {"\xED\xCD", {0x0EBB, 0x0EC9, 0x0EAB, 0x0EBC}, {0xE013, 0xE014}},
        {"\xD2\xD3", {0x0ECD, 0x0EC8, 0x0ECD, 0x0EC9}, {0xE006, 0xE00D}},
        {"\xD4\xD5", {0x0EC8, 0x0EB3, 0x0EC9, 0x0EB3}, {0xE017, 0xE018}},
        {"\xA0\xAC\xB6\xB7", {0xA0, 0xAD, 0xB6, 0xB7}, {0xA0, 0xAD, 0xB6, 0xB7}},
        // clang-format on
    };
    DWORD mode = LaoMode(0, 0);
    for (const auto &row : rows)
        for (DWORD bits : {0x01u, 0x81u}) {
            LaoMode(bits, 0x8F);
            for (int font : {0, 1, -1, 2, 1 << 30, -(1 << 30)})
                EXPECT_EQ(ToUnicode(row.text, font),
                          bits == 0x81 && font == 1 ? row.extended : row.plain)
                    << ShowCode(row.text) << " " << font;
        }
    LaoMode(mode, 0xFF);
}

static const struct {
    unsigned character;
    int plain, extended;
} kBackRows[] = {
    {'-', 0x8C, 0x8C},    {'a', 'a', 'a'},     {0x200B, '-', '-'},   {0, '?', '?'},
    {0x0E81, 0xA1, 0xA1}, {0x0E80, '?', '?'},  {0x0E83, '?', '?'},   {0x0EDD, 0xCF, 0xCF},
    {0x0EDE, '?', '?'},   {0x0EDF, '?', '?'},  {0x0EE0, 'k', 'k'},   {0x0E7F, 'k', 'k'},
    {0x0EB1, 0xF1, 0xF1}, {0x2012, 'k', 'k'},  {0x2013, 0x96, 0x96}, {0x2015, '?', '?'},
    {0x2022, 0x95, 0x95}, {0x2023, 'k', 'k'},  {0xE000, 'k', '?'},   {0xE001, 'k', 0xC8},
    {0xE013, 'k', 0xED},  {0xE018, 'k', 0xD5}, {0xE019, 'k', '?'},   {0xE01F, 'k', '?'},
    {0xE020, 'k', 'k'},   {0x00A0, 'k', 'k'},  {0x00AD, 'k', 'k'},   {0xFFFF, 'k', 'k'},
};

TEST_F(UnicodeMapping, CharactersToBytes)
{
    for (const auto &row : kBackRows)
        for (int font : {0, 1, 99})
            EXPECT_EQ(ToByte(row.character, font), font == 1 ? row.extended : row.plain)
                << std::hex << row.character;
}

// All that has a code goes there and back, real text as a whole.
TEST_F(UnicodeMapping, LaoComesBack)
{
    for (unsigned character = 0x0E80; character < 0x0EE0; ++character) {
        std::string byte(1, char(ToByte(character)));
        EXPECT_EQ(ToUnicode(byte), byte == "?" ? Units{'k'} : Units{character});
    }
    for (const char *name : kCorpusFiles) {
        std::string code = CodeOfText(ReadCorpus(name));
        std::erase(code, char(45));  // drawn as "|", which is read as itself
        EXPECT_TRUE(CodeOfText(TextOfCode(code)) == code) << name;
    }
}

TEST_F(UnicodeMapping, CapacityIsNeverPassed)
{
    const std::string text = "\xA1\x84-\xD5";
    const Units whole = {0x0E81, 0x0EB1, 0x0EC8, 0x200B, 0x0EC9, 0x0EB3};
    const WCHAR back[] = {0x0E81, 0x0EB1, 0x0EC8, 0};
    for (DWORD capacity = 0; capacity < 9; ++capacity) {
        Guarded<WCHAR> characters(
            std::max<size_t>(capacity, text.size()));  // kept ones stand there
        int count = LaoToUnicode(text.c_str(), characters.data(), capacity, 0);
        EXPECT_EQ(count, capacity < whole.size() ? -1 : int(whole.size())) << capacity;
        size_t fits = std::min<size_t>(capacity, whole.size());
        EXPECT_TRUE(std::equal(whole.begin(), whole.begin() + long(fits), characters.data()));
        Guarded<char> buffer(4);
        strcpy(buffer.data(), "xxx");
        EXPECT_EQ(UnicodeToLao(back, buffer.data(), capacity, 0), capacity > 3 ? 2 : -1);
        EXPECT_STREQ(buffer.data(), capacity > 3 ? "\xA1\x84" : "xxx");
    }
}

TEST_F(UnicodeMapping, RefusesNullArraysAndMemoryThatIsNotThere)
{
    char text[] = "a";
    WCHAR characters[] = {'a', 0};
    EXPECT_EQ(LaoToUnicode(nullptr, characters, 2, 0) + LaoToUnicode(text, nullptr, 2, 0), -2);
    EXPECT_EQ(UnicodeToLao(nullptr, text, 2, 0) + UnicodeToLao(characters, nullptr, 2, 0), -2);
    if (!FailAllocationAfter(0))
        GTEST_SKIP() << "allocations can't be made to fail here";
    ExpectBoxes boxes({"Out of memory"});
    EXPECT_EQ(LaoToUnicode(text, characters, 2, 0), -1);
    EXPECT_EQ(characters[0], 'a');
}

// The syllable parser on a table of readings; its one-walk version is held against it with the
// breaks.
#include <cstring>

#include <gtest/gtest.h>

#include "text/lao_code.h"
#include "text/syllable_parser.h"

static const uint8_t *Bytes(const char *text)
{
    return reinterpret_cast<const uint8_t *>(text);
}

static std::string Show(const uint8_t *field)
{
    std::string text;
    for (; *field; ++field)
        text += std::to_string(*field) + " ";
    return text;
}

static std::string Show(const SyllableParts &parts)
{
    return "initial " + Show(parts.initial) + "vowel " + Show(parts.vowel) + "tone " +
           Show(parts.tone) + "final " + Show(parts.final);
}

struct ParseRow {
    const char *text;
    int result;
    const char *initial, *vowel, *tone, *final;
};

// The whole text is asked about.
static const ParseRow kParseRows[] = {
    {"\xA1", 0, "\xA1", "", "", ""},
    {"\xC0\xA1", 1, "\xA1", "\xC0", "", ""},
    {"\xA1\xBE", 1, "\xA1", "\xBE", "", ""},
    {"\xA1\xFA\xBE", 1, "\xA1", "\xBE", "\xFA", ""},
    {"\xA1\xFA\xFB\xBE", 0, "\xA1", "", "\xFA", ""},
    {"\xA1\xBE\xAD", 1, "\xA1", "\xBE", "", "\xAD"},
    {"\xC3\xA1\xBE", 0, "\xA1", "\xC3", "", "\xBE"},
    {"\xA1\xF1", 0, "\xA1", "\xF1", "", ""},
    {"\xA1\xF1\xAD", 1, "\xA1", "\xF1", "", "\xAD"},
    {"\xA1\xF6\xB8", 1, "\xA1", "\xF6\xB8", "", ""},
    {"\xC0\xA1\xBE", 0, "\xA1", "\xC0\xBE", "", ""},
    {"\xC0\xA1\xBE\xBD", 1, "\xA1", "\xC0\xBE\xBD", "", ""},
    {"\xC0\xA1\xF6\xBE", 1, "\xA1", "\xC0\xF6\xBE", "", ""},
    {"\xC0\xA1\xF5\xBA", 1, "\xA1", "\xC0\xF5\xBA", "", ""},
    {"\xC1\xA1\xF1\xAD", 1, "\xA1", "\xC1\xF1", "", "\xAD"},
    {"\xB9\xAD\xBE", 1, "\xB9\xAD", "\xBE", "", ""},
    {"\xA1\xBE\xC5", 1, "\xA1", "\xBE", "", "\xC5"},
    {"\xA1\xBE\xAD\xC5", 1, "\xA1", "\xBE", "", "\xAD\xC5"},
    {"\xA1\xBE\xC5\xA1\xBE", 1, "\xA1", "\xBE", "", "\xC5"},
    {"\xA1\xBE\xAD\xFE", 1, "\xA1", "\xBE", "", "\xAD\xFE"},
    {"\xA1\xBE\xAA\xFE", 1, "\xA1", "\xBE", "", "\xAA\xFE"},
    {"\xA1\xF1\xAA\xFE", 0, "\xA1", "\xF1", "", "\xAA\xFE"},
    {"\xA1\xBE\xAD\xAA", 0, "\xA1", "\xBE", "", "\xAD\xAA"},
    {"\xC0\xA1\xB8", 1, "\xA1", "\xC0", "", "\xB8"},
    {"\xC0\xA1\xB8\xFA", 1, "\xA1\xB8", "\xC0", "\xFA", ""},
    {"\xA1\xB8", 0, "\xA1\xB8", "", "", ""},
    {"\xA1\xB8\xAD", 1, "\xA1", "\xB8", "", "\xAD"},
    {"\xA1\xB8\xBE", 1, "\xA1\xB8", "\xBE", "", ""},
    {"\xC0\xA1\xB8\xAD", 1, "\xA1\xB8", "\xC0", "", "\xAD"},
    {"\xA1\xBE\xAD\xAD\xAD\xAD\xAD", 0, "\xA1", "\xBE", "", "\xAD\xAD\xAD"},
    {"\xA1\xAA\xAA\xAA\xAA", 0, "\xA1", "", "", "\xAA\xAA\xAA"},
    {"\xBE\xA1", 0, "", "", "", ""},
    {"\xC0", 0, "", "\xC0", "", ""},
    {"\xC0\xC0\xA1", 0, "", "\xC0", "", ""},
};

static bool Equals(const uint8_t *field, const char *wanted)
{
    return !strcmp(reinterpret_cast<const char *>(field), wanted);
}

TEST(SyllableParser, ReadsTheTable)
{
    for (const ParseRow &row : kParseRows) {
        SyllableParts parts;
        ResetVariants();
        int result = ParseSyllable(Bytes(row.text), int(strlen(row.text)), &parts);
        EXPECT_EQ(result, row.result) << Show(Bytes(row.text));
        bool same = Equals(parts.initial, row.initial) && Equals(parts.vowel, row.vowel) &&
                    Equals(parts.tone, row.tone) && Equals(parts.final, row.final);
        EXPECT_TRUE(same) << Show(Bytes(row.text)) << ": " << Show(parts);
    }
}

// A text with an ambiguous cluster leaves more variants behind, until they are taken back.
TEST(SyllableParser, VariantsStayRaisedUntilReset)
{
    const uint8_t *koWo = Bytes("\xA1\xB8"), *koWoNo = Bytes("\xA1\xB8\xAD");
    SyllableParts parts;
    ResetVariants();
    EXPECT_EQ(ParseSyllable(koWo, 2, nullptr), 0);
    EXPECT_EQ(ParseSyllable(koWoNo, 3, nullptr), 1);
    EXPECT_EQ(ParseSyllable(koWo, 2, &parts), 1);
    EXPECT_STREQ(reinterpret_cast<char *>(parts.vowel), "\xB8");
    ResetVariants();
    EXPECT_EQ(ParseSyllable(koWo, 2, nullptr), 0);
}

// Lengths that are none, or go past the terminator, must not be followed out of the text.
TEST(SyllableParser, StaysInsideTheText)
{
    for (const ParseRow &row : kParseRows) {
        size_t size = strlen(row.text) + 1;
        std::vector<uint8_t> exact(Bytes(row.text),
                                   Bytes(row.text) + size);  // a byte behind is an error
        for (int length = -1; length < 12; ++length) {
            SyllableParts parts;
            int result = ParseSyllable(exact.data(), length, &parts);
            EXPECT_FALSE(result && length < 2) << Show(exact.data());
        }
    }
}

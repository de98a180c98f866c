// One syllable to text: lookup, canonical codes, Change patterns, tone numbers, the pieces in their
// order, each in its field.
#include <cstring>
#include <sstream>

#include <gtest/gtest.h>

#include "keytables/builtin_tables.h"
#include "keytables/render.h"
#include "keytables/tone_number.h"
#include "support/guarded.h"

struct Entry {
    KeySection section;
    const char *key, *value;
};

// Entries stand in the order of their sections.
static KeyTable TableOf(const char *sequence, std::initializer_list<Entry> entries)
{
    KeyTable table = {};
    strcpy(table.sequence, sequence);
    int16_t count = 0;
    for (const Entry &entry : entries) {
        strcpy(table.entries[count].key, entry.key);
        strcpy(table.entries[count++].value, entry.value);
        for (int i = entry.section + 1; i <= kSectionCount; ++i)
            table.first[i] = count;
    }
    return table;
}

// Initial, vowel, tone and final with "|" between them; empty ones at the end may be left out.
static SyllableParts PartsOf(const std::string &fields)
{
    SyllableParts parts = {};
    uint8_t *const targets[] = {parts.initial, parts.vowel, parts.tone, parts.final};
    std::istringstream stream(fields);
    std::string field;
    for (uint8_t *target : targets)
        if (std::getline(stream, field, '|'))
            memcpy(target, field.data(), field.size());
    return parts;
}

static std::string FieldsOf(const SyllableParts &parts)
{
    std::string fields;
    for (const uint8_t *field : {parts.initial, parts.vowel, parts.tone, parts.final})
        fields += std::string("|") + reinterpret_cast<const char *>(field);
    return fields;
}

TEST(KeyLookup, FindsTheFirstOrGivesTheDefault)
{
    const KeyTable table = TableOf("I", {{kInitialSection, "", "none"},
                                         {kInitialSection, "\xA1", "k"},
                                         {kInitialSection, "\xA1", "later"},
                                         {kVowelSection, "\xBE", "aa"}});
    const struct {
        KeySection section;
        const char *key;
        int found;
        const char *value;
    } rows[] = {{kInitialSection, "\xA1", 1, "k"},     {kInitialSection, "", 1, "none"},
                {kInitialSection, nullptr, 1, "none"}, {kInitialSection, "\xA1\xA1", 0, "none"},
                {kVowelSection, "\xA1", 0, "aa"},      {kClusterSection, "", 0, ""}};
    for (const auto &row : rows) {
        Guarded<char> text(8);
        EXPECT_EQ(LookupSection(row.key, text.data(), 8, &table, row.section), row.found);
        EXPECT_STREQ(text.data(), row.value);
    }
    Guarded<char> small(4);
    EXPECT_EQ(LookupSection("", small.data(), 4, &table, kInitialSection), 1);
    EXPECT_STREQ(small.data(), "non");
}

// Index fields come from files: whatever they hold, nothing outside of the entries is read.
TEST(KeyLookup, TakesUnsoundIndexesForEmptySections)
{
    const struct {
        int16_t begin, end, total;
    } rows[] = {{3, 2, 5}, {-1, 2, 5}, {0, 6, 5}, {0, 201, 201}, {5, 32767, 32767}, {2, 2, 5}};
    for (const auto &row : rows) {
        KeyTable table = kBuiltInSortTable;
        table.first[kVowelSection] = row.begin;
        table.first[kFinalSection] = row.end;
        table.first[kSectionCount] = row.total;
        char text[8];
        EXPECT_EQ(LookupSection("", text, sizeof text, &table, kVowelSection), 0);
        EXPECT_STREQ(text, "");
    }
}

TEST(Normalizing, GivesOneFormToEachSign)
{
    const struct {
        const char *given, *wanted;
    } rows[] = {
        // clang-format off
        {"\xAC|\xBE", "\xEA|\xBE"},           {"\xB6|\xBE", "\xEB|\xBE"},
        {"\xB7|\xBE", "\xEC|\xBE"},           {"\xA1\xF9|\xBE", "\xA1\xEB|\xBE"},
        {"\xCD|\xBE", "\xB9\xEC|\xBE"},       {"\xCE\xB8|\xBE", "\xB9\xAD|\xBE"},
        {"\xCF|\xBE", "\xB9\xB4|\xBE"},       {"\xA1\xA1\xCF|\xBE", "\xA1\xA1\xB9|\xBE"},
        {"\xA1|\x84|\xFB", "\xA1|\xF1|\xFA"}, {"\xA1|\x89", "\xA1|\xF6|\xFA"},
        {"\xA1|\x98", "\xA1|\xF1|\xFB"},      {"\xA1|\x9D", "\xA1|\xF6|\xFB"},
        {"\xA1|\xD0|\xFC", "\xA1|\xF7|\xFC"}, {"\xA1|\xD1", "\xA1|\xF8"},
        {"\xA1|\xD2", "\xA1|\xF0|\xFA"},      {"\xA1|\xD3", "\xA1|\xF0|\xFB"},
        {"\xA1|\xD4", "\xA1|\xBF|\xFA"},      {"\xA1|\xD5", "\xA1|\xBF|\xFB"},
        {"\xA1|\xED", "\xA1|\xF6|\xFB"},      {"\xA1|\x84\x98", "\xA1|\xF1\xF1|\xFB"},
        {"\xA1|\xBE|\xC8", "\xA1|\xBE|\xFA"}, {"\xA1|\xBE|\xFB|\xA8\xFE", "\xA1|\xBE|\xFE|\xA8"},
        {"\xA1|\xBE||\xA8\xCC", "\xA1|\xBE|\xFE|\xA8"}, {"\xA1|\xBE||\xA8\xC5", "\xA1|\xBE||\xA8"},
        // clang-format on
    };
    for (const auto &row : rows) {
        SyllableParts parts = PartsOf(row.given);
        NormalizeSyllable(&parts);
        EXPECT_EQ(FieldsOf(parts), FieldsOf(PartsOf(row.wanted)));
    }
}

struct ChangeRow {
    const char *pattern, *value, *text, *result;  // none: no match
};

static const ChangeRow kChangeRows[] = {
    // clang-format off
    {"?#\xBE\xA8", "ai", "\xA1\xBE\xA8", "kai"},
    {"?#\xBE\xA8", "ai", "\xA1\xFA\xBE\xA8\xA1\xBE", "kai"},  // one tone is passed
    {"?#\xBE\xA8", "ai", "\xA1\xFA\xFB\xBE\xA8", nullptr},
    {"?#\xBE\xA8", "ai", "\xA2\xBE\xA8", nullptr},  // no such initial
    {"\xA1\xBE", "x", "\xA1\xBE\xA8", "x"}, {"\xA1\xBE", "", "\xA1\xBE", ""},
    {"\xA1##", "x", "\xA1\xFA\xC8", "x"},
    {"", "x", "\xA1\xBE", "x"},  // an empty pattern matches everything
    {"*", "x", "\xB9\xAD\xBE", "hnx"}, {"?", "x", "", nullptr}, {"*", "x", "\xB9", nullptr},  // never behind the end
    {"??", "x", "\xB9\xAD", "hnx"}, {"?\xBE?", "x", "\xB9\xBE\xAD", "hnx"},
    {"*?", "x", "\xB9\xAD\xB8", "3x"},
    {"**", "x", "\xB9\xAD\xB8\xB8", nullptr},  // more than three
    {"*******", "x", "\xB9\xAD\xB8\xB8\xB8\xB8\xB8\xB8\xB8\xB8\xB8\xB8\xB8\xB8\xB8", nullptr},
    {"\xA1\xBE\xA8\xA1\xBE\xA8\xA1", "x", "\xA1\xBE", nullptr},
    {"?", "1234567", "\xA4", "abcdefg1234"},  // cut to its field
    // clang-format on
};

TEST(Changes, MatchAtTheStart)
{
    for (const ChangeRow &row : kChangeRows) {
        const KeyTable table = TableOf("I", {{kInitialSection, "", ""},
                                             {kInitialSection, "\xA1", "k"},
                                             {kInitialSection, "\xA4", "abcdefg"},
                                             {kInitialSection, "\xB9\xAD", "hn"},
                                             {kInitialSection, "\xB9\xAD\xB8", "3"},
                                             {kChangeSection, row.pattern, row.value}});
        const char *result =
            MatchChangeEntry(reinterpret_cast<const uint8_t *>(row.text), &table, 5);
        EXPECT_EQ(result != nullptr, row.result != nullptr) << row.pattern;
        if (result && row.result) {
            EXPECT_STREQ(result, row.result) << row.pattern;
        }
    }
}

TEST(ToneNumbers, FollowTheChart)
{
    const struct {
        const char *fields, *number;
    } rows[] = {
        // clang-format off
        {"\xA1|\xBE", "1"}, {"\xA1|\xBE|\xFA", "2"}, {"\xA1|\xBE|\xFB", "5"},
        {"\xA1|\xBE||\xA1", "6"}, {"\xA1|\xBE|\xFA|\xA1", "0"}, {"\xA1|\xBD", "3"},
        {"\xA1|\xF1||\xAE", "3"}, {"\xA1|\xF1||\xAD", "1"}, {"\xA3|\xBE", "3"},
        {"\xA3|\xBE||\xA9", "5"}, {"\xA3|\xF1||\xA9", "2"}, {"\xEA|\xBD|\xFA", "2"},
        {"\xA2|\xBE", "4"}, {"\xA2|\xBE|\xFB", "6"}, {"\xB9\xAD|\xBE||\xA1", "6"},
        {"\xCE|\xBD", "3"}, {"\xA1|\xBE|\xFC|\xA1", "3"}, {"\xA1|\xBE|\xFD", "4"},
        {"\xA1|\xBE|\xFE", "5"}, {"\xBE|\xBE|\xFC", "0"}, {"\xA1|\xC0\xF3", "1"},
        {"\xA1|\xC0\xF2", "3"}, {"\xA1|\xF6\xB8", "1"}, {"\xA1|\xC0\xF5\xBA", "1"},
        {"\xA1|\xC0\xF6\xBE", "1"}, {"\xA1|\xC0\xF4\xBA", "3"}, {"\xA1", "3"},
        {"|\xBE", "0"}, {"\xA3|\xF1||\xAD", "3"},
        // clang-format on
    };
    for (const auto &row : rows) {
        SyllableParts parts = PartsOf(row.fields);
        Guarded<char> text(2);
        ToneNumberText(&parts, text.data());
        EXPECT_STREQ(text.data(), row.number) << FieldsOf(parts);
    }
}

struct RenderRow {
    const char *sequence;
    const char *fields;
    int result;
    const char *text;
};

static const RenderRow kRenderRows[] = {
    // clang-format off
    {"TFV2I", "\xA1\xB8|\xBE|\xFA|\xAD", 1, "1naak"},
    {"I2VF", "\xA1\xB8|\xBE", 1, "kwaa"},    // the cluster is no initial
    {"I2VF", "\xB9\xAD|\xBE", 1, "hnaa"},    // this pair is
    {"IVF", "\xA1\xB8|\xBE", 1, "kaa"},      // no 2: it isn't written
    {"2I", "\xA1\xB8|\xBE", 1, "k"},         // 2 before I finds nothing left
    {"I2", "\xA1\xA4|\xBE", 0, "kc"},        // no such cluster member
    {"I2VF", "\xA2|\xBE||\xAD", 0, "-aan"},  // defaults go on
    {"I2VF", "\xA2\xB8|\xBE", 0, "-waa"}, {"I2VF", "\xA1|\xBD", 0, "k?"},
    {"IVFT", "\xA1|\xBE|\xFD|\xA9", 0, "kaa"}, {"IIVV", "\xA1|\xBE", 1, "kkaaaa"},
    {"I.V?x", "\xA1|\xBE", 1, "kaa"},  // other letters say nothing
    // a final that belongs to the vowel, also for the tone; one that doesn't
    {"IVFN", "\xA1|\xC0||\xA8", 1, "kiaIII"}, {"IVF", "\xA1|\xBE||\xA8", 0, "kaa"},
    // tone numbers: at a place of their own, in the vowel, where there is none
    {"IVFN", "\xA1|\xBE||\xAD", 1, "kaanI"}, {"IVFX", "\xA1|\xBE||\xAD", 1, "kaIan"},
    {"VIV X", "\xA1|\xBE", 1, "aakaIa"},   // the last V counts
    {"IFX", "\xA1|\xBE||\xAD", 1, "knI"},  // no V
    {"IX", "\xA1|\xF0", 1, "kI"},
    {"IVX", "\xA1|\xF0", 1, "kI"},             // an empty vowel at the end
    {"IVFX", "\xA1|\xF0||\xAD", 1, "knI"},     // or in front of another piece
    {"INX", "\xA1|\xBE|\xFA|\xA9", 0, "k00"},  // a tone that isn't
    // nothing to render
    {"I2VF", "|\xBE", 0, ""}, {"", "\xA1|\xBE", 1, ""},
    // clang-format on
};

static KeyTable RenderTable(const char *sequence)
{
    // clang-format off
    return TableOf(sequence, {
        {kInitialSection, "", "-"},  {kInitialSection, "\xA1", "k"}, {kInitialSection, "\xB9\xAD", "hn"},
        {kClusterSection, "", ""},   {kClusterSection, "\xB8", "w"}, {kVowelSection, "", "?"},
        {kVowelSection, "\xBE", "aa"}, {kVowelSection, "\xC0\xA8", "ia"}, {kVowelSection, "\xF0", ""},
        {kFinalSection, "", ""},     {kFinalSection, "\xAD", "n"},   {kToneSection, "", ""},
        {kToneSection, "\xFA", "1"}, {kNumberSection, "", "0"},     {kNumberSection, "1", "I"},
        {kNumberSection, "3", "III"}});
    // clang-format on
}

TEST(Rendering, WritesThePiecesInOrder)
{
    for (const RenderRow &row : kRenderRows) {
        SyllableParts parts = PartsOf(row.fields);
        KeyTable table = RenderTable(row.sequence);
        if (row.sequence == std::string("I2"))
            strcpy(table.entries[table.first[kClusterSection]].value, "c");
        Guarded<char> output(36);
        int result = RenderSyllable(&parts, output.data(), 36, &table);
        EXPECT_EQ(result, row.result) << row.sequence << " " << row.text;
        EXPECT_STREQ(output.data(), row.text) << row.sequence;
    }
    char output[4] = "x";
    EXPECT_EQ(RenderSyllable(nullptr, output, sizeof output, &kBuiltInSortTable), 0);
    EXPECT_STREQ(output, "");
}

// Values of seven bytes in every section: fields of three cut them, and so does every output.
TEST(Rendering, CutsToFieldsAndOutput)
{
    const KeyTable table = TableOf("I2VFTNX", {{kInitialSection, "", "iiiiiii"},
                                               {kClusterSection, "", "ccccccc"},
                                               {kVowelSection, "", "vvvvvvv"},
                                               {kFinalSection, "", "fffffff"},
                                               {kToneSection, "", "ttttttt"},
                                               {kNumberSection, "", "nnnnnnn"}});
    const std::string whole = "iiiiiiicccvnnnvvvvvvffftttnnn";
    const std::string plain = "iiiiiiicccvvvvvvvffftttnnn";
    for (size_t size = 1; size <= 36; ++size) {
        SyllableParts parts = PartsOf("\xA1|\xBE|\xFA|\xAD");
        Guarded<char> output(size);
        RenderSyllable(&parts, output.data(), size, &table);
        EXPECT_EQ(strlen(output.data()), std::min(size - 1, whole.size()));
        EXPECT_TRUE(whole.starts_with(output.data()) || size <= plain.size()) << output.data();
    }
    KeyTable sevenVowels = table;
    strcpy(sevenVowels.sequence, "IIIIIVX");
    SyllableParts parts = PartsOf("\xA1|\xBE");
    Guarded<char> output(36);
    RenderSyllable(&parts, output.data(), 36, &sevenVowels);
    EXPECT_EQ(strlen(output.data()), 35u);
}

// One syllable to text: lookup, canonical codes, Change patterns, tone numbers, the pieces in their
// order, each in its field.
#include <cstring>

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

static SyllableParts PartsOf(const char *initial, const char *vowel, const char *tone,
                             const char *final)
{
    SyllableParts parts = {};
    memcpy(parts.initial, initial, strlen(initial));
    memcpy(parts.vowel, vowel, strlen(vowel));
    memcpy(parts.tone, tone, strlen(tone));
    memcpy(parts.final, final, strlen(final));
    return parts;
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
    } rows[] = {
        {kInitialSection, "\xA1", 1, "k"},
        {kInitialSection, "", 1, "none"},
        {kInitialSection, nullptr, 1, "none"},
        {kInitialSection, "\xA2", 0, "none"},
        {kInitialSection, "\xA1\xA1", 0, "none"},
        {kVowelSection, "\xA1", 0, "aa"},
        {kClusterSection, "\xA1", 0, ""},
        {kClusterSection, "", 0, ""},
        {kNumberSection, "1", 0, ""},
    };
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
        SyllableParts given, wanted;
    } rows[] = {
        {PartsOf("\xAC", "\xBE", "", ""), PartsOf("\xEA", "\xBE", "", "")},
        {PartsOf("\xB6", "\xBE", "", ""), PartsOf("\xEB", "\xBE", "", "")},
        {PartsOf("\xB7", "\xBE", "", ""), PartsOf("\xEC", "\xBE", "", "")},
        {PartsOf("\xA1\xF9", "\xBE", "", ""), PartsOf("\xA1\xEB", "\xBE", "", "")},
        {PartsOf("\xCD", "\xBE", "", ""), PartsOf("\xB9\xEC", "\xBE", "", "")},
        {PartsOf("\xCE\xB8", "\xBE", "", ""), PartsOf("\xB9\xAD", "\xBE", "", "")},
        {PartsOf("\xCF", "\xBE", "", ""), PartsOf("\xB9\xB4", "\xBE", "", "")},
        {PartsOf("\xA1\xA1\xCF", "\xBE", "", ""), PartsOf("\xA1\xA1\xB9", "\xBE", "", "")},
        {PartsOf("\xA1", "\x84", "\xFB", ""), PartsOf("\xA1", "\xF1", "\xFA", "")},
        {PartsOf("\xA1", "\x89", "", ""), PartsOf("\xA1", "\xF6", "\xFA", "")},
        {PartsOf("\xA1", "\x98", "", ""), PartsOf("\xA1", "\xF1", "\xFB", "")},
        {PartsOf("\xA1", "\x9D", "", ""), PartsOf("\xA1", "\xF6", "\xFB", "")},
        {PartsOf("\xA1", "\xD0", "\xFC", ""), PartsOf("\xA1", "\xF7", "\xFC", "")},
        {PartsOf("\xA1", "\xD1", "", ""), PartsOf("\xA1", "\xF8", "", "")},
        {PartsOf("\xA1", "\xD2", "", ""), PartsOf("\xA1", "\xF0", "\xFA", "")},
        {PartsOf("\xA1", "\xD3", "", ""), PartsOf("\xA1", "\xF0", "\xFB", "")},
        {PartsOf("\xA1", "\xD4", "", ""), PartsOf("\xA1", "\xBF", "\xFA", "")},
        {PartsOf("\xA1", "\xD5", "", ""), PartsOf("\xA1", "\xBF", "\xFB", "")},
        {PartsOf("\xA1", "\xED", "", ""), PartsOf("\xA1", "\xF6", "\xFB", "")},
        {PartsOf("\xA1", "\x84\x98", "", ""), PartsOf("\xA1", "\xF1\xF1", "\xFB", "")},
        {PartsOf("\xA1", "\xBE", "\xC8", ""), PartsOf("\xA1", "\xBE", "\xFA", "")},
        {PartsOf("\xA1", "\xBE", "\xFB", "\xA8\xFE"), PartsOf("\xA1", "\xBE", "\xFE", "\xA8")},
        {PartsOf("\xA1", "\xBE", "", "\xA8\xCC"), PartsOf("\xA1", "\xBE", "\xFE", "\xA8")},
        {PartsOf("\xA1", "\xBE", "", "\xA8\xC5"), PartsOf("\xA1", "\xBE", "", "\xA8")},
    };
    for (const auto &row : rows) {
        SyllableParts parts = row.given;
        NormalizeSyllable(&parts);
        auto same = [](const uint8_t *one, const uint8_t *other) {
            return !strcmp(reinterpret_cast<const char *>(one),
                           reinterpret_cast<const char *>(other));
        };
        EXPECT_TRUE(same(parts.initial, row.wanted.initial)) << int(row.given.initial[0]);
        EXPECT_TRUE(same(parts.vowel, row.wanted.vowel)) << int(row.given.vowel[0]);
        EXPECT_TRUE(same(parts.tone, row.wanted.tone)) << int(row.given.vowel[0]);
        EXPECT_TRUE(same(parts.final, row.wanted.final)) << int(row.given.final[0]);
    }
}

struct ChangeRow {
    const char *pattern, *value, *text, *result;  // none: no match
};

static const ChangeRow kChangeRows[] = {
    {"?#\xBE\xA8", "ai", "\xA1\xBE\xA8", "kai"},
    {"?#\xBE\xA8", "ai", "\xA1\xFA\xBE\xA8\xA1\xBE", "kai"},  // one tone is passed
    {"?#\xBE\xA8", "ai", "\xA1\xFA\xFB\xBE\xA8", nullptr},
    {"?#\xBE\xA8", "ai", "\xA1\xBE", nullptr},
    {"?#\xBE\xA8", "ai", "\xA2\xBE\xA8", nullptr},  // no such initial
    {"\xA1\xBE", "x", "\xA1\xBE\xA8", "x"},
    {"\xA1\xBE", "", "\xA1\xBE", ""},
    {"\xA1#", "x", "\xA1", "x"},
    {"\xA1##", "x", "\xA1\xFA\xC8", "x"},
    {"", "x", "\xA1\xBE", "x"},  // an empty pattern matches everything
    {"*", "x", "\xB9\xAD\xBE", "hnx"},
    {"*", "x", "\xB9", nullptr},  // never behind the end
    {"?", "x", "", nullptr},
    {"??", "x", "\xB9\xAD", "hnx"},
    {"?\xBE?", "x", "\xB9\xBE\xAD", "hnx"},
    {"*?", "x", "\xB9\xAD\xB8", "3x"},
    {"**", "x", "\xB9\xAD\xB8\xB8", nullptr},  // more than three
    {"????", "x", "\xB9\xAD\xB8\xB8", nullptr},
    {"*******", "x", "\xB9\xAD\xB8\xB8\xB8\xB8\xB8\xB8\xB8\xB8\xB8\xB8\xB8\xB8\xB8", nullptr},
    {"\xA1\xBE\xA8\xA1\xBE\xA8\xA1", "x", "\xA1\xBE", nullptr},
    {"?", "1234567", "\xA4", "abcdefg1234"},  // cut to its field
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
        SyllableParts parts;
        const char *number;
    } rows[] = {
        {PartsOf("\xA1", "\xBE", "", ""), "1"},
        {PartsOf("\xA1", "\xBE", "\xFA", ""), "2"},
        {PartsOf("\xA1", "\xBE", "\xFB", ""), "5"},
        {PartsOf("\xA1", "\xBE", "", "\xA1"), "6"},
        {PartsOf("\xA1", "\xBE", "\xFA", "\xA1"), "0"},
        {PartsOf("\xA1", "\xBD", "", ""), "3"},
        {PartsOf("\xA1", "\xF1", "", "\xAE"), "3"},
        {PartsOf("\xA1", "\xF1", "", "\xAD"), "1"},
        {PartsOf("\xA3", "\xBE", "", ""), "3"},
        {PartsOf("\xA3", "\xBE", "", "\xA9"), "5"},
        {PartsOf("\xA3", "\xF1", "", "\xA9"), "2"},
        {PartsOf("\xEA", "\xBD", "\xFA", ""), "2"},
        {PartsOf("\xA2", "\xBE", "", ""), "4"},
        {PartsOf("\xA2", "\xBE", "\xFB", ""), "6"},
        {PartsOf("\xB9\xAD", "\xBE", "", "\xA1"), "6"},
        {PartsOf("\xCE", "\xBD", "", ""), "3"},
        {PartsOf("\xA1", "\xBE", "\xFC", "\xA1"), "3"},
        {PartsOf("\xA1", "\xBE", "\xFD", ""), "4"},
        {PartsOf("\xA1", "\xBE", "\xFE", ""), "5"},
        {PartsOf("\xBE", "\xBE", "\xFC", ""), "0"},
        {PartsOf("\xA1", "\xC0\xF3", "", ""), "1"},
        {PartsOf("\xA1", "\xC0\xF2", "", ""), "3"},
        {PartsOf("\xA1", "\xF6\xB8", "", ""), "1"},
        {PartsOf("\xA1", "\xC0\xF5\xBA", "", ""), "1"},
        {PartsOf("\xA1", "\xC0\xF6\xBE", "", ""), "1"},
        {PartsOf("\xA1", "\xC0\xF4\xBA", "", ""), "3"},
        {PartsOf("\xA1", "", "", ""), "3"},
        {PartsOf("", "\xBE", "", ""), "0"},
    };
    for (const auto &row : rows) {
        Guarded<char> text(2);
        ToneNumberText(&row.parts, text.data());
        EXPECT_STREQ(text.data(), row.number)
            << int(row.parts.initial[0]) << " " << int(row.parts.vowel[0]) << " "
            << int(row.parts.tone[0]);
    }
}

struct RenderRow {
    const char *sequence;
    SyllableParts parts;
    int result;
    const char *text;
};

static const RenderRow kRenderRows[] = {
    {"I2VFT", PartsOf("\xA1", "\xBE", "", ""), 1, "kaa"},
    {"TFV2I", PartsOf("\xA1\xB8", "\xBE", "\xFA", "\xAD"), 1, "1naak"},
    {"I2VF", PartsOf("\xA1\xB8", "\xBE", "", ""), 1, "kwaa"},  // the cluster is no initial
    {"I2VF", PartsOf("\xB9\xAD", "\xBE", "", ""), 1, "hnaa"},  // this pair is
    {"IVF", PartsOf("\xA1\xB8", "\xBE", "", ""), 1, "kaa"},    // no 2: it isn't written
    {"2I", PartsOf("\xA1\xB8", "\xBE", "", ""), 1, "k"},       // 2 before I finds nothing left
    {"I2", PartsOf("\xA1\xA4", "\xBE", "", ""), 0, "kc"},      // no such cluster member
    {"I2VF", PartsOf("\xA2", "\xBE", "", "\xAD"), 0, "-aan"},  // defaults go on
    {"I2VF", PartsOf("\xA2\xB8", "\xBE", "", ""), 0, "-waa"},
    {"I2VF", PartsOf("\xA1", "\xBD", "", ""), 0, "k?"},
    {"IVFT", PartsOf("\xA1", "\xBE", "\xFD", "\xA9"), 0, "kaa"},
    {"IIVV", PartsOf("\xA1", "\xBE", "", ""), 1, "kkaaaa"},
    {"I.V?x", PartsOf("\xA1", "\xBE", "", ""), 1, "kaa"},  // other letters say nothing
    // a final that belongs to the vowel, also for the tone; one that doesn't
    {"IVF", PartsOf("\xA1", "\xC0", "", "\xA8"), 1, "kia"},
    {"IVFN", PartsOf("\xA1", "\xC0", "", "\xA8"), 1, "kiaIII"},
    {"IVF", PartsOf("\xA1", "\xBE", "", "\xA8"), 0, "kaa"},
    // tone numbers: at a place of their own, in the vowel, where there is none
    {"IVFN", PartsOf("\xA1", "\xBE", "", "\xAD"), 1, "kaanI"},
    {"IVFX", PartsOf("\xA1", "\xBE", "", "\xAD"), 1, "kaIan"},
    {"XIVF", PartsOf("\xA1", "\xBE", "", "\xAD"), 1, "kaIan"},
    {"VIV X", PartsOf("\xA1", "\xBE", "", ""), 1, "aakaIa"},  // the last V counts
    {"IFX", PartsOf("\xA1", "\xBE", "", "\xAD"), 1, "knI"},   // no V
    {"IX", PartsOf("\xA1", "\xF0", "", ""), 1, "kI"},
    {"IVX", PartsOf("\xA1", "\xF0", "", ""), 1, "kI"},           // an empty vowel at the end
    {"IVFX", PartsOf("\xA1", "\xF0", "", "\xAD"), 1, "knI"},     // or in front of another piece
    {"INX", PartsOf("\xA1", "\xBE", "\xFA", "\xA9"), 0, "k00"},  // a tone that isn't
    // nothing to render
    {"I2VF", PartsOf("", "\xBE", "", ""), 0, ""},
    {"", PartsOf("\xA1", "\xBE", "", ""), 1, ""},
};

static KeyTable RenderTable(const char *sequence)
{
    return TableOf(sequence, {{kInitialSection, "", "-"},
                              {kInitialSection, "\xA1", "k"},
                              {kInitialSection, "\xB9\xAD", "hn"},
                              {kClusterSection, "", ""},
                              {kClusterSection, "\xB8", "w"},
                              {kVowelSection, "", "?"},
                              {kVowelSection, "\xBE", "aa"},
                              {kVowelSection, "\xC0\xA8", "ia"},
                              {kVowelSection, "\xF0", ""},
                              {kFinalSection, "", ""},
                              {kFinalSection, "\xAD", "n"},
                              {kToneSection, "", ""},
                              {kToneSection, "\xFA", "1"},
                              {kNumberSection, "", "0"},
                              {kNumberSection, "1", "I"},
                              {kNumberSection, "3", "III"}});
}

TEST(Rendering, WritesThePiecesInOrder)
{
    for (RenderRow row : kRenderRows) {
        KeyTable table = RenderTable(row.sequence);
        if (row.sequence == std::string("I2"))
            strcpy(table.entries[table.first[kClusterSection]].value, "c");
        Guarded<char> output(36);
        int result = RenderSyllable(&row.parts, output.data(), 36, &table);
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
        SyllableParts parts = PartsOf("\xA1", "\xBE", "\xFA", "\xAD");
        Guarded<char> output(size);
        RenderSyllable(&parts, output.data(), size, &table);
        EXPECT_EQ(strlen(output.data()), std::min(size - 1, whole.size()));
        EXPECT_TRUE(whole.starts_with(output.data()) || size <= plain.size()) << output.data();
    }
    KeyTable sevenVowels = table;
    strcpy(sevenVowels.sequence, "IIIIIVX");
    SyllableParts parts = PartsOf("\xA1", "\xBE", "", "");
    Guarded<char> output(36);
    RenderSyllable(&parts, output.data(), 36, &sevenVowels);
    EXPECT_EQ(strlen(output.data()), 35u);
}

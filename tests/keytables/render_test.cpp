// One syllable to text, as control files rule it: the pieces in their order, tone numbers, Change
// patterns, and fields of their own size. The order of the whole dictionary in sort_key_test.cpp
// proves the lookups and the canonical codes.
#include "keytables/key_support.h"

using Rendering = KeyTables;

struct RenderRow {
    const char *first;  // a sequence, or a pattern and its text
    const char *text;   // UTF-8
    const char *result;
};

// Each row has a file of its own: `before`, the row's first text, `behind`.
static void ExpectRendered(const std::string &before, const std::string &behind,
                           std::initializer_list<RenderRow> rows)
{
    for (const RenderRow &row : rows) {
        ASSERT_EQ(LoadRomanFile(CodeOfText(std::string(before).append(row.first).append(behind))),
                  1)
            << row.first;
        EXPECT_EQ(RomanOf(CodeOfText(row.text)), row.result) << row.first << " " << row.text;
    }
}

TEST_F(Rendering, WritesThePiecesInOrder)
{
    const char *sections =
        "\nInitial\n0 .\nກ k\nກ later\nຫນ hn\nCluster\n0\nວ w\nVowel\n0 ?\nກາ aa\n"
        "ເກຍ ia\nກໍ #0\nFinal\n0\nນ n\nTone\n0\nກ່ 1\nChange\nNumber\n0 0\n1 I\n3 III\n";
    ExpectRendered(
        "", sections,
        {
            // clang-format off
        {"TFV2I", "ກວ່ານ", "1naak"}, {"I2VF", "ກວາ", "kwaa"}, {"I2VF", "ຫນາ", "hnaa"},  // a pair of its own
        {"IVF", "ກວາ", "kaa"}, {"2I", "ກວາ", "k"},           // no 2, and nothing left for it
        {"I2VF", "ຂານ", ".aan"}, {"I2VF", "ຂວານ", ".waan"}, {"I2VF", "ກະ", "k?"},  // defaults
        {"IVFT", "ກ໋າດ", "kaa"}, {"IIVV", "ກາ", "kkaaaa"}, {"I.V?q", "ກາ", "kaa"},  // other letters say nothing
        // a final that belongs to the vowel, also for the tone; one that doesn't
        {"IVFN", "ເກຍ", "kiaIII"}, {"IVF", "ກາຍ", "kaa"},
        // tone numbers: at a place of their own, in the last vowel, where there is none
        {"IVFN", "ການ", "kaanI"}, {"IVFX", "ການ", "kaIan"}, {"VIV.X", "ກາ", "aakaIa"},
        {"IFX", "ການ", "knI"}, {"IX", "ກໍ", "kI"}, {"IVX", "ກໍ", "kI"}, {"INX", "ກ່າດ", "k00"},  // a tone that isn't
                                    // clang-format on
        });
}

TEST_F(Rendering, CountsTheTone)
{
    LoadRomanFile("N\nInitial\nCluster\nVowel\nFinal\nTone\nChange\nNumber\n0 0\n1 1\n2 2\n3 3\n4 "
                  "4\n5 5\n6 6\n");
    ExpectRomanized({
        // clang-format off
        {"ກາ", "1"}, {"ກ່າ", "2"}, {"ກ້າ", "5"}, {"ກາກ", "6"}, {"ກ່າກ", "0"}, {"ການ", "1"},    // middle, long
        {"ກະ", "3"}, {"ກັບ", "3"}, {"ກັນ", "1"}, {"ກັ່ນ", "2"}, {"ເກິ", "3"},                    // short
        {"ຄາ", "3"}, {"ຄາດ", "5"}, {"ຄ່ານ", "2"}, {"ຄະ", "2"}, {"ຄັດ", "2"}, {"ຄັນ", "3"},      // low
        {"ຂາ", "4"}, {"ຂ້າ", "6"}, {"ຂາກ", "6"}, {"ຂະ", "3"}, {"ຂັນ", "4"}, {"ຫນາກ", "6"}, {"ໜະ", "3"},  // high
        {"ກ໊າ", "3"}, {"ກ໋າ", "4"},                                               // marks that rule alone
        {"ເກີ", "1"}, {"ກົວ", "1"}, {"ເກືອ", "1"}, {"ເກົາ", "1"}, {"ເກຶອ", "3"},  // vowels of several signs
        // clang-format on
    });
}

// With a replacement break each text is one run. Where no pattern matches the initial stands alone.
TEST_F(Rendering, TriesPatternsFirst)
{
    ExpectRendered(
        "I #0 |\nInitial\n0\nກ k\nງ abcdefg\nຫນ hn\nຫນວ 3\nCluster\nVowel\nFinal\nTone\nChange\n",
        "\nNumber\n",
        {
            // clang-format off
        {"?#າຍ ai", "ກາຍ", "kai"}, {"?#າຍ ai", "ກ່າຍກາ", "kai"},  // over a tone, and the whole run
        {"?#າຍ ai", "ກ່້າຍ", "k"}, {"?#າຍ ai", "ຂາຍ", ""},         // two tones; no such initial
        {"ກາ x", "ກາຍ", "x"}, {"ກາ", "ກາ", ""}, {"ກາ x\nກາ y", "ກາ", "x"},  // the first that matches
        {"0 x", "ກາ", "x"}, {"ກ x", "ກ", "k"},                     // the empty one always, but on one byte
        {"* x", "ຫນາ", "hnx"}, {"?? x", "ຫນາ", "hnx"}, {"?າ? x", "ຫານ", "hnx"},
        {"*? x", "ຫນວາ", "3x"}, {"** x", "ຫນວວາ", "hn"},           // three bytes at most
        {"******* x", "ຫນວວວວວວວວວ", "hn"}, {"ກາຍກາຍກ x", "ກາ", "k"},  // never behind the end
        {"? 1234567", "ງາ", "abcdefg1234"},                        // cut to its field
                                                 // clang-format on
        });
}

// Values of seven bytes in every section: fields of three cut them, and so does the whole.
TEST_F(Rendering, CutsToItsFields)
{
    ExpectRendered("",
                   "\nInitial\n0 iiiiiii\nCluster\n0 ccccccc\nVowel\n0 vvvvvvv\nFinal\n0 fffffff\n"
                   "Tone\n0 ttttttt\nChange\nNumber\n0 nnnnnnn\n",
                   {{"I2VFTNX", "ກວ່ານ", "iiiiiiicccvnnnvvvvvvffftttnnn"},
                    {"IIIIIVX", "ກາ", "iiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiii"}});
}

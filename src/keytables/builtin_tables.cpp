// The three built-in key tables as one chart: a row for each piece of a syllable, a column for each
// use. The rows stand in the order of Lao, so the digits of the sort column rise from row to row; a
// syllable's sort key has eight of them: initial 2, cluster 1, final 2, vowel 2, tone 1. The
// romanization writes no tones. The letters of the e-mail column are read again by the companion,
// which knows more ways of spelling the same Lao.
#include "keytables/builtin_tables.h"

#include <iterator>

struct SignRow {
    uint8_t key[kTokenRoom];  // codes; none for the default, which is written for unknown keys
    const char *sort;         // null: the table has no such row
    const char *roman;
    const char *email;
};
constexpr const char *kNoRow = nullptr;

// clang-format off
constexpr SignRow kInitials[] = {
    // key            sort     roman   e-mail
    {{},              "00",    "",     ""},      // default
    {{161},           "01",    "k",    "k"},     // ກ
    {{162},           "02",    "kh",   "Kh"},    // ຂ
    {{163},           "03",    "kh",   "kh"},    // ຄ
    {{164},           "04",    "ng",   "ng"},    // ງ
    {{165},           "05",    "ch",   "j"},     // ຈ
    {{166},           "06",    "s",    "s"},     // ສ
    {{167},           "07",    "s",    "x"},     // ຊ
    {{168},           "08",    "ny",   "ny"},    // ຍ
    {{169},           "09",    "d",    "d"},     // ດ
    {{170},           "10",    "t",    "t"},     // ຕ
    {{171},           "11",    "th",   "Th"},    // ຖ
    {{234},           "12",    "th",   "th"},    // ທ
    {{173},           "13",    "n",    "n"},     // ນ
    {{174},           "14",    "b",    "b"},     // ບ
    {{175},           "15",    "p",    "p"},     // ປ
    {{176},           "16",    "ph",   "Ph"},    // ຜ
    {{177},           "17",    "f",    "F"},     // ຝ
    {{178},           "18",    "ph",   "ph"},    // ພ
    {{179},           "19",    "f",    "f"},     // ຟ
    {{180},           "20",    "m",    "m"},     // ມ
    {{181},           "21",    "y",    "y"},     // ຢ
    {{235},           "22",    "r",    "r"},     // ຣ
    {{236},           "23",    "l",    "l"},     // ລ
    {{184},           "24",    "v",    "v"},     // ວ
    {{185},           "25",    "h",    "H"},     // ຫ
    {{185, 164},      "26",    "ng",   "hng"},   // ຫງ
    {{185, 168},      "27",    "ny",   "hny"},   // ຫຍ
    {{206},           "28",    kNoRow, "N"},     // ໜ
    {{185, 173},      "29",    "n",    "hn"},    // ຫນ
    {{207},           "30",    kNoRow, "M"},     // ໝ
    {{185, 180},      "31",    "m",    "hm"},    // ຫມ
    {{185, 235},      "32",    "r",    "hr"},    // ຫຣ
    {{205},           "33",    kNoRow, "L"},     // ຫຼ
    {{185, 249},      "34",    kNoRow, "hR"},    // ຫຼ
    {{185, 236},      "35",    "l",    "hl"},    // ຫລ
    {{185, 184},      "36",    "v",    "hv"},    // ຫວ
    {{186},           "37",    "",     ""},      // ອ
    {{186, 184},      kNoRow,  "aw",   "zw"},    // ອວ
    {{187},           "38",    "h",    "h"},     // ຮ
    {{187, 184},      kNoRow,  kNoRow, "qw"},    // ຮວ
};

constexpr SignRow kClusters[] = {
    // key            sort     roman   e-mail
    {{},              "0",     "",     ""},      // default
    {{235},           "1",     "r",    "r"},     // ຣ
    {{249},           "1",     "r",    "R"},     // ◌ຼ
    {{236},           "2",     "l",    "l"},     // ລ
    {{184},           "3",     "w",    "w"},     // ວ
};

constexpr SignRow kVowels[] = {
    // key            sort     roman   e-mail
    {{},              "00",    "",     ""},      // default
    {{189},           "01",    "a",    "a"},     // ◌ະ
    {{241},           "02",    "a",    "a"},     // ◌ັ
    {{190},           "03",    "a",    "aa"},    // ◌າ
    {{242},           "04",    "i",    "i"},     // ◌ິ
    {{243},           "05",    "i",    "ii"},    // ◌ີ
    {{244},           "06",    "eu",   "ue"},    // ◌ຶ
    {{245},           "07",    "eu",   "eu"},    // ◌ື
    {{247},           "08",    "ou",   "u"},     // ◌ຸ
    {{248},           "09",    "ou",   "uu"},    // ◌ູ
    {{192, 189},      "10",    "e",    "e"},     // ເ◌ະ
    {{192, 241},      "11",    "e",    "e"},     // ເ◌ັ
    {{192},           "12",    "e",    "ee"},    // ເ◌
    {{193, 189},      "13",    "ae",   "E"},     // ແ◌ະ
    {{193, 241},      "14",    "ae",   "E"},     // ແ◌ັ
    {{193},           "15",    "ae",   "EE"},    // ແ◌
    {{194, 189},      "16",    "o",    "o"},     // ໂ◌ະ
    {{246},           "17",    "o",    "o"},     // ◌ົ
    {{194},           "18",    "o",    "oo"},    // ໂ◌
    {{192, 190, 189}, "19",    "oh",   "O"},     // ເ◌າະ
    {{241, 186},      "20",    "o",    "O"},     // ◌ັອ
    {{240},           "21",    "o",    "OO"},    // ◌ໍ
    {{186},           "22",    "o",    "OO"},    // ◌ອ
    {{192, 242},      "23",    "er",   "oe"},    // ເ◌ິ
    {{192, 243},      "24",    "ur",   "er"},    // ເ◌ີ
    {{192, 241, 168}, "25",    "ia",   "ia'"},   // ເ◌ັຍ
    {{192, 168},      "26",    "ia",   "ia"},    // ເ◌ຍ
    {{193, 184},      kNoRow,  "eo",   kNoRow},  // ແ◌ວ
    {{188},           "27",    "ia",   "ia"},    // ◌ຽ
    {{241, 168},      kNoRow,  kNoRow, "ayy"},   // ◌ັຍ
    {{241, 180},      kNoRow,  kNoRow, "amm"},   // ◌ັມ
    {{192, 244, 186}, "28",    "eua",  "eua'"},  // ເ◌ຶອ
    {{192, 245, 186}, "29",    "eua",  "eua"},   // ເ◌ືອ
    {{246, 184, 189}, "30",    "oua",  "ua'"},   // ◌ົວະ
    {{241, 184},      "31",    "oua",  "ua'"},   // ◌ັວ
    {{246, 184},      "32",    "oua",  "ua"},    // ◌ົວ
    {{184},           "33",    "oua",  "ua"},    // ◌ວ
    {{196},           "34",    "ay",   "ai"},    // ໄ◌
    {{195},           "35",    "ay",   "ay"},    // ໃ◌
    {{192, 246, 190}, "36",    "ao",   "ao"},    // ເ◌ົາ
    {{191},           "37",    "am",   "am"},    // ◌ຳ
};

constexpr SignRow kFinals[] = {
    // key            sort     roman   e-mail
    {{},              "00",    "",     ""},      // default
    {{161},           "01",    "k",    "k"},     // ກ
    {{162},           "02",    "k",    kNoRow},  // ຂ
    {{163},           "03",    "k",    kNoRow},  // ຄ
    {{164},           "04",    "ng",   "ng"},    // ງ
    {{165},           "05",    "k",    kNoRow},  // ຈ
    {{166},           "06",    "t",    "s"},     // ສ
    {{167},           "07",    "t",    "x"},     // ຊ
    {{168},           "08",    "y",    "y"},     // ຍ
    {{169},           "09",    "t",    "t"},     // ດ
    {{170},           "10",    "t",    kNoRow},  // ຕ
    {{171},           "11",    "t",    kNoRow},  // ຖ
    {{172},           kNoRow,  "t",    kNoRow},  // ທ
    {{234},           "12",    kNoRow, kNoRow},  // ທ
    {{173},           "13",    "n",    "n"},     // ນ
    {{174},           "14",    "p",    "p"},     // ບ
    {{175},           "15",    "p",    kNoRow},  // ປ
    {{176},           "16",    "p",    kNoRow},  // ຜ
    {{177},           "17",    "p",    "F"},     // ຝ
    {{178},           "18",    "p",    kNoRow},  // ພ
    {{179},           "19",    "p",    "f"},     // ຟ
    {{180},           "20",    "m",    "m"},     // ມ
    {{181},           "21",    "y",    kNoRow},  // ຢ
    {{235},           "22",    "r",    "r"},     // ຣ
    {{236},           "23",    "l",    "l"},     // ລ
    {{184},           "24",    "w",    "w"},     // ວ
    {{185},           "25",    "h",    kNoRow},  // ຫ
    {{185, 164},      kNoRow,  "ng",   kNoRow},  // ຫງ
    {{185, 168},      kNoRow,  "y",    kNoRow},  // ຫຍ
    {{185, 173},      kNoRow,  "n",    kNoRow},  // ຫນ
    {{185, 180},      kNoRow,  "m",    kNoRow},  // ຫມ
    {{185, 235},      kNoRow,  "r",    kNoRow},  // ຫຣ
    {{185, 236},      kNoRow,  "l",    kNoRow},  // ຫລ
    {{185, 184},      kNoRow,  "w",    kNoRow},  // ຫວ
    {{186},           "26",    "",     kNoRow},  // ອ
    {{187},           "27",    "h",    kNoRow},  // ຮ
};

constexpr SignRow kTones[] = {
    // key            sort     roman   e-mail
    {{},              "0",     "",     ""},      // default
    {{250},           "1",     "",     "1"},     // ◌່
    {{251},           "2",     "",     "2"},     // ◌້
    {{252},           "3",     "",     "3"},     // ◌໊
    {{253},           "4",     "",     "4"},     // ◌໋
    {{254},           "5",     "",     "*"},     // ◌໌
};

// Patterns of the romanization, which give a vowel and its final a text of their own.
constexpr SignRow kChanges[] = {
    {{'?', '#', 190, 168}, kNoRow, "ai", kNoRow},  // ◌າຍ
    {{'?', '#', 190, 184}, kNoRow, "ao", kNoRow},  // ◌າວ
};
// clang-format on

// ---- the chart's columns as tables, at compile time ----

struct Chart {
    const SignRow *rows;
    size_t count;
};

constexpr Chart kCharts[kSectionCount] = {
    // ORDER KeySection
    {kInitials, std::size(kInitials)},
    {kClusters, std::size(kClusters)},
    {kVowels, std::size(kVowels)},
    {kFinals, std::size(kFinals)},
    {kTones, std::size(kTones)},
    {kChanges, std::size(kChanges)},
    {nullptr, 0},  // tone numbers: none of the three writes them
};

struct TableHead {
    const char *name;
    TableType type;
    const char *sequence;
    uint8_t separator;
    const char *SignRow::*column;
};

// A text that is longer than its field does not compile.
constexpr void CopyText(char *target, const char *text)
{
    while (*text)
        *target++ = *text++;
    *target = 0;
}

constexpr KeyTableEntry MakeEntry(const uint8_t *key, const char *value)
{
    KeyTableEntry entry = {};
    for (int i = 0; key[i]; ++i)
        entry.key[i] = char(key[i]);
    CopyText(entry.value, value);
    return entry;
}

constexpr KeyTable MakeKeyTable(const TableHead &head)
{
    KeyTable table = {};
    CopyText(table.name, head.name);
    CopyText(table.sequence, head.sequence);
    table.separator = head.separator;
    table.type = head.type;
    int16_t total = 0;
    for (int section = 0; section < kSectionCount; ++section) {
        table.first[section] = total;
        for (size_t i = 0; i < kCharts[section].count; ++i) {
            const SignRow &row = kCharts[section].rows[i];
            if (const char *value = row.*head.column)
                table.entries[total++] = MakeEntry(row.key, value);
        }
    }
    table.first[kSectionCount] = total;
    return table;
}

constexpr KeyTable kSort =
    MakeKeyTable({"LaoSort.key", kSortTable, kVowelsLast, 0, &SignRow::sort});
constexpr KeyTable kRoman = MakeKeyTable({"LaoRoman.key", kRomanTable, "I2VF", 0, &SignRow::roman});
constexpr KeyTable kEmail =
    MakeKeyTable({"LaoEmail.key", kEmailTable, kNaturalOrder, '-', &SignRow::email});

// Whether the sections begin where they should: a row that was lost or doubled shows here.
constexpr bool HasIndexes(const KeyTable &table, const int (&indexes)[kSectionCount + 1])
{
    for (int i = 0; i <= kSectionCount; ++i)
        if (table.first[i] != indexes[i])
            return false;
    return true;
}
static_assert(HasIndexes(kSort, {0, 39, 44, 82, 110, 116, 116, 116}));
static_assert(HasIndexes(kRoman, {0, 36, 41, 80, 115, 121, 123, 123}));
static_assert(HasIndexes(kEmail, {0, 41, 46, 86, 101, 107, 107, 107}));

// The digits of a section rise from row to row; two rows may share a place.
constexpr bool HasRisingDigits(KeySection section)
{
    for (int i = kSort.first[section] + 1; i < kSort.first[section + 1]; ++i) {
        const char *before = kSort.entries[i - 1].value, *value = kSort.entries[i].value;
        if (value[0] < before[0] || (value[0] == before[0] && value[1] < before[1]))
            return false;
    }
    return true;
}
static_assert(HasRisingDigits(kInitialSection) && HasRisingDigits(kClusterSection) &&
              HasRisingDigits(kVowelSection) && HasRisingDigits(kFinalSection) &&
              HasRisingDigits(kToneSection));

const KeyTable kBuiltInSortTable = kSort;
const KeyTable kBuiltInRomanTable = kRoman;
const KeyTable kBuiltInEmailTable = kEmail;

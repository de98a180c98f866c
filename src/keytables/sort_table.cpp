// The built-in order of Lao. Each key's value is its place in its section; a syllable gives eight
// digits: initial 2, cluster 1, final 2, vowel 2, tone 1.
#include "keytables/builtin_tables.h"

#include <iterator>

#include "keytables/table_rows.h"

// clang-format off

constexpr KeyRow kInitials[] = {
    {{},              "00"},      // default
    {{161},           "01"},      // ກ
    {{162},           "02"},      // ຂ
    {{163},           "03"},      // ຄ
    {{164},           "04"},      // ງ
    {{165},           "05"},      // ຈ
    {{166},           "06"},      // ສ
    {{167},           "07"},      // ຊ
    {{168},           "08"},      // ຍ
    {{169},           "09"},      // ດ
    {{170},           "10"},      // ຕ
    {{171},           "11"},      // ຖ
    {{234},           "12"},      // ທ
    {{173},           "13"},      // ນ
    {{174},           "14"},      // ບ
    {{175},           "15"},      // ປ
    {{176},           "16"},      // ຜ
    {{177},           "17"},      // ຝ
    {{178},           "18"},      // ພ
    {{179},           "19"},      // ຟ
    {{180},           "20"},      // ມ
    {{181},           "21"},      // ຢ
    {{235},           "22"},      // ຣ
    {{236},           "23"},      // ລ
    {{184},           "24"},      // ວ
    {{185},           "25"},      // ຫ
    {{185, 164},      "26"},      // ຫງ
    {{185, 168},      "27"},      // ຫຍ
    {{206},           "28"},      // ໜ
    {{185, 173},      "29"},      // ຫນ
    {{207},           "30"},      // ໝ
    {{185, 180},      "31"},      // ຫມ
    {{185, 235},      "32"},      // ຫຣ
    {{205},           "33"},      // ຫຼ
    {{185, 249},      "34"},      // ຫຼ
    {{185, 236},      "35"},      // ຫລ
    {{185, 184},      "36"},      // ຫວ
    {{186},           "37"},      // ອ
    {{187},           "38"},      // ຮ
};

constexpr KeyRow kClusters[] = {
    {{},              "0"},       // default
    {{235},           "1"},       // ຣ
    {{249},           "1"},       // ◌ຼ
    {{236},           "2"},       // ລ
    {{184},           "3"},       // ວ
};

constexpr KeyRow kVowels[] = {
    {{},              "00"},      // default
    {{189},           "01"},      // ◌ະ
    {{241},           "02"},      // ◌ັ
    {{190},           "03"},      // ◌າ
    {{242},           "04"},      // ◌ິ
    {{243},           "05"},      // ◌ີ
    {{244},           "06"},      // ◌ຶ
    {{245},           "07"},      // ◌ື
    {{247},           "08"},      // ◌ຸ
    {{248},           "09"},      // ◌ູ
    {{192, 189},      "10"},      // ເ◌ະ
    {{192, 241},      "11"},      // ເ◌ັ
    {{192},           "12"},      // ເ◌
    {{193, 189},      "13"},      // ແ◌ະ
    {{193, 241},      "14"},      // ແ◌ັ
    {{193},           "15"},      // ແ◌
    {{194, 189},      "16"},      // ໂ◌ະ
    {{246},           "17"},      // ◌ົ
    {{194},           "18"},      // ໂ◌
    {{192, 190, 189}, "19"},      // ເ◌າະ
    {{241, 186},      "20"},      // ◌ັອ
    {{240},           "21"},      // ◌ໍ
    {{186},           "22"},      // ◌ອ
    {{192, 242},      "23"},      // ເ◌ິ
    {{192, 243},      "24"},      // ເ◌ີ
    {{192, 241, 168}, "25"},      // ເ◌ັຍ
    {{192, 168},      "26"},      // ເ◌ຍ
    {{188},           "27"},      // ◌ຽ
    {{192, 244, 186}, "28"},      // ເ◌ຶອ
    {{192, 245, 186}, "29"},      // ເ◌ືອ
    {{246, 184, 189}, "30"},      // ◌ົວະ
    {{241, 184},      "31"},      // ◌ັວ
    {{246, 184},      "32"},      // ◌ົວ
    {{184},           "33"},      // ◌ວ
    {{196},           "34"},      // ໄ◌
    {{195},           "35"},      // ໃ◌
    {{192, 246, 190}, "36"},      // ເ◌ົາ
    {{191},           "37"},      // ◌ຳ
};

constexpr KeyRow kFinals[] = {
    {{},              "00"},      // default
    {{161},           "01"},      // ກ
    {{162},           "02"},      // ຂ
    {{163},           "03"},      // ຄ
    {{164},           "04"},      // ງ
    {{165},           "05"},      // ຈ
    {{166},           "06"},      // ສ
    {{167},           "07"},      // ຊ
    {{168},           "08"},      // ຍ
    {{169},           "09"},      // ດ
    {{170},           "10"},      // ຕ
    {{171},           "11"},      // ຖ
    {{234},           "12"},      // ທ
    {{173},           "13"},      // ນ
    {{174},           "14"},      // ບ
    {{175},           "15"},      // ປ
    {{176},           "16"},      // ຜ
    {{177},           "17"},      // ຝ
    {{178},           "18"},      // ພ
    {{179},           "19"},      // ຟ
    {{180},           "20"},      // ມ
    {{181},           "21"},      // ຢ
    {{235},           "22"},      // ຣ
    {{236},           "23"},      // ລ
    {{184},           "24"},      // ວ
    {{185},           "25"},      // ຫ
    {{186},           "26"},      // ອ
    {{187},           "27"},      // ຮ
};

constexpr KeyRow kTones[] = {
    {{},              "0"},       // default
    {{250},           "1"},       // ◌່
    {{251},           "2"},       // ◌້
    {{252},           "3"},       // ◌໊
    {{253},           "4"},       // ◌໋
    {{254},           "5"},       // ◌໌
};

// clang-format on

constexpr KeyTable kTable = MakeKeyTable({
    .name = "LaoSort.key",
    .type = kSortTable,
    .sequence = kVowelsLast,
    .separator = 0,
    .sections = {{kInitials, std::size(kInitials)},
                 {kClusters, std::size(kClusters)},
                 {kVowels, std::size(kVowels)},
                 {kFinals, std::size(kFinals)},
                 {kTones, std::size(kTones)},
                 {nullptr, 0},
                 {nullptr, 0}},
});
static_assert(HasIndexes(kTable, {0, 39, 44, 82, 110, 116, 116, 116}));

// The digits of a section rise from row to row; two rows may share a place.
constexpr bool HasRisingValues(KeySection section)
{
    for (int i = kTable.first[section] + 1; i < kTable.first[section + 1]; ++i) {
        const char *before = kTable.entries[i - 1].value, *value = kTable.entries[i].value;
        if (value[0] < before[0] || (value[0] == before[0] && value[1] < before[1]))
            return false;
    }
    return true;
}
static_assert(HasRisingValues(kInitialSection) && HasRisingValues(kClusterSection) &&
              HasRisingValues(kVowelSection) && HasRisingValues(kFinalSection) &&
              HasRisingValues(kToneSection));

const KeyTable kBuiltInSortTable = kTable;

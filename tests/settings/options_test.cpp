// Options by letter and in the registry: defaults, values of every size, what is saved and what is
// not.
#include <cstring>

#include "frame/records.h"
#include "settings/options.h"
#include "settings/registry.h"
#include "support/started_library.h"

class OptionsTest : public StartedLibrary
{
};

static std::vector<BYTE> StoredState()
{
    BYTE state[64];
    DWORD size = sizeof state;
    bool isThere = ReadUserValue("State", state, &size);
    return std::vector<BYTE>(state, state + (isThere ? size : 0));
}

static std::string Letters()
{
    std::string values;
    for (const char *letter : {"f", "b", "d", "o", "r", "s", "i", "e", "c"})
        values += std::to_string(GetOrvelOption(letter)) + " ";
    return values;
}

static const char kDefaults[] = "0 12 1 0 32 0 64 12 0 ";

TEST_F(OptionsTest, FirstLoadStoresTheDefaults)
{
    SetOrvelOption("b", 4, 0);
    EXPECT_EQ(LoadOptions(), 1);
    EXPECT_EQ(Letters(), kDefaults);
    EXPECT_EQ(StoredState(),
              (std::vector<BYTE>{0, 0, 12, 0, 1, 0, 0, 0, 32, 0, 0, 0, 64, 0, 12, 0, 0, 0}));
}

TEST_F(OptionsTest, SavedOptionsComeBackAndOthersDoNot)
{
    EXPECT_EQ(SetOrvelOption("Break", 4, 1), 1);  // the first letter counts, in either case
    EXPECT_EQ(SetOrvelOption("s", 0xABCD, 1), 1);
    EXPECT_EQ(SetOrvelOption("d", 7, 0), 1);
    EXPECT_EQ(GetOrvelOption("D"), 7);
    EXPECT_EQ(StoredState()[10], 0xCD);
    EXPECT_EQ(StoredState()[11], 0xAB);
    EXPECT_EQ(LoadOptions(), 1);
    EXPECT_EQ(Letters(), "0 4 1 0 32 43981 64 12 0 ");
}

TEST_F(OptionsTest, UnknownLettersAreNone)
{
    SaveOptions();
    for (const char *key : {"x", "g", "", "\x02", "\xE2", static_cast<const char *>(nullptr)}) {
        EXPECT_EQ(GetOrvelOption(key), 0);
        EXPECT_EQ(SetOrvelOption(key, 9, 1), 0);
    }
    EXPECT_EQ(Letters(), kDefaults);
}

// A shorter value fills the leading fields, a longer one and one of another type are taken by size
// alone.
TEST_F(OptionsTest, StoredStatesOfEverySize)
{
    BYTE state[24];
    memset(state, 1, sizeof state);
    for (DWORD size = 0; size <= sizeof state; ++size) {
        ASSERT_EQ(WriteUserValue("State", size % 2 ? REG_BINARY : REG_DWORD, state, size), 1);
        SetOrvelOption("c", 5, 0);
        EXPECT_EQ(LoadOptions(), size <= 18 ? 1 : 0) << size;
        const BYTE *record = reinterpret_cast<const BYTE *>(gProcess.options);
        const BYTE defaults[18] = {0, 0, 12, 0, 1, 0, 0, 0, 32, 0, 0, 0, 64, 0, 12, 0, 0, 0};
        for (DWORD i = 0; i < 18; ++i)
            EXPECT_EQ(record[i], size <= 18 && i < size ? 1 : defaults[i]) << size << " " << i;
    }
}

TEST_F(OptionsTest, KeyWithoutStateKeepsTheDefaultsAndWritesNothing)
{
    ASSERT_EQ(WriteHotKey(113), 1);
    SetOrvelOption("b", 4, 0);
    EXPECT_EQ(LoadOptions(), 0);
    EXPECT_EQ(Letters(), kDefaults);
    EXPECT_TRUE(StoredState().empty());
}

TEST_F(OptionsTest, HotKey)
{
    EXPECT_EQ(ReadHotKey(), 19u);
    WriteUserValue("HotKey", REG_BINARY, "12345678", 8);
    EXPECT_EQ(ReadHotKey(), 19u);
    for (DWORD key : {0u, 19u, 123u}) {
        EXPECT_EQ(WriteHotKey(key), 1);
        EXPECT_EQ(ReadHotKey(), key);
    }
}

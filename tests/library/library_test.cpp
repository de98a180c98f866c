// The library as a host loads it, a fresh one for each test: attach and detach, start-up with and
// without a keyboard manager, a companion that lacks a name, and the list of exports.
#include <cstring>

#include "support/message_boxes.h"
#include "support/started_library.h"
#include "testing/testing.h"

#include "frame/records.h"

// One function of a module that is loaded.
template <typename Function>
static Function *Entry(HMODULE module, const char *name)
{
    FARPROC found = GetProcAddress(module, name);
    EXPECT_TRUE(found) << name;
    Function *function;
    memcpy(&function, &found, sizeof function);
    return function;
}
#define ENTRY(module, name) Entry<decltype(name)>(module, #name)

class LoadedLibrary : public testing::Test
{
  protected:
    void SetUp() override
    {
        ShowKeyboardManager();
        RemoveRegistryKey(HKEY_CURRENT_USER, kRegistryKey);
        RegisterInstallFolder(ProgramFolder());
        RemoveDataFile("LaoFonts.dat");
        library_ = LoadLibraryA((ProgramFolder() + "\\" ORVEL_LIBRARY).c_str());
        ASSERT_TRUE(library_);
    }
    void TearDown() override
    {
        if (library_)
            FreeLibrary(library_);
        HideKeyboardManager();
        RegisterInstallFolder(ProgramFolder());  // under Wine other programs read it too
    }
    HMODULE library_ = nullptr;
};

TEST_F(LoadedLibrary, AttachReadsNothingAndStartValuesShow)
{
    EXPECT_EQ(ENTRY(library_, GetOrvelOption)("r"), 2);
    EXPECT_EQ(ENTRY(library_, GetOrvelOption)("e"), 72);
    EXPECT_EQ(ENTRY(library_, IsLaoCode)(161), 1);
    EXPECT_EQ(ENTRY(library_, Initialize)(), 1);
    EXPECT_EQ(ENTRY(library_, GetOrvelOption)("r"), 32);
    EXPECT_EQ(ENTRY(library_, GetOrvelOption)("e"), 12);
}

TEST_F(LoadedLibrary, BeforeTheStartNoFontIsKnownAndNothingIsBound)
{
    char buffer[20] = "";
    WCHAR characters[20] = {'a'};
    WriteDataFile("LaoFonts.dat", "A,Unicode\n");
    EXPECT_EQ(ENTRY(library_, FontType)("A"), -1);
    EXPECT_EQ(ENTRY(library_, ReadFontList)() + ENTRY(library_, WriteFontList)() +
                  ENTRY(library_, AddFontToList)("B", "", 1, 100, 0) +
                  ENTRY(library_, RemoveFontFromList)("A") + ENTRY(library_, GetBreakChar)("A"),
              0);
    EXPECT_EQ(ENTRY(library_, WrapText)("\xA1\xBE", buffer, 20, "A", 5), 1);
    EXPECT_STREQ(buffer, "\xA1\xBE");
    EXPECT_EQ(ENTRY(library_, LaoToUnicode)("a", characters, 20, 0), 1);
    EXPECT_EQ(ENTRY(library_, UnicodeToLao)(characters, buffer, 20, 0), 2);
    EXPECT_EQ(ENTRY(library_, LaoMode)(48, 63), 0u);
    EXPECT_EQ(ENTRY(library_, FindOldWord)("\xA1\xBE", buffer, 20), 0);
    EXPECT_EQ(ENTRY(library_, AddUserWord)("\xA1\xBE"), -1);
    ENTRY(library_, ShowAbout)(nullptr, 0);
    EXPECT_EQ(ReadDataFile("LaoFonts.dat"), "A,Unicode\n");
}

TEST_F(LoadedLibrary, StartsOnceTheKeyboardManagerRuns)
{
    HideKeyboardManager();
    EXPECT_EQ(ENTRY(library_, Initialize)(), 0);
    ShowKeyboardManager();
    EXPECT_EQ(ENTRY(library_, Initialize)(), 1);
    HideKeyboardManager();
    EXPECT_EQ(ENTRY(library_, Initialize)(), 1);  // started stays started
}

TEST_F(LoadedLibrary, StartsWhenThereIsMemoryAgain)
{
    if (!FailAllocationAfter(0))
        GTEST_SKIP() << "allocations can't be made to fail here";
    {
        ExpectBoxes boxes({"Out of memory. If using Word, save file, exit and restart, then select "
                           "smaller blocks to process."});
        EXPECT_EQ(ENTRY(library_, Initialize)(), 0);
    }
    EXPECT_EQ(ENTRY(library_, FontType)("Saysettha Lao"), -1);
    EXPECT_EQ(ENTRY(library_, Initialize)(), 1);
    EXPECT_EQ(ENTRY(library_, FontType)("Saysettha Lao"), 1);
}

TEST_F(LoadedLibrary, SecondStartReadsNothingAgain)
{
    WriteDataFile("LaoFonts.dat", "A,Unicode\n");
    EXPECT_EQ(ENTRY(library_, Initialize)(), 1);
    WriteDataFile("LaoFonts.dat", "B,Unicode\n");
    EXPECT_EQ(ENTRY(library_, Initialize)(), 1);
    EXPECT_EQ(ENTRY(library_, FontType)("A"), 1);
    EXPECT_EQ(ENTRY(library_, FontType)("B"), -1);
}

TEST_F(LoadedLibrary, NoInstallFolderOrAFolderWithoutACompanion)
{
    RemoveRegistryKey(HKEY_LOCAL_MACHINE, kRegistryKey);
    EXPECT_EQ(ENTRY(library_, Initialize)(), 0);
    RegisterInstallFolder(ProgramFolder() + "\\nowhere");
    EXPECT_EQ(ENTRY(library_, Initialize)(), 0);
    RegisterInstallFolder(ProgramFolder());
    EXPECT_EQ(ENTRY(library_, Initialize)(), 1);
}

// Reasons other than attach and detach do nothing; detach unbinds, and the next start binds again.
TEST_F(LoadedLibrary, DetachUnbinds)
{
    auto libMain = ENTRY(library_, LibMain);
    EXPECT_EQ(ENTRY(library_, Initialize)(), 1);
    EXPECT_EQ(libMain(nullptr, 2, nullptr) + libMain(nullptr, 3, nullptr), 2);
    DWORD mode = ENTRY(library_, LaoMode)(0, 0);
    EXPECT_NE(mode, 0u);
    EXPECT_EQ(libMain(nullptr, 0, nullptr), 1);
    EXPECT_EQ(ENTRY(library_, LaoMode)(0, 0), 0u);
    EXPECT_EQ(libMain(nullptr, 0, nullptr), 1);
}

// ---- companions that lack one name ----

static const char *const kCompanionNames[] = {
    "LaoMode",      "LaoOn",           "ReadLaoDict",  "FindWord",       "GetWord",
    "GetNewWord",   "AddWord",         "DeleteWord",   "Options",        "PackLao",
    "FontCodeData", "SetFontCodeData", "RecodeString", "AddLaoSyllable", "UnloadDictionaries",
    "AboutOrvel",
};

TEST_F(LoadedLibrary, OneMissingNameShowsOneBoxAndDisablesOneOperation)
{
    for (const char *name : kCompanionNames) {
        RegisterInstallFolder(ProgramFolder() + "\\standin\\without-" + name);
        FreeLibrary(library_);
        library_ = LoadLibraryA((ProgramFolder() + "\\" ORVEL_LIBRARY).c_str());
        ASSERT_TRUE(library_);
        {
            ExpectBoxes boxes({name});
            ASSERT_EQ(ENTRY(library_, Initialize)(), 1) << name;
            EXPECT_EQ(boxes.captions(), std::vector<std::string>{"Vesk link error"});
        }
        // The stand-in answers 7 to everything.
        EXPECT_EQ(ENTRY(library_, LaoMode)(0, 0), strcmp(name, "LaoMode") ? 7u : 0u) << name;
        EXPECT_EQ(ENTRY(library_, LaoOn)(1), strcmp(name, "LaoOn") ? 7 : 0) << name;
        char buffer[20] = "";
        EXPECT_EQ(ENTRY(library_, GetWord)(buffer, 20, 1, 4), strcmp(name, "GetWord") ? 7 : 0)
            << name;
        EXPECT_EQ(ENTRY(library_, RecodeString)(buffer, 20, 1),
                  strcmp(name, "RecodeString") ? 7 : 0)
            << name;
        EXPECT_EQ(ENTRY(library_, AddUserWord)("ab"), strcmp(name, "AddWord") ? 7 : -1) << name;
        EXPECT_EQ(ENTRY(library_, DeleteUserWord)("ab"), strcmp(name, "DeleteWord") ? 7 : -1)
            << name;
        EXPECT_EQ(ENTRY(library_, CountUserWords)(), strcmp(name, "ReadLaoDict") ? 7 : 0) << name;
        bool hasFonts = strcmp(name, "FontCodeData") != 0;
        EXPECT_EQ(ENTRY(library_, GetFontCodeName)(buffer, 20, 0), hasFonts ? 8 : 0) << name;
    }
}

// Without FindWord every length of Lao counts as a word.
TEST_F(LoadedLibrary, WithoutFindWordAllIsFound)
{
    RegisterInstallFolder(ProgramFolder() + "\\standin\\without-FindWord");
    WriteDataFile("LaoFonts.dat", "A,Stand-in\n");
    ExpectBoxes boxes({"FindWord"});
    ASSERT_EQ(ENTRY(library_, Initialize)(), 1);
    char buffer[40];
    BYTE side[40];
    EXPECT_EQ(ENTRY(library_, WrapLaoEx)("\xAA\xAA\xAA\xAA \xAA\xAA", buffer, side, 40, "A", 9), 1);
    EXPECT_STREQ(buffer, "\xAA\xAA\xAA\xAA \xAA\xAA");
    EXPECT_EQ(std::string(side, side + 7), std::string(7, '\0')) << "a 5 where nothing is found";
}

// Folders, paths and trimming: exact fits, paths that don't fit, values that are damaged.
#include "frame/paths.h"

#include "frame/strings.h"
#include "support/guarded.h"
#include "support/started_library.h"
#include "testing/testing.h"

class Paths : public StartedLibrary
{
  protected:
    static void StoreInstall(DWORD type, const std::string &value)
    {
        HKEY key;
        RegisterInstallFolder("");
        ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, kRegistryKey, 0, KEY_ALL_ACCESS, &key), 0);
        RegSetValueExA(key, "Install", 0, type, reinterpret_cast<const BYTE *>(value.data()),
                       DWORD(value.size()));
        RegCloseKey(key);
    }
    static void DeleteInstall() { RemoveRegistryKey(HKEY_LOCAL_MACHINE, kRegistryKey); }
};

struct JoinRow {
    std::string folder, name, path;  // no path: it doesn't fit
};

static const JoinRow kJoinRows[] = {
    {"C:\\a", "b", "C:\\a\\b"},
    {"C:\\a\\", "b", "C:\\a\\b"},
    {"", "b", "b"},
    {"\\", "b", "\\b"},
    {std::string(200, 'f'), std::string(58, 'n'),
     std::string(200, 'f') + "\\" + std::string(58, 'n')},
    {std::string(200, 'f'), std::string(59, 'n'), ""},
    {std::string(200, 'f') + "\\", std::string(59, 'n'), ""},
    {std::string(300, 'f'), "b", ""},
    {"C:\\a", std::string(300, 'n'), ""},
};

TEST_F(Paths, JoinNeverWritesPastItsBlock)
{
    for (const JoinRow &row : kJoinRows) {
        Guarded<char> target(kPathSize);
        char *joined = JoinPath(target.data(), row.folder.c_str(), row.name.c_str());
        EXPECT_EQ(joined ? joined : "", row.path) << row.folder << " + " << row.name;
    }
    char path[kPathSize] = "C:\\a";
    EXPECT_STREQ(JoinPath(path, path, "b"), "C:\\a\\b");
}

static void ExpectExactFit(int(WINAPI *fetch)(char *, DWORD), const std::string &whole)
{
    for (DWORD size : {DWORD(0), DWORD(1), DWORD(whole.size()), DWORD(whole.size() + 1)}) {
        Guarded<char> buffer(size);
        bool fits = size > whole.size();
        EXPECT_EQ(fetch(buffer.data(), size), fits ? int(whole.size()) : 0) << size;
        if (fits) {
            EXPECT_EQ(buffer.data(), whole);
        }
    }
    EXPECT_EQ(fetch(nullptr, 100), 0);
}

TEST_F(Paths, FoldersFitExactlyOrNotAtAll)
{
    char data[kPathSize];
    ASSERT_TRUE(GetDataFolder(data));
    ExpectExactFit(GetOrvelAppDir, ProgramFolder());
    ExpectExactFit(GetOrvelDataDir, data);
    EXPECT_EQ(InstallFilePath("x"), ProgramFolder() + "\\x");
    EXPECT_EQ(DataFilePath("x"), std::string(data) + "\\x");
    EXPECT_EQ(InstallFilePath(std::string(259, 'x').c_str()), nullptr);
    EXPECT_EQ(DataFilePath(std::string(259, 'x').c_str()), nullptr);
}

TEST_F(Paths, InstallFolderFromDamagedValues)
{
    char folder[kPathSize];
    DeleteInstall();
    EXPECT_EQ(GetOrvelAppDir(folder, kPathSize), 0);
    EXPECT_EQ(InstallFilePath("x"), nullptr);
    StoreInstall(REG_SZ, std::string(1, 0));
    EXPECT_EQ(InstallFilePath("x"), nullptr) << "no bare name";
    StoreInstall(REG_BINARY, "C:\\a");  // no terminator
    EXPECT_EQ(GetOrvelAppDir(folder, kPathSize), 4);
    StoreInstall(REG_BINARY, std::string(259, 'f'));
    EXPECT_EQ(GetOrvelAppDir(folder, kPathSize), 259);
    EXPECT_EQ(InstallFilePath("x"), nullptr);
    for (size_t size : {size_t(260), size_t(261), size_t(5000)}) {
        StoreInstall(REG_BINARY, std::string(size, 'f'));
        EXPECT_EQ(GetOrvelAppDir(folder, kPathSize), 0) << size;
    }
}

struct TrimRow {
    const char *text, *trimmed;
};

static const TrimRow kTrimRows[] = {
    {"", ""},
    {" ", ""},
    {"   ", ""},
    {" \t\n\v\f\r", ""},
    {"a", "a"},
    {" a b\r\n", "a b"},
    {"a ", "a"},
    {" a", "a"},
    {"\xA0"
     "a",
     "\xA0"
     "a"},
};

TEST_F(Paths, TrimSpacesCutsBothEnds)
{
    for (const TrimRow &row : kTrimRows) {
        std::string text = row.text;
        EXPECT_STREQ(TrimSpaces(text.data()), row.trimmed);
    }
}

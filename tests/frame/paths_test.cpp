// Folders and paths: exact fits, paths that don't fit, values that are damaged.
#include "frame/paths.h"

#include "support/guarded.h"
#include "support/started_library.h"
#include "testing/testing.h"

class Paths : public StartedLibrary
{
};

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

TEST_F(Paths, JoinNeverWritesPastItsBlock)
{
    const std::string folder(200, 'f'), name(58, 'n');
    const struct {
        std::string folder, name, path;  // no path: it doesn't fit
    } rows[] = {{"C:\\a", "b", "C:\\a\\b"},
                {"C:\\a\\", "b", "C:\\a\\b"},
                {"", "b", "b"},
                {folder, name, folder + "\\" + name},
                {folder, name + "n", ""},
                {folder + "\\", name + "n", ""},
                {std::string(300, 'f'), "b", ""}};
    for (const auto &row : rows) {
        Guarded<char> target(kPathSize);
        char *joined = JoinPath(target.data(), row.folder.c_str(), row.name.c_str());
        EXPECT_EQ(joined ? joined : "", row.path) << row.folder << " + " << row.name;
    }
}

// Values without a terminator; one gets there only where it finds room.
TEST_F(Paths, InstallFolderFromDamagedValues)
{
    for (size_t size : {4, 259, 260, 5000}) {
        StoreRegistryValue(HKEY_LOCAL_MACHINE, kRegistryKey, "Install", REG_BINARY,
                           std::string(size, 'f'));
        std::string folder(kPathSize, 'x');
        bool fits = size < kPathSize;
        EXPECT_EQ(ReadInstallFolder(folder.data(), kPathSize), fits) << size;
        EXPECT_TRUE(!fits || folder.c_str() == std::string(size, 'f')) << size;
        EXPECT_EQ(InstallFilePath("x") != nullptr, size == 4) << size;
    }
    StoreRegistryValue(HKEY_LOCAL_MACHINE, kRegistryKey, "Install", REG_SZ, std::string(1, 0));
    EXPECT_EQ(InstallFilePath("x"), nullptr) << "no bare name";
    RegisterInstallFolder(ProgramFolder());
}

// Where the native layer keeps shared data and the registry, and what drive letters mean to it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <shlobj.h>

#include "platform/native_support.h"

static void SetOrUnset(const char *variable, const std::string &value)
{
    if (value.empty())
        unsetenv(variable);
    else
        setenv(variable, value.c_str(), 1);
}

// Nothing of HOME is ever made; a folder that another variable names is.
TEST(NativeFolders, AreThoseOfTheEnvironment)
{
    const std::string home = getenv("HOME"), data = getenv("XDG_DATA_HOME");
    std::string base = ToPath(FreshFolder()), file = base + "/file", none = base + "/none";
    std::string longName = base + "/" + std::string(258 - base.size(), 'd');
    WriteWholeFile(file, "x");
    constexpr int kData = CSIDL_COMMON_APPDATA, kCreate = CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE;
    struct Row {
        std::string home, data;
        int folder;
        HRESULT result;
        std::string path;
    } const rows[] = {
        {base, base + "/d", kData, E_FAIL, ""},
        {base, base + "/d", kCreate, S_OK, base + "/d"},
        {base, base + "/d", kData, S_OK, base + "/d"},
        {none, base + "/e/f/g", kCreate, S_OK, base + "/e/f/g"},
        {base, "relative", kCreate, S_OK, base + "/.local/share"},
        {"", "", kCreate, E_FAIL, ""},
        {"relative", "", kCreate, E_FAIL, ""},
        {none, "", kCreate, E_FAIL, ""},
        {file, "", kCreate, E_FAIL, ""},
        {base, file + "/d", kCreate, E_FAIL, ""},
        {base, file, kCreate, E_FAIL, ""},
        {base, longName, kCreate, S_OK, longName},
        {base, longName + "d", kCreate, E_FAIL, ""},
        {base, base + "/d", 5 | CSIDL_FLAG_CREATE, E_INVALIDARG, ""},
    };
    for (const Row &row : rows) {
        char path[MAX_PATH + 4];
        memset(path, '#', sizeof path);
        SetOrUnset("HOME", row.home);
        SetOrUnset("XDG_DATA_HOME", row.data);
        EXPECT_EQ(SHGetFolderPathA(nullptr, row.folder, nullptr, 0, path), row.result) << row.data;
        EXPECT_EQ(ToPath(path), row.path) << row.data;
        EXPECT_EQ(path[MAX_PATH], '#');
    }
    EXPECT_FALSE(std::filesystem::exists(none));
    SetOrUnset("HOME", home);
    SetOrUnset("XDG_DATA_HOME", data);
}

TEST(NativeFolders, RegistrysPlaceIsNamedWhereItFits)
{
    const std::string config = getenv("XDG_CONFIG_HOME");
    char place[5000] = "";
    for (size_t length : {100, 4080, 4081, 4900}) {
        std::string folder = "/" + std::string(length - 1, 'c'), path = folder + "/orvel/registry";
        setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
        EXPECT_EQ(NameRegistry(place, int(path.size())), 0) << length;
        EXPECT_STREQ(place, "");
        EXPECT_EQ(NameRegistry(place, int(path.size()) + 1), path.size() < 4096) << length;
        EXPECT_EQ(place, path.size() < 4096 ? path : "");
    }
    EXPECT_EQ(NameRegistry(nullptr, 100) + NameRegistry(place, 0), 0);
    SetOrUnset("XDG_CONFIG_HOME", config);
}

TEST(NativePaths, DriveLetterIsDropped)
{
    std::string file = FreshFolder() + "\\file";
    WriteWholeFile(file, "x");
    for (const std::string &path : {"C:" + file, "z:" + file, "z:" + std::string(ToPath(file))})
        EXPECT_NE(GetFileAttributesA(path.c_str()), INVALID_FILE_ATTRIBUTES) << path;
    EXPECT_EQ(GetFileAttributesA("C:"), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetFileAttributesA(std::string(5000, 'x').c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_FILENAME_EXCED_RANGE));
}

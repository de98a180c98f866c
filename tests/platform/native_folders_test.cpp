// Where the native layer keeps shared data, and what drive letters mean to it.
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

TEST(SharedData, FolderOfTheEnvironment)
{
    const std::string home = getenv("HOME"), data = getenv("XDG_DATA_HOME");
    std::string base = ToPath(FreshFolder()), file = base + "/file";
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
        {base, base + "/e/f/g", kCreate, S_OK, base + "/e/f/g"},
        {base, "", kCreate, S_OK, base + "/.local/share"},
        {base, "relative", kCreate, S_OK, base + "/.local/share"},
        {"", "", kCreate, E_FAIL, ""},
        {"relative", "", kCreate, E_FAIL, ""},
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
        std::string wanted = row.path;
        std::replace(wanted.begin(), wanted.end(), '/', '\\');
        EXPECT_EQ(std::string(path), wanted) << row.data;
        EXPECT_EQ(path[MAX_PATH], '#');
    }
    SetOrUnset("HOME", home);
    SetOrUnset("XDG_DATA_HOME", data);
}

TEST(NativePaths, DriveLetterIsDropped)
{
    std::string folder = FreshFolder();
    WriteWholeFile(folder + "\\file", "x");
    EXPECT_NE(GetFileAttributesA(("C:" + folder + "\\file").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_NE(GetFileAttributesA(("z:" + folder + "/file").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetFileAttributesA("C:"), INVALID_FILE_ATTRIBUTES);
    std::string longPath(5000, 'x');
    EXPECT_EQ(GetFileAttributesA(longPath.c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_FILENAME_EXCED_RANGE));
}

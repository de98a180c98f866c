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

struct EnvironmentOf {
    explicit EnvironmentOf(const char *name) : variable(name)
    {
        const char *value = getenv(name);
        before = value ? value : "";
    }
    ~EnvironmentOf() { SetOrUnset(variable, before); }
    const char *variable;
    std::string before;
};

TEST(SharedData, FolderOfTheEnvironment)
{
    EnvironmentOf home("HOME"), data("XDG_DATA_HOME");
    std::string base = ToPath(FreshFolder()), file = base + "/file";
    std::string longName = base + "/" + std::string(258 - base.size(), 'd');
    WriteWholeFile(file, "x");
    struct Row {
        std::string home, data;
        int folder;
        HRESULT result;
        std::string path;
    } const rows[] = {
        {base, base + "/d", CSIDL_COMMON_APPDATA, E_FAIL, ""},
        {base, base + "/d", CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, S_OK, base + "/d"},
        {base, base + "/d", CSIDL_COMMON_APPDATA, S_OK, base + "/d"},
        {base, base + "/e/f/g", CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, S_OK, base + "/e/f/g"},
        {base, "", CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, S_OK, base + "/.local/share"},
        {base, "relative", CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, S_OK, base + "/.local/share"},
        {"", "", CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, E_FAIL, ""},
        {"relative", "", CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, E_FAIL, ""},
        {base, file + "/d", CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, E_FAIL, ""},
        {base, file, CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, E_FAIL, ""},
        {base, longName, CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, S_OK, longName},
        {base, longName + "d", CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, E_FAIL, ""},
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

// Where the native layer keeps shared data, what drive letters mean to it, and what a person sees
// of a message box.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <shlobj.h>

#include "native_support.h"

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

TEST(NativeBoxes, GoToStandardErrorAndTakeTheDefaultButton)
{
    struct Row {
        UINT flags;
        int answer;
    } const rows[] = {
        {MB_OK, IDOK},
        {MB_OK | MB_DEFBUTTON2, IDOK},
        {MB_OKCANCEL, IDOK},
        {MB_OKCANCEL | MB_DEFBUTTON2 | MB_ICONHAND, IDCANCEL},
        {MB_YESNO | MB_SETFOREGROUND, IDYES},
        {MB_YESNO | MB_DEFBUTTON2, IDNO},
        {MB_YESNO | MB_DEFBUTTON3, IDYES},
        {MB_YESNOCANCEL | MB_DEFBUTTON3, IDCANCEL},
        {MB_ABORTRETRYIGNORE | MB_DEFBUTTON2, IDRETRY},
        {MB_RETRYCANCEL | MB_DEFBUTTON2, IDCANCEL},
        {MB_CANCELTRYCONTINUE | MB_DEFBUTTON3, IDCONTINUE},
        {15, 0},
    };
    MessageBoxAnswerer before = SetMessageBoxAnswerer(nullptr);
    for (const Row &row : rows) {
        testing::internal::CaptureStderr();
        int answer = MessageBoxA(nullptr, "text", "Caption", row.flags);
        std::string shown = testing::internal::GetCapturedStderr();
        EXPECT_EQ(answer, row.answer) << row.flags;
        EXPECT_EQ(shown, answer ? "Caption: text\n" : "") << row.flags;
    }
    SetMessageBoxAnswerer(before);
}

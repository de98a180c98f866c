// How the native layer keeps things in files: where they stand, what may be in their way, damage to
// the registry's file. Whatever that looks like, nothing that can be read in it is ever lost. (A
// killed writer is tests/host/kill_test's, damage at random that of the fuzz target files.)
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <shlobj.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/temp_folder.h"
#include "testing/testing.h"

// As long as it lives no file of this process grows beyond `size` bytes: writing fails as on a full
// disk.
struct FullDisk {
    explicit FullDisk(rlim_t size)
    {
        signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before);
        rlimit limit = {size, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before); }
    rlimit before;
};

// Runs the work in a child process without the rights of root. The exit status; -1 when it was
// killed.
template <typename Work>
static int RunUnprivileged(Work work)
{
    pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
            _exit(99);
        _exit(work());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// ---- folders ----

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
    EXPECT_NE(GetFileAttributesA(("z:" + file).c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetFileAttributesA("C:"), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetFileAttributesA(std::string(5000, 'x').c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_FILENAME_EXCED_RANGE));
}

// ---- replaced files ----

class NativeReplacedFile : public testing::Test
{
  protected:
    void SetUp() override { ASSERT_EQ(Replace(path, "old"), 1); }
    static int Replace(const std::string &path, const std::string &text)
    {
        FILE *file = BeginReplaceFile(path.c_str());
        if (!file)
            return -1;
        fwrite(text.data(), 1, text.size(), file);
        return EndReplaceFile(file, 1);
    }
    const std::string folder = FreshFolder(), path = folder + "\\list.dat";
    const std::filesystem::path native = ToPath(path);
};

TEST_F(NativeReplacedFile, FullDiskAndMissingRightsLeaveTheOldFile)
{
    for (size_t size : {101, 100000}) {  // fails when it is closed, and while it is written
        FullDisk disk(100);
        EXPECT_EQ(Replace(path, std::string(size, 'n')), 0) << size;
    }
    chmod(native.c_str(), 0444);
    EXPECT_EQ(Replace(path, "newer"), -1);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_ACCESS_DENIED));
    EXPECT_FALSE(DeleteFileA(path.c_str()));
    chmod(native.c_str(), 0666);
    chmod(gFolders.base.c_str(), 0755);
    chmod(native.parent_path().c_str(), 0555);
    EXPECT_EQ(RunUnprivileged([&] { return Replace(path, "new") == -1; }), 1) << "the folder's";
    chmod(native.parent_path().c_str(), 0755);
    EXPECT_EQ(ReadWholeFile(path), "old");
    EXPECT_EQ(ListFolder(folder).size(), 1u);
    chmod(native.c_str(), 0640);
    EXPECT_EQ(Replace(path, "new"), 1);
    EXPECT_EQ(int(std::filesystem::status(native).permissions()), 0640) << "kept";
}

TEST_F(NativeReplacedFile, LinkStaysAndItsTargetIsReplaced)
{
    std::string link = FreshFolder() + "\\link.dat", device = folder + "\\device.dat";
    std::filesystem::create_symlink(native, ToPath(link));
    EXPECT_EQ(Replace(link, "new"), 1);
    EXPECT_TRUE(std::filesystem::is_symlink(ToPath(link)));
    EXPECT_EQ(ReadWholeFile(path), "new");
    std::filesystem::create_symlink("/dev/full", ToPath(device));
    EXPECT_EQ(Replace(device, "text"), -1);
}

// A folder that goes while its file is written is what is told, not the file.
TEST_F(NativeReplacedFile, VanishedFolderIsTold)
{
    FILE *file = BeginReplaceFile(path.c_str());
    ASSERT_TRUE(file);
    std::filesystem::remove_all(native.parent_path());
    EXPECT_EQ(EndReplaceFile(file, 1), 0);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_PATH_NOT_FOUND));
}

// ---- the registry's file ----

static const std::string kKey = "[HKEY_CURRENT_USER\\Software\\Kept]", kBytes("\0\1\2\xFF", 4);

static LONG Set(const std::string &name, const std::string &data, DWORD type = REG_BINARY,
                const std::string &path = "Software\\Kept")
{
    HKEY key = nullptr;
    LONG result = RegCreateKeyExA(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                                  nullptr, &key, nullptr);
    if (result == ERROR_SUCCESS)
        result = RegSetValueExA(key, name.c_str(), 0, type,
                                reinterpret_cast<const BYTE *>(data.data()), DWORD(data.size()));
    RegCloseKey(key);
    return result;
}

// The value's data, or "-" and the result.
static std::string Get(const std::string &name)
{
    HKEY key = nullptr;
    BYTE data[256];
    DWORD size = sizeof data;
    LONG result = RegOpenKeyExA(HKEY_CURRENT_USER, "Software\\Kept", 0, KEY_READ, &key);
    if (result == ERROR_SUCCESS)
        result = RegQueryValueExA(key, name.c_str(), nullptr, nullptr, data, &size);
    RegCloseKey(key);
    return result == ERROR_SUCCESS ? std::string(data, data + size) : "-" + std::to_string(result);
}

class RegistryFile : public testing::Test
{
  protected:
    void SetUp() override
    {
        std::string above = FreshFolder();
        UseFoldersBelow(above.c_str());
        folder = above + "\\config\\orvel";
        path = folder + "\\registry";
        EXPECT_EQ(Set("text", std::string("a\"b%]\n\0", 7), REG_SZ), 0);
        EXPECT_EQ(Set("number", std::string("\x2A\0\0\x80", 4), REG_DWORD), 0);
        EXPECT_EQ(Set("bytes", kBytes), 0);
        EXPECT_EQ(Set("odd \xE9 name", std::string("x\0y", 3), REG_SZ), 0);
        before = ReadWholeFile(path);
    }
    std::string folder, path, before;  // the last: what the file holds
};

TEST_F(RegistryFile, IsReadable)
{
    EXPECT_EQ(before, "[HKEY_CURRENT_USER\\Software]\n" + kKey + "\n" + kKey +
                          " \"text\" = \"a%22b%25]%0a\"\n" + kKey +
                          " \"number\" = dword 8000002a\n" + kKey +
                          " \"bytes\" = type 3 size 4: 00 01 02 ff\n" + kKey +
                          " \"odd \xE9 name\" = type 1 size 4: 78 00 79 00\n");
    WriteWholeFile(path, kKey + " \"bytes\" = type 3 size 1: 61\r\n");
    EXPECT_EQ(Get("bytes"), "a") << "an editor's line ends";
}

// One bad line before all others, one behind them without its end: it is kept, and costs no other.
TEST_F(RegistryFile, LinesThatCannotBeReadAreKept)
{
    const std::string value = kKey + " \"v\" = ";
    std::string zeros;
    for (int i = 0; i < 1048577; i++)
        zeros += " 00";
    const std::string bad[] = {
        // clang-format off
        "# a comment", std::string("nul \0 inside", 12), "\r", std::string(70000, '\0'),
        std::string(200000, '['), kKey.substr(0, 10), kKey + " ", kKey + " \"v\"", value,
        value + "type 3 size 99999999999: 00", value + "type 3 size 4294967295:",
        value + "type 3 size 2: 00", value + "type 3 size 1: 0", value + "type 3 size 1: 00 00",
        value + "type 3 size 1048577:" + zeros, value + "\"" + std::string(1048576, 'v') + "\"",
        value + "dword 0000002", value + "dword 0000002ag",
        value + "\"open", value + "\"cut escape%4\"", value + "\"a nul%00\"",
        "[" + std::string(5000, 'k') + "] \"v\" = \"x\"",
        kKey + " \"" + std::string(2000, 'v') + "\" = \"x\"",
        // clang-format on
    };
    for (const std::string &line : bad) {
        SCOPED_TRACE(testing::PrintToString(line.substr(0, 60)));
        WriteWholeFile(path, std::string(line).append("\n").append(before).append(line));
        EXPECT_EQ(Get("v"), "-2");
        EXPECT_EQ(Set("new", "n"), 0);
        EXPECT_EQ(Get("new") + Get("bytes"), "n" + kBytes);
        std::string after = ReadWholeFile(path);
        EXPECT_EQ(after.substr(0, line.size() + 1), line + "\n");
        EXPECT_NE(after.find("\n" + line + "\n"), std::string::npos);
    }
}

// What stands where the file or its folder should be, or isn't ours, is neither read nor replaced.
TEST_F(RegistryFile, WhatIsInTheWayStays)
{
    const std::filesystem::path native = ToPath(path);
    chmod(native.c_str(), 0444);
    EXPECT_EQ(Set("bytes", "other"), ERROR_ACCESS_DENIED);
    for (auto above = native.parent_path(); above != gFolders.base.parent_path();
         above = above.parent_path())
        chmod(above.c_str(), 0755);
    for (mode_t mode : {0644, 0000, 0644}) {
        chmod(native.c_str(), mode);
        std::string read = mode ? kBytes : "-5";
        EXPECT_EQ(RunUnprivileged([&] { return Get("bytes") == read && Set("bytes", "o") != 0; }),
                  1)
            << mode;
    }
    {
        FullDisk disk(before.size() / 2);
        EXPECT_EQ(Set("bytes", "other"), ERROR_DISK_FULL);
    }
    EXPECT_EQ(ReadWholeFile(path), before);
    EXPECT_EQ(ListFolder(folder), (std::vector<std::string>{"registry", "registry.lock"}));
    for (bool isPipe : {false, true}) {
        std::filesystem::remove(native);
        EXPECT_EQ(isPipe ? mkfifo(native.c_str(), 0600) : mkdir(native.c_str(), 0700), 0);
        EXPECT_NE(Set("bytes", "other"), 0);
        EXPECT_EQ(Get("bytes"), "-1016");
        EXPECT_EQ(std::filesystem::is_fifo(native), isPipe);
    }
    std::filesystem::remove_all(native.parent_path());
    WriteWholeFile(folder, "x");
    EXPECT_NE(Set("bytes", "other"), 0);
    EXPECT_EQ(ReadWholeFile(folder), "x") << "a file where the folder should be";
}

// Refused as a whole: nothing of the name is left in the file.
TEST_F(RegistryFile, OverlongNamesAreRefused)
{
    std::string deep;
    for (int i = 0; i < 20; i++)
        deep += std::string(200, 'k') + "\\";
    for (const std::string &name : {std::string(256, 'k'), deep})
        EXPECT_EQ(Set("v", "x", REG_BINARY, name), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Set(std::string(2000, 'v'), "x"), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ReadWholeFile(path), before);
    EXPECT_EQ(Set("v", "x", REG_BINARY, std::string(255, 'k')), 0);
}

TEST_F(RegistryFile, ProcessesDoNotLoseEachOthersValues)
{
    for (char process : {'a', 'b', 'c', 'd'})
        if (fork() == 0) {
            LONG failures = 0;
            for (char name = '0'; name < 'H'; name++)
                failures |= Set({process, name}, "x");
            _exit(failures != 0);
        }
    for (int status; wait(&status) > 0;)
        EXPECT_EQ(status, 0);
    for (int i = 0; i < 4 * ('H' - '0'); i++)
        EXPECT_EQ(Get({char('a' + i % 4), char('0' + i / 4)}), "x") << i;
}

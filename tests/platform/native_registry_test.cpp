// The registry's file: damage, refusals, other processes. Whatever the file looks like, nothing
// that can be read in it is ever lost. (A killed writer is tests/host/kill_test's, damage at random
// that of the fuzz target files.)
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/native_support.h"
#include "testing/testing.h"

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
    for (const auto &[mode, read] : {std::pair{0644, kBytes}, {0000, "-5"}, {0644, kBytes}}) {
        chmod(native.c_str(), mode_t(mode));
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
    for (int i = 0; i < 600; i++)
        deep += i < 590 ? "aa\\" : std::string(200, 'k') + "\\";
    for (const std::string &name : {std::string(256, 'k'), deep, deep.substr(0, 1770)})
        EXPECT_EQ(Set("v", "x", REG_BINARY, name), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Set(std::string(2000, 'v'), "x"), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ReadWholeFile(path), before);
    EXPECT_EQ(Set("v", "x", REG_BINARY, std::string(255, 'k')), 0);
}

TEST_F(RegistryFile, ProcessesDoNotLoseEachOthersValues)
{
    for (char process : {'a', 'b', 'c', 'd'})
        if (fork() == 0) {
            int failed = 0;
            for (char name = '0'; name < '0' + 25; name++)
                failed += Set({process, name}, "x") != 0;
            _exit(failed);
        }
    for (int status; wait(&status) > 0;)
        EXPECT_EQ(status, 0);
    for (int i = 0; i < 100; i++)
        EXPECT_EQ(Get({char('a' + i % 4), char('0' + i / 4)}), "x") << i;
}

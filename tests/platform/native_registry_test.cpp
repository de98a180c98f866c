// The registry's file: damage, refusals, other processes. Whatever the file looks like, nothing
// that can be read in it is ever lost. (A killed writer is tests/host/kill_test's, damage at random
// that of the fuzz target files.)
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/native_support.h"
#include "testing/testing.h"

static const char kKey[] = "Software\\Kept";
static const std::string kBytes("\0\1\2\xFF", 4);

static LONG Set(const char *name, const std::string &data, DWORD type = REG_BINARY,
                const char *path = kKey)
{
    HKEY key = nullptr;
    LONG result = RegCreateKeyExA(HKEY_CURRENT_USER, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                                  &key, nullptr);
    if (result != ERROR_SUCCESS)
        return result;
    result = RegSetValueExA(key, name, 0, type, reinterpret_cast<const BYTE *>(data.data()),
                            DWORD(data.size()));
    RegCloseKey(key);
    return result;
}

// The value's data, or "-" and the result.
static std::string Get(const char *name)
{
    HKEY key = nullptr;
    char data[256];
    DWORD size = sizeof data;
    LONG result = RegOpenKeyExA(HKEY_CURRENT_USER, kKey, 0, KEY_READ, &key);
    if (result == ERROR_SUCCESS) {
        result =
            RegQueryValueExA(key, name, nullptr, nullptr, reinterpret_cast<BYTE *>(data), &size);
        RegCloseKey(key);
    }
    return result == ERROR_SUCCESS ? std::string(data, size) : "-" + std::to_string(result);
}

class RegistryFile : public testing::Test
{
  protected:
    RegistryFile() : folder(FreshFolder())
    {
        UseFoldersBelow(folder.c_str());
        folder += "\\config\\orvel";
        path = folder + "\\registry";
    }
    void Fill()
    {
        EXPECT_EQ(Set("text", std::string("a\"b%]\n\0", 7), REG_SZ), 0);
        EXPECT_EQ(Set("number", std::string("\x2A\0\0\x80", 4), REG_DWORD), 0);
        EXPECT_EQ(Set("bytes", kBytes), 0);
        EXPECT_EQ(Set("odd \xE9 name", std::string("x\0y", 3), REG_SZ), 0);
        EXPECT_EQ(Set("empty", ""), 0);
    }
    std::string folder, path;
};

static const char *const kNames[] = {"text", "number", "bytes", "odd \xE9 name", "empty"};

TEST_F(RegistryFile, IsReadable)
{
    Fill();
    EXPECT_EQ(ReadWholeFile(path),
              "[HKEY_CURRENT_USER\\Software]\n"
              "[HKEY_CURRENT_USER\\Software\\Kept]\n"
              "[HKEY_CURRENT_USER\\Software\\Kept] \"text\" = \"a%22b%25]%0a\"\n"
              "[HKEY_CURRENT_USER\\Software\\Kept] \"number\" = dword 8000002a\n"
              "[HKEY_CURRENT_USER\\Software\\Kept] \"bytes\" = type 3 size 4: "
              "00 01 02 ff\n"
              "[HKEY_CURRENT_USER\\Software\\Kept] \"odd \xE9 name\" = type 1 "
              "size 4: 78 00 79 00\n"
              "[HKEY_CURRENT_USER\\Software\\Kept] \"empty\" = type 3 size 0:\n");
    WriteWholeFile(path, "[HKEY_CURRENT_USER\\Software\\Kept] \"bytes\" = type 3 size 1: 61\r\n");
    EXPECT_EQ(Get("bytes"), "a") << "an editor's line ends";
}

// A value is there as it was or not at all; and what is there survives the next change.
TEST_F(RegistryFile, EveryCutLeavesWholeValues)
{
    Fill();
    std::string whole = ReadWholeFile(path), values[5];
    for (int i = 0; i < 5; i++)
        values[i] = Get(kNames[i]);
    for (size_t cut = 0; cut <= whole.size(); cut++) {
        ASSERT_TRUE(WriteWholeFile(path, whole.substr(0, cut)));
        ASSERT_EQ(Set("new", "n"), 0) << cut;
        EXPECT_EQ(Get("new"), "n") << cut;
        for (int i = 0; i < 5; i++) {
            size_t end = whole.find('\n', whole.find(std::string("\"") + kNames[i]));
            EXPECT_EQ(Get(kNames[i]), end <= cut ? values[i] : "-2") << cut << " " << kNames[i];
        }
    }
}

static std::string ZeroBytes(size_t count)
{
    std::string text;
    while (count-- > 0)
        text += " 00";
    return text;
}

// One bad line before all others, one behind them without its end.
TEST_F(RegistryFile, LinesThatCannotBeReadAreKept)
{
    Fill();
    const std::string key = "[HKEY_CURRENT_USER\\Software\\Kept]", value = key + " \"v\" = ";
    const std::string bad[] = {
        "# a comment",
        std::string("nul \0 inside", 12),
        value + "type 3 size 99999999999: 00",
        value + "type 3 size 4294967295:",
        value + "type 3 size 1048577:" + ZeroBytes(1048577),
        value + "type 3 size 2: 00",
        value + "type 3 size 1: 0",
        value + "type 3 size 1: 00 00",
        value + "dword 0000002",
        value + "dword 0000002ag",
        value + "\"open",
        value + "\"cut escape%4\"",
        value + "\"a nul%00\"",
        key + " \"v\"",
        key + " ",
        key.substr(0, 10),
        "[" + std::string(5000, 'k') + "] \"v\" = \"x\"",
        key + " \"" + std::string(2000, 'v') + "\" = \"x\"",
        std::string(200000, '['),
        std::string("\r"),
        std::string(70000, '\0'),
    };
    const std::string before = ReadWholeFile(path);
    for (const std::string &line : bad) {
        std::string shown = testing::PrintToString(line.substr(0, 60));
        WriteWholeFile(path, std::string(line).append("\n").append(before).append(line));
        EXPECT_EQ(Get("v"), "-2") << shown;
        EXPECT_EQ(Set("new", "n"), 0) << shown;
        EXPECT_EQ(Get("new"), "n") << shown;
        EXPECT_EQ(Get("bytes"), kBytes) << shown;
        std::string after = ReadWholeFile(path);
        EXPECT_EQ(after.substr(0, line.size() + 1), line + "\n") << shown;
        EXPECT_NE(after.find("\n" + line + "\n"), std::string::npos) << shown;
    }
}

// What stands where the file or its folder should be is neither read nor replaced.
TEST_F(RegistryFile, WhatIsInTheWayStays)
{
    Fill();
    const std::string before = ReadWholeFile(path);
    const std::filesystem::path native = ToPath(path);
    chmod(native.c_str(), 0444);
    EXPECT_EQ(Set("bytes", "other"), ERROR_ACCESS_DENIED);
    chmod(native.c_str(), 0644);
    {
        FullDisk disk(before.size() / 2);
        EXPECT_EQ(Set("bytes", "other"), ERROR_DISK_FULL);
    }
    EXPECT_EQ(ReadWholeFile(path), before);
    EXPECT_EQ(ListFolder(folder), (std::vector<std::string>{"registry", "registry.lock"}));
    for (auto type : {std::filesystem::file_type::directory, std::filesystem::file_type::fifo}) {
        std::filesystem::remove(native);
        if (type == std::filesystem::file_type::fifo)
            mkfifo(native.c_str(), 0600);
        else
            std::filesystem::create_directory(native);
        EXPECT_NE(Set("bytes", "other"), 0);
        EXPECT_EQ(Get("bytes"), "-1016");
        EXPECT_EQ(std::filesystem::status(native).type(), type);
    }
    std::filesystem::remove_all(native.parent_path());
    WriteWholeFile(folder, "x");
    EXPECT_NE(Set("bytes", "other"), 0);
    EXPECT_EQ(ReadWholeFile(folder), "x") << "a file where the folder should be";
}

TEST_F(RegistryFile, FilesWithoutRights)
{
    Fill();
    std::filesystem::path file = ToPath(path), above = file.parent_path();
    for (auto folderAbove = above; folderAbove != gFolders.base.parent_path();
         folderAbove = folderAbove.parent_path())
        chmod(folderAbove.c_str(), 0755);
    chmod(file.c_str(), 0644);
    EXPECT_EQ(RunUnprivileged([] { return Get("bytes") == kBytes && Set("bytes", "o") != 0; }), 1);
    chmod(file.c_str(), 0000);
    EXPECT_EQ(RunUnprivileged([] { return Get("bytes") == "-5" && Set("bytes", "o") != 0; }), 1);
    chmod(file.c_str(), 0644);
    EXPECT_EQ(Get("bytes"), kBytes);
}

// Refused as a whole: nothing of the name is left in the file.
TEST_F(RegistryFile, OverlongNamesAreRefused)
{
    Fill();
    std::string before = ReadWholeFile(path), deep, manyLevels = "a";
    for (int i = 0; i < 20; i++)
        deep += std::string(200, 'k') + "\\";
    for (int i = 0; i < 600; i++)
        manyLevels += "\\a";
    for (const std::string &name : {std::string(256, 'k'), deep, manyLevels})
        EXPECT_EQ(Set("v", "x", REG_BINARY, name.c_str()), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Set(std::string(2000, 'v').c_str(), "x"), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ReadWholeFile(path), before);
    EXPECT_EQ(Set("v", "x", REG_BINARY, std::string(255, 'k').c_str()), 0);
}

static std::string NameOf(int process, int number)
{
    return std::to_string(process) + "." + std::to_string(number);
}

TEST_F(RegistryFile, ProcessesDoNotLoseEachOthersValues)
{
    constexpr int kProcesses = 4, kValues = 25;
    for (int process = 0; process < kProcesses; process++) {
        if (fork() != 0)
            continue;
        int failed = 0;
        for (int i = 0; i < kValues; i++)
            failed += Set(NameOf(process, i).c_str(), "x") != 0;
        _exit(failed);
    }
    for (int i = 0, status; i < kProcesses; i++) {
        wait(&status);
        EXPECT_EQ(status, 0);
    }
    for (int i = 0; i < kProcesses * kValues; i++)
        EXPECT_EQ(Get(NameOf(i / kValues, i % kValues).c_str()), "x");
}

// The registry's file: damage, refusals, other processes. Whatever the file looks like, nothing
// that can be read in it is ever lost.
#include <gtest/gtest.h>

#include <random>
#include <sys/stat.h>

#include "native_support.h"

static const char kKey[] = "Software\\Kept";

static LONG Set(const char *name, const std::string &data, DWORD type = REG_BINARY)
{
    HKEY key = nullptr;
    LONG result = RegCreateKeyExA(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
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
        EXPECT_EQ(Set("bytes", std::string("\0\1\2\xFF", 4)), 0);
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
        bool seen[5];
        for (int i = 0; i < 5; i++) {
            std::string value = Get(kNames[i]);
            seen[i] = value == values[i];
            EXPECT_TRUE(seen[i] || value == "-2") << cut << " " << kNames[i] << ": " << value;
            size_t end = whole.find('\n', whole.find(std::string("\"") + kNames[i]));
            EXPECT_EQ(seen[i], end <= cut) << cut << " " << kNames[i];
        }
        ASSERT_EQ(Set("new", "n"), 0) << cut;
        for (int i = 0; i < 5; i++)
            EXPECT_EQ(Get(kNames[i]), seen[i] ? values[i] : "-2") << cut;
        EXPECT_EQ(Get("new"), "n") << cut;
    }
}

static std::string ZeroBytes(size_t count)
{
    std::string text;
    while (count-- > 0)
        text += " 00";
    return text;
}

TEST_F(RegistryFile, LinesThatCannotBeReadAreKept)
{
    Fill();
    const std::string key = "[HKEY_CURRENT_USER\\Software\\Kept]";
    const std::string bad[] = {
        "# a comment",
        std::string("nul \0 inside", 12),
        key + " \"v\" = type 3 size 99999999999: 00",
        key + " \"v\" = type 3 size 4294967295:",
        key + " \"v\" = type 3 size 1048577:" + ZeroBytes(1048577),
        key + " \"v\" = type 3 size 2: 00",
        key + " \"v\" = type 3 size 1: 0",
        key + " \"v\" = type 3 size 1: 00 00",
        key + " \"v\" = dword 0000002",
        key + " \"v\" = dword 0000002ag",
        key + " \"v\" = \"open",
        key + " \"v\" = \"cut escape%4\"",
        key + " \"v\" = \"a nul%00\"",
        key + " \"v\"",
        key + " ",
        key.substr(0, 10),
        "[" + std::string(5000, 'k') + "] \"v\" = \"x\"",
        key + " \"" + std::string(2000, 'v') + "\" = \"x\"",
        std::string(200000, '['),
        std::string(70000, '\0'),
        std::string("\xFF\xFE\x80", 3),
    };
    for (const std::string &line : bad) {
        std::string before = ReadWholeFile(path);
        std::string shown = testing::PrintToString(line.substr(0, 60));
        WriteWholeFile(path, line + "\n" + before + line);
        EXPECT_EQ(Get("v"), "-2") << shown;
        EXPECT_EQ(Get("bytes"), std::string("\0\1\2\xFF", 4)) << shown;
        EXPECT_EQ(Set("new", "n"), 0) << shown;
        EXPECT_EQ(Get("new"), "n") << shown;
        std::string after = ReadWholeFile(path);
        EXPECT_EQ(after.substr(0, line.size() + 1), line + "\n") << shown;
        EXPECT_NE(after.find("\n" + line + "\n"), std::string::npos) << shown;
        WriteWholeFile(path, before);
    }
}

TEST_F(RegistryFile, LinesOfAnEditorAreRead)
{
    Fill();
    std::string text = ReadWholeFile(path), edited;
    for (char c : text)
        edited += c == '\n' ? "\r\n" : std::string(1, c);
    WriteWholeFile(path, edited);
    EXPECT_EQ(Get("bytes"), std::string("\0\1\2\xFF", 4));
    EXPECT_EQ(Set("bytes", "once"), 0);
    EXPECT_EQ(Get("bytes"), "once");
}

// Random damage: no answer but the old value or none for what wasn't touched, and no crash.
TEST_F(RegistryFile, RandomDamage)
{
    Fill();
    std::string whole = ReadWholeFile(path);
    std::mt19937 random(20261124);
    for (int round = 0; round < 1000; round++) {
        std::string damaged = whole;
        for (unsigned i = 0, count = 1 + random() % 8; i < count; i++)
            damaged[random() % damaged.size()] = char(random());
        WriteWholeFile(path, damaged);
        for (const char *name : kNames)
            Get(name);
        ASSERT_EQ(Set("new", "n"), 0) << testing::PrintToString(damaged);
        ASSERT_EQ(Get("new"), "n") << testing::PrintToString(damaged);
    }
}

TEST_F(RegistryFile, WhatCannotBeReadIsNotReplaced)
{
    ASSERT_TRUE(std::filesystem::create_directories(ToPath(path)));
    EXPECT_NE(Set("v", "x"), 0);
    EXPECT_NE(Get("v"), "x");
    EXPECT_TRUE(std::filesystem::is_directory(ToPath(path)));
    std::filesystem::remove(ToPath(path));
    ASSERT_EQ(mkfifo(ToPath(path).c_str(), 0600), 0);
    EXPECT_NE(Set("v", "x"), 0);
    EXPECT_NE(Get("v"), "x");
    EXPECT_TRUE(std::filesystem::is_fifo(ToPath(path)));
}

TEST_F(RegistryFile, ReadOnlyFileAndFullDiskLeaveTheOldState)
{
    Fill();
    std::string before = ReadWholeFile(path);
    std::vector<std::string> names = ListFolder(folder);
    chmod(ToPath(path).c_str(), 0444);
    EXPECT_EQ(Set("bytes", "other"), ERROR_ACCESS_DENIED);
    chmod(ToPath(path).c_str(), 0644);
    {
        FullDisk disk(before.size() / 2);
        EXPECT_EQ(Set("bytes", "other"), ERROR_DISK_FULL);
    }
    EXPECT_EQ(ReadWholeFile(path), before);
    EXPECT_EQ(ListFolder(folder), names);
    EXPECT_EQ(Set("bytes", "other"), 0);
    EXPECT_EQ(Get("bytes"), "other");
}

TEST_F(RegistryFile, FoldersWithoutRights)
{
    Fill();
    std::string before = ReadWholeFile(path);
    std::filesystem::path native = ToPath(folder);
    for (const auto &above : {native.parent_path().parent_path(), native.parent_path(), native})
        chmod(above.c_str(), 0755);
    chmod((native / "registry").c_str(), 0644);
    chmod(gFolders.base.c_str(), 0755);
    EXPECT_EQ(RunUnprivileged([] { return Get("bytes") == std::string("\0\1\2\xFF", 4); }), 1);
    EXPECT_EQ(RunUnprivileged([] { return Set("bytes", "other") != 0; }), 1);
    chmod((native / "registry").c_str(), 0000);
    EXPECT_EQ(RunUnprivileged([] { return Set("bytes", "other") != 0 && Get("bytes") == "-5"; }),
              1);
    chmod((native / "registry").c_str(), 0644);
    EXPECT_EQ(ReadWholeFile(path), before);
}

TEST_F(RegistryFile, NoPlaceForIt)
{
    std::string below = FreshFolder() + "\\file";
    WriteWholeFile(below, "x");
    UseFoldersBelow(below.c_str());
    EXPECT_NE(Set("v", "x"), 0);
    EXPECT_NE(Get("v"), "x");
    EXPECT_EQ(ReadWholeFile(below), "x");
}

// Refused as a whole: nothing of the name is left in the file.
TEST_F(RegistryFile, OverlongNamesAreRefused)
{
    Fill();
    std::string before = ReadWholeFile(path), part(256, 'k'), deep, manyLevels = "a";
    for (int i = 0; i < 20; i++)
        deep += std::string(200, 'k') + "\\";
    for (int i = 0; i < 600; i++)
        manyLevels += "\\a";
    for (const std::string &name : {part, deep, manyLevels}) {
        HKEY key = nullptr;
        EXPECT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, name.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                                  nullptr, &key, nullptr),
                  ERROR_INVALID_PARAMETER);
        EXPECT_EQ(key, nullptr);
    }
    EXPECT_EQ(Set(std::string(2000, 'v').c_str(), "x"), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ReadWholeFile(path), before);
}

TEST_F(RegistryFile, ProcessesDoNotLoseEachOthersValues)
{
    constexpr int kProcesses = 4, kValues = 25;
    Fill();
    for (int process = 0; process < kProcesses; process++) {
        if (fork() != 0)
            continue;
        int failed = 0;
        for (int i = 0; i < kValues; i++)
            failed += Set((std::to_string(process) + "." + std::to_string(i)).c_str(), "x") != 0;
        _exit(failed);
    }
    for (int i = 0, status; i < kProcesses; i++) {
        wait(&status);
        EXPECT_EQ(status, 0);
    }
    for (int process = 0; process < kProcesses; process++) {
        for (int i = 0; i < kValues; i++)
            EXPECT_EQ(Get((std::to_string(process) + "." + std::to_string(i)).c_str()), "x");
    }
}

TEST_F(RegistryFile, KilledWriterLeavesAWholeStateAndNoPile)
{
    Fill();
    for (int round = 0; round < 30; round++) {
        pid_t writer = fork();
        if (writer == 0) {
            for (int i = 0;; i++)
                Set("counter", std::string(200, char('a' + i % 26)));
        }
        usleep(useconds_t(1000 + round * 300));
        kill(writer, SIGKILL);
        waitpid(writer, nullptr, 0);
        std::string counter = Get("counter");
        EXPECT_TRUE(counter == "-2" || counter == std::string(200, counter[0])) << counter;
        EXPECT_EQ(Get("bytes"), std::string("\0\1\2\xFF", 4));
    }
    EXPECT_LE(ListFolder(folder).size(), 3u);  // the file, its lock, one leftover
    EXPECT_EQ(Set("counter", "end"), 0);
    EXPECT_EQ(Get("counter"), "end");
}

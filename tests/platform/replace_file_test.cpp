// Replacing a file, and the paths of documents. (That a file is the old one or the new one,
// whatever happens, is tests/host/kill_test's.)
#include <gtest/gtest.h>

#include "support/temp_folder.h"

static std::string LaoFolder()
{
    std::string folder = FreshFolder() + "\\ເອກະສານ ເກົ່າ";
    std::filesystem::create_directory(ToPath(folder));
    return folder;
}

// Two at the same time for one file, and one beside it: all are written to the end. What a killed
// process left under the name of such a file is taken over.
TEST(ReplacedFile, WritersDoNotMix)
{
    std::string folder = LaoFolder(), path = folder + "\\ກ.xml";
    FILE *first = BeginReplaceDocument(path.c_str());
    std::string leftover = folder + "\\" + ListFolder(folder).at(0);
    EXPECT_EQ(EndReplaceFile(first, 0), 0);
    EXPECT_TRUE(ListFolder(folder).empty());
    WriteWholeFile(leftover, std::string(1000, '#'));
    first = BeginReplaceDocument(path.c_str());
    FILE *second = BeginReplaceDocument(path.c_str());
    FILE *third = BeginReplaceDocument((folder + "\\ຂ.xml").c_str());
    ASSERT_TRUE(first && second && third);
    fputs("first", first);
    fputs("the second", second);
    EXPECT_EQ(EndReplaceFile(second, 1), 1);
    EXPECT_EQ(ReadWholeFile(path), "the second");
    EXPECT_EQ(EndReplaceFile(first, 1) + EndReplaceFile(third, 1), 2);
    EXPECT_EQ(ReadWholeFile(path), "first");
    EXPECT_EQ(ListFolder(folder).size(), 2U);
}

TEST(ReplacedFile, WhatAFileCannotReplaceIsRefused)
{
    std::string folder = LaoFolder();
    std::filesystem::create_directory(ToPath(folder + "\\inner"));
    WriteWholeFile(folder + "\\file", "x");
    for (const char *name : {"\\inner", "\\absent\\file", "\\file\\file", ""})
        EXPECT_FALSE(BeginReplaceDocument((folder + name).c_str())) << name;
    EXPECT_EQ(ListFolder(folder), (std::vector<std::string>{"file", "inner"}));
    EXPECT_EQ(EndReplaceFile(nullptr, 1) + EndReplaceFile(stdout, 1), 0) << "no replacement";
}

TEST(ReplacedFile, PathOfADataFileHasUpTo259Bytes)
{
    std::string path = FreshFolder() + "\\" + std::string(100, 'd');
    ASSERT_TRUE(CreateDirectoryA(path.c_str(), nullptr));
    path += "\\" + std::string(258 - path.size(), 'f');
    EXPECT_EQ(EndReplaceFile(BeginReplaceFile(path.c_str()), 1), 1);
    EXPECT_NE(GetFileAttributesA(path.c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_FALSE(BeginReplaceFile((path + std::string(300, 'g')).c_str()));
}

TEST(SameFile, IsToldByTheFileAndNotByItsName)
{
    std::string folder = LaoFolder();
    WriteWholeFile(folder + "\\ກ.xml", "same");
    WriteWholeFile(folder + "\\ຂ.xml", "same");
    std::filesystem::create_directory(ToPath(folder + "\\ຄ"));
    std::filesystem::create_hard_link(ToPath(folder + "\\ກ.xml"), ToPath(folder + "\\link"));
    struct Row {
        const char *left, *right;
        int same;
    } const rows[] = {
        {"\\ກ.xml", "\\ກ.xml", 1},        {"\\ກ.xml", "\\ຂ.xml", 0}, {"\\ກ.xml", "\\link", 1},
        {"\\ກ.xml", "\\ຄ\\..\\ກ.xml", 1}, {"/ກ.xml", "\\ກ.xml", 1},  {"", "\\", 1},
        {"\\ງ.xml", "\\ງ.xml", 0},        {"\\ກ.xml", "\\ງ.xml", 0}, {"", "\\ກ.xml", 0},
    };
    for (const Row &row : rows) {
        std::string left = folder + row.left, right = folder + row.right;
        EXPECT_EQ(IsSameFile(left.c_str(), right.c_str()), row.same) << row.left << row.right;
        EXPECT_EQ(IsSameFile(right.c_str(), left.c_str()), row.same) << row.left << row.right;
    }
}

TEST(Utf8OfPath, TurnsWhatAHostHandsOverInTheSystemsCodePage)
{
    bool isWindows = std::filesystem::path::preferred_separator == '\\';
    const WCHAR accented = 0xE9;
    char narrow = 0;
    WideCharToMultiByte(CP_ACP, 0, &accented, 1, &narrow, 1, nullptr, nullptr);
    if (isWindows && narrow != '\xE9')
        GTEST_SKIP() << "the system's code page isn't 1252";
    std::string folder = FreshFolder(), wanted = folder + "\\\xC3\xA9.xml";
    std::string path = folder + (isWindows ? "\\\xE9.xml" : "\\\xC3\xA9.xml");
    char utf8[300];
    int whole = int(wanted.size()) + 1;
    ASSERT_EQ(Utf8OfPath(path.c_str(), utf8, whole), 1);
    EXPECT_EQ(utf8, wanted);
    EXPECT_EQ(Utf8OfPath(path.c_str(), utf8, whole - 1), 0);
}

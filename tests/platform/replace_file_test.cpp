// Replacing a file: the new state or the old one, whole, and nothing left beside it.
#include <gtest/gtest.h>

#include "support/temp_folder.h"

typedef std::vector<std::string> Names;

static int Replace(const std::string &path, const std::string &text, int keep = 1)
{
    FILE *file = BeginReplaceFile(path.c_str());
    if (!file)
        return -1;
    fwrite(text.data(), 1, text.size(), file);
    return EndReplaceFile(file, path.c_str(), keep);
}

static std::string ReadText(const std::string &path)
{
    std::string text;
    FILE *file = OpenDataFile(path.c_str(), "rt");
    for (int byte; file && (byte = fgetc(file)) != EOF;)
        text += char(byte);
    if (file)
        fclose(file);
    return text;
}

TEST(ReplacedFile, KeepsTheNewOrTheOld)
{
    std::string folder = FreshFolder(), path = folder + "\\list.dat";
    EXPECT_EQ(Replace(path, "never", 0), 0);
    EXPECT_EQ(ListFolder(folder), Names());
    EXPECT_EQ(Replace(path, "first\nline\n"), 1);
    EXPECT_EQ(ReadText(path), "first\nline\n");
    EXPECT_EQ(Replace(path, "second\n"), 1);
    EXPECT_EQ(Replace(path, "dropped\n", 0), 0);
    EXPECT_EQ(ReadText(path), "second\n");
    EXPECT_EQ(ListFolder(folder), Names{"list.dat"});
}

TEST(ReplacedFile, OldFileStandsUntilTheEnd)
{
    std::string path = FreshFolder() + "\\list.dat";
    Replace(path, "old");
    FILE *file = BeginReplaceFile(path.c_str());
    ASSERT_TRUE(file);
    std::string large(100000, 'n');
    fwrite(large.data(), 1, large.size(), file);
    fflush(file);
    EXPECT_EQ(ReadText(path), "old");
    EXPECT_EQ(EndReplaceFile(file, path.c_str(), 1), 1);
    EXPECT_EQ(ReadText(path), large);
}

TEST(ReplacedFile, WhatAFileCannotReplaceIsRefused)
{
    std::string folder = FreshFolder();
    CreateDirectoryA((folder + "\\inner").c_str(), nullptr);
    WriteWholeFile(folder + "\\file", "x");
    EXPECT_EQ(Replace(folder + "\\inner", "text"), -1);
    EXPECT_EQ(Replace(folder + "\\absent\\file", "text"), -1);
    EXPECT_EQ(Replace(folder + "\\file\\file", "text"), -1);
    EXPECT_EQ(Replace("", "text"), -1);
    EXPECT_EQ(ListFolder(folder), (Names{"file", "inner"}));
}

// Two at the same time for one file: both are written to the end, the later one stays.
TEST(ReplacedFile, WritersOfOneFileDoNotMix)
{
    std::string folder = FreshFolder(), path = folder + "\\list.dat";
    FILE *first = BeginReplaceFile(path.c_str());
    FILE *second = BeginReplaceFile(path.c_str());
    ASSERT_TRUE(first && second);
    fputs("first", first);
    fputs("the second", second);
    EXPECT_EQ(EndReplaceFile(second, path.c_str(), 1), 1);
    EXPECT_EQ(ReadText(path), "the second");
    EXPECT_EQ(EndReplaceFile(first, path.c_str(), 1), 1);
    EXPECT_EQ(ReadText(path), "first");
    EXPECT_EQ(ListFolder(folder), Names{"list.dat"});
}

TEST(ReplacedFile, LeftoverOfAKilledProcessIsTakenOver)
{
    std::string folder = FreshFolder(), path = folder + "\\list.dat";
    FILE *file = BeginReplaceFile(path.c_str());
    ASSERT_TRUE(file);
    Names during = ListFolder(folder);
    ASSERT_EQ(during.size(), 1u);
    EndReplaceFile(file, path.c_str(), 0);
    WriteWholeFile(folder + "\\" + during[0], std::string(1000, '#'));
    EXPECT_EQ(Replace(path, "short"), 1);
    EXPECT_EQ(ReadText(path), "short");
    EXPECT_EQ(ListFolder(folder), Names{"list.dat"});
}

TEST(ReplacedFile, PathsUpToTheirLimitWorkOrFailCleanly)
{
    std::string folder = FreshFolder() + "\\" + std::string(100, 'd');
    ASSERT_TRUE(CreateDirectoryA(folder.c_str(), nullptr));
    std::string path = folder + "\\";
    path.append(259 - path.size(), 'f');
    EXPECT_EQ(Replace(path, "text"), 1);
    EXPECT_EQ(ReadText(path), "text");
    EXPECT_EQ(ListFolder(folder).size(), 1u);
    EXPECT_NE(Replace(path + std::string(300, 'g'), "text"), 1);
    EXPECT_EQ(ListFolder(folder).size(), 1u);
}

TEST(ReplacedFile, UnknownStreamIsNoReplacement)
{
    std::string path = FreshFolder() + "\\list.dat";
    EXPECT_EQ(EndReplaceFile(nullptr, path.c_str(), 1), 0);
    EXPECT_EQ(EndReplaceFile(stdout, path.c_str(), 1), 0);
}

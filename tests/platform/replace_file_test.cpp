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

static std::string ReadAndClose(FILE *file)
{
    std::string text;
    char block[3];
    for (size_t got; file && (got = ReadDocument(file, block, sizeof block)) > 0;)
        text.append(block, got);
    if (file)
        fclose(file);
    return text;
}

static std::string ReadText(const std::string &path)
{
    return ReadAndClose(OpenDataFile(path.c_str(), "rt"));
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

// ---- documents: UTF-8 names on both targets, in folders of such names ----

static std::filesystem::path Utf8Path(std::string path)
{
    if (std::filesystem::path::preferred_separator == '/')
        std::replace(path.begin(), path.end(), '\\', '/');
    return std::u8string(path.begin(), path.end());
}

static void WriteDocument(const std::string &path, const std::string &text)
{
    std::ofstream(Utf8Path(path), std::ios::binary) << text;
}

static Names ListDocuments(const std::string &folder)
{
    Names names;
    for (const auto &entry : std::filesystem::directory_iterator(Utf8Path(folder))) {
        std::u8string name = entry.path().filename().u8string();
        names.emplace_back(name.begin(), name.end());
    }
    return names;
}

static std::string LaoFolder()
{
    std::string folder = FreshFolder() + "\\ເອກະສານ ເກົ່າ";
    std::filesystem::create_directory(Utf8Path(folder));
    return folder;
}

static int ReplaceDocument(const std::string &path, const std::string &text, int keep)
{
    FILE *file = BeginReplaceDocument(path.c_str());
    if (!file)
        return -1;
    fwrite(text.data(), 1, text.size(), file);
    return EndReplaceFile(file, path.c_str(), keep);
}

TEST(ReplacedDocument, LaoNameKeepsTheNewOrTheOld)
{
    std::string folder = LaoFolder();
    struct Row {
        const char *name, *text;
        int keep, done;
        const char *left;  // in the file, none: nothing can be opened
    } const rows[] = {
        {"\\ຈົດໝາຍ.xml", "never", 0, 0, nullptr},
        {"\\ຈົດໝາຍ.xml", "first\n", 1, 1, "first\n"},
        {"\\ຈົດໝາຍ.xml", "second\n", 1, 1, "second\n"},
        {"\\ຈົດໝາຍ.xml", "dropped\n", 0, 0, "second\n"},
        {"\\ບໍ່ມີ\\ຈົດໝາຍ.xml", "no folder", 1, -1, nullptr},
        {"", "a folder", 1, -1, nullptr},
    };
    for (const Row &row : rows) {
        std::string path = folder + row.name;
        EXPECT_EQ(ReplaceDocument(path, row.text, row.keep), row.done) << row.text;
        FILE *file = OpenDocument(path.c_str());
        EXPECT_EQ(file != nullptr, row.left != nullptr) << row.text;
        EXPECT_EQ(ReadAndClose(file), row.left ? row.left : "") << row.text;
    }
    EXPECT_EQ(ListDocuments(folder), Names{"ຈົດໝາຍ.xml"});
}

TEST(ReplacedDocument, NewFileTakesNoNameFromADocument)
{
    std::string folder = LaoFolder(), path = folder + "\\ກ.xml", other = folder + "\\ຂ.xml";
    FILE *first = BeginReplaceDocument(path.c_str());
    FILE *second = BeginReplaceDocument(other.c_str());
    ASSERT_TRUE(first && second);
    fputs("first", first);
    fputs("second", second);
    EXPECT_EQ(EndReplaceFile(first, path.c_str(), 1), 1);
    EXPECT_EQ(EndReplaceFile(second, other.c_str(), 1), 1);
    EXPECT_EQ(ReadAndClose(OpenDocument(path.c_str())), "first");
    EXPECT_EQ(ReadAndClose(OpenDocument(other.c_str())), "second");
}

TEST(SameFile, IsToldByTheFileAndNotByItsName)
{
    std::string folder = LaoFolder();
    WriteDocument(folder + "\\ກ.xml", "same");
    WriteDocument(folder + "\\ຂ.xml", "same");
    std::filesystem::create_directory(Utf8Path(folder + "\\ຄ"));
    std::filesystem::create_hard_link(Utf8Path(folder + "\\ກ.xml"), Utf8Path(folder + "\\link"));
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
        EXPECT_EQ(IsSameFile(left.c_str(), right.c_str()), row.same)
            << row.left << " " << row.right;
        EXPECT_EQ(IsSameFile(right.c_str(), left.c_str()), row.same)
            << row.left << " " << row.right;
    }
    EXPECT_EQ(IsSameFile("", ""), 0);
}

// What a host hands over in the system's code page is found under the UTF-8 form.
TEST(Utf8OfPath, NamesTheSameFile)
{
    bool isWindows = std::filesystem::path::preferred_separator == '\\';
    const WCHAR accented = 0xE9;
    char inCodePage[8] = "";
    WideCharToMultiByte(CP_ACP, 0, &accented, 1, inCodePage, 7, nullptr, nullptr);
    if (isWindows && std::string(inCodePage) != "\xE9")
        GTEST_SKIP() << "the system's code page isn't 1252";
    std::string folder = FreshFolder(), wanted = folder + "\\\xC3\xA9.xml";
    std::string path = folder + (isWindows ? "\\\xE9.xml" : "\\\xC3\xA9.xml");
    WriteDocument(wanted, "text");
    char utf8[300];
    int whole = int(wanted.size()) + 1;
    ASSERT_EQ(Utf8OfPath(path.c_str(), utf8, whole), 1);
    EXPECT_EQ(utf8, wanted);
    EXPECT_EQ(ReadAndClose(OpenDocument(utf8)), "text");
    EXPECT_EQ(Utf8OfPath(path.c_str(), utf8, whole - 1), 0);
}

// Opening files, the text mode above all, and comparing names.
#include <gtest/gtest.h>

#include "support/temp_folder.h"

static std::string ReadAll(FILE *file)
{
    std::string text;
    for (int byte; (byte = fgetc(file)) != EOF;)
        text += char(byte);
    return text;
}

TEST(TextMode, ReadsAsTheWindowsRuntimeDoes)
{
    struct Row {
        std::string bytes, text;
    } const rows[] = {
        {"", ""},
        {"a\r\nb\r\n", "a\nb\n"},
        {"a\nb", "a\nb"},
        {"a\rb", "a\rb"},
        {"a\r\r\nb", "a\r\nb"},
        {"a\n\rb", "a\n\rb"},
        {"a\r", "a\r"},
        {"\r\r", "\r\r"},
        {"a\x1A"
         "b",
         "a"},
        {"\x1A", ""},
        {"a\r\n\x1A\r\n", "a\n"},
        {std::string("a\0b\r\n", 5), std::string("a\0b\n", 4)},
        {std::string(70000, '\r') + "\n", std::string(69999, '\r') + "\n"},
    };
    std::string path = FreshFolder() + "\\text";
    for (const Row &row : rows) {
        ASSERT_TRUE(WriteWholeFile(path, row.bytes));
        FILE *file = OpenDataFile(path.c_str(), "rt");
        ASSERT_TRUE(file);
        EXPECT_EQ(ReadAll(file), row.text) << testing::PrintToString(row.bytes.substr(0, 40));
        EXPECT_TRUE(feof(file) && !ferror(file));
        fclose(file);
    }
}

TEST(TextMode, EveryStartOfALineEndAtTheEdgeOfABlock)
{
    std::string path = FreshFolder() + "\\text";
    for (size_t block : {512, 1024, 4096, 8192, 65536}) {
        for (size_t shift = 0; shift < 4; shift++) {
            std::string before(block - shift, 'x');
            WriteWholeFile(path, before + "\r\n\r\nend");
            FILE *file = OpenDataFile(path.c_str(), "rt");
            ASSERT_TRUE(file);
            EXPECT_TRUE(ReadAll(file) == before + "\n\nend") << block << " " << shift;
            fclose(file);
        }
    }
}

TEST(DataFile, WhatIsNoFileIsNotOpened)
{
    std::string folder = FreshFolder();
    WriteWholeFile(folder + "\\file", "x\r\n\x1A");
    for (const char *mode : {"rt", "rb", "wb"}) {
        for (const std::string &path : {folder, folder + "\\absent\\file", std::string()})
            EXPECT_FALSE(OpenDataFile(path.c_str(), mode)) << path << mode;
        EXPECT_FALSE(OpenDataFile(nullptr, mode));
    }
    EXPECT_FALSE(OpenDataFile((folder + "\\absent").c_str(), "rb"));
    EXPECT_FALSE(OpenDataFile((folder + "\\file").c_str(), "w+"));
    FILE *file = OpenDataFile((folder + "\\file").c_str(), "rb");
    ASSERT_TRUE(file);
    EXPECT_EQ(ReadAll(file), "x\r\n\x1A") << "bytes stay as they are";
    fclose(file);
}

TEST(CompareNoCase, FoldsAsciiAndNothingElse)
{
    struct Row {
        const char *left, *right;
        int sign;
    } const rows[] = {{"abc", "ABC", 0}, {"abc", "abd", -1},  {"a", "ab", -1}, {"Z", "[", 1},
                      {"_", "A", -1},    {"\xE9", "\xC9", 1}, {"[", "{", -1},  {"@", "`", -1}};
    auto sign = [](int value) { return (value > 0) - (value < 0); };
    for (const Row &row : rows) {
        EXPECT_EQ(sign(CompareNoCase(row.left, row.right)), row.sign) << row.left << row.right;
        EXPECT_EQ(sign(CompareNoCase(row.right, row.left)), -row.sign) << row.left << row.right;
    }
}

// Opening files, the text mode above all, and comparing names.
#include <gtest/gtest.h>

#include "support/temp_folder.h"

// The file's text as OpenDataFile gives it; it must end without an error.
static std::string ReadAll(const std::string &path, const char *mode)
{
    FILE *file = OpenDataFile(path.c_str(), mode);
    std::string text;
    for (int byte; file && (byte = fgetc(file)) != EOF;)
        text += char(byte);
    EXPECT_TRUE(file && feof(file) && !ferror(file));
    if (file)
        fclose(file);
    return text;
}

TEST(TextMode, ReadsAsTheWindowsRuntimeDoes)
{
    struct Row {
        std::string bytes, text;
    };
    std::vector<Row> rows = {
        // clang-format off
        {"", ""}, {"a\r\nb\r\n", "a\nb\n"}, {"a\nb", "a\nb"}, {"a\rb", "a\rb"}, {"a\r", "a\r"},
        {"a\r\r\nb", "a\r\nb"}, {"a\x1Aq", "a"}, {"a\r\n\x1A\r\n", "a\n"},
        {std::string("a\0b\r\n", 5), std::string("a\0b\n", 4)},
        {std::string(70000, '\r') + "\n", std::string(69999, '\r') + "\n"},
        // clang-format on
    };
    for (size_t block : {512, 4096, 8192, 65536})  // a line's end at the end of a block
        for (size_t shift = 0; shift < 4; shift++) {
            std::string before(block - shift, 'x');
            rows.push_back({before + "\r\n\r\nend", before + "\n\nend"});
        }
    std::string path = FreshFolder() + "\\text";
    for (const Row &row : rows) {
        ASSERT_TRUE(WriteWholeFile(path, row.bytes));
        EXPECT_TRUE(ReadAll(path, "rt") == row.text)
            << row.bytes.size() << testing::PrintToString(row.bytes.substr(0, 40));
        EXPECT_TRUE(ReadAll(path, "rb") == row.bytes) << row.bytes.size();
    }
}

TEST(DataFile, WhatIsNoFileIsNotOpened)
{
    std::string folder = FreshFolder();
    WriteWholeFile(folder + "\\file", "x");
    for (const char *mode : {"rt", "rb", "wb"}) {
        for (const std::string &path : {folder, folder + "\\absent\\file", std::string()})
            EXPECT_FALSE(OpenDataFile(path.c_str(), mode)) << path << mode;
        EXPECT_FALSE(OpenDataFile(nullptr, mode));
    }
    EXPECT_FALSE(OpenDataFile((folder + "\\absent").c_str(), "rb"));
    EXPECT_FALSE(OpenDataFile((folder + "\\file").c_str(), "w+"));
}

TEST(CompareNoCase, FoldsAsciiAndNothingElse)
{
    EXPECT_EQ(CompareNoCase("abcz", "ABCZ"), 0);
    const char *inOrder[][2] = {{"abc", "ABD"}, {"a", "AB"},      {"[", "Z"}, {"_", "a"},
                                {"[", "{"},     {"\xC9", "\xE9"}, {"@", "`"}};
    for (const auto &[left, right] : inOrder) {
        EXPECT_LT(CompareNoCase(left, right), 0) << left << right;
        EXPECT_GT(CompareNoCase(right, left), 0) << left << right;
    }
}

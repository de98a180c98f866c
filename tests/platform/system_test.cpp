// Modules, the calls on paths, and opening files, the text mode above all.
#include <cstring>
#include <gtest/gtest.h>

#include "support/temp_folder.h"

typedef HINSTANCE(WINAPI *HandleProc)(int *left);

TEST(Modules, EntryPointGetsTheModulesHandle)
{
    char program[MAX_PATH];
    std::string path(program, GetModuleFileNameA(nullptr, program, sizeof program));
    path = path.substr(0, path.find_last_of('\\')) + "\\platform_probe.dll";
    HMODULE module = LoadLibraryA(path.c_str());
    ASSERT_TRUE(module) << path << " " << GetLastError();
    HandleProc handle = (HandleProc)(void *)GetProcAddress(module, "ProbeHandle");
    int left = 0;
    ASSERT_TRUE(handle);
    EXPECT_EQ(handle(&left), module);
    for (const char *absent : {"probehandle", "DllMain", "GlobalAlloc", "printf", "", (LPCSTR)1000})
        EXPECT_EQ(GetProcAddress(module, absent), nullptr) << "its own exports alone";
    EXPECT_EQ(GetModuleHandleA("PLATFORM_PROBE"), module);
    EXPECT_EQ(GetModuleHandleA(path.c_str()), module);
    EXPECT_EQ(LoadLibraryA("platform_probe"), module);  // a second count
    for (int wanted : {0, 1}) {
        EXPECT_TRUE(FreeLibrary(module));
        EXPECT_EQ(left, wanted);
    }
}

TEST(Modules, WhatIsNoModuleIsRefused)
{
    std::string folder = FreshFolder();
    WriteWholeFile(folder + "\\text.dll", "no module at all");
    struct Row {
        std::string name;
        DWORD error;
    } const rows[] = {
        {folder + "\\absent.dll", ERROR_MOD_NOT_FOUND},
        {folder + "\\text.dll", ERROR_BAD_EXE_FORMAT},
        {"libpthread.so.0", ERROR_MOD_NOT_FOUND},
        {"platform_refusing.dll", ERROR_DLL_INIT_FAILED},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(LoadLibraryA(row.name.c_str()), nullptr) << row.name;
        EXPECT_EQ(GetLastError(), row.error) << row.name;
    }
    for (const char *gone : {"platform_refusing.dll", "platform_probe"})
        EXPECT_EQ(GetModuleHandleA(gone), nullptr);
}

TEST(Modules, FileNameIsCutToItsRoom)
{
    char whole[MAX_PATH], cut[MAX_PATH];
    DWORD length = GetModuleFileNameA(nullptr, whole, sizeof whole);
    EXPECT_NE(std::string(whole).find("\\platform_tests"), std::string::npos);
    for (DWORD size : {length + 1, length, DWORD(5), DWORD(1)}) {
        memset(cut, '#', sizeof cut);
        EXPECT_EQ(GetModuleFileNameA(nullptr, cut, size), std::min(size, length));
        EXPECT_EQ(std::string(cut, size - 1), std::string(whole, size - 1));
        EXPECT_EQ(cut[size], '#');
    }
}

// One table for the calls on paths: what is there before each row is what the rows above left.
TEST(Folders, CallsTellWhyNot)
{
    auto create = [](const char *path) { return CreateDirectoryA(path, nullptr); };
    auto remove = [](const char *path) { return DeleteFileA(path); };
    auto find = [](const char *path) { return BOOL(GetFileAttributesA(path) + 1 != 0); };
    std::string folder = FreshFolder();
    WriteWholeFile(folder + "\\file", "x");
    struct Row {
        BOOL (*call)(const char *path);
        const char *name;
        DWORD error;  // 0: done
    } const rows[] = {
        // clang-format off
        {create, "\\new", 0}, {create, "\\new", ERROR_ALREADY_EXISTS}, {create, "\\new\\inner", 0},
        {create, "\\file", ERROR_ALREADY_EXISTS}, {create, "\\no\\new", ERROR_PATH_NOT_FOUND},
        {create, "\\file\\new", ERROR_PATH_NOT_FOUND}, {find, "\\file\\no", ERROR_PATH_NOT_FOUND},
        {find, "\\no", ERROR_FILE_NOT_FOUND}, {find, "\\no\\no", ERROR_PATH_NOT_FOUND},
        {find, "\\file", 0}, {remove, "\\new", ERROR_ACCESS_DENIED},
        {remove, "\\no", ERROR_FILE_NOT_FOUND}, {remove, "\\no\\no", ERROR_PATH_NOT_FOUND},
        {remove, "\\file", 0}, {remove, "\\file", ERROR_FILE_NOT_FOUND},
        // clang-format on
    };
    for (const Row &row : rows) {
        BOOL done = row.call((folder + row.name).c_str());
        EXPECT_EQ(done ? 0 : GetLastError(), row.error) << row.name;
    }
    EXPECT_FALSE(CreateDirectoryA("", nullptr));
    EXPECT_EQ(GetFileAttributesA(folder.c_str()), DWORD(FILE_ATTRIBUTE_DIRECTORY));
}

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
    for (const char *mode : {"rt", "rb", "wb"}) {
        for (const std::string &path : {folder, folder + "\\absent\\file", std::string()})
            EXPECT_FALSE(OpenDataFile(path.c_str(), mode)) << path << mode;
        EXPECT_FALSE(OpenDataFile(nullptr, mode));
    }
    EXPECT_FALSE(OpenDataFile((folder + "\\absent").c_str(), "rb"));
}

// Memory, modules and folders.
#include <cstring>
#include <gtest/gtest.h>
#include <shlobj.h>

#include "support/temp_folder.h"

static std::string ProgramFolder()
{
    char path[MAX_PATH];
    std::string whole(path, GetModuleFileNameA(nullptr, path, sizeof path));
    return whole.substr(0, whole.find_last_of('\\'));
}

TEST(Memory, ZeroedBlocksAreZeroAndHugeOnesFail)
{
    char *block = static_cast<char *>(GlobalAlloc(GPTR, 4096));
    ASSERT_TRUE(block);
    EXPECT_EQ(std::string(block, 4096), std::string(4096, '\0'));
    EXPECT_EQ(GlobalFree(block), nullptr);
    EXPECT_EQ(GlobalAlloc(GMEM_FIXED, SIZE_MAX - 4096), nullptr);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_NOT_ENOUGH_MEMORY));
}

typedef HINSTANCE(WINAPI *HandleProc)();
typedef void(WINAPI *LeavingProc)(int *);

TEST(Modules, EntryPointGetsTheModulesHandle)
{
    int left = 0;
    std::string path = ProgramFolder() + "\\platform_probe.dll";
    HMODULE module = LoadLibraryA(path.c_str());
    ASSERT_TRUE(module) << path << " " << GetLastError();
    HandleProc handle = (HandleProc)(void *)GetProcAddress(module, "ProbeHandle");
    LeavingProc leaving = (LeavingProc)(void *)GetProcAddress(module, "ProbeLeaving");
    ASSERT_TRUE(handle && leaving);
    EXPECT_EQ(handle(), module);
    leaving(&left);
    for (const char *absent : {"probehandle", "DllMain", "GlobalAlloc", "printf", "", (LPCSTR)1000})
        EXPECT_EQ(GetProcAddress(module, absent), nullptr) << "its own exports alone";
    EXPECT_EQ(GetModuleHandleA("PLATFORM_PROBE"), module);
    EXPECT_EQ(GetModuleHandleA(path.c_str()), module);
    EXPECT_EQ(LoadLibraryA("platform_probe"), module);  // a second count
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(left, 0);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(left, 1);
    EXPECT_EQ(GetModuleHandleA("platform_probe.dll"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_MOD_NOT_FOUND));
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
        {folder + "\\text", ERROR_BAD_EXE_FORMAT},
        {"absent_module", ERROR_MOD_NOT_FOUND},
        {"libpthread.so.0", ERROR_MOD_NOT_FOUND},
        {"platform_refusing.dll", ERROR_DLL_INIT_FAILED},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(LoadLibraryA(row.name.c_str()), nullptr) << row.name;
        EXPECT_EQ(GetLastError(), row.error) << row.name;
    }
    EXPECT_EQ(GetModuleHandleA("platform_refusing.dll"), nullptr);
}

TEST(Modules, FileNameIsCutToItsRoom)
{
    char whole[MAX_PATH], cut[MAX_PATH];
    DWORD length = GetModuleFileNameA(nullptr, whole, sizeof whole);
    ASSERT_EQ(length, strlen(whole));
    EXPECT_NE(std::string(whole).find("\\platform_tests"), std::string::npos);
    EXPECT_EQ(GetModuleFileNameA(nullptr, cut, length + 1), length);
    for (DWORD size : {length, DWORD(5), DWORD(1)}) {
        memset(cut, '#', sizeof cut);
        EXPECT_EQ(GetModuleFileNameA(nullptr, cut, size), size);
        EXPECT_EQ(GetLastError(), DWORD(ERROR_INSUFFICIENT_BUFFER));
        EXPECT_EQ(std::string(cut, size - 1), std::string(whole, size - 1));
        EXPECT_EQ(cut[size], '#');
    }
}

// One table for the calls on paths: what is there before each row is what the rows above left.
TEST(Folders, CallsTellWhyNot)
{
    auto create = [](const char *path) { return CreateDirectoryA(path, nullptr); };
    auto remove = [](const char *path) { return DeleteFileA(path); };
    auto find = [](const char *path) {
        return BOOL(GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES);
    };
    std::string folder = FreshFolder();
    WriteWholeFile(folder + "\\file", "x");
    struct Row {
        BOOL (*call)(const char *path);
        const char *name;
        DWORD error;  // 0: done
    } const rows[] = {
        {create, "\\new", 0},
        {create, "\\new", ERROR_ALREADY_EXISTS},
        {create, "\\file", ERROR_ALREADY_EXISTS},
        {create, "\\absent\\new", ERROR_PATH_NOT_FOUND},
        {create, "\\file\\new", ERROR_PATH_NOT_FOUND},
        {create, "\\new\\inner", 0},
        {find, "\\no", ERROR_FILE_NOT_FOUND},
        {find, "\\no\\no", ERROR_PATH_NOT_FOUND},
        {find, "\\file", 0},
        {remove, "\\new", ERROR_ACCESS_DENIED},
        {remove, "\\absent", ERROR_FILE_NOT_FOUND},
        {remove, "\\absent\\file", ERROR_PATH_NOT_FOUND},
        {remove, "\\file", 0},
        {remove, "\\file", ERROR_FILE_NOT_FOUND},
    };
    for (const Row &row : rows) {
        BOOL done = row.call((folder + row.name).c_str());
        EXPECT_EQ(done ? 0 : GetLastError(), row.error) << row.name;
    }
    EXPECT_FALSE(CreateDirectoryA("", nullptr));
    EXPECT_EQ(GetFileAttributesA(folder.c_str()), DWORD(FILE_ATTRIBUTE_DIRECTORY));
    char path[MAX_PATH] = "#";
    EXPECT_EQ(SHGetFolderPathA(nullptr, CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, path),
              S_OK);
    EXPECT_TRUE(GetFileAttributesA(path) & FILE_ATTRIBUTE_DIRECTORY) << path;
}

// Memory, modules and folders.
#include <cstring>
#include <gtest/gtest.h>
#include <windows.h>
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
    EXPECT_EQ(GlobalFree(nullptr), nullptr);
    EXPECT_EQ(GlobalAlloc(GMEM_FIXED, SIZE_MAX - 4096), nullptr);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_NOT_ENOUGH_MEMORY));
    void *empty = GlobalAlloc(GMEM_FIXED, 0);
    EXPECT_TRUE(empty);
    GlobalFree(empty);
}

TEST(Memory, ChosenAllocationFailsOnce)
{
    if (!FailAllocationAfter(1))
        GTEST_SKIP() << "the system's allocator takes no orders";
    void *first = GlobalAlloc(GPTR, 1);
    EXPECT_TRUE(first);
    EXPECT_FALSE(GlobalAlloc(GPTR, 1));
    void *third = GlobalAlloc(GPTR, 1);
    EXPECT_TRUE(third);
    GlobalFree(first);
    GlobalFree(third);
    FailAllocationAfter(0);
    FailAllocationAfter(-1);
    void *fourth = GlobalAlloc(GPTR, 1);
    EXPECT_TRUE(fourth);
    GlobalFree(fourth);
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
    EXPECT_EQ(GetModuleHandleA("PLATFORM_PROBE"), module);
    EXPECT_EQ(GetModuleHandleA("platform_probe.dll"), module);
    EXPECT_EQ(GetModuleHandleA(path.c_str()), module);
    EXPECT_EQ(LoadLibraryA("platform_probe"), module);  // a second count
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(left, 0);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(left, 1);
    EXPECT_EQ(GetModuleHandleA("platform_probe.dll"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_MOD_NOT_FOUND));
}

TEST(Modules, ExportsAreTheModulesOwn)
{
    HMODULE module = LoadLibraryA("platform_probe.dll");
    ASSERT_TRUE(module);
    const char *absent[] = {"probehandle", "DllMain", "GlobalAlloc", "printf", "", (LPCSTR)1000};
    for (const char *name : absent) {
        EXPECT_EQ(GetProcAddress(module, name), nullptr);
        EXPECT_EQ(GetLastError(), DWORD(ERROR_PROC_NOT_FOUND));
    }
    FreeLibrary(module);
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

struct PathRow {
    const char *name;
    BOOL done;
    DWORD error;
};

TEST(Folders, CreatingTellsWhyNot)
{
    std::string folder = FreshFolder();
    WriteWholeFile(folder + "\\file", "x");
    const PathRow rows[] = {
        {"\\new", TRUE, 0},
        {"\\new", FALSE, ERROR_ALREADY_EXISTS},
        {"\\file", FALSE, ERROR_ALREADY_EXISTS},
        {"\\absent\\new", FALSE, ERROR_PATH_NOT_FOUND},
        {"\\file\\new", FALSE, ERROR_PATH_NOT_FOUND},
        {"\\new\\inner", TRUE, 0},
    };
    for (const PathRow &row : rows) {
        EXPECT_EQ(CreateDirectoryA((folder + row.name).c_str(), nullptr), row.done) << row.name;
        EXPECT_EQ(row.done ? 0 : GetLastError(), row.error) << row.name;
    }
    EXPECT_FALSE(CreateDirectoryA("", nullptr));
}

TEST(Folders, DeletingAFileTellsWhyNot)
{
    std::string folder = FreshFolder();
    WriteWholeFile(folder + "\\file", "x");
    CreateDirectoryA((folder + "\\inner").c_str(), nullptr);
    const PathRow rows[] = {
        {"\\inner", FALSE, ERROR_ACCESS_DENIED},         {"\\absent", FALSE, ERROR_FILE_NOT_FOUND},
        {"\\absent\\file", FALSE, ERROR_PATH_NOT_FOUND}, {"\\file", TRUE, 0},
        {"\\file", FALSE, ERROR_FILE_NOT_FOUND},
    };
    for (const PathRow &row : rows) {
        EXPECT_EQ(DeleteFileA((folder + row.name).c_str()), row.done) << row.name;
        EXPECT_EQ(row.done ? 0 : GetLastError(), row.error) << row.name;
    }
}

TEST(Folders, AttributesTellFolderFromFile)
{
    std::string folder = FreshFolder();
    WriteWholeFile(folder + "\\file", "x");
    EXPECT_EQ(GetFileAttributesA(folder.c_str()), DWORD(FILE_ATTRIBUTE_DIRECTORY));
    EXPECT_EQ(GetFileAttributesA((folder + "\\file").c_str()), DWORD(FILE_ATTRIBUTE_ARCHIVE));
    EXPECT_EQ(GetFileAttributesA((folder + "\\no").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(GetFileAttributesA((folder + "\\no\\no").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_PATH_NOT_FOUND));
}

TEST(Folders, TempPathEndsInABackslash)
{
    char path[MAX_PATH];
    DWORD length = GetTempPathA(sizeof path, path);
    ASSERT_GT(length, 1u);
    EXPECT_EQ(path[length - 1], '\\');
    EXPECT_EQ(GetTempPathA(length, path), length + 1);
    EXPECT_EQ(GetTempPathA(0, nullptr), length + 1);
}

TEST(Folders, SharedDataFolderIsThere)
{
    char path[MAX_PATH] = "#";
    EXPECT_EQ(SHGetFolderPathA(nullptr, CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, path),
              S_OK);
    EXPECT_TRUE(GetFileAttributesA(path) & FILE_ATTRIBUTE_DIRECTORY) << path;
}

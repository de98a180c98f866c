// Fresh folders and whole files for tests, by UTF-8 paths with backslashes on both. They are made
// by the C++ library, which is the same on both and nobody's code under test.
#ifndef ORVEL_TESTS_TEMP_FOLDER_H
#define ORVEL_TESTS_TEMP_FOLDER_H

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

#include "runtime.h"

// All folders of a test program stand below one, which test_main.cpp makes first and removes last.
struct FolderState {
    std::filesystem::path base;
    int count = 0;
};
inline FolderState gFolders;

inline std::filesystem::path ToPath(std::string path)
{
    if (std::filesystem::path::preferred_separator == '/')
        std::replace(path.begin(), path.end(), '\\', '/');
    return std::u8string(path.begin(), path.end());
}

inline void PrepareFolders()
{
    std::filesystem::path root = std::filesystem::temp_directory_path();
    std::string name = "orvel-test-" + std::to_string(GetCurrentThreadId()) + "-" +
                       std::to_string(GetTickCount()) + "-";
    for (int i = 0; gFolders.base.empty(); i++) {
        if (std::filesystem::create_directories(root / (name + std::to_string(i))))
            gFolders.base = root / (name + std::to_string(i));
    }
}

inline void RemoveFolders()
{
    std::error_code ignored;
    std::filesystem::remove_all(gFolders.base, ignored);
}

// A new, empty folder, without a backslash at the end.
inline std::string FreshFolder()
{
    std::filesystem::path folder = gFolders.base / std::to_string(++gFolders.count);
    std::filesystem::create_directories(folder);
    std::string text = folder.string();
    std::replace(text.begin(), text.end(), '/', '\\');
    return text;
}

// The file's bytes; empty for a file that can't be opened.
inline std::string ReadWholeFile(const std::string &path)
{
    std::ifstream file(ToPath(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// 1 when all bytes were written.
inline int WriteWholeFile(const std::string &path, const std::string &bytes)
{
    std::ofstream file(ToPath(path), std::ios::binary);
    file.write(bytes.data(), std::streamsize(bytes.size()));
    file.close();
    return file.good();
}

// The names in a folder, sorted.
inline std::vector<std::string> ListFolder(const std::string &folder)
{
    std::vector<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(ToPath(folder)))
        names.push_back(reinterpret_cast<const char *>(entry.path().filename().u8string().c_str()));
    std::sort(names.begin(), names.end());
    return names;
}

#endif

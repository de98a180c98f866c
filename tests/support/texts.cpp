// Files and texts of the tests.
#include "support/texts.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>
#include <runtime.h>
#include <shlobj.h>

#include "support/temp_folder.h"

std::string DataPath(const std::string &name)
{
    char common[MAX_PATH] = "";
    EXPECT_EQ(
        SHGetFolderPathA(nullptr, CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, common), 0);
    std::string folder = std::string(common) + "\\Orvel";
    CreateDirectoryA(folder.c_str(), nullptr);
    return folder + "\\" + name;
}

void WriteDataFile(const std::string &name, const std::string &content)
{
    EXPECT_TRUE(WriteWholeFile(DataPath(name), content)) << name;
}

std::string ReadDataFile(const std::string &name)
{
    return ReadWholeFile(DataPath(name));
}

void RemoveDataFile(const std::string &name)
{
    DeleteFileA(DataPath(name).c_str());
}

void StoreRegistryValue(HKEY root, const char *path, const char *name, DWORD type,
                        const std::string &data)
{
    HKEY key;
    char noClass[] = "";
    ASSERT_EQ(RegCreateKeyExA(root, path, 0, noClass, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr),
              0);
    RegSetValueExA(key, name, 0, type, reinterpret_cast<const BYTE *>(data.data()),
                   DWORD(data.size()));
    RegCloseKey(key);
}

std::string ReadCorpus(const char *name)
{
    std::string text = ReadWholeFile(std::string(ORVEL_CORPUS) + "/" + name);
    EXPECT_FALSE(text.empty()) << name;
    return text;
}

std::vector<WCHAR> WideOf(const std::string &utf8)
{
    std::vector<WCHAR> wide(utf8.size() + 1);
    int count = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), int(utf8.size()), wide.data(),
                                    int(wide.size()));
    wide.resize(size_t(count));
    return wide;
}

std::vector<std::string> SplitLines(const std::string &text)
{
    std::vector<std::string> lines;
    for (size_t start = 0, end; start < text.size(); start = end + 1) {
        end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
    }
    return lines;
}

std::string ShowCode(const std::string &code)
{
    std::string text;
    for (char c : code)
        text +=
            (text.empty() ? "" : " ") + (c == 45 ? std::string("|") : std::to_string(uint8_t(c)));
    return text;
}

uint32_t NextRandom()
{
    static std::mt19937 random(1);
    return uint32_t(random());
}

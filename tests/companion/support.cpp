#include "companion/support.h"

#include <cstdio>
#include <cstring>
#include <runtime.h>
#include <shlobj.h>

static uint64_t gSeed = 88172645463325252u;

uint32_t NextRandom()
{
    gSeed ^= gSeed << 13;
    gSeed ^= gSeed >> 7;
    gSeed ^= gSeed << 17;
    return uint32_t(gSeed >> 24);
}

static std::string DataFolder()
{
    char common[MAX_PATH] = "";
    EXPECT_EQ(
        SHGetFolderPathA(nullptr, CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, common), 0);
    std::string folder = std::string(common) + "\\Orvel";
    CreateDirectoryA(folder.c_str(), nullptr);
    return folder;
}

std::string DataPath(const std::string &name)
{
    return DataFolder() + "\\" + name;
}

std::string SlashPath(const std::string &name)
{
    std::string path = DataPath(name);
    for (char &c : path)
        c = c == '\\' ? '/' : c;
    return path;
}

void WriteDataFile(const std::string &name, const std::string &content)
{
    FILE *file = OpenDataFile(DataPath(name).c_str(), "wb");
    ASSERT_TRUE(file) << name;
    EXPECT_EQ(fwrite(content.data(), 1, content.size(), file), content.size());
    fclose(file);
}

static std::string ReadStream(FILE *file)
{
    std::string content;
    char block[4096];
    for (size_t got; file && (got = fread(block, 1, sizeof block, file)) > 0;)
        content.append(block, got);
    if (file)
        fclose(file);
    return content;
}

std::string ReadDataFile(const std::string &name)
{
    return ReadStream(OpenDataFile(DataPath(name).c_str(), "rb"));
}

std::string ReadFile(const std::string &path)
{
    FILE *file = fopen(path.c_str(), "rb");
    EXPECT_TRUE(file) << path;
    return ReadStream(file);
}

void RemoveDataFile(const std::string &name)
{
    DeleteFileA(DataPath(name).c_str());
}

static void RemoveAll()
{
    for (const char *name : {"MainDict.dat", "OldDict.dat", "UserDict.dat"})
        RemoveDataFile(name);
    UnloadDictionaries();
}

void CleanDictionaries::SetUp()
{
    RemoveAll();
}

void CleanDictionaries::TearDown()
{
    RemoveAll();
}

// By way of font code 5, which has the Lao block at its offsets.
std::string CodeOf(const std::string &utf8)
{
    std::string code;
    for (size_t i = 0; i < utf8.size();) {
        uint8_t lead = uint8_t(utf8[i]);
        size_t size = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        uint32_t character = size == 3 ? (lead & 15u) << 12 | (uint8_t(utf8[i + 1]) & 63u) << 6 |
                                             (uint8_t(utf8[i + 2]) & 63u)
                                       : lead;
        if (size == 1)
            code += char(lead);
        else if (character == 0x200B)
            code += '-';
        else if (character > 0x0E80 && character < 0x0EE0)
            code += char(character - 0x0E80 + 0xA0);
        i += size;
    }
    code.resize(code.size() + 1);
    EXPECT_EQ(RecodeString(code.data(), DWORD(code.size()), 5), 1u);
    PackLao(code.data());
    return code.c_str();
}

std::string Show(const std::string &code)
{
    std::string text;
    for (char c : code)
        text.append(text.empty() ? "" : " ").append(std::to_string(uint8_t(c)));
    return text;
}

std::vector<std::string> Lines(const std::string &text)
{
    std::vector<std::string> lines;
    for (size_t start = 0; start < text.size();) {
        size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::string CorpusCode(const char *name)
{
    std::string code = CodeOf(ReadFile(std::string(ORVEL_CORPUS) + "/" + name));
    EXPECT_GT(code.size(), 5000u) << name;
    return code;
}

std::vector<std::string> MainWords()
{
    std::vector<std::string> words;
    for (const std::string &line : Lines(ReadFile(ORVEL_MAIN_DICTIONARY)))
        if (line[0] != '#')
            words.push_back(CodeOf(line));
    return words;
}

std::vector<std::string> UserWords()
{
    std::vector<std::string> words;
    DWORD count = ReadLaoDict("UserDict.dat", kUserDictionary);
    for (DWORD number = 1; number <= count; ++number) {
        char word[300];
        EXPECT_EQ(GetWord(word, sizeof word, number, kUserDictionary), 1u);
        words.push_back(word);
    }
    return words;
}

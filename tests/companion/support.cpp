#include "companion/support.h"

#include <cstring>
#include <random>
#include <runtime.h>
#include <shlobj.h>
#include <unistd.h>

#include "support/temp_folder.h"

uint32_t NextRandom()
{
    static std::mt19937 random(1);
    return uint32_t(random());
}

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

bool RemoveDataFolder(const std::string &name)
{
    return rmdir(ToPath(DataPath(name)).string().c_str()) == 0;
}

void CleanDictionaries::SetUp()
{
    for (const char *name : {"MainDict.dat", "OldDict.dat", "UserDict.dat"})
        RemoveDataFile(name);
    UnloadDictionaries();
}

// By way of font code 5, which has the Lao block at its offsets.
std::string CodeOf(const std::string &utf8)
{
    std::string code;
    for (size_t i = 0, size; i < utf8.size(); i += size) {
        uint8_t lead = uint8_t(utf8[i]);
        size = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        uint32_t character = size == 3 ? (lead & 15u) << 12 | (uint8_t(utf8[i + 1]) & 63u) << 6 |
                                             (uint8_t(utf8[i + 2]) & 63u)
                                       : lead;
        if (size == 1)
            code += char(lead);
        else if (character == 0x200B)
            code += '-';
        else if (character > 0x0E80 && character < 0x0EE0)
            code += char(character - 0x0E80 + 0xA0);
    }
    return Packed(Recoded(code, 5));
}

std::string Packed(std::string text)
{
    PackLao(text.data());
    return text.c_str();
}

std::string Recoded(const std::string &text, LONG code)
{
    std::vector<char> buffer(2 * text.size() + 1);
    memcpy(buffer.data(), text.c_str(), text.size() + 1);
    EXPECT_EQ(RecodeString(buffer.data(), DWORD(buffer.size()), code), 1u);
    return buffer.data();
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
    for (size_t start = 0, end; start < text.size(); start = end + 1) {
        end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
    }
    return lines;
}

std::string ReadCorpus(const char *name)
{
    std::string text = ReadWholeFile(std::string(ORVEL_CORPUS) + "/" + name);
    EXPECT_GT(text.size(), 5000u) << name;
    return text;
}

std::vector<std::string> MainLines()
{
    std::vector<std::string> lines = Lines(ReadWholeFile(ORVEL_MAIN_DICTIONARY));
    std::erase_if(lines, [](const std::string &line) { return line[0] == '#'; });
    return lines;
}

std::vector<std::string> MainWords()
{
    std::vector<std::string> words;
    for (const std::string &line : MainLines())
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

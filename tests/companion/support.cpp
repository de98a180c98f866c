#include "companion/support.h"

#include <cstring>
#include <unistd.h>

#include "support/temp_folder.h"

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
    for (WCHAR character : WideOf(utf8))
        if (character < 0x80)
            code += char(character);
        else if (character > 0x0E80 && character < 0x0EE0)
            code += char(character - 0x0E80 + 0xA0);
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

std::vector<std::string> MainWords()
{
    std::vector<std::string> words;
    for (const std::string &line : SplitLines(ReadWholeFile(ORVEL_MAIN_DICTIONARY)))
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

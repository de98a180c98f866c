// Support of the key table tests.
#include "keytables/key_support.h"

#include <cstring>

#include "support/temp_folder.h"

void KeyTables::SetUp()
{
    StartedLibrary::SetUp();
    ASSERT_EQ(AddFontToList(kInternal, "", 0, 100, 0), 1);
    EXPECT_EQ(SetSortKey(nullptr), 1);
    EXPECT_EQ(SetRomanKey(nullptr), 1);
    ForgetLastWord();
}

void KeyTables::TearDown()
{
    RemoveDataFile(kFile);
    SetSortKey(nullptr);
    SetRomanKey(nullptr);
    StartedLibrary::TearDown();
}

const std::vector<std::string> &DictionaryWords()
{
    static std::vector<std::string> words;
    if (words.empty())
        for (const std::string &line :
             SplitLines(ReadWholeFile(ProgramFolder() + "\\MainDict.dat")))
            if (!line.empty() && line[0] != '#')
                words.push_back(CodeOfText(line.substr(0, line.find('\r'))));
    return words;
}

// A buffer that no operation has touched begins with its guard bytes.
static std::string ResultText(int done, char *buffer, DWORD size)
{
    EXPECT_TRUE(!done || memchr(buffer, 0, size)) << "no terminator";
    std::string text(buffer, strnlen(buffer, size));
    return done ? text : "failed: " + text;
}

std::string KeyOf(const std::string &code, DWORD size)
{
    Guarded<char> key(size);
    return ResultText(SortString(code.c_str(), key.data(), size, kInternal), key.data(), size);
}

std::string RomanOf(const std::string &code, DWORD size)
{
    Guarded<char> output(size);
    return ResultText(Romanize(code.c_str(), output.data(), size, kInternal), output.data(), size);
}

std::string EncodedOf(const std::string &code, DWORD *state, DWORD size)
{
    Guarded<char> output(size);
    return ResultText(EncodeEmail(code.c_str(), output.data(), size, kInternal, state),
                      output.data(), size);
}

std::string DecodedOf(const std::string &text, DWORD *state, DWORD size)
{
    Guarded<char> output(size);
    return ResultText(DecodeEmail(text.c_str(), output.data(), size, kInternal, state),
                      output.data(), size);
}

int LoadSortFile(const std::string &content)
{
    char name[] = "test.key";
    WriteDataFile(kFile, content);
    return SetSortKey(name);
}

int LoadRomanFile(const std::string &content)
{
    char name[] = "test.key";
    WriteDataFile(kFile, content);
    return SetRomanKey(name);
}

std::string ControlFileOf(const KeyTable &table, const std::string &sequence)
{
    static const char *const kNames[] = {"Initial", "Cluster", "Vowel", "Final",
                                         "Tone",    "Change",  "Number"};
    std::string content = "Sequence\n" + sequence + "\n";
    for (int section = 0; section < kSectionCount; ++section) {
        content += std::string(kNames[section]) + "\n";
        for (int i = table.first[section]; i < table.first[section + 1]; ++i)
            content += std::string(table.entries[i].key[0] ? table.entries[i].key : "0") + "\t" +
                       table.entries[i].value + "\n";
    }
    return content;
}

void ForgetLastWord()
{
    EXPECT_EQ(RomanOf(","), ",");
}

unsigned NextRandom()
{
    static unsigned long long state = 88172645463325252ull;
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    return unsigned(state >> 16);
}

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
template <typename Operation, typename... More>
static std::string ResultOf(Operation operation, const std::string &text, DWORD size, More... more)
{
    Guarded<char> output(size);
    int done = operation(text.c_str(), output.data(), size, kInternal, more...);
    EXPECT_TRUE(!done || memchr(output.data(), 0, size)) << "no terminator";
    return (done ? "" : "failed: ") + std::string(output.data(), strnlen(output.data(), size));
}

std::string KeyOf(const std::string &code, DWORD size)
{
    return ResultOf(SortString, code, size);
}

std::string RomanOf(const std::string &code, DWORD size)
{
    return ResultOf(Romanize, code, size);
}

std::string EncodedOf(const std::string &code, DWORD *state, DWORD size)
{
    return ResultOf(EncodeEmail, code, size, state);
}

std::string DecodedOf(const std::string &text, DWORD *state, DWORD size)
{
    return ResultOf(DecodeEmail, text, size, state);
}

int LoadSortFile(const std::string &content)
{
    WriteDataFile(kFile, content);
    return SetSortKey(std::string(kFile).data());
}

int LoadRomanFile(const std::string &content)
{
    WriteDataFile(kFile, content);
    return SetRomanKey(std::string(kFile).data());
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

void ExpectRomanized(std::initializer_list<TextRow> rows)
{
    for (const TextRow &row : rows) {
        ForgetLastWord();
        EXPECT_EQ(RomanOf(CodeOfText(row.text)), row.result) << row.text;
    }
}

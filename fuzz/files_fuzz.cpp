// Files that the library, its companion and the layer read: the list of fonts, the dictionaries,
// the registry. The first byte says which one the rest becomes.
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "start.h"

struct HostileFile {
    const char *path;  // in the folder of the run
    void (*read)();
};

static void ReadFonts()
{
    char name[37], substitute[37];
    int count = ReadFontList();
    Require(count >= 1 && count <= 127, "the table holds 1 to 127 fonts");
    for (int number = 1; GetLaoFontInfo(name, substitute, sizeof name, nullptr, number) >= 0;
         ++number)
        Require(FontIndex(name) >= 0, "every font is found by its name");
}

static void ReadWords()
{
    char word[40];
    int count = CountUserWords();
    for (int number = 0; number <= count + 1; ++number)
        GetWord(word, sizeof word, number, 4);
    AddUserWord("\xA1\xBE\xAD\xBE");
    DeleteUserWord("\xA1\xBE\xAD\xBE");
}

static void ReadRegistry()
{
    char folder[260];
    GetOrvelAppDir(folder, sizeof folder);
    Require(SetOrvelOption("b", 4, 1) == 1, "a damaged registry can be written");
}

static const HostileFile kFiles[] = {{"Orvel/LaoFonts.dat", ReadFonts},
                                     {"Orvel/UserDict.dat", ReadWords},
                                     {"orvel/registry", ReadRegistry}};

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    StartedFont();
    const HostileFile &hostile = kFiles[data[0] % std::size(kFiles)];
    std::string path = std::string(getenv("XDG_DATA_HOME")) + "/" + hostile.path;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    FILE *file = fopen(path.c_str(), "wb");
    Require(file != nullptr, "a file of the run");
    fwrite(data + 1, 1, size - 1, file);
    fclose(file);
    hostile.read();
    return 0;
}

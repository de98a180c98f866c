// A million lines in order, as whole processes: `orvel sort` beside the system's `sort` under the C
// library's own locale for Lao. Real time: the system's sort uses all cores.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "corpus.h"

constexpr size_t kLines = 1'000'000;

static std::string Folder()
{
    return (std::filesystem::path(getenv("XDG_DATA_HOME")) / "sort").string();
}

// One to four words of the dictionary a line, with blanks between them or without.
static void WriteLines(const std::string &path)
{
    std::vector<std::string> words = ReadDictionary();
    std::mt19937 random(5);
    std::string text;
    for (size_t i = 0; i < kLines; ++i) {
        const char *separator = random() % 2 ? " " : "";
        for (unsigned left = random() % 4 + 1; left--;) {
            text += words[random() % words.size()];
            text += left ? separator : "\n";
        }
    }
    WriteWhole(path, text);
}

// The text and the compiled locale; made once, by whichever benchmark comes first.
static bool MakeReady()
{
    std::string folder = Folder();
    if (std::filesystem::exists(folder + "/lines"))
        return true;
    std::filesystem::create_directories(folder);
    WriteLines(folder + "/lines");
    std::string make = "localedef -i lo_LA -f UTF-8 " + folder + "/lo_LA.UTF-8";
    return system(make.c_str()) == 0;
}

static void RunSort(benchmark::State &state, const std::string &command)
{
    std::string folder = Folder();
    std::string line = command + " " + folder + "/lines >" + folder + "/sorted";
    bool isReady = MakeReady();
    for (auto _ : state)
        if (!isReady || system(line.c_str()) != 0)
            state.SkipWithError("it can't be run");
    SetRate(state, double(kLines));
}

static void AddSort(const std::string &name, const std::string &command)
{
    benchmark::RegisterBenchmark(name.c_str(),
                                 [command](benchmark::State &state) { RunSort(state, command); })
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1)
        ->UseRealTime();
}

void RegisterSort()
{
    AddSort("million/sort/orvel", ORVEL_COMMAND " sort");
    AddSort("million/sort/gnu", "LOCPATH=" + Folder() + " LC_ALL=lo_LA.UTF-8 sort");
}

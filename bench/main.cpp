// Runs all benchmarks and, where one has peers of the same name, prints how many times as fast it
// is.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

#include <benchmark/benchmark.h>

void RegisterBreaks();
void RegisterKeys();
void RegisterSort();
void RegisterDocuments();
void RemoveDocuments();

constexpr const char *kPeers[] = {"icu", "libxml2", "libxml2-sax2", "expat", "gnu"};

// Keeps the median rate of each benchmark beside the usual table.
struct RatioReporter : benchmark::ConsoleReporter {
    std::map<std::string, double> medians;
    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs)
            if (!run.error_occurred && (run.aggregate_name == "median" || run.repetitions == 1))
                medians[run.run_name.function_name] = run.counters.at("per_s");
    }
};

static void PrintRatios(const std::map<std::string, double> &medians)
{
    printf("\n");
    for (auto [name, rate] : medians) {
        size_t ours = name.rfind("/orvel");
        std::string job = name.substr(0, ours);
        for (const char *peerName : kPeers) {
            auto peer = ours == name.npos ? medians.end() : medians.find(job + "/" + peerName);
            if (peer != medians.end())
                printf("%-36s %6.1f M/s, %-12s %6.1f, ratio %.2f\n", name.c_str(), rate / 1e6,
                       peerName, peer->second / 1e6, rate / peer->second);
        }
    }
}

// The library's data and options, and the documents that are made: beside the program, so that no
// run touches the user's own.
static void UseOwnHome()
{
    std::filesystem::path home =
        std::filesystem::read_symlink("/proc/self/exe").parent_path() / "bench-home";
    std::filesystem::remove_all(home);
    setenv("XDG_CONFIG_HOME", home.c_str(), 1);
    setenv("XDG_DATA_HOME", home.c_str(), 1);
}

int main(int argc, char **argv)
{
    UseOwnHome();
    benchmark::Initialize(&argc, argv);
    RegisterBreaks();
    RegisterKeys();
    RegisterSort();
    RegisterDocuments();
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    RemoveDocuments();
    PrintRatios(reporter.medians);
}

// Runs all benchmarks and, where one has a peer of the same name, prints how many times as fast it
// is.
#include <cstdio>
#include <map>
#include <string>

#include <benchmark/benchmark.h>

void RegisterBreaks();
void RegisterKeys();

// Keeps the median rate of each benchmark beside the usual table.
struct RatioReporter : benchmark::ConsoleReporter {
    std::map<std::string, double> medians;
    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs)
            if (run.aggregate_name == "median" || run.repetitions == 1)
                medians[run.run_name.function_name] = run.counters.at("per_s");
    }
};

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    RegisterBreaks();
    RegisterKeys();
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    printf("\n");
    for (auto [name, rate] : reporter.medians) {
        size_t ours = name.rfind("/orvel");
        auto peer = ours == name.npos ? reporter.medians.end()
                                      : reporter.medians.find(name.substr(0, ours) + "/icu");
        if (peer != reporter.medians.end())
            printf("%-28s %6.1f M/s, peer %6.1f, ratio %.2f\n", name.substr(0, ours).c_str(),
                   rate / 1e6, peer->second / 1e6, rate / peer->second);
    }
}

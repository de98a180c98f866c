// Breaks: the bare call on internal code beside the peer's bare iterator, and the whole road from
// UTF-8 to marked UTF-8 beside the peer's. Rates are characters of the UTF-8 text in a second.
#include <cstdio>
#include <cstdlib>

#include <benchmark/benchmark.h>

#include "icu_breaks.h"
#include "lao_text.h"
#include "utf8.h"

constexpr size_t kTextSize = 3'000'000;
constexpr DWORD kInsertBoth = 1 | 12;

static std::string ReadRepeated(const std::string &name)
{
    std::string path = std::string(ORVEL_CORPUS) + "/" + name + ".txt", once, text;
    char block[4096];
    FILE *file = fopen(path.c_str(), "rb");
    if (!file) {
        perror(path.c_str());
        exit(1);
    }
    for (size_t got; (got = fread(block, 1, sizeof block, file)) > 0;)
        once.append(block, got);
    fclose(file);
    while (text.size() < kTextSize)
        text += once;
    return text;
}

static const CodeTrace &Trace()
{
    static CodeTrace trace;
    static bool ready = StartLibrary() && PrepareTrace(&trace);
    if (!ready)
        exit(1);
    return trace;
}

static void SetRate(benchmark::State &state, const std::string &text)
{
    state.counters["char/s"] = benchmark::Counter(
        double(CountCharacters(text)) * double(state.iterations()), benchmark::Counter::kIsRate);
}

static void WrapCall(benchmark::State &state, const std::string &text)
{
    LaoText lao;
    ReadLaoText(Trace(), text, &lao);
    std::vector<char> buffer(2 * lao.packed.size() + 1);
    std::vector<BYTE> side(buffer.size());
    for (auto _ : state)
        WrapLaoEx(lao.packed.c_str(), buffer.data(), side.data(), DWORD(buffer.size()),
                  Trace().font.name.c_str(), kInsertBoth);
    SetRate(state, text);
}

static void IcuCall(benchmark::State &state, const std::string &text)
{
    IcuText *icu = MakeIcuText(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(CountIcuBoundaries(icu));
    SetRate(state, text);
}

// As the command does it, in pieces of 64 KB.
static void WrapRoad(benchmark::State &state, const std::string &text)
{
    LaoText lao;
    std::string output;
    for (auto _ : state) {
        std::string_view left = text;
        while (!left.empty()) {
            size_t size = left.size() > 65536 ? left.rfind('\n', 65536) + 1 : left.size();
            output.clear();
            DivideLaoText(Trace(), left.substr(0, size), kInsertBoth, &lao);
            AppendMarked(lao, std::string(kZeroWidthSpace), &output);
            benchmark::DoNotOptimize(output.data());
            left.remove_prefix(size);
        }
    }
    SetRate(state, text);
}

static void IcuRoad(benchmark::State &state, const std::string &text)
{
    IcuText *icu = MakeIcuText(text);
    std::string output;
    for (auto _ : state)
        MarkByIcu(icu, text, &output);
    SetRate(state, text);
}

void RegisterBreaks()
{
    typedef void (*Body)(benchmark::State &, const std::string &);
    static const std::pair<const char *, Body> bodies[] = {{"call/orvel", WrapCall},
                                                           {"call/icu", IcuCall},
                                                           {"road/orvel", WrapRoad},
                                                           {"road/icu", IcuRoad}};
    for (const char *name : {"udhr", "cldr_annotations", "web_phrases"})
        for (auto [what, body] : bodies)
            benchmark::RegisterBenchmark(
                (std::string(name) + "/" + what).c_str(),
                [body, text = ReadRepeated(name)](benchmark::State &state) { body(state, text); })
                ->Unit(benchmark::kMillisecond);
}

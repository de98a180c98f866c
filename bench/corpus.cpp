// Texts and the started library of the benchmarks.
#include "corpus.h"

#include <cstdio>
#include <cstdlib>

#include "orvel.h"
#include "session.h"

constexpr size_t kTextSize = 3'000'000;

static std::string ReadWhole(const std::string &path)
{
    std::string text;
    char block[4096];
    FILE *file = fopen(path.c_str(), "rb");
    if (!file) {
        perror(path.c_str());
        exit(1);
    }
    for (size_t got; (got = fread(block, 1, sizeof block, file)) > 0;)
        text.append(block, got);
    fclose(file);
    return text;
}

void WriteWhole(const std::string &path, const std::string &text)
{
    FILE *file = fopen(path.c_str(), "wb");
    if (file && fwrite(text.data(), 1, text.size(), file) == text.size() && fclose(file) == 0)
        return;
    perror(path.c_str());
    exit(1);
}

std::string ReadCorpusOnce(const std::string &name)
{
    return ReadWhole(std::string(ORVEL_CORPUS) + "/" + name + ".txt");
}

std::string ReadCorpusRepeated(const std::string &name)
{
    std::string once = ReadCorpusOnce(name), text;
    while (text.size() < kTextSize)
        text += once;
    return text;
}

std::vector<std::string> SplitLines(const std::string &text)
{
    std::vector<std::string> lines;
    for (size_t start = 0; start < text.size();) {
        size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::vector<std::string> ReadDictionary()
{
    std::vector<std::string> words = SplitLines(ReadWhole(ORVEL_DICTIONARY));
    std::erase_if(words, [](const std::string &word) { return word.empty() || word[0] == '#'; });
    return words;
}

static std::string StartForFont()
{
    std::string failure = StartLibrary();
    if (failure.empty())
        return FindTextFont();
    fprintf(stderr, "%s\n", failure.c_str());
    exit(1);
}

const std::string &TextFont()
{
    static const std::string font = StartForFont();
    return font;
}

const CodeTable &Codes()
{
    TextFont();  // starts the library
    static const CodeTable codes = ReadCodeTable();
    return codes;
}

// A list in the data folder goes before the one beside the companion, which reads either again when
// it has dropped what it had.
void UseWords(const std::string &list)
{
    TextFont();  // starts the library
    char folder[MAX_PATH];
    GetOrvelDataDir(folder, sizeof folder);
    std::string path = SystemPath(std::string(folder) + "\\MainDict.dat");
    remove(path.c_str());
    if (!list.empty())
        WriteWhole(path, list);
    GetProcAddress(GetModuleHandleA("Vesk.dll"), "UnloadDictionaries")();
}

void SetRate(benchmark::State &state, double amount)
{
    state.counters["per_s"] =
        benchmark::Counter(amount * double(state.iterations()), benchmark::Counter::kIsRate);
}

void AddBenchmark(const std::string &name, BenchBody body, const std::string &text)
{
    benchmark::RegisterBenchmark(name.c_str(), [body, text](benchmark::State &state) {
        body(state, text);
    })->Unit(benchmark::kMillisecond);
}

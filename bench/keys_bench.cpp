// Sort keys of the dictionary's words, from UTF-8 as from internal code, beside the peer's;
// romanization and e-mail coding of running text, which have no peer.
#include "corpus.h"
#include "icu_keys.h"
#include "key_text.h"
#include "utf8.h"

constexpr size_t kRoom = 40;  // bytes of a result for each byte of text

static void SortKeys(benchmark::State &state, const std::string &text)
{
    std::vector<std::string> words = SplitLines(text);
    KeyText key;
    char result[2048];
    const char *font = Trace().font.name.c_str();
    for (auto _ : state)
        for (const std::string &word : words) {
            ReadKeyText(Trace(), word, Hyphens::kText, false, &key);
            benchmark::DoNotOptimize(SortString(key.code.c_str(), result, sizeof result, font));
        }
    SetRate(state, double(words.size()));
}

static void IcuKeys(benchmark::State &state, const std::string &text)
{
    std::vector<std::string> words = SplitLines(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(MakeIcuKeys(words));
    SetRate(state, double(words.size()));
}

// Each line goes through an operation, as the command does it.
static void ByLine(benchmark::State &state, const std::string &text,
                   int (*operation)(const char *code, char *result, DWORD size))
{
    std::vector<std::string> lines = SplitLines(text);
    KeyText key;
    for (auto _ : state)
        for (const std::string &line : lines) {
            ReadKeyText(Trace(), line, Hyphens::kText, false, &key);
            key.result.assign(kRoom * key.code.size() + kRoom, 0);
            operation(key.code.c_str(), key.result.data(), DWORD(key.result.size()));
            benchmark::DoNotOptimize(WriteKeyText(Trace(), key, Hyphens::kText));
        }
    SetRate(state, double(CountCharacters(text)));
}

static void RomanizeText(benchmark::State &state, const std::string &text)
{
    ByLine(state, text, [](const char *code, char *result, DWORD size) {
        return Romanize(code, result, size, Trace().font.name.c_str());
    });
}

static void EncodeText(benchmark::State &state, const std::string &text)
{
    ByLine(state, text, [](const char *code, char *result, DWORD size) {
        DWORD inBrackets = 0;
        return EncodeEmail(code, result, size, Trace().font.name.c_str(), &inBrackets);
    });
}

static std::string JoinLines(const std::vector<std::string> &lines)
{
    std::string text;
    for (const std::string &line : lines)
        text += line + "\n";
    return text;
}

void RegisterKeys()
{
    std::string dictionary = JoinLines(ReadDictionary());
    AddBenchmark("dictionary/keys/orvel", SortKeys, dictionary);
    AddBenchmark("dictionary/keys/icu", IcuKeys, dictionary);
    for (const char *name : kCorpusNames) {
        std::string text = ReadCorpusOnce(name);
        AddBenchmark(std::string(name) + "/keys/orvel", SortKeys, text);
        AddBenchmark(std::string(name) + "/keys/icu", IcuKeys, text);
        AddBenchmark(std::string(name) + "/romanize", RomanizeText, text);
        AddBenchmark(std::string(name) + "/email", EncodeText, text);
    }
}

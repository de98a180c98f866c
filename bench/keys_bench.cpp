// Sort keys from UTF-8 and from internal code beside the peer's; romanization and e-mail coding of
// running text.
//
// The library remembers what was made of a megabyte of runs. The lines of the corpus fit into that:
// they are names that come again. The dictionary is twice as large, so that each word is new
// whenever its turn comes; and so is "new-runs", which has the words of udhr: each run is two of
// its pieces between blanks, put together at random.
#include <iterator>
#include <random>
#include <sstream>

#include "corpus.h"
#include "icu_keys.h"
#include "key_text.h"
#include "orvel.h"
#include "utf8.h"

constexpr size_t kMostKey = 8192;  // bytes

static int SortCall(const char *code, char *key, DWORD size)
{
    return SortString(code, key, size, TextFont().c_str());
}

static std::vector<std::string> CodesOf(const std::vector<std::string> &lines)
{
    std::vector<std::string> codes;
    for (const std::string &line : lines) {
        std::vector<WCHAR> characters;
        for (char16_t unit : Utf16Of(line))
            characters.push_back(WCHAR(unit));
        std::string code(characters.size(), '?');
        UnicodeToLao(characters.data(), code.data(), DWORD(code.size() + 1), -1);
        codes.push_back(code.c_str());
    }
    return codes;
}

// The bare call, from internal code; the peer's from UTF-16.
static void SortCalls(benchmark::State &state, const std::string &text)
{
    TextFont();  // starts the library
    std::vector<std::string> codes = CodesOf(SplitLines(text));
    char key[kMostKey];
    for (auto _ : state)
        for (const std::string &code : codes) {
            SortCall(code.c_str(), key, DWORD(8 * code.size() + 64));
            benchmark::DoNotOptimize(key);
        }
    SetRate(state, double(codes.size()));
}

static void IcuCalls(benchmark::State &state, const std::string &text)
{
    std::vector<std::u16string> words;
    for (const std::string &word : SplitLines(text))
        words.push_back(Utf16Of(word));
    for (auto _ : state)
        benchmark::DoNotOptimize(MakeIcuKeys(words));
    SetRate(state, double(words.size()));
}

// The road of the command, from UTF-8.
static void SortKeys(benchmark::State &state, const std::string &text)
{
    std::vector<std::string> words = SplitLines(text);
    const CodeTable &codes = Codes();
    std::string key;
    for (auto _ : state)
        for (const std::string &word : words) {
            key.clear();
            ConvertKeyText(codes, KeyForm::kKey, SortCall, word, false, &key);
            benchmark::DoNotOptimize(key.data());
        }
    SetRate(state, double(words.size()));
}

static void IcuKeys(benchmark::State &state, const std::string &text)
{
    std::vector<std::string> words = SplitLines(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(MakeIcuKeysFromUtf8(words));
    SetRate(state, double(words.size()));
}

// Each line goes through an operation, as the command does it.
static void ByLine(benchmark::State &state, const std::string &text, KeyForm form,
                   const KeyOperation &operation)
{
    std::vector<std::string> lines = SplitLines(text);
    const CodeTable &codes = Codes();
    std::string output;
    for (auto _ : state)
        for (const std::string &line : lines) {
            output.clear();
            ConvertKeyText(codes, form, operation, line, false, &output);
            benchmark::DoNotOptimize(output.data());
        }
    SetRate(state, double(CountCharacters(text)));
}

static void RomanizeText(benchmark::State &state, const std::string &text)
{
    ByLine(state, text, KeyForm::kText, [](const char *code, char *result, DWORD size) {
        return Romanize(code, result, size, TextFont().c_str());
    });
}

static int EncodeCall(const char *code, char *result, DWORD size)
{
    DWORD inBrackets = 0;
    return EncodeEmail(code, result, size, TextFont().c_str(), &inBrackets);
}

static int DecodeCall(const char *code, char *result, DWORD size)
{
    DWORD inBrackets = 0;
    return DecodeEmail(code, result, size, TextFont().c_str(), &inBrackets);
}

static void EncodeText(benchmark::State &state, const std::string &text)
{
    ByLine(state, text, KeyForm::kText, EncodeCall);
}

static void DecodeText(benchmark::State &state, const std::string &text)
{
    ByLine(state, text, KeyForm::kDecoded, DecodeCall);
}

static std::string EncodeLines(const std::string &text)
{
    std::string coded;
    for (const std::string &line : SplitLines(text)) {
        ConvertKeyText(Codes(), KeyForm::kText, EncodeCall, line, false, &coded);
        coded += '\n';
    }
    return coded;
}

static std::string JoinLines(const std::vector<std::string> &lines)
{
    std::string text;
    for (const std::string &line : lines)
        text += line + "\n";
    return text;
}

static std::string MakeNewRuns()
{
    constexpr size_t kLines = 6'000, kRuns = 5;
    std::istringstream source(ReadCorpusOnce("udhr"));
    std::vector<std::string> pieces{std::istream_iterator<std::string>(source), {}};
    std::mt19937 random(3);
    std::string text;
    for (size_t i = 0; i < kLines * kRuns; ++i) {
        text += pieces[random() % pieces.size()];
        text += pieces[random() % pieces.size()];
        text += (i + 1) % kRuns ? ' ' : '\n';
    }
    return text;
}

static void AddKeys(const std::string &name, const std::string &text)
{
    AddBenchmark(name + "/keys-call/orvel", SortCalls, text);
    AddBenchmark(name + "/keys-call/icu", IcuCalls, text);
    AddBenchmark(name + "/keys-road/orvel", SortKeys, text);
    AddBenchmark(name + "/keys-road/icu", IcuKeys, text);
}

static void AddAll(const std::string &name, const std::string &text)
{
    AddKeys(name, text);
    AddBenchmark(name + "/romanize", RomanizeText, text);
    AddBenchmark(name + "/email-encode", EncodeText, text);
    AddBenchmark(name + "/email-decode", DecodeText, EncodeLines(text));
}

void RegisterKeys()
{
    std::string dictionary = JoinLines(ReadDictionary());
    AddKeys("dictionary", dictionary);
    for (const char *name : kCorpusNames)
        AddAll(name, ReadCorpusOnce(name));
    AddAll("new-runs", MakeNewRuns());
}

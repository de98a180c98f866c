// Sort keys of the dictionary's words, from UTF-8 as from internal code, beside the peer's;
// romanization and e-mail coding of running text, which have no peer.
#include "corpus.h"
#include "icu_keys.h"
#include "key_text.h"
#include "orvel.h"
#include "utf8.h"

static int SortCall(const char *code, char *key, DWORD size)
{
    return SortString(code, key, size, TextFont().c_str());
}

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
        benchmark::DoNotOptimize(MakeIcuKeys(words));
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
        AddBenchmark(std::string(name) + "/email-encode", EncodeText, text);
        AddBenchmark(std::string(name) + "/email-decode", DecodeText, EncodeLines(text));
    }
}

// Sort keys from UTF-8 and from internal code beside the peer's; romanization and e-mail coding of
// running text.
//
// The library remembers 8,192 runs. The dictionary has five times as many words, so that each of
// them is new whenever its turn comes; the lines of the corpus come again and again.
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

static void AddKeys(const std::string &name, const std::string &text)
{
    AddBenchmark(name + "/keys-call/orvel", SortCalls, text);
    AddBenchmark(name + "/keys-call/icu", IcuCalls, text);
    AddBenchmark(name + "/keys-road/orvel", SortKeys, text);
    AddBenchmark(name + "/keys-road/icu", IcuKeys, text);
}

void RegisterKeys()
{
    std::string dictionary = JoinLines(ReadDictionary());
    AddKeys("dictionary", dictionary);
    for (const char *name : kCorpusNames) {
        std::string text = ReadCorpusOnce(name);
        AddKeys(name, text);
        AddBenchmark(std::string(name) + "/romanize", RomanizeText, text);
        AddBenchmark(std::string(name) + "/email-encode", EncodeText, text);
        AddBenchmark(std::string(name) + "/email-decode", DecodeText, EncodeLines(text));
    }
}

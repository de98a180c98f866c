// Breaks: the bare call on internal code beside the peer's bare iterator, and the whole road from
// UTF-8 to marked UTF-8 beside the peer's, with Orvel's own words and with those of the peer. Rates
// are characters of the UTF-8 text in a second.
#include "corpus.h"

#include <cstring>

#include "icu_breaks.h"
#include "icu_words.h"
#include "lao_text.h"
#include "utf8.h"

constexpr DWORD kInsertBoth = kInsertBreaks | kBothBreaks;

// The internal code of a text, a blank for each stretch that isn't Lao.
static std::string CodeOfText(const std::string &text)
{
    std::vector<WCHAR> characters;
    TextFont();  // starts the library
    for (size_t i = 0; i < text.size(); i += CharacterSize(std::string_view(text).substr(i))) {
        bool isLao = IsLaoAt(&text[i], text.size() - i);
        if (isLao || characters.empty() || characters.back() != ' ')
            characters.push_back(isLao ? WCHAR(LaoAt(&text[i])) : WCHAR(' '));
    }
    std::string code(characters.size(), ' ');
    UnicodeToLao(characters.data(), code.data(), DWORD(code.size() + 1), -1);
    code.resize(strlen(code.c_str()));
    return code;
}

static void WrapCall(benchmark::State &state, const std::string &text)
{
    std::string code = CodeOfText(text);
    std::vector<char> buffer(2 * code.size() + 1);
    std::vector<BYTE> side(buffer.size());
    for (auto _ : state)
        WrapLaoEx(code.c_str(), buffer.data(), side.data(), DWORD(buffer.size()),
                  TextFont().c_str(), kInsertBoth);
    SetRate(state, double(CountCharacters(text)));
}

static void IcuCall(benchmark::State &state, const std::string &text)
{
    IcuText *icu = MakeIcuText(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(CountIcuBoundaries(icu));
    SetRate(state, double(CountCharacters(text)));
}

// As the command does it, in pieces of 64 KB.
static void WrapRoad(benchmark::State &state, const std::string &text)
{
    LaoText lao;
    std::string output;
    TextFont();  // starts the library
    for (auto _ : state) {
        std::string_view left = text;
        while (!left.empty()) {
            size_t size = left.size() > 65536 ? left.rfind('\n', 65536) + 1 : left.size();
            output.clear();
            DivideLaoText(left.substr(0, size), kInsertBoth, &lao);
            AppendMarked(lao, kZeroWidthSpace, &output);
            benchmark::DoNotOptimize(output.data());
            left.remove_prefix(size);
        }
    }
    SetRate(state, double(CountCharacters(text)));
}

static void IcuRoad(benchmark::State &state, const std::string &text)
{
    IcuText *icu = MakeIcuText(text);
    std::string output;
    for (auto _ : state)
        MarkByIcu(icu, text, &output);
    SetRate(state, double(CountCharacters(text)));
}

static void WithIcuWords(benchmark::State &state, const std::string &text, BenchBody body)
{
    UseWords(ReadIcuWords());
    body(state, text);
    UseWords({});
}

static void WrapCallIcuWords(benchmark::State &state, const std::string &text)
{
    WithIcuWords(state, text, WrapCall);
}

static void WrapRoadIcuWords(benchmark::State &state, const std::string &text)
{
    WithIcuWords(state, text, WrapRoad);
}

void RegisterBreaks()
{
    for (const char *name : kCorpusNames) {
        std::string text = ReadCorpusRepeated(name);
        AddBenchmark(std::string(name) + "/call/orvel", WrapCall, text);
        AddBenchmark(std::string(name) + "/call/orvel-icu-words", WrapCallIcuWords, text);
        AddBenchmark(std::string(name) + "/call/icu", IcuCall, text);
        AddBenchmark(std::string(name) + "/road/orvel", WrapRoad, text);
        AddBenchmark(std::string(name) + "/road/orvel-icu-words", WrapRoadIcuWords, text);
        AddBenchmark(std::string(name) + "/road/icu", IcuRoad, text);
    }
}

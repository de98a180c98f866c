// Texts and the started library of the benchmarks, and their rates.
#pragma once

#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "codes.h"

inline const char *const kCorpusNames[] = {"udhr", "cldr_annotations", "web_phrases"};

// A corpus file once, and repeated to some megabytes; any file, written (or the program ends); the
// lines of a text.
std::string ReadCorpusOnce(const std::string &name);
std::string ReadCorpusRepeated(const std::string &name);
void WriteWhole(const std::string &path, const std::string &text);
std::vector<std::string> SplitLines(const std::string &text);

// The words of the shipped dictionary, as UTF-8.
std::vector<std::string> ReadDictionary();

// A font of the started library whose text is the internal code, and its codes.
const std::string &TextFont();
const CodeTable &Codes();

// The started library divides by these words (a word a line) until its own, with which it begins,
// are asked for by an empty list.
void UseWords(const std::string &list);

// Counts `amount` characters, keys or bytes for each iteration.
void SetRate(benchmark::State &state, double amount);

// Adds a benchmark under a name; one that ends in "/orvel" is set beside those that end in a peer's
// name.
typedef void (*BenchBody)(benchmark::State &, const std::string &text);
void AddBenchmark(const std::string &name, BenchBody body, const std::string &text);

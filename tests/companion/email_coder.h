// A coder for e-mail text, written from the printed chart, for round trips: one syllable in, its
// letters out. It knows nothing of the decoder's table.
#pragma once

#include <string>
#include <vector>

struct Syllable {
    std::string initial, vowel, tone, final;
};

// Reads the whole text as one syllable.
bool ParseSyllable(const std::string &text, Syllable *parts);

// The letters of a syllable; what the chart has no row for is left out.
std::string CodeOfSyllable(Syllable parts);

// Cuts a text into syllables, long ones first of all; empty where it can't be cut.
std::vector<std::string> SplitSyllables(const std::string &text);

// Text as a word processor keeps it in a legacy font, beside the Unicode text that it shows.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct LegacyText {
    std::string stored;  // UTF-8 of the code page 1252 characters of the font's bytes
    std::string known;   // the same text in Unicode, break marks as U+200B
};

// A number below `below`; the same row of them for the same seed.
unsigned NextRandom(uint32_t *seed, unsigned below);

// Writes Unicode text in a font of a conversion type. Signs that the font doesn't have are left
// out; where it has several bytes for a sign or one for two signs, the seed chooses. Breaks,
// characters that the code page has only by likeness or not at all, and entities come in between.
LegacyText WriteInLegacyFont(const std::string &text, int type, uint32_t *seed);

// The lines of a text, cut at blanks into pieces of the length of a run.
std::vector<std::string> CutIntoPhrases(const std::string &text, uint32_t *seed);

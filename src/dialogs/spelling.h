// What the spelling dialog does with words, without its window. Its exports are declared in
// orvel.h.
#pragma once

constexpr int kSpellTextSize = 128;  // bytes of each text, terminator included
constexpr int kMostWord = 126;       // of a word that the host hands over

// Copies source (below kSpellTextSize bytes) to target without its break marks.
void RemoveBreaks(char *target, const char *source);

// Copies source to target (kSpellTextSize bytes) spread out: two blanks before each break mark and
// each sign that would sit on its letter, so that a person sees them one by one. Stops when it is
// full.
void ExpandBreaks(char *target, const char *source);

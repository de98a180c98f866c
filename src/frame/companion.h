// The bridge to the companion module Vesk.dll: dictionaries, keyboard and recoding. Each operation
// is a thin function of the companion's own name that survives the absence of the module or of that
// one name. The exported ones (LaoMode, LaoOn, GetWord, GetNewWord, PackLao, RecodeString,
// ShowAbout) stand in orvel.h.
#pragma once

#include <cstdint>

#include "frame/records.h"

// Loads the module from the install folder and binds its operations: 1 bound, also when it was
// before; 0 without a window of the keyboard manager, an install folder or the module. A missing
// name shows a box.
int BindCompanion();

// Releases the module and clears all entries. Always 1.
int UnbindCompanion();

// Flags of FindWord beside the dictionary bits.
enum : int { kWholeEntry = 64, kWantHandle = 128 };

// Makes a dictionary available: its number of words, 0 when unbound.
WORD ReadLaoDict(const char *fileName, int dictionary);

// Zero when the first `length` bytes of text begin no entry (are no entry, with kWholeEntry) of the
// dictionaries in flags. -1, which reads as found, when unbound.
int FindWord(const char *text, int length, int zero, int flags);

// 0 done; 1 too short, 2 already there, others failed, -1 unbound.
int AddWord(const char *word);
int DeleteWord(const char *word);

// AddWord for many words at once. Not every companion has it: 0 when this one hasn't or fails.
int AddWords(const char *const *words, int *results, DWORD count);

int Options();

// Nonzero when the font code exists and record was filled; record stored back.
int FontCodeData(int code, FontCodeRecord *record);
int SetFontCodeData(int code, FontCodeRecord *record);

// Turns the coded syllable from start up to end into internal code at output: the bytes written.
int AddLaoSyllable(char *output, const char *start, const char *end);

int UnloadDictionaries();

// Which signs of the internal code PackLao joins: joined[row[a]][column[b]] is what it makes of the
// last sign written, a, and the next one read, b; 0 when they stay apart.
enum { kMostJoining = 16 };
struct SignJoins {
    uint8_t row[256], column[256];  // 0: joins with none
    uint8_t joined[kMostJoining][kMostJoining];
};

// Null when this companion doesn't tell; PackLao is to be called then.
const SignJoins *JoiningSigns();

// Lengths at which words start at a position, a mask for each dictionary: the bit of value 2^(L-1)
// for length L. A layout shared with the companion.
struct WordLengths {
    DWORD main, old, user;
};

// One question for a position, in place of two for each length. Not every companion answers it: 0
// when this one doesn't (FindWord is then to be asked), 1 when lengths are filled.
int FindWordLengths(const char *text, DWORD dictionaries, WordLengths *lengths);

// A number that changes whenever words of a dictionary do. 0 when this companion doesn't tell; what
// its look-ups have given must not be remembered then.
int DictionariesRevision(DWORD *revision);

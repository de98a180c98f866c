// The three tables that are built in: sort keys, romanization and e-mail coding. They are what
// LoadControlFile would make of a control file of the same rows, and never change.
#pragma once

#include "keytables/key_table.h"

extern const KeyTable kBuiltInSortTable;
extern const KeyTable kBuiltInRomanTable;
extern const KeyTable kBuiltInEmailTable;

// The two orders of a sort key: finals before vowels ("vowels last"), and as spoken ("natural").
constexpr char kVowelsLast[] = "I2FVT", kNaturalOrder[] = "I2VFT";

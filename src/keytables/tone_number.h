// The tone in which a syllable is spoken, by the rules of Lao: class of the initial, length of the
// vowel, kind of the final, tone mark. Canonical codes are asked for (NormalizeSyllable).
#pragma once

#include <cstddef>

#include "text/syllable_parser.h"

// 0 mid, 1 low, 2 high, by the first byte; -1 for no consonant of a class.
int ConsonantClass(const uint8_t *initial);

// 0 long, 1 short.
int VowelLengthClass(const uint8_t *vowel);

// 0 none, 1 stop, 2 sonorant.
int FinalClass(const uint8_t *final);

// 0 none, 1 to 5 for 250 to 254.
int ToneMarkIndex(const uint8_t *tone);

// Writes the number, 0 for none to 6, as decimal text of one digit; text has room for two bytes.
void ToneNumberText(const SyllableParts *parts, char *text);

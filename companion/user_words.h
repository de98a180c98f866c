// The order of the user's words, by which GetWord numbers them.
#pragma once

// Below, equal or above 0: the order of a Lao word list. Consonants decide first, each with the
// vowel that belongs to it, a vowel in front of its consonant as if it stood behind; tone marks
// only between words that are equal without them.
int CompareLao(const char *a, const char *b);

// Frees the numbers; the next GetWord makes them again.
void ForgetUserOrder();

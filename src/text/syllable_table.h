// The format of the syllable automaton, shared by make_syllable_table.cpp, which writes it, and
// breaks/lengths.cpp, which walks it. A cell of 16 bits holds the next state above two flags that
// tell whether a syllable ends at this byte.
#pragma once

enum {
    kEndsHere = 1,     // a text that ends with this byte is a syllable
    kEndedBefore = 2,  // one that ends a byte earlier is: this byte cancels the one before
    kEndFlags = kEndsHere | kEndedBefore,
    kStateShift = 2,
    kClassRoom = 32,  // cells of a row; the classes of bytes are fewer
    kStartState = 0,
};

// The format of the syllable automaton: a cell holds the next state and whether a syllable ends.
#pragma once

enum {
    kEndsHere = 1,     // a text that ends with this byte is a syllable
    kEndedBefore = 2,  // one that ends a byte earlier is: this byte cancels the one before
    kEndFlags = kEndsHere | kEndedBefore,
    kStateShift = 2,
    kClassRoom = 32,  // cells of a row; the classes of bytes are fewer
    kStartState = 0,
};

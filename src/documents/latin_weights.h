// Ten times the natural logarithm of how much more often a sign stands in text with Latin letters
// than in Lao typed at the keys; 0 for the blank. Written by scripts/latin-weights, for detect.cpp:
// from 18,883 texts and the Lao of tests/corpus.
#pragma once

#include <cstdint>

// clang-format off
constexpr int8_t kLatinWeights[96] = {
    // 0    1    2    3    4    5    6    7    8    9    A    B    C    D    E    F
      0, -13,  30, -11,   4,  19,  16, -20,  25,  21,  -8,   7, -13, -15,  -2,  -1,  // 2
    -34, -25, -20, -44, -44, -49, -50, -50, -50, -50,  36, -36,  28, -44,  28,  12,  // 3
      2,  41,  33,  35,   7,  38,  16,  17,  13, -17,   0,  32,  35,   1,  39,  33,  // 4
    -15,  13,  31,  31,  39,  33,  27,  20,   7,  25,  18, -50, -50, -50, -50,  26,  // 5
     -9,  13,  17,   2,  -4,  38, -15,  -4,  -5,  33, -13,  -9,   3,   5,  18,  -3,  // 6
     -1, -17,  13,   8,   7,   6, -12,   1, -15,  -1,   3,   3, -41,  15,   5,   0,  // 7
};
// clang-format on

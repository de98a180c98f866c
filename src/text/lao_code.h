// The internal code: one byte for each Lao sign, and the classes of its bytes. Text of every font
// is recoded to it before anything looks at it, so all folders above this one ask these tests.
// Bytes below 128 are ASCII, but kBreakMark is the invisible break and kRealHyphen the hyphen that
// is seen. A byte can be in several classes, so a class is a bit and a test one look into a table
// of 256. All tests are pure and read only the low 8 bits of their argument.
#pragma once

#include <array>
#include <cstdint>

#include "orvel.h"

enum : uint8_t { kRepeatSign = 197, kEllipsis = 198 };

enum CodeClass : uint8_t {
    kLaoCode = 1,    // may stand in a run of Lao
    kLeadVowel = 2,  // written before its consonant
    kVowel = 4,      // behind or over it; no lead vowel, no two-sign code
    kTone = 8,       // tone marks and cancellation mark
    kConsonant = 16,
    kSonorant = 32,    // can follow HO SUNG in a cluster
    kFinal = 64,       // can end a syllable
    kCombining = 128,  // drawn over or under its base
};

// The codes from first to last, both included, are in the class. A code may stand in many rows.
struct CodeRange {
    uint8_t first, last;
    CodeClass codeClass;
};

// clang-format off
constexpr CodeRange kCodeRanges[] = {
    {132, 137, kLaoCode},   {152, 157, kLaoCode}, {161, 213, kLaoCode},   {234, 254, kLaoCode},
    {192, 196, kLeadVowel},
    {188, 191, kVowel},     {208, 222, kVowel},   {240, 248, kVowel},
    {200, 204, kTone},      {250, 254, kTone},
    {161, 187, kConsonant}, {205, 207, kConsonant}, {234, 236, kConsonant},
    {164, 164, kSonorant},  {168, 168, kSonorant}, {173, 173, kSonorant}, {180, 184, kSonorant},
    {235, 236, kSonorant},  {249, 249, kSonorant},
    {161, 161, kFinal},     {164, 164, kFinal},   {168, 169, kFinal},     {173, 174, kFinal},
    {180, 180, kFinal},     {184, 184, kFinal},
    {132, 137, kCombining}, {152, 157, kCombining}, {200, 204, kCombining}, {208, 211, kCombining},
    {240, 254, kCombining},
};
// clang-format on

// The chart as one byte of class bits for each code, worked out while compiling.
constexpr std::array<uint8_t, 256> BuildCodeClasses()
{
    std::array<uint8_t, 256> classes = {};
    for (const CodeRange &range : kCodeRanges)
        for (int code = range.first; code <= range.last; ++code)
            classes[code] |= range.codeClass;
    return classes;
}
inline constexpr std::array<uint8_t, 256> kCodeClasses = BuildCodeClasses();

constexpr bool HasClass(int code, CodeClass codeClass)
{
    return kCodeClasses[uint8_t(code)] & codeClass;
}

// IsLaoCode is exported (orvel.h); this is the same question for inner loops.
constexpr bool IsLaoByte(int code)
{
    return HasClass(code, kLaoCode);
}
constexpr bool IsLeadVowel(int code)
{
    return HasClass(code, kLeadVowel);
}
constexpr bool IsVowelCode(int code)
{
    return HasClass(code, kVowel);
}
constexpr bool IsToneCode(int code)
{
    return HasClass(code, kTone);
}
constexpr bool IsConsonantCode(int code)
{
    return HasClass(code, kConsonant);
}
constexpr bool IsSonorantCode(int code)
{
    return HasClass(code, kSonorant);
}
constexpr bool IsFinalConsonant(int code)
{
    return HasClass(code, kFinal);
}
constexpr bool IsCombiningCode(int code)
{
    return HasClass(code, kCombining);
}

// The repeat sign and the ellipsis go with the word that they stand behind.
constexpr bool IsWordSign(int code)
{
    return uint8_t(code) == kRepeatSign || uint8_t(code) == kEllipsis;
}

// The mark over a consonant that is written but not spoken; two codes, for two heights.
constexpr bool IsCancellationMark(int code)
{
    return uint8_t(code) == 204 || uint8_t(code) == 254;
}

// Whether text[1] joins text[0] as the second consonant of an initial cluster.
bool IsClusterPair(const uint8_t *text);

// The order of Lao words, as far as a list of a user's words needs it, which GetWord numbers by it:
// letter by letter in the order of the alphabet, lead vowels moved behind their consonant. Tone
// marks are passed over, and words that differ in nothing else stand in the order of their bytes.
// (Sort keys, which look at whole syllables, are the library's.)
#include "lao_signs.h"
#include "user_words.h"
#include <cassert>
#include <cstring>
#include <iterator>

// clang-format off
// Consonants, then closing signs, then vowels, each in the order of a dictionary.
constexpr uint8_t kLaoOrder[] = {
    161, 162, 163, 164, 165, 166, 167, 168, 169, 170, 171, 234, 173, 174, 175, 176, 177, 178, 179,
    180, 181, 235, 236, 249, 184, 185, 206, 207, 186, 187,
    198, 197,
    189, 241, 190, 242, 243, 244, 245, 247, 248, 192, 193, 194, 240, 246, 188, 195, 196, 191,
};
// clang-format on

constexpr int kFirstLetterRank = 139;  // behind ASCII, the digits and the hyphen
static_assert(kFirstLetterRank + std::size(kLaoOrder) <= 256);

// The place of each byte; 0 for one that no word holds.
struct Ranks {
    uint8_t of[256];
};

// Bytes that are no Lao letters come first, in their own order.
constexpr Ranks RankBytes()
{
    Ranks ranks = {};
    for (int code = 1; code < 128; ++code)
        ranks.of[code] = uint8_t(code);
    for (int digit = 0; digit < 10; ++digit)
        ranks.of[224 + digit] = uint8_t(128 + digit);
    ranks.of[kRealHyphen] = kFirstLetterRank - 1;
    uint8_t rank = kFirstLetterRank;
    for (uint8_t code : kLaoOrder)
        ranks.of[code] = rank++;
    return ranks;
}
constexpr Ranks kRanks = RankBytes();

// Reads a word letter by letter.
struct LetterReader {
    const uint8_t *next;
    uint8_t waiting[2];  // signs to come before the next byte, the last first
    int waitingCount;
};

static bool IsLeadVowel(uint8_t code)
{
    return code >= 192 && code <= 196;
}

static bool IsTone(uint8_t code)
{
    return code >= 250 && code <= 254;
}

// The next sign in the order of speech; 0 at the end. A lead vowel waits for its consonant, and the
// second sign of a two-sign code for the first.
static uint8_t NextSign(LetterReader *reader)
{
    if (reader->waitingCount)
        return reader->waiting[--reader->waitingCount];
    uint8_t code = *reader->next;
    if (!code)
        return 0;
    ++reader->next;
    if (IsLeadVowel(code) && kRanks.of[*reader->next] && !IsLeadVowel(*reader->next)) {
        reader->waiting[reader->waitingCount++] = code;
        code = *reader->next++;
    }
    const SignPair *pair = SignPairOf(code);
    if (!pair)
        return code;
    assert(reader->waitingCount < int(sizeof reader->waiting));
    reader->waiting[reader->waitingCount++] = pair->second;
    return pair->first;
}

// 0 at the end, which so comes in front of every letter.
static uint8_t NextLetterRank(LetterReader *reader)
{
    uint8_t sign;
    do
        sign = NextSign(reader);
    while (IsTone(sign));
    return kRanks.of[sign];
}

int CompareLao(const char *a, const char *b)
{
    LetterReader left = {reinterpret_cast<const uint8_t *>(a), {}, 0};
    LetterReader right = {reinterpret_cast<const uint8_t *>(b), {}, 0};
    for (;;) {
        int leftRank = NextLetterRank(&left), rightRank = NextLetterRank(&right);
        if (leftRank != rightRank)
            return leftRank - rightRank;
        if (!leftRank)
            return strcmp(a, b);
    }
}

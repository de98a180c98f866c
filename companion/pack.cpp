// PackLao: text as it is typed and as Unicode has it, sign by sign, becomes text as the syllable
// parser and the dictionaries want it, with one byte for a vowel and its tone. The library calls it
// behind each recoding; dictionaries pack their words the same way, so that the two can meet. One
// pass: the last
// byte written and the next one read join, or the next one is written behind it. What a join gives
// may join again: niggahita, tone and AA are AM with a tone.
#include "lao_signs.h"
#include "vesk.h"

constexpr uint8_t kToneEk = 250, kToneTho = 251;
constexpr uint8_t kAa = 190, kAm = 191, kNiggahita = 240;
constexpr uint8_t kNiggahitaEk = 210, kNiggahitaTho = 211, kAmEk = 212, kAmTho = 213;

// Only the tones EK and THO have codes together with a vowel. 0: they don't join.
constexpr uint8_t JoinWithTone(uint8_t sign, uint8_t tone)
{
    bool ek = tone == kToneEk;
    if (!ek && tone != kToneTho)
        return 0;
    if (sign >= 241 && sign <= 246)
        return uint8_t(sign - 241 + (ek ? 132 : 152));
    if (sign == kNiggahita)
        return ek ? kNiggahitaEk : kNiggahitaTho;
    if (sign == kAm)
        return ek ? kAmEk : kAmTho;
    return 0;
}

// AM written as niggahita, with or without its tone, and AA in this order.
constexpr uint8_t JoinWithAa(uint8_t sign, uint8_t aa)
{
    if (aa != kAa)
        return 0;
    switch (sign) {
    case kNiggahita: return kAm;
    case kNiggahitaEk: return kAmEk;
    case kNiggahitaTho: return kAmTho;
    default: return 0;
    }
}

// The one byte for two that follow each other, or 0.
constexpr uint8_t JoinSigns(uint8_t a, uint8_t b)
{
    uint8_t joined = JoinWithTone(a, b);
    if (!joined)
        joined = JoinWithTone(b, a);
    return joined ? joined : JoinWithAa(a, b);
}

// Whether a sign joins with any at all, as the first or as the second of two: few do.
constexpr int kFirstSign = 128;
enum JoinRole : uint8_t { kJoinsAsFirst = 1, kJoinsAsSecond = 2 };

struct JoinTable {
    uint8_t roles[256];
};

constexpr JoinTable BuildJoinTable()
{
    JoinTable table = {};
    for (int a = kFirstSign; a < 256; ++a)
        for (int b = kFirstSign; b < 256; ++b)
            if (JoinSigns(uint8_t(a), uint8_t(b))) {
                table.roles[a] |= kJoinsAsFirst;
                table.roles[b] |= kJoinsAsSecond;
            }
    return table;
}
constexpr JoinTable kJoins = BuildJoinTable();

// One test for both, as most jumps that the text decides can't be foretold.
static inline bool MayJoin(uint8_t first, uint8_t second)
{
    return kJoins.roles[first] << 1 & kJoins.roles[second] & kJoinsAsSecond;
}

DWORD WINAPI JoinLaoSigns(DWORD first, DWORD second)
{
    return first < 256 && second < 256 ? JoinSigns(uint8_t(first), uint8_t(second)) : 0;
}

void WINAPI PackLao(char *text)
{
    if (!text || !*text)
        return;
    uint8_t *out = reinterpret_cast<uint8_t *>(text);
    while (out[1] && !MayJoin(out[0], out[1]))
        ++out;  // what doesn't join stays where it is
    uint8_t last = *out;
    for (const uint8_t *in = out + 1; *in; ++in) {
        uint8_t sign = *in;
        if (uint8_t joined = MayJoin(last, sign) ? JoinSigns(last, sign) : 0) {
            last = *out = joined;
        } else {
            last = sign;  // known without what was written
            *++out = sign;
        }
    }
    out[1] = 0;
}

// The class tests that take more than a look into the table: the exported one, and which two
// consonants are spoken together at the start of a syllable. The syllable parser and the maker of
// its table ask the second one.
#include "text/lao_code.h"

#include "orvel.h"

enum : uint8_t { kWo = 184, kHoSung = 185, kO = 186, kLoLing = 235, kLoLoot = 236, kSignLo = 249 };

int WINAPI IsLaoCode(int code)
{
    return IsLaoByte(code);
}

// WO and both forms of LO are second members of clusters, so none of them leads one.
static bool LeadsNoCluster(uint8_t code)
{
    return code == kWo || code == kLoLing || code == kLoLoot;
}

// The first rule that applies decides. The alternative codes of LO LING and LO LOOT are sonorants
// like all others here.
bool IsClusterPair(const uint8_t *text)
{
    uint8_t first = text[0], second = text[1];
    if (LeadsNoCluster(first))
        return false;
    if (first == kHoSung)
        return IsSonorantCode(second);
    if (!IsConsonantCode(first))
        return false;
    if (first == kO || IsSonorantCode(first))
        return second == kWo;
    return second == kWo || second == kLoLing || second == kLoLoot || second == kSignLo;
}

// The fast ways to the lengths at a position, held equal to the plain ones on generated texts and
// on real text.
#include <random>

#include "breaks/lengths.h"
#include "support/corpus.h"
#include "support/started_library.h"
#include "text/lao_code.h"

// Bytes that readings turn on, one of each behaviour at least.
static const uint8_t kTellingBytes[] = {161, 164, 170, 173, 184, 185, 186, 235, 249, 188,
                                        189, 190, 191, 192, 193, 194, 195, 241, 242, 244,
                                        245, 246, 240, 250, 251, 254, 204, 197, 198, 132,
                                        133, 135, 137, 152, 157, 237, 208, 168, 32};

static void ExpectEqualMasks(const uint8_t *text)
{
    uint32_t plain = SyllableLengthMask(text), fast = SyllableLengths(text);
    if (plain != fast)  // the message costs more than the comparison
        ADD_FAILURE() << ShowCode(reinterpret_cast<const char *>(text)) << ": " << plain << " "
                      << fast;
}

TEST(SyllableLengths, EqualTheParserOnAllShortTexts)
{
    size_t n = std::size(kTellingBytes);
    for (size_t i = 0; i < n * n * n * n; ++i) {
        const uint8_t text[] = {kTellingBytes[i % n], kTellingBytes[i / n % n],
                                kTellingBytes[i / n / n % n], kTellingBytes[i / n / n / n], 0};
        ExpectEqualMasks(text);
    }
}

TEST(SyllableLengths, EqualTheParserOnRandomTexts)
{
    std::mt19937 random(1);
    for (int round = 0; round < 2000000; ++round) {
        uint8_t text[11] = {};
        for (int i = 0; i < 10; ++i)
            text[i] = random() % 8 ? kTellingBytes[random() % std::size(kTellingBytes)]
                                   : uint8_t(random());
        ExpectEqualMasks(text);
    }
}

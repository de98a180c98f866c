// Font code 4 against the machine's own IBM1133.
#include "companion/support.h"

#include <iconv.h>

// The text in another charset, or nothing where it has no counterpart.
static std::string Convert(const char *to, const char *from, const std::string &text)
{
    iconv_t state = iconv_open(to, from);
    EXPECT_NE(state, iconv_t(-1));
    std::string in = text, out(4 * text.size() + 8, '\0');
    char *source = in.data(), *target = out.data();
    size_t left = in.size(), room = out.size();
    bool isDone = iconv(state, &source, &left, &target, &room) != size_t(-1);
    iconv_close(state);
    out.resize(out.size() - room);
    return isDone ? out : "";
}

TEST(Ibm1133, EveryByteMeansWhatTheSystemSays)
{
    int lao = 0;
    for (int byte = 1; byte < 256; ++byte) {
        std::string text(1, char(byte)), wide = Convert("UTF-16BE", "IBM1133", text);
        int character = wide.size() == 2 ? uint8_t(wide[0]) << 8 | uint8_t(wide[1]) : -1;
        std::string sign = Recoded(text, 4);
        if (character >= 0x0E80 && character < 0x0EE0) {
            // Font code 5 has the Lao block at its offsets.
            EXPECT_EQ(uint8_t(Recoded(sign, -5)[0]) - 0xA0 + 0x0E80, character) << byte;
            EXPECT_EQ(Recoded(sign, -4), text);
            ++lao;
        } else if (character == 0xA0) {
            EXPECT_EQ(uint8_t(sign[0]), 160);
        } else if (character != '-' && character != 31) {  // the real hyphen and the break mark
            EXPECT_EQ(sign,
                      character >= 0 && character < 0x80 ? std::string(1, char(character)) : "?")
                << byte;
        }
    }
    EXPECT_EQ(lao, 65);
}

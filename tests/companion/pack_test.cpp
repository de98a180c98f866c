// PackLao: rows of joins, and what holds for every text of the signs that join.
#include "companion/support.h"

#include <algorithm>

TEST(PackLao, JoinsByTheRules)
{
    const struct {
        std::string text, packed;
        const char *what;
    } rows[] = {{"\241\361\372\255", "\241\204\255", "MAI KAN, EK"},
                {"\241\362\373", "\241\231", "I, THO"},
                {"\241\372\366", "\241\211", "EK, MAI KON"},
                {"\241\373\360", "\241\323", "THO, niggahita"},
                {"\241\372\277", "\241\324", "EK, AM"},
                {"\241\360\276", "\241\277", "AM in two signs"},
                {"\241\322\276", "\241\324", "niggahita with EK, AA"},
                {"\241\360\373\276", "\241\325", "AM in two signs around its tone"},
                {"\241\360\276\372", "\241\324", "its tone behind"},
                {"\241\276\360", "\241\276\360", "AA, niggahita: not joined"},
                {"\241\367\372", "\241\367\372", "U has no joined codes"},
                {"\241\362\374", "\241\362\374", "nor has MAI TI"},
                {"\241\360\374\276", "\241\360\374\276", "nor with AM"},
                {"\241\372\373\362", "\241\372\231", "the nearer tone"},
                {"\241\362\372\373", "\241\205\373", "the first tone"},
                {"\372\362", "\205", "at the start"},
                {"", "", "empty"},
                {"abc-\037\214", "abc-\037\214", "no Lao"}};
    for (const auto &row : rows)
        EXPECT_EQ(Show(Packed(row.text)), Show(row.packed)) << row.what;
    PackLao(nullptr);
}

// The single signs of a text, sorted; AM counts as the two that it can be written with.
static std::string SignsOf(const std::string &text)
{
    std::string signs;
    for (char c : text) {
        int code = uint8_t(c);
        if ((code >= 132 && code <= 137) || (code >= 152 && code <= 157)) {
            signs += {char(241 + (code - 132) % 20), char(code < 140 ? 250 : 251)};
        } else if (code == 210 || code == 211) {
            signs += {char(240), char(code + 40)};
        } else if (code == 212 || code == 213) {
            signs += {char(240), char(190), char(code + 38)};
        } else if (code == 191) {
            signs += {char(240), char(190)};
        } else {
            signs += c;
        }
    }
    std::sort(signs.begin(), signs.end());
    return signs;
}

// Every text of up to five bytes over the signs that take part.
TEST(PackLao, KeepsAllSignsAndIsDoneAfterOnePass)
{
    const std::string signs = "\241\276\277\204\231\322\323\324\325\360\361\366\372\373";
    size_t joined = 0;
    for (size_t length = 1; length <= 5; ++length) {
        for (size_t n = 0, rest = 0; !rest; ++n) {
            std::string text;
            rest = n;
            for (size_t i = 0; i < length; ++i, rest /= signs.size())
                text += signs[rest % signs.size()];
            std::string packed = Packed(text);
            joined += packed.size() < text.size();
            ASSERT_EQ(SignsOf(packed), SignsOf(text)) << Show(text) << " packed " << Show(packed);
            ASSERT_EQ(Show(Packed(packed)), Show(packed)) << Show(text);
        }
    }
    EXPECT_GT(joined, 100000u);
}

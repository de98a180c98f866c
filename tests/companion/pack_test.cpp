// PackLao: rows of joins, and what holds for every text of the signs that join.
#include "companion/support.h"

#include <algorithm>

TEST(PackLao, JoinsByTheRules)
{
    const char *rows[][2] = {
        // clang-format off
        {"\241\361\372\255", "\241\204\255"}, {"\241\373\366", "\241\235"},  // THO in front of its sign
        {"\241\360\373\276", "\241\325"}, {"\241\277\372", "\241\324"},  // AM in two signs around its tone
        {"\241\276\360", "\241\276\360"}, {"\241\362\374", "\241\362\374"}, {"\241\367\372", "\241\367\372"},
        {"\241\372\373\362", "\241\372\231"}, {"", ""}, {"abc-\037\214", "abc-\037\214"},  // the nearer tone
        // clang-format on
    };
    for (const auto &[text, packed] : rows)
        EXPECT_EQ(ShowCode(Packed(text)), ShowCode(packed)) << ShowCode(text);
    PackLao(nullptr);
}

// The single signs of a text as font code 5 has them, sorted; AM counts as the two that it can be
// written with.
static std::string SignsOf(const std::string &text)
{
    std::string signs = Recoded(text, -5);
    for (size_t at; (at = signs.find('\xD3')) != std::string::npos;)
        signs.replace(at, 1, "\xED\xD2");
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
            ASSERT_EQ(SignsOf(packed), SignsOf(text))
                << ShowCode(text) << " packed " << ShowCode(packed);
            ASSERT_EQ(ShowCode(Packed(packed)), ShowCode(packed)) << ShowCode(text);
        }
    }
    EXPECT_GT(joined, 100000u);
}

// What dialogs decide without a window: every state of the options, words that are spread out.
#include <cstring>
#include <gtest/gtest.h>
#include <string>

#include "dialogs/find.h"
#include "dialogs/spelling.h"
#include "settings/options_dialog.h"

// A row for each break mode and set of dictionaries: w words, o old words, s spelling, u user's.
TEST(Decisions, ControlsThatCanBeUsed)
{
    const struct {
        WORD breakMode;
        const char *usable[8];  // by the dictionaries from 0 to 7
    } rows[] = {
        {0, {"", "", "", "", "u", "u", "u", "u"}},
        {4, {"", "", "", "", "u", "u", "u", "u"}},
        {8, {"w", "wo", "w", "wos", "wu", "wou", "wu", "wosu"}},
        {12, {"w", "wo", "w", "wos", "wu", "wou", "wu", "wosu"}},
        {0xFFFF, {"w", "wo", "w", "wos", "wu", "wou", "wu", "wosu"}},
    };
    for (const auto &row : rows) {
        for (WORD dictionaries = 0; dictionaries < 8; ++dictionaries) {
            OptionsRecord options = {};
            options.breakMode = row.breakMode;
            options.dictionaries = dictionaries;
            std::string usable;
            for (int i = 0; i < 4; ++i)
                if (UsableControls(&options) & 1 << i)
                    usable += "wosu"[i];
            EXPECT_EQ(usable, row.usable[dictionaries]) << row.breakMode << " " << dictionaries;
        }
    }
}

// Each length up to the longest, of each kind of byte, and nothing behind the buffer.
TEST(Decisions, SpreadWordsStayInTheirRoom)
{
    for (char filler : {'-', '\xD1', 'w'}) {
        for (size_t length = 0; length <= 127; ++length) {
            std::string word(length, filler);
            char text[kSpellTextSize + 1];
            memset(text, '#', sizeof text);
            ExpandBreaks(text, word.c_str());
            size_t step = filler == 'w' ? 1 : 3;
            EXPECT_EQ(strlen(text), step * std::min(length, (123 + step) / step)) << length;
            EXPECT_EQ(text[kSpellTextSize], '#');
            RemoveBreaks(text, word.c_str());
            EXPECT_EQ(text, filler == '-' ? "" : word);
        }
    }
    for (const char *blank : {"", " ", "\t \r\n"})
        EXPECT_TRUE(IsBlankText(blank));
    for (const char *full : {"x", " \xA1", "\xA0 "})
        EXPECT_FALSE(IsBlankText(full));
}

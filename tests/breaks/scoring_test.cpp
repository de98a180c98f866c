// Break scoring: markers and scores of small runs, ties, borders of lengths, and the overflow.
#include <cstring>

#include "breaks/scoring.h"
#include "frame/companion.h"
#include "support/corpus.h"
#include "support/message_boxes.h"
#include "support/started_library.h"

class Scoring : public StartedLibrary
{
};

struct Scored {
    std::string markers, scores;
    uint8_t firstMark;
};

static Scored Score(const std::string &run, DWORD flags)
{
    std::vector<uint8_t> text(run.begin(), run.end()), marks(run.size() + 1);
    std::vector<uint16_t> scores(run.size() + 1);
    text.push_back(0);
    MarkBreakPoints(text.data(), scores.data(), marks.data(), flags);
    Scored scored = {"", "", marks[0]};
    for (size_t i = 0; i < run.size(); ++i)
        scored.markers += char('0' + text[i]);
    for (uint16_t score : scores)
        scored.scores += (scored.scores.empty() ? "" : " ") + std::to_string(score);
    return scored;
}

struct ScoreRow {
    const char *run;
    WORD dictionaries;
    DWORD flags;
    const char *markers, *scores;
};

static void ExpectRows(const std::vector<ScoreRow> &rows)
{
    for (const ScoreRow &row : rows) {
        SetOrvelOption("d", row.dictionaries, 0);
        Scored scored = Score(row.run, row.flags);
        EXPECT_EQ(scored.markers, row.markers) << ShowCode(row.run) << " flags " << row.flags;
        EXPECT_EQ(scored.scores, row.scores) << ShowCode(row.run) << " flags " << row.flags;
    }
}

TEST_F(Scoring, DividesIntoSyllables)
{
    ExpectRows({{"\xA1\xBE\xAD\xBE", 0, 4, "1010", "9 0 5 0 1"},
                {"\xA1\xBE\xC0\xA1", 0, 4, "1010", "9 0 5 0 1"},
                {"\xFA\xA1\xBE", 0, 4, "510", "0 5 0 1"},
                {"\xFA\xFA\xFA\xA1\xBE", 0, 4, "50010", "0 0 0 5 0 1"},
                {"\xA1\xBE\xC5\xAD\xBE", 0, 4, "10000", "26 0 0 5 0 1"},
                {"\xA1\xBE\xBE", 0, 4, "105", "1 0 0 1"},
                {"\xA1\xBE\xAD\xBE", 0, 0, "5000", "0 0 0 0 1"}});
}

TEST_F(Scoring, WordsOfTheMainDictionaryCountTwice)
{
    ReplaceDictionary("MainDict.dat", "ການາ\n");
    ExpectRows({{"\xA1\xBE\xAD\xBE", 1, 12, "2000", "33 0 5 0 1"},
                {"\xA1\xBE\xAD\xBE", 1, 8, "2000", "33 0 0 0 1"},
                {"\xA1\xBE\xAD\xBE", 0, 12, "1010", "9 0 5 0 1"}});
}

TEST_F(Scoring, RepeatSignGoesWithTheWord)
{
    ReplaceDictionary("MainDict.dat", "ກາ\n");
    ExpectRows({{"\xA1\xBE\xC5\xAD\xBE", 1, 8, "20050", "1 0 0 0 0 1"}});
    EXPECT_EQ(Score("\xA1\xBE\xC5\xAD\xBE", 8).firstMark, 35);
}

TEST_F(Scoring, UserComesBeforeMainAndMainBeforeOld)
{
    ReplaceDictionary("MainDict.dat", "ກາ\nນາ\n");
    ReplaceDictionary("UserDict.dat", "ກາ\n");
    ReplaceDictionary("OldDict.dat", "ນາ\tໝາ\nມາ\tໝາ\n");
    ExpectRows({{"\xA1\xBE", 7, 8, "30", "9 0 1"},
                {"\xA1\xBE", 1, 8, "20", "9 0 1"},
                {"\xAD\xBE", 7, 8, "20", "9 0 1"},
                {"\xAD\xBE", 2, 8, "40", "9 0 1"},
                {"\xB4\xBE", 7, 8, "40", "9 0 1"},
                {"\xB4\xBE", 5, 8, "50", "0 0 1"}});
}

// 15 bytes are the longest chunk; a sign behind such a word makes it too long.
TEST_F(Scoring, LongestWordHasFifteenBytes)
{
    const std::string fifteen = "\xA1\xBE\xAD\xBE\xAA\xBE\xA1\xBE\xAD\xBE\xAA\xBE\xA1\xBE\xAD";
    ReplaceDictionary("MainDict.dat",
                      TextOfCode(fifteen) + "\n" + TextOfCode(fifteen + "\xBE") + "\n");
    EXPECT_EQ(Score(fifteen, 8).markers, "200000000000000");
    EXPECT_EQ(Score(fifteen + "\xBE", 8).markers[0], '2');  // the shorter of the two
    EXPECT_EQ(Score(fifteen + "\xC5", 8).markers[0], '5');
}

// A syllable of four bytes is worth as much as two words of two.
TEST_F(Scoring, EqualsGoToTheLongerChunk)
{
    ReplaceDictionary("MainDict.dat", "ເກ\nາະ\n");
    ExpectRows({{"\xC0\xA1\xBE\xBD", 1, 12, "1000", "17 0 9 0 1"},
                {"\xC0\xA1\xBE\xBD", 1, 8, "2020", "17 0 9 0 1"}});
}

TEST_F(Scoring, OverflowIsToldOnceForARunAndTheRunIsMarked)
{
    std::string run;
    while (run.size() < 40000)
        run += "\xA1\xBE\xAD";
    SetOrvelOption("d", 0, 0);
    for (int round = 0; round < 2; ++round) {
        ExpectBoxes boxes({"The Lao text is too long to process correctly!"});
        Scored scored = Score(run, 4);
        EXPECT_EQ(scored.markers.find('5'), std::string::npos);
        EXPECT_GT(scored.markers.size() / 3 + 3,
                  size_t(std::count(scored.markers.begin(), scored.markers.end(), '1')));
    }
}

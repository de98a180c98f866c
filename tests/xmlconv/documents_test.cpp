// Documents as word processors write them, made up and real: the text comes
// out as the Unicode text that it was made from, w:t by w:t.
#include "documents/document.h"

#include "support/conversion.h"
#include "support/corpus.h"
#include "support/message_boxes.h"

class WholeDocuments : public ConversionTest
{
  protected:
    // All boxes must tell of the same things, none when there are none.
    std::string Convert(const std::string &document, const std::vector<std::string> &boxes = {})
    {
        ExpectBoxes expected(boxes);
        return ConversionTest::Convert(document);
    }
};

// The first place where two long texts differ, and what stands there.
static std::string FirstDifference(const std::string &got, const std::string &wanted)
{
    size_t at = 0, back;
    while (at < got.size() && at < wanted.size() && got[at] == wanted[at])
        ++at;
    if (at == got.size() && at == wanted.size())
        return "";
    back = at < 300 ? at : 300;
    return "at " + std::to_string(at) + ": " + got.substr(at - back, back + 100) + "\nwanted " +
           wanted.substr(at - back, back + 100);
}

static void ExpectTexts(const std::vector<std::string> &texts,
                        const std::vector<std::string> &known)
{
    ASSERT_EQ(texts.size(), known.size());
    for (size_t i = 0; i < texts.size(); ++i)
        ASSERT_EQ(texts[i], known[i]) << "text " << i;
}

// Whatever way a text comes to its font: run, styles, their bases, paragraph, "Normal".
TEST_F(WholeDocuments, KnownTextComesBackFromAllLegacyFonts)
{
    for (uint32_t seed = 1; seed <= 6; ++seed) {
        MadeDocument made = MakeDocument({seed, 150000, ReadCorpus("udhr.txt"), false, false});
        ASSERT_EQ(LegacyFontsIn(made.source).size(), 38u);
        std::string converted = Convert(made.source, {kNoteOfDocument});
        ASSERT_NO_FATAL_FAILURE(ExpectTexts(TextsOf(converted), made.texts)) << "seed " << seed;
        ASSERT_EQ(FirstDifference(converted, made.converted), "") << "seed " << seed;
        EXPECT_EQ(LegacyFontsIn(converted), std::vector<std::string>());
        EXPECT_EQ(FirstDifference(Convert(converted, {kNoteOfDocument}), converted), "");
    }
}

// Written by another program, see documents/README.md. Nothing in them may raise a note.
TEST_F(WholeDocuments, OfAWordProcessorComeBackAsTheirKnownText)
{
    for (const char *name : {"letter", "report"}) {
        std::string path = std::string("../xmlconv/documents/") + name;
        std::string source = ReadCorpus((path + ".xml").c_str());
        std::vector<std::string> known = SplitLines(ReadCorpus((path + ".txt").c_str()));
        ASSERT_GT(LegacyFontsIn(source).size(), 3u) << name;
        std::string converted = Convert(source);
        ASSERT_NO_FATAL_FAILURE(ExpectTexts(TextsOf(converted), known)) << name;
        EXPECT_EQ(LegacyFontsIn(converted), std::vector<std::string>()) << name;
        EXPECT_EQ(FirstDifference(Convert(converted), converted), "") << name;
    }
}

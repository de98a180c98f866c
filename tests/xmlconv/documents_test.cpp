// Documents as word processors write them, made up and real: the text comes out as the Unicode text
// that it was made from, whatever way it has to its font.
#include "documents/document.h"

#include "support/conversion.h"
#include "support/corpus.h"

class WholeDocuments : public ConversionTest
{
};

// The texts of the w:t elements of a document, in order, a line each.
static std::string TextsOf(const std::string &document)
{
    std::string texts;
    for (size_t at = 0; (at = document.find("<w:t", at)) != document.npos;) {
        size_t open = document.find('>', at), end = document.find("</w:t>", open);
        bool isText = (document[at + 4] == '>' || document[at + 4] == ' ') &&
                      document[open - 1] != '/' && end != document.npos;
        if (isText)
            texts += document.substr(open + 1, end - open - 1) + "\n";
        at = isText ? end : at + 4;
    }
    return texts;
}

// Whatever way a text comes to its font: run, styles, their bases, paragraph, "Normal".
TEST_F(WholeDocuments, KnownTextComesBackFromAllLegacyFonts)
{
    for (uint32_t seed = 1; seed <= 6; ++seed) {
        MadeDocument made = MakeDocument({seed, 150000, ReadCorpus("udhr.txt"), false, false});
        MemoryConversion conversion, again;
        std::string converted = conversion.Convert(made.source);
        ASSERT_TRUE(converted == made.converted) << "seed " << seed;
        EXPECT_EQ(conversion.Notes(), kNoteOfDocument);
        EXPECT_TRUE(again.Convert(converted) == converted);
    }
}

// Written by another program, see documents/README.md. Nothing in them may raise a note.
TEST_F(WholeDocuments, OfAWordProcessorComeBackAsTheirKnownText)
{
    for (const char *name : {"letter", "report"}) {
        std::string path = std::string("../xmlconv/documents/") + name;
        std::string source = ReadCorpus((path + ".xml").c_str());
        std::string converted = Convert(source);
        EXPECT_EQ(TextsOf(converted), ReadCorpus((path + ".txt").c_str())) << name;
        EXPECT_EQ(Convert(converted), converted) << name;  // no legacy font has stayed
    }
}

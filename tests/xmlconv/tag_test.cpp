// The tag parser's own promises, which documents don't show, and the notes of a conversion.
#include "xmlconv/tag.h"

#include <string>

#include <gtest/gtest.h>

#include "xmlconv/report.h"

// Cut anywhere a tag parses or fails, and nothing behind its terminator is read (the sanitizer sees
// it).
TEST(Tags, CutAnywhere)
{
    const std::string whole = "<?w:rFonts w:ascii=\"Saysettha Lao\" bare w:cs=\"x\"?>";
    for (size_t size = 1; size <= whole.size(); ++size) {
        std::vector<char> exact(whole.begin(), whole.begin() + long(size));
        exact.push_back(0);
        ConversionReport report = {};
        TagRecord *tag = ParseTag(&report, exact.data());
        EXPECT_EQ(tag == nullptr, report.error != 0) << size;
        FreeTag(tag);
    }
}

TEST(Tags, LookupsTakeNoValueForNone)
{
    ConversionReport report = {};
    TagRecord *tag = ParseTag(&report, "<a W:Val B=\"1\" b=\"2\">");
    ASSERT_TRUE(tag);
    EXPECT_TRUE(FindTagAttribute(tag, "w:val"));
    EXPECT_FALSE(AttributeValueIs(FindTagAttribute(tag, "w:val"), ""));
    EXPECT_TRUE(AttributeValueIs(FindTagAttribute(tag, "b"), "1"));
    EXPECT_FALSE(FindTagAttribute(tag, "c"));
    EXPECT_FALSE(TagNameIs(tag, "A"));
    EXPECT_EQ(AddTagAttribute(&report, tag, "w:cs", "x"), 1);
    EXPECT_STREQ(FindTagAttribute(tag, "W:CS")->value, "x");
    EXPECT_EQ(tag->attributeCount, 4);
    FreeTag(tag);
    FreeTag(nullptr);
}

TEST(Notes, AreSeparatedAndStayWithinTheirRoom)
{
    ConversionReport report = {};
    AddConversionNote(&report, nullptr);
    EXPECT_FALSE(report.notes);
    AddConversionNote(&report, "one %d", 1);
    AddConversionNote(&report, "two");
    EXPECT_STREQ(report.notes, "one 1\r\ntwo");
    std::string text = report.notes;
    AddConversionNote(&report, "%s", std::string(5000, 'x').c_str());
    EXPECT_EQ(report.notes, text);  // left out whole
    AddRestartNote(&report, "again %d", 2);
    text += "\r\nagain 2\r\none 1\r\ntwo";
    EXPECT_EQ(report.notes, text);
    std::string exact(kNotesSize - text.size() - 3, 'y');
    AddConversionNote(&report, "%s", exact.c_str());
    AddConversionNote(&report, "z");
    AddRestartNote(&report, "again %d", 3);
    EXPECT_EQ(report.notes, text + "\r\n" + exact);
    FreeConversionNotes(&report);
    EXPECT_FALSE(report.notes);
}

// The tag parser on good, odd and broken tags, and the notes of a conversion.
#include "xmlconv/tag.h"

#include <string>

#include <gtest/gtest.h>

#include "xmlconv/report.h"

static std::string Draw(const TagRecord &tag)
{
    std::string text = std::string(tag.isClosing ? "/" : "") + tag.name;
    for (int i = 0; i < tag.attributeCount; ++i) {
        text += std::string(" ") + tag.attributes[i].name;
        if (tag.attributes[i].value)
            text += std::string("=") + tag.attributes[i].value;
    }
    return text + (tag.isSelfClosing ? " /" : "");
}

static std::string Parse(const std::string &source)
{
    ConversionReport report = {};
    TagRecord *tag = ParseTag(&report, source.c_str());
    std::string drawn = tag ? Draw(*tag) : std::to_string(report.error);
    EXPECT_EQ(tag == nullptr, report.error != 0) << source;
    FreeTag(tag);
    return drawn;
}

static std::string Long(size_t length)
{
    return std::string(length, 'n');
}

struct TagRow {
    std::string source, drawn;  // or the number of the failure
};

static const TagRow kTagRows[] = {
    {"<a b=\"c\"/>", "a b=c /"},
    {"<a b = \"c\">", "a b"},
    {"<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>",
     "?xml version=1.0 encoding=UTF-8 standalone=yes /"},
    {"<?word?>", "?word?"},
    {"</w:p >", "/w:p"},
    {"< / w:p>", "259"},
    {"</ a>", "/a"},
    {"<w:br />", "w:br /"},
    {"<a>", "a"},
    {"<a  b=\"\"\t c=\"&lt;&#x41;\">", "a b= c=&lt;&#x41;"},
    {"<!-- a b -->", "!-- a b --"},
    {"<a b='c'>", "269"},
    {"<a b=>", "269"},
    {"<a b=\"c>", "269"},
    {"<a b=", "269"},
    {"<a b/c=\"d\">", "279"},
    {"<a b=\"1\"c=\"2\">", "a b=1 c=2"},
    {"<a b=\"1\" / x>", "a b=1 /"},
    {"<>", "259"},
    {"<", "259"},
    {"</>", "259"},
    {"<a\nb c>", "a\nb c"},
    {"<" + Long(63) + ">", Long(63)},
    {"<" + Long(64) + ">", "259"},
    {"<a " + Long(63) + "=\"v\">", "a " + Long(63) + "=v"},
    {"<a " + Long(64) + "=\"v\">", "279"},
};

TEST(Tags, Parse)
{
    for (const TagRow &row : kTagRows)
        EXPECT_EQ(Parse(row.source), row.drawn) << row.source;
}

// Cut anywhere a tag parses or fails, and nothing behind its terminator is read (the sanitizer sees
// it).
TEST(Tags, CutAnywhere)
{
    const std::string whole = "<?w:rFonts w:ascii=\"Saysettha Lao\" bare w:cs=\"x\"?>";
    for (size_t size = 1; size <= whole.size(); ++size) {
        std::vector<char> exact(whole.begin(), whole.begin() + long(size));
        exact.push_back(0);
        EXPECT_FALSE(Parse(exact.data()).empty());
    }
}

TEST(Tags, ManyAttributes)
{
    std::string source = "<a", drawn = "a";
    for (int i = 0; i < 5000; ++i) {
        source += " b" + std::to_string(i) + "=\"v\"";
        drawn += " b" + std::to_string(i) + "=v";
    }
    EXPECT_EQ(Parse(source + ">"), drawn);
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
    EXPECT_EQ(Draw(*tag), "a W:Val B=1 b=2 w:cs=x");
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

// The style tracker at its limits: rings of styles, a table that grows, overlong names, stray tags,
// and what it notes. Which font a text gets by rule is proven by the made-up documents.
#include "xmlconv/styles.h"

#include "support/conversion.h"
#include "xmlconv/tag_writer.h"

class StyleTracking : public StartedLibrary
{
};

// Walks through a document's tags as the part converter does: the font at each w:t.
static std::string FontsIn(Conversion *conversion, const std::string &document)
{
    std::string fonts;
    TagRecord *current = nullptr;
    for (size_t i = document.find('<'); i != std::string::npos; i = document.find('<', i + 1)) {
        std::string tag = document.substr(i, document.find('>', i) + 1 - i);
        strcpy(conversion->tagSource, tag.c_str());
        EXPECT_TRUE(ProcessTag(conversion, &current)) << tag;
        const char *font = ResolveTextFont(&conversion->styles);
        if (tag == "<w:t/>")
            fonts += std::string(font ? font : "none") + ";";
    }
    FreeTagStack(current);
    return fonts;
}

static std::string FontsIn(const std::string &document)
{
    MemoryConversion conversion;
    return FontsIn(&conversion.record, document);
}

static std::string RunOf(const std::string &properties)
{
    return "<w:r><w:rPr>" + properties + "</w:rPr><w:t/></w:r>";
}
static std::string Fonts(const std::string &name)
{
    return "<w:rFonts w:ascii=\"" + name + "\"/>";
}
static std::string Style(const std::string &id, const std::string &base, const std::string &fonts)
{
    return "<w:style w:type=\"paragraph\" w:styleId=\"" + id + "\">" +
           (base.empty() ? "" : "<w:basedOn w:val=\"" + base + "\"/>") + "<w:rPr>" + fonts +
           "</w:rPr></w:style>";
}

static const std::string kStyles =
    "<w:styles>" + Style("normal", "", Fonts("NormalFont")) + Style("Child", "BASE", "") +
    Style("Base", "", Fonts("BaseFont")) + Style("Ring1", "Ring2", "") +
    Style("Ring2", "Ring1", "") + Style("NoName", "Base", "<w:rFonts/>") + "</w:styles>";

// What the made-up documents don't hold.
struct FontRow {
    const char *what;
    std::string body, fonts;
};

static const FontRow kFontRows[] = {
    {"nothing said: Normal", "<w:p>" + RunOf("") + "</w:p>", "NormalFont;"},
    {"a ring ends", "<w:p><w:pPr><w:pStyle w:val=\"Ring1\"/></w:pPr>" + RunOf("") + "</w:p>",
     "NormalFont;"},
    {"a block without a name goes on to its base",
     "<w:p><w:pPr><w:pStyle w:val=\"NoName\"/></w:pPr>" + RunOf("") + "</w:p>", "BaseFont;"},
    {"a run's hint stays",
     "<w:p>" + RunOf("<w:rFonts w:cs=\"Z\" w:hint=\"cs\"/>") + RunOf(Fonts("RunFont")) + "</w:p>",
     "Z;Z;"},
};

TEST_F(StyleTracking, FontOfATextByWhatIsSaid)
{
    for (const FontRow &row : kFontRows) {
        std::string document = "<w:doc>" + kStyles + "<w:body>" + row.body + "</w:body></w:doc>";
        EXPECT_EQ(FontsIn(document), row.fonts) << row.what;
    }
    // without a style "Normal", and without a body, which links the bases
    const std::string child = "<w:p><w:pPr><w:pStyle w:val=\"Child\"/></w:pPr><w:t/></w:p>";
    EXPECT_EQ(FontsIn("<w:body><w:p>" + RunOf("") + "</w:p></w:body>"), "none;");
    EXPECT_EQ(FontsIn(kStyles + child + "<w:body>" + child), "NormalFont;BaseFont;");
}

TEST_F(StyleTracking, PlacesThatAreNotFollowedAreNoted)
{
    MemoryConversion conversion;
    FontsIn(&conversion.record, "<a><w:rFonts w:ascii=\"A\"/></a><w:lvl><w:rPr><w:rFonts "
                                "w:ascii=\"A\"/></w:rPr></w:lvl>");
    EXPECT_EQ(conversion.Notes(), "");
    FontsIn(&conversion.record,
            "<a><b><w:rFonts w:ascii=\"A\"/></b></a><c><w:rPr><w:rFonts/></w:rPr></c>");
    EXPECT_EQ(
        conversion.Notes(),
        "unprocessed w:rFonts tag,child of b,of a\r\nunprocessed w:rFonts tag,child of w:rPr,of c");
}

// What a table knew before it grew it knows afterwards: styles, their first names, bases, "Normal".
TEST_F(StyleTracking, AGrownTableIsTheSameTable)
{
    std::string body = "<w:body><w:p><w:pPr><w:pStyle w:val=\"Child\"/></w:pPr>" + RunOf("") +
                       "</w:p><w:p>" + RunOf("") + "</w:p>";
    const std::string text = kStyles + body + "</w:body>" + kStyles + kStyles + body;
    for (int styles = 1; styles < 20; ++styles) {
        ConversionSizes sizes = kFirstSizes;
        sizes.styles = styles;
        MemoryConversion conversion(sizes);
        EXPECT_EQ(FontsIn(&conversion.record, text), "BaseFont;NormalFont;BaseFont;NormalFont;");
        EXPECT_EQ(conversion.record.styles.last, 17);
    }
}

// Names of every length around the slots' size, and tags without the ancestors or values that they
// need.
TEST_F(StyleTracking, OverlongNamesAndStrayTags)
{
    for (size_t length : {62, 63, 64, 200}) {
        MemoryConversion conversion;
        std::string name(length, 'n'), cut = name.substr(0, 63);
        std::string document = "<w:doc><w:styles>" + Style(name, name, Fonts(name)) +
                               "</w:styles><w:body><w:p>" + RunOf(Fonts(name)) +
                               "</w:p></w:body></w:doc>";
        EXPECT_EQ(FontsIn(&conversion.record, document), cut + ";");
        EXPECT_EQ(FindStyle(&conversion.record.styles, cut.c_str()), 0);
    }
    MemoryConversion conversion;
    FontsIn(&conversion.record,
            "<w:style><w:basedOn w:val=\"x\"/><w:rPr><w:rFonts w:ascii=\"A\"/></w:rPr></w:style>"
            "<w:pStyle w:val=\"x\"/><w:rStyle/><w:p><w:rStyle w:val/></w:p><w:styles><w:style "
            "w:styleId w:type/></w:styles>");
    EXPECT_EQ(conversion.record.styles.last, 0);
    EXPECT_EQ(FindStyle(&conversion.record.styles, ""), kNoStyle);
    EXPECT_EQ(FindStyle(&conversion.record.styles, nullptr), kNoStyle);
}

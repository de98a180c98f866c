// The font of a text, from small documents: what runs, paragraphs and styles say, rings of styles,
// and what the tracker adds and notes.
#include "xmlconv/styles.h"

#include <cstring>

#include "support/started_library.h"
#include "xmlconv/report.h"

class StyleTracking : public StartedLibrary
{
  protected:
    void SetUp() override
    {
        StartedLibrary::SetUp();
        LoadFontMap();
        gStyles.capacity = 256;
        ASSERT_EQ(StartStyles(), 1);
    }
    void TearDown() override
    {
        FreeStyles();
        FreeFontMap();
        FreeConversionNotes();
        gReport = {};
        StartedLibrary::TearDown();
    }
};

// Walks through a document's tags as the driver does; tells the font at each w:t.
struct Walk {
    std::string fonts;    // of the texts, with blanks between
    std::string lastTag;  // the last w:rFonts with what was added
    int result = 1;
};

static std::string DrawAttributes(const TagRecord &tag)
{
    std::string text;
    for (int i = 0; i < tag.attributeCount; ++i)
        text += std::string(text.empty() ? "" : " ") + tag.attributes[i].name + "=" +
                tag.attributes[i].value;
    return text;
}

static TagRecord *Leave(TagRecord *current, TagRecord *closing)
{
    TagRecord *parent = current ? current->parent : nullptr;
    FreeTag(closing);
    FreeTag(current);
    return parent;
}

static TagRecord *Enter(TagRecord *current, TagRecord *tag, Walk *walk)
{
    tag->parent = current;
    walk->result = TrackTag(tag);
    if (TagNameIs(tag, "w:t"))
        walk->fonts += std::string(ResolveTextFont() ? ResolveTextFont() : "none") + ";";
    if (TagNameIs(tag, "w:rFonts"))
        walk->lastTag = DrawAttributes(*tag);
    if (!tag->isSelfClosing)
        return tag;
    FreeTag(tag);
    return current;
}

static Walk WalkThrough(const std::string &document)
{
    Walk walk;
    TagRecord *current = nullptr;
    for (size_t i = document.find('<'); i != std::string::npos && walk.result;
         i = document.find('<', i + 1)) {
        TagRecord *tag = ParseTag(document.substr(i, document.find('>', i) + 1 - i).c_str());
        current = tag->isClosing ? Leave(current, tag) : Enter(current, tag, &walk);
    }
    while (current)
        current = Leave(current, nullptr);
    return walk;
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
    Style("Base", "", Fonts("BaseFont")) + Style("Bare", "", "") + Style("Ring1", "Ring2", "") +
    Style("Ring2", "Ring1", "") +
    Style("Hinted", "", "<w:rFonts w:ascii=\"A\" w:cs=\"C\" w:hint=\"CS\"/>") +
    Style("NoName", "Base", "<w:rFonts/>") + "</w:styles>";

struct FontRow {
    const char *what;
    std::string body, fonts;
};

static const FontRow kFontRows[] = {
    {"nothing said: Normal", "<w:p>" + RunOf("") + "</w:p>", "NormalFont;"},
    {"the run's own", "<w:p>" + RunOf(Fonts("RunFont")) + RunOf("") + "</w:p>",
     "RunFont;NormalFont;"},
    {"the run's style, by its base", "<w:p>" + RunOf("<w:rStyle w:val=\"child\"/>") + "</w:p>",
     "BaseFont;"},
    {"run before style",
     "<w:p>" + RunOf("<w:rStyle w:val=\"Child\"/>" + Fonts("RunFont")) + "</w:p>", "RunFont;"},
    {"a run style without fonts asks no Normal",
     "<w:p>" + RunOf("<w:rStyle w:val=\"Bare\"/>") + "</w:p>", "none;"},
    {"the paragraph's style",
     "<w:p><w:pPr><w:pStyle w:val=\"Child\"/></w:pPr>" + RunOf("") + "</w:p>", "BaseFont;"},
    {"style before the paragraph's fonts",
     "<w:p><w:pPr><w:pStyle w:val=\"Child\"/><w:rPr>" + Fonts("ParaFont") + "</w:rPr></w:pPr>" +
         RunOf("") + "</w:p>",
     "BaseFont;"},
    {"the paragraph's fonts",
     "<w:p><w:pPr><w:rPr>" + Fonts("ParaFont") + "</w:rPr></w:pPr>" + RunOf("") + "</w:p><w:p>" +
         RunOf("") + "</w:p>",
     "ParaFont;NormalFont;"},
    {"a style without fonts: Normal",
     "<w:p><w:pPr><w:pStyle w:val=\"Bare\"/></w:pPr>" + RunOf("") + "</w:p>", "NormalFont;"},
    {"an unknown style is none",
     "<w:p><w:pPr><w:pStyle w:val=\"No\"/></w:pPr>" + RunOf("") + "</w:p>", "NormalFont;"},
    {"a ring ends", "<w:p><w:pPr><w:pStyle w:val=\"Ring1\"/></w:pPr>" + RunOf("") + "</w:p>",
     "NormalFont;"},
    {"a hint decides", "<w:p><w:pPr><w:pStyle w:val=\"Hinted\"/></w:pPr>" + RunOf("") + "</w:p>",
     "C;"},
    {"a block without a name goes on to its base",
     "<w:p><w:pPr><w:pStyle w:val=\"NoName\"/></w:pPr>" + RunOf("") + "</w:p>", "BaseFont;"},
    {"a run's hint stays",
     "<w:p>" + RunOf("<w:rFonts w:cs=\"Z\" w:hint=\"cs\"/>") + RunOf(Fonts("RunFont")) + "</w:p>",
     "Z;Z;"},
    {"pStyle elsewhere is ignored",
     "<w:p><w:x><w:pStyle w:val=\"Child\"/></w:x>" + RunOf("") + "</w:p>", "NormalFont;"},
};

TEST_F(StyleTracking, FontOfATextByWhatIsSaid)
{
    for (const FontRow &row : kFontRows) {
        ASSERT_EQ(StartStyles(), 1);
        Walk walk = WalkThrough("<w:doc>" + kStyles + "<w:body>" + row.body + "</w:body></w:doc>");
        EXPECT_EQ(walk.fonts, row.fonts) << row.what;
    }
}

TEST_F(StyleTracking, WithoutNormalThereIsNoFont)
{
    EXPECT_EQ(WalkThrough("<w:body><w:p>" + RunOf("") + "</w:p></w:body>").fonts, "none;");
}

TEST_F(StyleTracking, BasesAreLinkedByTheBody)
{
    const std::string text =
        "<w:p><w:pPr><w:pStyle w:val=\"Child\"/></w:pPr>" + RunOf("") + "</w:p>";
    EXPECT_EQ(
        WalkThrough("<w:doc>" + kStyles + text + "<w:body>" + text + "</w:body></w:doc>").fonts,
        "NormalFont;BaseFont;");
}

struct AddedRow {
    const char *fonts, *written;
};

static const AddedRow kAddedRows[] = {
    {"<w:rFonts w:ascii=\"saysettha lao\" w:h-ansi=\"x\"/>",
     "w:ascii=saysettha lao w:h-ansi=x w:cs=saysettha lao"},
    {"<w:rFonts w:ascii=\"Saysettha Lao\" w:cs=\"x\"/>", "w:ascii=Saysettha Lao w:cs=x"},
    {"<w:rFonts w:ascii=\"Arial\"/>", "w:ascii=Arial"},
};

TEST_F(StyleTracking, ALegacyFontGetsItsNameForComplexScript)
{
    for (const AddedRow &row : kAddedRows) {
        ASSERT_EQ(StartStyles(), 1);
        EXPECT_EQ(WalkThrough("<w:p>" + RunOf(row.fonts) + "</w:p>").lastTag, row.written);
    }
}

TEST_F(StyleTracking, PlacesThatAreNotFollowedAreNoted)
{
    WalkThrough(
        "<a><w:rFonts w:ascii=\"A\"/></a><w:lvl><w:rPr><w:rFonts w:ascii=\"A\"/></w:rPr></w:lvl>");
    EXPECT_FALSE(gReport.notes);
    WalkThrough("<a><b><w:rFonts w:ascii=\"A\"/></b></a><c><w:rPr><w:rFonts/></w:rPr></c>");
    EXPECT_STREQ(
        gReport.notes,
        "unprocessed w:rFonts tag,child of b,of a\r\nunprocessed w:rFonts tag,child of w:rPr,of c");
}

TEST_F(StyleTracking, AFullTableAsksForALargerOne)
{
    std::string styles = "<w:styles>";
    for (int i = 0; i < 256; ++i)
        styles += Style("S" + std::to_string(i), "", Fonts("F"));
    EXPECT_EQ(WalkThrough(styles + "</w:styles>").result, 1);
    ASSERT_EQ(StartStyles(), 1);
    EXPECT_EQ(WalkThrough(styles + Style("more", "", "") + "</w:styles>").result, 0);
    EXPECT_EQ(gReport.restart, kStylesFull);
}

// Names of every length around the slots' size, and tags without the ancestors or values that they
// need.
TEST_F(StyleTracking, OverlongNamesAndStrayTags)
{
    for (size_t length : {62, 63, 64, 500}) {
        ASSERT_EQ(StartStyles(), 1);
        std::string name(length, 'n'), cut = name.substr(0, 63);
        Walk walk = WalkThrough("<w:doc><w:styles>" + Style(name, name, Fonts(name)) +
                                "</w:styles><w:body><w:p>" + RunOf(Fonts(name)) +
                                "</w:p></w:body></w:doc>");
        EXPECT_EQ(walk.fonts, cut + ";");
        EXPECT_EQ(FindStyle(cut.c_str()), &gStyles.table[0]);
    }
    ASSERT_EQ(StartStyles(), 1);
    WalkThrough(
        "<w:style><w:basedOn w:val=\"x\"/><w:rPr><w:rFonts w:ascii=\"A\"/></w:rPr></w:style>"
        "<w:pStyle w:val=\"x\"/><w:rStyle/><w:p><w:rStyle w:val/></w:p><w:styles><w:style "
        "w:styleId w:type/></w:styles>");
    EXPECT_EQ(gStyles.last, 0);
    EXPECT_EQ(FindStyle(""), nullptr);
    EXPECT_EQ(FindStyle(nullptr), nullptr);
}

// Whole documents: what is written, what a restart costs, and that no file is reported done that
// isn't.
#include <algorithm>
#include <cstring>
#include <iterator>
#include <random>

#include "support/conversion.h"
#include "support/corpus.h"
#include "support/message_boxes.h"

class Documents : public ConversionTest
{
};

struct DocumentRow {
    std::string source, converted;
};

static std::string RunIn(const std::string &font, const std::string &text)
{
    return "<w:r><w:rPr><w:rFonts w:ascii=\"" + font + "\"/></w:rPr><w:t>" + text + "</w:t></w:r>";
}

static std::string RunOut(const std::string &font, const std::string &text)
{
    return "<w:r><w:rPr><w:rFonts w:ascii=\"" + font + "\" w:cs=\"" + font + "\"/></w:rPr><w:t>" +
           text + "</w:t></w:r>";
}

static const DocumentRow kDocumentRows[] = {
    {"", ""},
    {"text alone", "text alone"},
    {"a<b/>c", "a<b/>c"},
    {"<?xml version=\"1.0\" ?>\n<a  b=\"c\" />\n", "<?xml version=\"1.0\"?>\n<a b=\"c\"/>\n"},
    {"<a b = \"c\">x</a >", "<a b>x</a >"},
    {"</a></b>text", "</a></b>text"},
    {"<!-- a  b --><a/>", "<!-- a b --><a/>"},
    {"<w:p>" + RunIn("Saysettha 2000", "À") + "</w:p>",
     "<w:p>" + RunOut("Saysettha OT", "ກ") + "</w:p>"},
    {"<w:p>" + RunIn("Arial", "À") + "</w:p>", "<w:p>" + RunIn("Arial", "À") + "</w:p>"},
    {RunIn("Saysettha 2000", "À<?a?>À"), RunOut("Saysettha OT", "ກ<?a?>À")},  // "?a?" stays open
    {RunIn("Saysettha 2000", "À<?>À"), RunOut("Saysettha OT", "ກ<?>À")},
    {"<w:r><w:rPr><w:rFonts w:ascii=\"alice_0\"/></w:rPr><w:x>d</w:x><w:T>d</w:T></w:r>",
     "<w:r><w:rPr><w:rFonts w:ascii=\"Alice0 Unicode\" w:cs=\"Alice0 "
     "Unicode\"/></w:rPr><w:x>d</w:x><w:T>ກ</w:T></w:r>"},
    {"<w:fonts><w:defaultFonts w:ascii=\"Saysettha Lao\"/><w:font w:name=\"Saysettha "
     "95\"/></w:fonts>",
     "<w:fonts><w:defaultFonts w:ascii=\"Saysettha OT\"/><w:font w:name=\"Saysettha "
     "OT\"/></w:fonts>"},
};

TEST_F(Documents, AreWrittenInNormalFormWithUnicodeFontsAndText)
{
    for (const DocumentRow &row : kDocumentRows)
        EXPECT_EQ(Convert(row.source), row.converted) << row.source;
}

struct FailureRow {
    std::string source;
    int number;
};

static const FailureRow kFailureRows[] = {
    {"<a b='c'>", 269},
    {"<a><b><c d='e'>", 269},  // what is open then is released
    {"<" + std::string(64, 'n') + ">", 259},
    {"<a b/c=\"d\">", 279},
    {"x<a b=\"c\"", 1000},
    {"<", 1000},
    {"<a b=\"c>d\">", 269},
};

// A failure is told, and what stood at the destination stays.
TEST_F(Documents, FailuresKeepTheOldFile)
{
    for (const FailureRow &row : kFailureRows) {
        WriteWholeFile(Path("out.xml"), "old");
        ExpectBoxes boxes({"Fatal conversion error at line " + std::to_string(row.number)});
        EXPECT_EQ(Convert(row.source), std::to_string(row.number)) << row.source;
        EXPECT_EQ(ReadWholeFile(Path("out.xml")), "old");
        EXPECT_EQ(ListFolder(folder_), (std::vector<std::string>{"in.xml", "out.xml"}));
    }
}

TEST_F(Documents, FilesThatCanNotBeOpened)
{
    WriteWholeFile(Path("in.xml"), "x");
    std::string same = folder_ + "\\.\\in.xml";
    const std::string pairs[][2] = {{Path("nowhere.xml"), Path("out.xml")},
                                    {Path("in.xml"), Path("none\\out.xml")},
                                    {Path("in.xml"), folder_},
                                    {Path("in.xml"), Path("in.xml")},
                                    {Path("in.xml"), same}};
    for (const auto &pair : pairs) {
        ExpectBoxes boxes({"Fatal conversion error at line 926"});
        EXPECT_EQ(ConvertFile(pair[0].c_str(), pair[1].c_str()), 926u) << pair[1];
    }
    EXPECT_EQ(ReadWholeFile(Path("in.xml")), "x");
    EXPECT_EQ(ConvertFile(nullptr, "x"), 920u);
    EXPECT_EQ(ConvertFile("x", nullptr), 920u);
}

// Long tags, long texts and many styles cost restarts, each noted once, and change nothing in the
// result; the next document needs no restart.
TEST_F(Documents, RestartsLeadToTheSameResult)
{
    std::string document = "<a b=\"" + std::string(5000, 'v') + "\"/><w:styles>";
    for (int i = 0; i < 300; ++i)
        document += "<w:style w:styleId=\"S" + std::to_string(i) + "\"/>";
    document += "</w:styles>" + std::string(300000, 't');
    {
        ExpectBoxes boxes({"Restarted: tag buffer increased to 2048\r\nRestarted: tag buffer "
                           "increased to 4096\r\n"
                           "Restarted: tag buffer increased to 8192\r\nRestarted: styles buffer "
                           "increased to 512 styles\r\n"
                           "Restarted: text buffer increased to 256000\r\nRestarted: text buffer "
                           "increased to 512000"});
        EXPECT_EQ(Convert(document), document);
    }
    EXPECT_EQ(Convert(document), document);
}

// A text that grows past the buffer, and a tag that does by its longer fonts, begin again too.
TEST_F(Documents, WhatGrowsPastItsBufferIsWhole)
{
    std::string text, converted;
    for (int i = 0; i < 150000; ++i) {
        text += "Ò";
        converted += "ໍ່";
    }
    ExpectBoxes boxes({"Restarted: text buffer increased to 256000\r\nRestarted: text buffer "
                       "increased to 512000"});
    EXPECT_EQ(Convert(RunIn("Saysettha Lao", text)), RunOut("Saysettha OT", converted));
}

// Whatever sizes a conversion starts with, the result is the same.
TEST_F(Documents, StartSizesDoNotShow)
{
    std::string document =
        "<w:styles><w:style w:styleId=\"a\"/><w:style w:styleId=\"b\"/></w:styles>";
    document += "<w:p a=\"" + std::string(100, 'v') + "\">" +
                RunIn("Saysettha Lao", "¡Ò-" + std::string(100, 'x')) + "</w:p>";
    const std::string wanted = Convert(document);
    for (size_t size = 17; size < 110; size += 3) {
        gConversionSizes = {size, size, size};
        gStyles.capacity = size % 2 + 1;
        ExpectBoxes boxes({"Restarted: "});
        EXPECT_EQ(Convert(document), wanted) << size;
    }
}

// Pieces of documents, as word processors write them and as none does.
// clang-format off
static const std::string kPieces[] = {
    "<w:r>", "</w:r>", "<w:rPr>", "</w:rPr>", "<w:t>", "<W:T>", "</w:t>", "<w:p>", "</w:p>",
    "<w:pPr>", "<w:rFonts w:ascii=\"Saysettha Lao\" w:h-ansi=\"Saysettha Lao\"/>",
    "<w:rFonts w:cs=\"alice_0\" w:hint=\"cs\"/>", "<w:rFonts w:ascii=\"Saysettha 2000\">",
    "<wx:font wx:val=\"Saysettha 95\"/>", "<W:FONT W:NAME=\"xayawath\"/>",
    "<w:rStyle w:val=\"S\"/>", "<w:styles>", "<w:style w:styleId=\"S\">",
    "<w:basedOn w:val=\"B\"/>", "<w:body>", "<w:sz w:val=\"2\"/>", "<w:br/>", "<w:br />",
    "<a b=\"c\"/>", "<a  b=\"c\">", "<a b=\"c\"d=\"e\">", "<a b=\"c\" >", "<a b>", "<a\nb=\"c\">",
    "<a b=\"c<d\">", "</a b=\"c\">", "</a/>", "</ a>", "<a?>", "<?>", "<?a?>", "<?a/>", "<?a b=\"c\"?>",
    "<?a b=\"c\"/>", "<a b=\"c\"?>", "<!-- a -->", "<!-->", "<![CDATA[x]]>",
    "<a" + std::string(1, 0) + "b>", "</a" + std::string(1, 0) + " >",
    "<" + std::string(63, 'n') + ">", "<a " + std::string(63, 'n') + "=\"\"/>",
    "<w:\xE0\xBA\x81/>",
};

static const std::string kTexts[] = {
    "abc ", "¡Ò-\n", "À–\u200B", "ສະບາຍດີ", "&amp;&#161;", "\xC2", "\xE2\x80", "\xF0\x9F\x98\x80",
    "\xED\xA0\x80", std::string(1, 0), "\xC0\x80", "Ā\u2212\u2082", ">",
};

static const std::string kBrokenPieces[] = {
    "", "", "", "<//a>", "<a/ b=\"c\">", "<a b=\"" + std::string(1, 0) + "c\">", "<a b='c'>",
    "<a b",
};

// clang-format on

static std::string MadeOfPieces(std::mt19937 *random)
{
    auto pick = [random](size_t count) { return (*random)() % count; };
    const char *fonts[] = {"Saysettha Lao", "Saysettha 2000", "alice_0", "Xayawath", "Arial"};
    std::string document;
    for (size_t count = 1 + pick(100); count > 0; --count) {
        std::string text = kTexts[pick(std::size(kTexts))] + kTexts[pick(std::size(kTexts))];
        document += pick(2) ? kPieces[pick(std::size(kPieces))] : text;
        document += pick(2) ? RunIn(fonts[pick(std::size(fonts))], text) : "";
    }
    return document + kBrokenPieces[pick(std::size(kBrokenPieces))];
}

// Blocks of one byte hold no whole piece, so all of the document goes through the buffers; in a
// large one nearly all takes the fast roads.
TEST_F(Documents, BlocksDoNotShow)
{
    std::mt19937 random(1);
    MessageBoxAnswerer before =
        SetMessageBoxAnswerer([](HWND, const char *, const char *, UINT) { return IDOK; });
    for (int round = 0; round < 60; ++round) {
        std::string document = MadeOfPieces(&random);
        gConversionSizes.block = 1;
        std::string wanted = Convert(document);
        for (size_t block : {2 + random() % document.size(), document.size()}) {
            gConversionSizes.block = block;
            EXPECT_EQ(Convert(document), wanted) << block << ": " << document;
        }
    }
    SetMessageBoxAnswerer(before);
}

// Line ends are those of the target's text files, wherever a block ends, and no byte ends a
// document.
TEST_F(Documents, LineEndsAndByte26StayAsTheyAre)
{
    const std::string document = "\r\n<a/>\r\n\r\n\r\x1A\r\r\n<w:t>b\r</w:t>\r\n\r";
    for (size_t block = 1; block <= document.size(); ++block) {
        gConversionSizes.block = block;
        Convert(document);
        EXPECT_EQ(ReadWholeFile(Path("out.xml")), document) << block;
    }
}

TEST_F(Documents, CutAnywhereIsToldOrWhole)
{
    const std::string document = "<w:p a=\"b\">" + RunIn("Saysettha Lao", "¡ x") + "</w:p>\n";
    for (size_t size = 0; size <= document.size(); ++size) {
        std::string part = document.substr(0, size);
        bool isInsideTag = part.rfind('<') != std::string::npos &&
                           part.find('>', part.rfind('<')) == std::string::npos;
        ExpectBoxes boxes(isInsideTag ? std::vector<std::string>{"line 1000"}
                                      : std::vector<std::string>{});
        EXPECT_EQ(Convert(part) == "1000", isInsideTag) << size;
    }
}

// Bytes of a legacy font as a word processor stores them.
static std::string Utf8OfCodePage(const char *bytes)
{
    std::vector<WCHAR> wide(strlen(bytes) + 1);
    std::vector<char> text(3 * wide.size());
    MultiByteToWideChar(1252, 0, bytes, -1, wide.data(), int(wide.size()));
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), -1, text.data(), int(text.size()), nullptr,
                        nullptr);
    return text.data();
}

// Each piece by far larger than what a person writes; the styles form a ring without a font.
TEST_F(Documents, HugePiecesAndManyStyles)
{
    const int count = 20000, textLength = 10 * 1000 * 1000;
    std::string styles = "<w:styles>", legacy, converted;
    for (int i = 0; i < count; ++i)
        styles += "<w:style w:styleId=\"S" + std::to_string(i) + "\"><w:basedOn w:val=\"S" +
                  std::to_string((i + 1) % count) + "\"/></w:style>";
    styles +=
        "</w:styles><w:body><w:p><w:pPr><w:pStyle w:val=\"S7\"/></w:pPr><w:r><w:t>À</w:t></w:r>";
    for (int i = 0; i < textLength; ++i) {
        legacy += "À";
        converted += "ກ";
    }
    const std::string tag = "<a b=\"" + std::string(textLength, 'v') + "\"/>";
    const std::string before = tag + styles + std::string(5000, 0);
    ExpectBoxes boxes({"Restarted: "});
    EXPECT_TRUE(Convert(before + RunIn("Saysettha 2000", legacy)) ==
                before + RunOut("Saysettha OT", converted));
}

// Fonts are counted with what the room takes, whether or not anything is written.
TEST_F(Documents, FontsOfTheTextAreCounted)
{
    const std::string document = RunIn("Saysettha 2000", "ÀÀ") + RunIn("Arial", "a€c ") +
                                 RunIn("SAYSETTHA 2000", "À") + RunIn("", "none") +
                                 RunIn("alice_0", std::string(200000, 'd')) + "<w:x>not text</w:x>";
    std::string source = Path("in.xml");
    WriteWholeFile(source, document);
    const std::string wanted[] = {"Saysettha 2000>Saysettha OT 3", "Arial> 4",
                                  "alice_0>Alice0 Unicode 200000"};
    for (DWORD room : {0, 1, 2, 3, 8})
        for (size_t block : {1, 256 * 1024}) {
            DocumentFont fonts[8] = {};
            DocumentJob job = {source.c_str(), nullptr, nullptr, IgnorePercent, fonts, room, 99};
            gConversionSizes = {1024, 128000, block};
            ExpectBoxes boxes({"Restarted: "});
            EXPECT_EQ(ConvertDocument(&job), 0u);
            ASSERT_EQ(job.fontCount, std::min<DWORD>(room, 3));
            for (DWORD i = 0; i < job.fontCount; ++i)
                EXPECT_EQ(std::string(fonts[i].name) + ">" + fonts[i].unicodeName + " " +
                              std::to_string(fonts[i].characters),
                          wanted[i]);
            EXPECT_STREQ(fonts[job.fontCount].name, "");
        }
}

static void WINAPI ConvertAgain(DWORD percent)
{
    EXPECT_EQ(ConvertFile("in.xml", "out.xml"), 1004u) << percent;
}

TEST_F(Documents, OneConversionAtATime)
{
    std::string source = Path("in.xml"), destination = Path("out.xml");
    const std::string document = "<a>" + RunIn("Saysettha 2000", "À") + "</a>";
    WriteWholeFile(source, document);
    DocumentJob job = {source.c_str(), destination.c_str(), nullptr, ConvertAgain, nullptr, 0, 0};
    EXPECT_EQ(ConvertDocument(&job), 0u);
    EXPECT_EQ(ReadWholeFile(destination), "<a>" + RunOut("Saysettha OT", "ກ") + "</a>");
    EXPECT_EQ(Convert(document), "<a>" + RunOut("Saysettha OT", "ກ") + "</a>");
}

// Known text, put into each legacy code by the library's own recoding, comes back as it was.
TEST_F(Documents, KnownTextComesBackParagraphByParagraph)
{
    struct {
        const char *font;
        int code;
    } fonts[] = {{"Saysettha Lao", 0}, {"Saysettha 2000", 2}, {"Saysettha 95", 3}};
    std::vector<std::string> lines = SplitLines(ReadCorpus("udhr.txt"));
    for (auto [font, code] : fonts) {
        std::string document, wanted;
        for (const std::string &line : lines) {
            std::string bytes = CodeOfText(line), latin;
            if (bytes.find_first_of("<>&?") != std::string::npos)
                continue;
            bytes.resize(3 * bytes.size() + 1);
            ASSERT_NE(RecodeString(bytes.data(), DWORD(bytes.size()), -code), 0);
            document += RunIn(font, Utf8OfCodePage(bytes.c_str()));
            wanted += RunOut("Saysettha OT", TextOfCode(CodeOfText(line)));
        }
        EXPECT_TRUE(Convert(document) == wanted) << font;
    }
}

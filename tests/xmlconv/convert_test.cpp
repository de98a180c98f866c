// Whole documents through ConvertFile: what is written, what a restart costs, and that no file is
// reported done that isn't.
#include <cstring>

#include "support/corpus.h"
#include "support/message_boxes.h"
#include "support/started_library.h"
#include "support/temp_folder.h"
#include "xmlconv/pass.h"
#include "xmlconv/styles.h"

class Documents : public StartedLibrary
{
  protected:
    void SetUp() override
    {
        StartedLibrary::SetUp();
        folder_ = FreshFolder();
        gConversionSizes = {1024, 128000, 256 * 1024};
        gStyles.capacity = 256;
    }
    std::string Path(const char *name) const { return folder_ + "\\" + name; }
    // The converted document, without the carriage returns of the target's text files; the
    // failure's number when there is one.
    std::string Convert(const std::string &document)
    {
        EXPECT_TRUE(WriteWholeFile(Path("in.xml"), document));
        DWORD failure = ConvertFile(Path("in.xml").c_str(), Path("out.xml").c_str());
        if (failure)
            return std::to_string(failure);
        std::string converted = ReadWholeFile(Path("out.xml"));
        std::erase(converted, '\r');
        return converted;
    }
    std::string folder_;
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

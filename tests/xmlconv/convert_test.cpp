// Whole documents: what is written and noted, that sizes don't show in it, and that no file is
// reported done that isn't.
#include <algorithm>
#include <iterator>
#include <random>

#include "support/conversion.h"
#include "support/message_boxes.h"

class Documents : public ConversionTest
{
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

static std::string Long(size_t length)
{
    return std::string(length, 'n');
}

struct DocumentRow {
    std::string source, converted;  // empty: as the source; of a failure: its number
};

static const DocumentRow kDocumentRows[] = {
    {"text alone", ""},
    {"a<b/>c", ""},
    {"<?xml version=\"1.0\" ?>\n<a  b=\"c\" />\n", "<?xml version=\"1.0\"?>\n<a b=\"c\"/>\n"},
    {"<a b = \"c\">x</a >", "<a b>x</a >"},
    {"</a></b>text", ""},
    {"<!-- a  b --><a/>", "<!-- a b --><a/>"},
    {"<a  b=\"\"\t c=\"&lt;&#x41;\">", "<a b=\"\" c=\"&lt;&#x41;\">"},
    {"<a b=\"1\"c=\"2\">", "<a b=\"1\" c=\"2\">"},
    {"<a b=\"1\" / x>", "<a b=\"1\"/>"},
    {"<a\nb c>", ""},
    {"</ a>", ""},
    {"<//a>", ""},
    {"< /a>", "<a>"},
    {"<a" + std::string(1, 0) + "b>", "<a>"},
    {"<" + Long(63) + " " + Long(63) + "=\"v\">", ""},
    {"<w:p>" + RunIn("Saysettha 2000", "À") + "</w:p>",
     "<w:p>" + RunOut("Saysettha OT", "ກ") + "</w:p>"},
    {RunIn("Arial", "À"), ""},
    {RunIn("Saysettha 2000", "À<?a?>À"), RunOut("Saysettha OT", "ກ<?a?>À")},  // "?a?" stays open
    {RunIn("Saysettha 2000", "À<?>À"), RunOut("Saysettha OT", "ກ<?>À")},
    {RunIn("Saysettha 2000", "À</a/>À"), RunOut("Saysettha OT", "ກ</a/>ກ")},  // takes nothing away
    {"<w:r><w:rPr><w:rFonts w:ascii=\"alice_0\" w:cs=\"x\"/></w:rPr><w:x>d</w:x><w:T>d</w:T></w:r>",
     "<w:r><w:rPr><w:rFonts w:ascii=\"Alice0 Unicode\" w:cs=\"x\"/></w:rPr><w:x>d</w:x><w:T>ກ"
     "</w:T></w:r>"},
};

static const DocumentRow kFailureRows[] = {
    {"<a b='c'>", "269"},
    {"<a b=>", "269"},
    {"<a b=\"" + std::string(1, 0) + "c\">", "269"},
    {"<a b=\"c>d\">", "269"},
    {"<a><b><c d='e'>", "269"},  // what is open then is released
    {"<a b/c=\"d\">", "279"},
    {"<a " + Long(64) + "=\"v\">", "279"},
    {"<" + Long(64) + ">", "259"},
    {"< / w:p>", "259"},
    {"<>", "259"},
    {"x<a b=\"c\"", "1000"},
    {"<", "1000"},
};

// Sizes of a small start, and a block of one byte, which holds no whole piece: all of a document
// goes through the buffers then. In a large block nearly all takes the fast roads.
constexpr ConversionSizes kTinySizes = {.tag = 17, .text = 17, .styles = 1, .block = 1};

TEST_F(Documents, AreWrittenInNormalFormWithUnicodeFontsAndText)
{
    std::vector<DocumentRow> rows(std::begin(kDocumentRows), std::end(kDocumentRows));
    rows.insert(rows.end(), std::begin(kFailureRows), std::end(kFailureRows));
    for (auto &[source, converted] : rows) {
        EXPECT_EQ(MemoryConversion().Convert(source), converted.empty() ? source : converted);
        EXPECT_EQ(MemoryConversion(kTinySizes).Convert(source), MemoryConversion().Convert(source));
    }
    EXPECT_EQ(Convert(""), "");
}

// What the command's own checks keep from the library. All other refusals are the command's cases.
TEST_F(Documents, PathsThatAreNoDocuments)
{
    ExpectBoxes boxes({"Fatal conversion error at line 926"});
    WriteWholeFile(Path("out.xml"), "old");
    EXPECT_EQ(ConvertFile(Path("nowhere.xml").c_str(), Path("out.xml").c_str()), 926u);
    EXPECT_EQ(ReadWholeFile(Path("out.xml")), "old");
    EXPECT_EQ(ConvertFile(nullptr, "x"), 920u);
    EXPECT_EQ(ConvertFile("x", nullptr), 920u);
}

static std::string Styles(int count)
{
    std::string styles = "<w:styles>";
    for (int i = 0; i < count; ++i)
        styles += "<w:style w:styleId=\"S" + std::to_string(i) + "\"/>";
    return styles + "</w:styles>";
}

static const std::string kTag2 = "Restarted: tag buffer increased to 2048\r\n",
                         kTag4 = "Restarted: tag buffer increased to 4096",
                         kOdd = "unprocessed w:rFonts tag,child of b,of a\r\n";

// Each growth is noted as the new beginning that it once was: with all notes so far behind it.
TEST_F(Documents, RestartsAreNotedAndLeadToTheSameResult)
{
    const std::string tag = "<c d=\"" + std::string(3000, 'v') + "\"/>";
    const std::string odd = "<a><b><w:rFonts w:ascii=\"Arial\"/></b></a>";
    const std::string unnamed = "<a><b><w:rFonts w:x=\"" + std::string(1500, 'v') + "\"/></b></a>";
    const struct {
        std::string document, notes;
    } rows[] = {
        {tag, kTag2 + kTag4},
        {odd + tag + odd, kOdd + kTag2 + kOdd + kTag4 + "\r\n" + kOdd + kOdd},
        {odd + unnamed + Styles(257), kOdd + kTag2 + kOdd + kOdd +
                                          "Restarted: styles buffer increased to 512 styles\r\n" +
                                          kOdd + kOdd},
        {Styles(256) + std::string(127984, 't'), ""},
        {std::string(127985, 't'), "Restarted: text buffer increased to 256000"},
    };
    for (auto &[document, notes] : rows) {
        MemoryConversion conversion;
        EXPECT_TRUE(conversion.Convert(document) == document) << notes;
        std::string noted = conversion.Notes();
        EXPECT_EQ(noted + (notes.ends_with("\n") ? "\r\n" : ""), notes);
    }
    {
        ExpectBoxes boxes({kTag2 + kTag4});
        EXPECT_EQ(Convert(tag), tag);
    }
    EXPECT_EQ(Convert(tag), tag);  // what it needed stays
}

// A text that grows past the buffer, and a tag that does by its longer fonts.
TEST_F(Documents, WhatGrowsPastItsBufferIsWhole)
{
    std::string text, converted;
    for (int i = 0; i < 150000; ++i) {
        text += "Ò";
        converted += "ໍ່";
    }
    ExpectBoxes boxes({"Restarted: text buffer increased to 256000\r\nRestarted: text buffer "
                       "increased to 512000\r\nRestarted: text buffer increased to 1024000"});
    EXPECT_EQ(Convert(RunIn("Saysettha Lao", text)), RunOut("Saysettha OT", converted));
    for (size_t size = 17; size < 110; ++size) {
        ConversionSizes sizes = {
            .tag = size, .text = size, .styles = 1, .block = size % 2 ? 99 : size};
        EXPECT_EQ(MemoryConversion(sizes).Convert(RunIn("Saysettha Lao", "¡-ÒÒÒÒÒ")),
                  RunOut("Saysettha OT", "ກ\u200Bໍ່ໍ່ໍ່ໍ່ໍ່"));
    }
}

// What one part says of styles holds in the next, and where it left off doesn't.
TEST_F(Documents, PartsShareTheirStyles)
{
    const std::string run = "<w:r><w:t>À</w:t></w:r>", lao = "<w:r><w:t>ກ</w:t></w:r>";
    MemoryConversion conversion;
    conversion.Convert("<w:styles><w:style w:styleId=\"A\"><w:rPr><w:rFonts w:ascii=\"Saysettha "
                       "2000\"/></w:rPr></w:style></w:styles>");
    const std::string styled = "<w:p><w:pPr><w:pStyle w:val=\"a\"/></w:pPr>";
    EXPECT_EQ(conversion.Convert(styled + run), styled + lao);
    EXPECT_EQ(conversion.Convert(run), run);
    conversion.Convert("<w:r><w:rPr><w:rFonts w:fareast=\"x\" w:hint=\"fareast\"/>");
    EXPECT_EQ(conversion.Convert(RunIn("Alice0 2000", "À")), RunOut("Alice0 Unicode", "ກ"));
}

// Characters of all lengths, cut and wrong ones among them.
static const std::string kTexts[] = {
    "abc ",     "¡Ò-\n", "À–\u200B",     "ສະບາຍດີ",           "&amp;&#161;",     "\xC2",
    "\xE2\x80", "Ā−₂",   "\xED\xA0\x80", "\xF0\x9F\x98\x80", std::string(1, 0), "\xC0\x80",
    ">"};

// Wherever a block ends and whatever roads its pieces take, the result is the same.
TEST_F(Documents, BlocksDoNotShow)
{
    std::mt19937 random(1);
    auto pick = [&random](auto &rows) -> auto &
    {
        return rows[random() % std::size(rows)];
    };
    const char *fonts[] = {"Saysettha Lao", "Saysettha 2000", "alice_0", "Xayawath", "Arial"};
    for (int round = 0; round < 300; ++round) {
        std::string document;
        for (size_t count = random() % 30; count > 0; --count)
            document +=
                pick(kDocumentRows).source + RunIn(pick(fonts), pick(kTexts) + pick(kTexts));
        std::string wanted = MemoryConversion(kTinySizes).Convert(document);
        for (size_t block : {2 + random() % (document.size() + 1), document.size() + 1}) {
            ConversionSizes sizes = kFirstSizes;
            sizes.block = block;
            EXPECT_EQ(MemoryConversion(sizes).Convert(document), wanted) << block << document;
        }
    }
}

// Line ends are those of the target's text files, wherever a block ends, and no byte ends a
// document.
TEST_F(Documents, LineEndsAndByte26StayAsTheyAre)
{
    const std::string document = "\r\n<a/>\r\n\r\n\r\x1A\r\r\n<w:t>b\r</w:t>\r\n\r";
    for (size_t block = 1; block <= document.size(); ++block) {
        gConverter.sizes.block = block;
        Convert(document);
        EXPECT_EQ(ReadWholeFile(Path("out.xml")), document) << block;
    }
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
    std::string tag = "<a b=\"" + std::string(textLength, 'v') + "\"";
    for (int i = 0; i < 5000; ++i)
        tag += " b" + std::to_string(i) + "=\"v\"";
    const std::string before = tag + "/>" + styles + std::string(5000, 0);
    EXPECT_TRUE(MemoryConversion().Convert(before + RunIn("Saysettha 2000", legacy)) ==
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
        for (size_t block : {size_t(1), kFirstSizes.block}) {
            DocumentFont fonts[8] = {};
            DocumentJob job = JobOf(source, "");
            job.fonts = fonts;
            job.fontRoom = room;
            job.fontCount = 99;
            gConverter.sizes = kFirstSizes;
            gConverter.sizes.block = block;
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

// What a host does while it hears of its job.
struct Hearing {
    int stopAt;  // the question at which it stops the work; -1: none
    std::vector<DWORD> percents;
};

static void WINAPI ConvertAgain(void *context, DWORD percent)
{
    static_cast<Hearing *>(context)->percents.push_back(percent);
    EXPECT_EQ(ConvertFile("in.xml", "out.xml"), DWORD(kFailBusy));
}

static int WINAPI StopAt(void *context)
{
    return static_cast<Hearing *>(context)->stopAt-- == 0;
}

// A job hears its own context, can't begin another one, and is stopped wherever it says so with the
// old file in place.
TEST_F(Documents, CallbacksAndStopping)
{
    std::string source = Path("in.xml"), destination = Path("out.xml");
    WriteWholeFile(source, "<a>" + RunIn("Saysettha 2000", "À") + "</a>");
    gConverter.sizes.block = 50;
    for (int stopAt = 0; stopAt < 5; ++stopAt) {
        Hearing hearing = {stopAt, {}};
        DocumentJob job = JobOf(source, destination);
        job.context = &hearing;
        job.showPercent = ConvertAgain;
        job.shallStop = StopAt;
        WriteWholeFile(destination, "old");
        bool isStopped = stopAt < 3;  // in front of the document, and twice at its end
        EXPECT_EQ(ConvertDocument(&job), DWORD(isStopped ? kFailStopped : kConverted)) << stopAt;
        EXPECT_EQ(ReadWholeFile(destination),
                  isStopped ? "old" : "<a>" + RunOut("Saysettha OT", "ກ") + "</a>");
        EXPECT_EQ(ListFolder(folder_), (std::vector<std::string>{"in.xml", "out.xml"}));
        EXPECT_EQ(hearing.percents.empty(), stopAt == 0);
    }
    for (DWORD size : {DWORD(0), DWORD(sizeof(DocumentJob) - 1), DWORD(sizeof(DocumentJob) + 8)}) {
        DocumentJob job = JobOf(source, destination);
        job.size = size;
        EXPECT_EQ(ConvertDocument(&job), DWORD(kFailJobSize));
    }
    EXPECT_EQ(ConvertDocument(nullptr), DWORD(kFailNoPath));
}

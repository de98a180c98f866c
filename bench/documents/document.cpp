// The body of a made-up document. Which font a text gets is decided here by the order in which a
// word processor asks: run, character style, paragraph style, the paragraph's fonts, "Normal".
#include "document.h"

#include <algorithm>

#include "document_writer.h"

static const std::string kEnglish = "Everyone has the right to life, liberty &amp; security. ";

static std::string Hex(DocumentWriter *writer, const char *name)
{
    static const char digits[] = "0123456789ABCDEF";
    std::string value = "00";
    for (int i = 0; i < 6; ++i)
        value += digits[Random(writer, 16)];
    return std::string(" ") + name + "=\"" + value + "\"";
}

static int FaceOfNormal(const DocumentWriter *writer)
{
    return writer->styles[0].face;
}

static int FaceOfParagraphStyle(const DocumentWriter *writer)
{
    int face = writer->styles[size_t(writer->paragraphStyle)].face;
    return face == kNoFace ? FaceOfNormal(writer) : face;
}

static int FaceOfText(const DocumentWriter *writer, int ownFace, int style)
{
    if (ownFace != kNoFace)
        return ownFace;
    int face = style == kNoStyle ? int(kNoFace) : writer->styles[size_t(style)].face;
    if (face != kNoFace)
        return face;
    if (writer->paragraphStyle != kNoStyle)
        return FaceOfParagraphStyle(writer);
    if (style != kNoStyle)
        return kNoFace;  // nobody asks "Normal" for a run with a style
    return writer->paragraphFace == kNoFace ? FaceOfNormal(writer) : writer->paragraphFace;
}

// ---- runs ----

static LegacyText AnyText(DocumentWriter *writer, int face)
{
    int type = face == kNoFace ? int(kUnicodeType) : writer->faces[size_t(face)].type;
    const std::string &phrase = writer->phrases[Random(writer, unsigned(writer->phrases.size()))];
    if (type != kUnicodeType)
        return WriteInLegacyFont(phrase, type, &writer->seed);
    const std::string texts[] = {phrase, kEnglish, "Caf\u00E9 \u00C0\u00D2 \u2013 &#160;&lt;-", ""};
    const std::string &text = texts[Random(writer, writer->isTidy ? 2 : 4)];
    return {text, text};
}

static void PutText(DocumentWriter *writer, int face)
{
    LegacyText text = AnyText(writer, face);
    if (face == kNoFace || !writer->faces[size_t(face)].isLegacy)
        text.known = text.stored;
    Put(writer, Random(writer, 3) ? "<w:t>" : "<w:t xml:space=\"preserve\">");
    PutChanged(writer, text.stored, text.known);
    Put(writer, "</w:t>");
}

static void PutRunProperties(DocumentWriter *writer, int ownFace, int style)
{
    Put(writer, "<w:rPr>");
    if (style != kNoStyle)
        Put(writer, "<w:rStyle w:val=\"" + writer->styles[size_t(style)].id + "\"/>");
    if (ownFace != kNoFace) {
        PutFonts(writer, ownFace, kOfRun);
        PutFontName(writer, "<wx:font wx:val", ownFace, "/>");
    }
    if (Random(writer, 4) == 0)
        PutUntidy(writer, "<w:b /><w:u  w:val=\"single\" />", "<w:b/><w:u w:val=\"single\"/>");
    Put(writer, "<w:sz w:val=\"" + std::to_string(20 + 2 * Random(writer, 8)) +
                    "\"/><w:sz-cs w:val=\"24\"/>");
    if (Random(writer, 2))
        Put(writer, "<w:lang w:val=\"EN-US\" w:fareast=\"JA\" w:bidi=\"LO\"/>");
    Put(writer, "</w:rPr>");
}

static int AnyCharacterStyle(DocumentWriter *writer)
{
    return int(writer->paragraphStyles + Random(writer, writer->characterStyles));
}

// In most documents nearly every run has its own font; all other ways have to come as well.
static void PutTextRun(DocumentWriter *writer)
{
    bool hasOwn = writer->isLost || Random(writer, 2);
    int ownFace = hasOwn ? AnyFace(writer) : int(kNoFace);
    int style = Random(writer, 3) ? int(kNoStyle) : AnyCharacterStyle(writer);
    Put(writer, "<w:r" + (Random(writer, 3) ? std::string() : Hex(writer, "wsp:rsidRPr")) + ">");
    if (hasOwn || style != kNoStyle || Random(writer, 4) == 0)
        PutRunProperties(writer, ownFace, style);
    int face = FaceOfText(writer, ownFace, style);
    PutText(writer, face);
    if (Random(writer, 10) == 0) {
        Put(writer, "<w:br/>");
        PutText(writer, face);
    }
    Put(writer, "</w:r>");
}

// What may stand in a run beside text; @ is the place of a paragraph.
static const char *const kOddRuns[] = {
    "<w:r><w:rPr><w:rStyle w:val=\"Char3\"/></w:rPr><w:footnote>@</w:footnote></w:r>",
    "<w:r><w:endnote>@</w:endnote></w:r>",
    "<w:r><aml:annotation aml:id=\"7\" aml:author=\"A\" w:type=\"Word.Comment\"><aml:content>@"
    "</aml:content></aml:annotation></w:r>",
    "<w:r><w:pict><v:shape id=\"_x0000_s1026\" style=\"position:absolute;margin-left:9pt\">"
    "<v:textbox><w:txbxContent>@@</w:txbxContent></v:textbox></v:shape></w:pict></w:r>",
    "<w:r><w:pict><w:binData w:name=\"wordml://01.gif\">R0lGODlhAQABAIAAAAUEBAAAACwAAAAA\n"
    "AQABAAACAkQBADs=\n</w:binData></w:pict></w:r>",
    "<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText> PAGE \u00C0\u00D2 "
    "</w:instrText></w:r><w:r><w:fldChar w:fldCharType=\"end\"/></w:r>",
    "<w:r><w:sym w:font=\"Wingdings\" w:char=\"F0B7\"/><w:tab wx:wTab=\"720\"/></w:r>",
    "<aml:annotation aml:id=\"9\" w:type=\"Word.Deletion\"><aml:content><w:r><w:delText>\u00C0"
    "</w:delText></w:r></aml:content></aml:annotation>",
    "<w:proofErr w:type=\"spellStart\"/><aml:annotation aml:id=\"1\" "
    "w:type=\"Word.Bookmark.Start\" w:name=\"a\"/>",
};

static void PutOddRun(DocumentWriter *writer, int depth)
{
    const std::string odd = kOddRuns[Random(writer, std::size(kOddRuns))];
    if (depth > 0 && odd.find('@') != odd.npos)
        return PutTextRun(writer);
    for (size_t at = 0; at < odd.size();) {
        size_t place = std::min(odd.find('@', at), odd.size());
        Put(writer, odd.substr(at, place - at));
        if (place < odd.size()) {
            PutParagraph(writer, depth + 1);
            writer->isLost = true;
        }
        at = place + 1;
    }
}

// ---- paragraphs ----

static const char *const kOtherProperties[] = {
    "<w:spacing w:before=\"0\" w:after=\"120\" w:line=\"360\" w:line-rule=\"auto\"/>",
    "<w:jc w:val=\"both\"/>",
    "<w:listPr><w:ilvl w:val=\"0\"/><w:ilfo w:val=\"1\"/><wx:t wx:val=\"\u00B7\"/></w:listPr>",
    "<w:keepNext/>",
};

static void PutParagraphProperties(DocumentWriter *writer)
{
    if (Random(writer, 5) == 0)
        return;
    Put(writer, "<w:pPr>");
    if (Random(writer, 20) == 0) {
        Put(writer, "<w:pStyle w:val=\"Gone\"/>");
    } else if (Random(writer, 2)) {
        writer->paragraphStyle = int(Random(writer, writer->paragraphStyles));
        Put(writer,
            "<w:pStyle w:val=\"" + writer->styles[size_t(writer->paragraphStyle)].id + "\"/>");
    }
    Put(writer, kOtherProperties[Random(writer, std::size(kOtherProperties))]);
    if (Random(writer, 2)) {
        writer->paragraphFace = AnyFace(writer);
        Put(writer, "<w:rPr>");
        PutFonts(writer, writer->paragraphFace, kOfParagraph);
        PutFontName(writer, "<wx:font wx:val", writer->paragraphFace, "/>");
        Put(writer, "</w:rPr>");
    }
    Put(writer, "</w:pPr>");
}

void PutParagraph(DocumentWriter *writer, int depth)
{
    writer->paragraphStyle = kNoStyle;
    writer->paragraphFace = kNoFace;
    writer->isLost = false;
    Put(writer, "<w:p" + Hex(writer, "wsp:rsidR") + Hex(writer, "wsp:rsidRDefault") + ">");
    PutParagraphProperties(writer);
    for (unsigned runs = 1 + Random(writer, 6); runs > 0; --runs)
        if (Random(writer, 12))
            PutTextRun(writer);
        else
            PutOddRun(writer, depth);
    Put(writer, "</w:p>");
    if (Random(writer, 3) == 0)
        Put(writer, "\n");
}

static void PutTable(DocumentWriter *writer)
{
    Put(writer, "<w:tbl><w:tblPr><w:tblStyle w:val=\"TableGrid\"/><w:tblW w:w=\"0\" "
                "w:type=\"auto\"/></w:tblPr><w:tr>");
    for (int cell = 0; cell < 3; ++cell) {
        Put(writer, "<w:tc><w:tcPr><w:tcW w:w=\"2952\" w:type=\"dxa\"/></w:tcPr>");
        PutParagraph(writer, 0);
        Put(writer, Random(writer, 3) ? "</w:tc>" : "<w:p/></w:tc>");
    }
    Put(writer, "</w:tr></w:tbl>");
}

static void PutSectionEnd(DocumentWriter *writer)
{
    Put(writer, "<w:sectPr wsp:rsidR=\"00445566\"><w:hdr w:type=\"odd\">");
    PutParagraph(writer, 0);
    Put(writer, "</w:hdr><w:ftr w:type=\"odd\">");
    PutParagraph(writer, 1);
    Put(writer, "</w:ftr><w:pgSz w:w=\"11906\" w:h=\"16838\"/></w:sectPr>");
}

MadeDocument MakeDocument(const DocumentPlan &plan)
{
    DocumentWriter writer = {};
    writer.seed = plan.seed;
    writer.isTidy = plan.isTidy;
    MakeFaces(&writer, plan.isPlain);
    writer.phrases = CutIntoPhrases(plan.corpus, &writer.seed);
    PutHead(&writer);
    Put(&writer, "<w:body><wx:sect>");
    while (writer.made.source.size() < plan.size)
        if (Random(&writer, 10))
            PutParagraph(&writer, 0);
        else
            PutTable(&writer);
    PutSectionEnd(&writer);
    Put(&writer, "</wx:sect></w:body></w:wordDocument>");
    return std::move(writer.made);
}

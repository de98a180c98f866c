// The head of a made-up document: fonts, lists, styles, notes' separators.
#include <cstdio>
#include <numeric>

#include "document_writer.h"

static void PutFontTable(DocumentWriter *writer)
{
    Put(writer, "<w:fonts>");
    PutFontName(writer, "<w:defaultFonts w:ascii", AnyFace(writer), "");
    PutFontName(writer, " w:fareast", AnyFace(writer), "");
    PutFontName(writer, " w:h-ansi", AnyFace(writer), "");
    PutFontName(writer, " w:cs", AnyFace(writer), "/>");
    for (size_t face = 0; face < writer->faces.size(); ++face) {
        PutFontName(writer, "<w:font w:name", int(face), ">");
        Put(writer, "<w:altName w:val=\"Lao\"/><w:panose-1 w:val=\"020B0604020202020204\"/>"
                    "<w:charset w:val=\"00\"/><w:family w:val=\"Swiss\"/><w:pitch "
                    "w:val=\"variable\"/><w:sig w:usb-0=\"00000003\" w:csb-0=\"00000001\"/>"
                    "</w:font>\n");
    }
    Put(writer, "</w:fonts>");
}

static void PutLists(DocumentWriter *writer)
{
    Put(writer, "<w:lists>");
    for (int list = 0; list < 4; ++list) {
        Put(writer, "<w:listDef w:listDefId=\"" + std::to_string(list) +
                        "\"><w:lsid w:val=\"0A1B2C3D\"/><w:plt w:val=\"HybridMultilevel\"/>");
        for (int level = 0; level < 9; ++level) {
            Put(writer, "<w:lvl w:ilvl=\"" + std::to_string(level) +
                            "\"><w:start w:val=\"1\"/><w:pStyle w:val=\"Para1\"/><w:lvlText "
                            "w:val=\"%1.\"/><w:pPr><w:ind w:left=\"720\"/></w:pPr><w:rPr>");
            PutUnusedFonts(writer, AnyFace(writer));
            Put(writer, "</w:rPr></w:lvl>");
        }
        Put(writer, "</w:listDef>");
    }
    Put(writer, "<w:list w:ilfo=\"1\"><w:ilst w:val=\"0\"/></w:list></w:lists>");
}

// ---- styles ----

static int AddStyle(DocumentWriter *writer, const std::string &id, const char *type, int base,
                    int ownFace)
{
    int inherited = base == kNoStyle ? int(kNoFace) : writer->styles[size_t(base)].face;
    writer->styles.push_back({id, type, base, ownFace, ownFace == kNoFace ? inherited : ownFace});
    return int(writer->styles.size()) - 1;
}

// Styles of one type, with bases among those from `first` on, or none. A long chain ends them.
static void MakeStyles(DocumentWriter *writer, const char *name, const char *type, int first)
{
    for (int i = 0; i < 30; ++i) {
        unsigned made = unsigned(writer->styles.size()) - unsigned(first);
        bool hasBase = made > 0 && Random(writer, 4) != 0;
        int base = hasBase ? first + int(Random(writer, made)) : int(kNoStyle);
        AddStyle(writer, name + std::to_string(i), type, base,
                 Random(writer, 3) ? int(kNoFace) : AnyFace(writer));
    }
    int link = AddStyle(writer, std::string(name) + "Chain", type, kNoStyle, AnyFace(writer));
    for (int i = 0; i < 20; ++i)
        link = AddStyle(writer, name + ("Chain" + std::to_string(i)), type, link, kNoFace);
}

static void MakeAllStyles(DocumentWriter *writer)
{
    AddStyle(writer, "Normal", "paragraph", kNoStyle, AnyFace(writer));
    MakeStyles(writer, "Para", "paragraph", 0);
    writer->paragraphStyles = unsigned(writer->styles.size());
    MakeStyles(writer, "Char", "character", int(writer->styles.size()));
    writer->characterStyles = unsigned(writer->styles.size()) - writer->paragraphStyles;
    AddStyle(writer, "TableNormal", "table", kNoStyle, kNoFace);
    AddStyle(writer, "TableGrid", "table", int(writer->styles.size()) - 1, AnyFace(writer));
    AddStyle(writer, "NoList", "list", kNoStyle, kNoFace);
    AddStyle(writer, "Outline", "list", int(writer->styles.size()) - 1, AnyFace(writer));
}

static void PutStyle(DocumentWriter *writer, const MadeStyle &style)
{
    Put(writer, std::string("<w:style w:type=\"") + style.type +
                    (style.id == "Normal" ? "\" w:default=\"on" : "") + "\" w:styleId=\"" +
                    style.id + "\"><w:name w:val=\"" + style.id + " style\"/>");
    if (style.base != kNoStyle)
        Put(writer, "<w:basedOn w:val=\"" + writer->styles[size_t(style.base)].id + "\"/>");
    Put(writer, "<w:rsid w:val=\"00A77B3E\"/><w:pPr><w:pStyle w:val=\"" + style.id +
                    "\"/><w:spacing w:after=\"120\"/></w:pPr>");
    if (style.ownFace != kNoFace) {
        Put(writer, "<w:rPr>");
        PutFonts(writer, style.ownFace, kOfStyle);
        PutFontName(writer, "<wx:font wx:val", style.ownFace, "/>");
        Put(writer, "<w:sz w:val=\"24\"/></w:rPr>");
    }
    if (style.id == "TableGrid") {
        Put(writer, "<w:tStylePr w:type=\"firstRow\"><w:rPr>");
        PutUnusedFonts(writer, AnyFace(writer));
        Put(writer, "</w:rPr></w:tStylePr>");
    }
    Put(writer, "</w:style>\n");
}

// In any order, so that bases stand before and behind what is based on them.
static void PutStyles(DocumentWriter *writer)
{
    std::vector<unsigned> order(writer->styles.size());
    std::iota(order.begin(), order.end(), 0u);
    for (unsigned i = unsigned(order.size()) - 1; i > 0; --i)
        std::swap(order[i], order[Random(writer, i + 1)]);
    Put(writer, "<w:styles><w:versionOfBuiltInStylenames w:val=\"4\"/><w:latentStyles "
                "w:defLockedState=\"off\" w:latentStyleCount=\"156\"/>\n");
    for (unsigned i : order)
        PutStyle(writer, writer->styles[i]);
    Put(writer, "</w:styles>");
}

void PutHead(DocumentWriter *writer)
{
    PutUntidy(writer, "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\" ?>",
              "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>");
    Put(writer, "\n<?mso-application progid=\"Word.Document\"?>\n"
                "<w:wordDocument xmlns:w=\"http://schemas.microsoft.com/office/word/2003/wordml\" "
                "xmlns:wx=\"http://schemas.microsoft.com/office/word/2003/auxHint\" "
                "xmlns:v=\"urn:schemas-microsoft-com:vml\" "
                "xmlns:o=\"urn:schemas-microsoft-com:office:office\" "
                "xmlns:aml=\"urn:aml\" xmlns:wsp=\"urn:wsp\" w:macrosPresent=\"no\" "
                "xml:space=\"preserve\"><o:DocumentProperties><o:Title>"
                "\u00D3\u00DF\u00CC &amp; A</o:Title></o:DocumentProperties>\n");
    PutFontTable(writer);
    PutLists(writer);
    MakeAllStyles(writer);
    PutStyles(writer);
    Put(writer, "<w:docPr><w:view w:val=\"print\"/><w:footnotePr><w:footnote "
                "w:type=\"separator\"><w:p wsp:rsidR=\"00112233\"><w:r><w:separator/></w:r></w:p>"
                "</w:footnote></w:footnotePr></w:docPr>");
}

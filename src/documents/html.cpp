// The road of a page. The first reading finds its encoding, its style sheets and whether any of its
// fonts is a legacy one. Where there is something to do, the second one writes the page in UTF-8,
// with its declaration changed; else it is copied.
#include "documents/html.h"

#include <cstdio>
#include <cstring>

#include "documents/css.h"
#include "documents/html_text.h"
#include "documents/html_tree.h"
#include "documents/paragraph.h"
#include "documents/scanner.h"
#include "frame/strings.h"

enum { kSelectors = 1 };  // the family of styles: fonts by a selector
constexpr size_t kWriteSize = 64 * 1024;
constexpr char kDeclaration[] =
    "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\">";

struct Page {
    Document *document;
    FILE *file;    // of the page
    FILE *target;  // null: nothing is written
    Scanner scanner;
    HtmlTree tree;
    Paragraph paragraph;
    Bytes output;
    Bytes work;             // a changed tag
    HtmlEncoding encoding;  // as declared; afterwards as it is read
    bool isDeclared;        // by a tag of the page
    bool hasLegacy;         // some font is a legacy one
    bool hasHead;
    bool mustDeclare;    // no tag of the page says its encoding
    bool isTranscoding;  // what is written is UTF-8, what is read isn't
};

static bool FailPage(Page *page, ConversionFailure failure)
{
    return FailDocument(page->document, failure);
}

// ---- output ----

static void Put(Page *page, std::string_view raw)
{
    if (!page->document->isRewriting)
        return;
    if (!page->isTranscoding) {
        PutMarkup(&page->paragraph, raw, &page->output);
        return;
    }
    AppendAsUtf8(raw, page->paragraph.isHolding ? &page->paragraph.held : &page->output);
}

static bool EndLine(Page *page)
{
    return !page->document->isRewriting ||
           EndParagraph(page->document, &page->paragraph, &page->output);
}

static const TextForm *FormOfText(const Page *page)
{
    DWORD flags = page->document->job->flags;
    bool usesWbr = flags & kWbrBreaks;
    if (page->encoding != kHtmlIsUtf8)
        return usesWbr ? &kHtml1252Wbr : &kHtml1252;
    if (flags & kKeepFonts)
        return usesWbr ? &kHtmlKeptWbr : &kHtmlKept;
    return usesWbr ? &kHtmlUtf8Wbr : &kHtmlUtf8;
}

// Text in fonts that stay is transcoded with its references as they are, where no breaks are
// wanted.
static void PutTextOfPage(Page *page, std::string_view raw)
{
    Document *document = page->document;
    int font = FontHere(page->tree);
    bool isHeld = LegacyFont(document->fonts, font) ||
                  document->job->flags & (kWriteBreaks | kTakeBreaks | kDetectText);
    if (!document->isRewriting)
        return;
    page->paragraph.isVerbatim = IsVerbatimHere(page->tree);
    if (isHeld || !page->isTranscoding) {
        PutText(document, &page->paragraph, FormOfText(page), raw, {font, font}, &page->output);
        return;
    }
    CountCharacters(&document->fonts, font, raw.size());
    Put(page, raw);
    SetApart(&page->paragraph);
}

// ---- fonts ----

// The number of the font that a list of families begins with.
static int FontOfFace(Page *page, std::string_view face)
{
    std::string_view name = face.substr(0, face.find(','));
    size_t start = name.find_first_not_of(" \t\r\n'\"");
    size_t end = name.find_last_not_of(" \t\r\n'\"");
    return start == name.npos
               ? kNoFont
               : FontNumber(&page->document->fonts, name.substr(start, end + 1 - start));
}

static int FontOfDeclarations(Page *page, std::string_view declarations)
{
    FamilyPlace place;
    if (!FindFamily(declarations, &place))
        return kNoFont;
    return FontNumber(&page->document->fonts, declarations.substr(place.start, place.length));
}

static int FontOfSelector(Page *page, std::string_view element, std::string_view sign,
                          std::string_view name)
{
    FontStyles *styles = &page->document->styles;
    std::string_view parts[] = {element, sign, name};
    char selector[128];
    size_t length = 0;
    for (std::string_view part : parts) {
        if (part.size() > sizeof selector - length)
            return kNoFont;
        length += part.copy(selector + length, part.size());
    }
    int style = FindFontStyle(*styles, kSelectors, {selector, length});
    return FontOfStyle(styles, style, kAscii);
}

static void TakeFont(int *font, int found)
{
    if (found)
        *font = found;
}

static int FontOfClasses(Page *page, std::string_view element, std::string_view classes)
{
    int font = kNoFont;
    for (size_t start = 0; start < classes.size();) {
        size_t end = classes.find_first_of(" \t\r\n", start);
        end = end == classes.npos ? classes.size() : end;
        TakeFont(&font, FontOfSelector(page, element, ".", classes.substr(start, end - start)));
        start = end + 1;
    }
    return font;
}

static bool FindHtmlAttribute(std::string_view tag, std::string_view name, Attribute *attribute)
{
    for (size_t place = 0; NextAttribute(tag, &place, attribute);)
        if (EqualNoCase(attribute->name, name))
            return true;
    return false;
}

// From the weakest to the strongest.
static int FontOfTag(Page *page, const HtmlElement &element, std::string_view tag)
{
    Attribute face, classes, id, style;
    bool hasFace = FindHtmlAttribute(tag, "face", &face);
    int font = FontOfSelector(page, element.name, {}, {});
    if (hasFace)
        TakeFont(&font, FontOfFace(page, face.value));
    if (FindHtmlAttribute(tag, "class", &classes)) {
        TakeFont(&font, FontOfClasses(page, {}, classes.value));
        TakeFont(&font, FontOfClasses(page, element.name, classes.value));
    }
    if (FindHtmlAttribute(tag, "id", &id)) {
        TakeFont(&font, FontOfSelector(page, {}, "#", id.value));
        TakeFont(&font, FontOfSelector(page, element.name, "#", id.value));
    }
    if (FindHtmlAttribute(tag, "style", &style))
        TakeFont(&font, FontOfDeclarations(page, style.value));
    return font;
}

static void NoteFont(Page *page, int font)
{
    page->hasLegacy = page->hasLegacy || LegacyFont(page->document->fonts, font);
}

// The name of a font in a stretch of the page, with the Unicode font in its place.
static void PutRenamed(Page *page, std::string_view text, FamilyPlace place, int font)
{
    const FontMapEntry *entry = LegacyFont(page->document->fonts, font);
    if (!entry || !page->document->isRewriting) {
        Put(page, text);
        return;
    }
    Put(page, text.substr(0, place.start));
    PutMarkup(&page->paragraph, entry->unicodeName, &page->output);
    Put(page, text.substr(place.start + place.length));
    page->paragraph.hasChanged = true;
}

static FamilyPlace PlaceOfFace(std::string_view face)
{
    std::string_view name = face.substr(0, face.find(','));
    size_t start = name.find_first_not_of(" \t\r\n'\"");
    if (start == name.npos)
        return {0, 0};
    return {start, name.find_last_not_of(" \t\r\n'\"") + 1 - start};
}

// ---- tags ----

static HtmlEncoding EncodingOfMeta(std::string_view tag, Attribute *attribute, FamilyPlace *place)
{
    if (FindHtmlAttribute(tag, "charset", attribute)) {
        *place = {0, attribute->value.size()};
        return EncodingOfName(attribute->value);
    }
    if (!FindHtmlAttribute(tag, "content", attribute))
        return kHtmlUnknown;
    constexpr std::string_view kCharset = "charset=";
    for (size_t at = 0; at + kCharset.size() < attribute->value.size(); ++at) {
        if (!EqualNoCase(attribute->value.substr(at, kCharset.size()), kCharset))
            continue;
        size_t start = at + kCharset.size();
        size_t end = attribute->value.find_first_of(" ;\"'", start);
        *place = {start, (end == attribute->value.npos ? attribute->value.size() : end) - start};
        return EncodingOfName(attribute->value.substr(start, place->length));
    }
    return kHtmlUnknown;
}

static bool TakeMeta(Page *page, std::string_view tag)
{
    Attribute attribute;
    FamilyPlace place;
    HtmlEncoding encoding = EncodingOfMeta(tag, &attribute, &place);
    if (encoding == kHtmlUnknown)
        return false;
    if (!page->document->isRewriting && !page->isDeclared)
        page->encoding = encoding;
    page->isDeclared = true;
    if (!page->isTranscoding || !page->document->isRewriting)
        return false;
    size_t start = attribute.valueStart + place.start;
    Put(page, tag.substr(0, start));
    Put(page, "utf-8");
    Put(page, tag.substr(start + place.length));
    page->paragraph.hasChanged = true;
    return true;
}

// A tag with its fonts: names stand in `face` and `style`, of which a tag hardly has both.
static void PutTagOfPage(Page *page, std::string_view tag)
{
    Attribute attribute;
    size_t written = 0;
    for (size_t at = 0; NextAttribute(tag, &at, &attribute);) {
        bool isFace = EqualNoCase(attribute.name, "face"),
             isStyle = EqualNoCase(attribute.name, "style");
        FamilyPlace place = PlaceOfFace(attribute.value);
        if ((!isFace && !isStyle) || (isStyle && !FindFamily(attribute.value, &place)))
            continue;
        int font =
            FontNumber(&page->document->fonts, attribute.value.substr(place.start, place.length));
        NoteFont(page, font);
        Put(page, tag.substr(written, attribute.valueStart - written));
        PutRenamed(page, attribute.value, place, font);
        written = attribute.valueStart + attribute.value.size();
    }
    Put(page, tag.substr(written));
}

// The declaration of a page that has none.
static void PutDeclaration(Page *page)
{
    if (!page->mustDeclare || !page->isTranscoding || !page->document->isRewriting)
        return;
    Put(page, kDeclaration);
    page->paragraph.hasChanged = true;
    page->mustDeclare = false;
}

// Names of elements count without regard to case.
static void KeepSelector(Page *page, std::string_view selector, int font)
{
    FontStyles *styles = &page->document->styles;
    char name[128];
    size_t length = selector.size() < sizeof name ? selector.copy(name, sizeof name) : 0;
    size_t elementEnd = selector.find_first_of(".#");
    for (size_t i = 0; i < length && i < elementEnd; ++i)
        name[i] = FoldLetter(name[i]);
    int style = length ? AddFontStyle(styles, kSelectors, {name, length}) : kNoFontStyle;
    if (style != kNoFontStyle)
        styles->items[style].fonts[kAscii] = font;
}

// `clean` is the sheet without its comments, in which all stands at the same places.
static void TakeStyleSheet(Page *page, std::string_view sheet, std::string_view clean)
{
    CssRule rule;
    size_t written = 0;
    for (size_t at = 0; NextRule(clean, &at, &rule);) {
        FamilyPlace place;
        std::string_view selector;
        if (!FindFamily(rule.declarations, &place))
            continue;
        int font = FontOfDeclarations(page, rule.declarations);
        size_t start = size_t(rule.declarations.data() - clean.data());
        NoteFont(page, font);
        Put(page, sheet.substr(written, start - written));
        PutRenamed(page, sheet.substr(start, rule.declarations.size()), place, font);
        written = start + rule.declarations.size();
        while (!page->document->isRewriting && NextSelector(&rule.selectors, &selector))
            KeepSelector(page, selector, font);
    }
    Put(page, sheet.substr(written));
}

// A sheet may come in several stretches, and has to be seen whole.
static bool TakeRawText(Page *page, std::string_view name)
{
    Piece piece;
    bool isSheet = EqualNoCase(name, "style"), done;
    page->work.length = 0;
    while ((done = NextRawText(&page->scanner, name, &piece)) && !piece.raw.empty()) {
        if (isSheet)
            AppendBytes(&page->work, piece.raw);
        else
            Put(page, piece.raw);
    }
    size_t length = page->work.length;
    std::string_view sheet = TextOf(page->work);
    if (char *clean = length && done ? MakeRoom(&page->work, length) : nullptr) {
        sheet = TextOf(page->work);  // it may have moved
        memcpy(clean, sheet.data(), length);
        BlankComments(clean, length);
        TakeStyleSheet(page, sheet, {clean, length});
    }
    return done || FailPage(page, page->scanner.failure);
}

static bool OpenTagOfPage(Page *page, const Piece &piece)
{
    HtmlElement element = ElementOfName(piece.name);
    std::string_view name = element.name;
    if (element.kind == kBlock || element.kind == kCell || name == "hr")
        if (!EndLine(page))
            return false;
    if (name == "br" || name == "img" || name == "input" || name == "wbr")
        SetApart(&page->paragraph);
    if (name == "body")
        PutDeclaration(page);
    element.font = FontOfTag(page, element, piece.raw);
    OpenHtmlElement(&page->tree, element);
    if (name != "meta" || !TakeMeta(page, piece.raw))
        PutTagOfPage(page, piece.raw);
    if (name == "head") {
        page->hasHead = true;
        PutDeclaration(page);
    }
    if (element.kind != kRawText || piece.kind == kEmptyPiece)
        return true;
    char copy[sizeof element.name];
    memcpy(copy, element.name, sizeof copy);
    return TakeRawText(page, copy);
}

static bool CloseTagOfPage(Page *page, const Piece &piece)
{
    HtmlElement element = ElementOfName(piece.name);
    bool isBorder = element.kind == kBlock || element.kind == kCell;
    if (isBorder && !EndLine(page))
        return false;
    CloseHtmlElement(&page->tree, piece.name);
    Put(page, piece.raw);
    return true;
}

// ---- a page ----

static bool TakePieceOfPage(Page *page, const Piece &piece)
{
    switch (piece.kind) {
    case kTextPiece: PutTextOfPage(page, piece.raw); return true;
    case kOpeningPiece:
    case kEmptyPiece: return OpenTagOfPage(page, piece);
    case kClosingPiece: return CloseTagOfPage(page, piece);
    default: Put(page, piece.raw); return true;
    }
}

static bool HasMemory(const Page *page)
{
    const Document *document = page->document;
    return !page->output.failed && !page->work.failed && !page->paragraph.held.failed &&
           !page->tree.failed && !document->fonts.failed && !document->styles.failed;
}

static bool ReadPage(Page *page, const DocumentSource &source)
{
    Piece piece;
    bool done = true;
    rewind(page->file);
    StartScanning(&page->scanner, source, true);
    if (page->mustDeclare && !page->hasHead)
        PutDeclaration(page);
    do {
        done = NextPiece(&page->scanner, &piece) || FailPage(page, page->scanner.failure);
        done = done && TakePieceOfPage(page, piece) &&
               BoundParagraph(page->document, &page->paragraph, &page->output) &&
               WriteReady(page->document, &page->output, page->target, kWriteSize);
        done = done &&
               (HasMemory(page) || FailPage(page, page->tree.failed ? kFailDepth : kFailMemory));
    } while (done && piece.kind != kEndPiece);
    done = done && EndLine(page) && WriteReady(page->document, &page->output, page->target, 1);
    StopScanning(&page->scanner);
    page->tree.count = 0;
    return done && !page->document->report.error;
}

// What no tag of the page says is seen by its bytes.
static bool FindEncoding(Page *page)
{
    char head[kWriteSize];
    rewind(page->file);
    size_t length = fread(head, 1, sizeof head, page->file);
    std::string_view text(head, length);
    if (text.starts_with("\xEF\xBB\xBF"))
        page->encoding = kHtmlIsUtf8;
    if (page->encoding == kHtmlUnknown)
        page->encoding = LooksLikeUtf8(text) ? kHtmlIsUtf8 : kHtmlIs1252;
    return page->encoding != kHtmlOther || !page->hasLegacy || FailPage(page, kFailEncoding);
}

static bool RewritePage(Page *page, const DocumentSource &source)
{
    Document *document = page->document;
    bool hasWork =
        page->hasLegacy || document->job->flags & (kWriteBreaks | kTakeBreaks | kDetectText);
    page->isTranscoding = hasWork && page->encoding != kHtmlIsUtf8;
    page->mustDeclare = !page->isDeclared;
    document->isRewriting = true;
    bool done = ReadPage(page, source);
    document->changedParts = page->paragraph.hasChanged;
    return done;
}

bool RewriteHtml(Document *document, const DocumentFiles &files)
{
    Page page = {};
    FileReader reader = {document, files.input, 0, 2 * files.length};
    DocumentSource source = {ReadInput, &reader, 0};
    page.document = document;
    page.file = files.input;
    page.target = files.output;
    bool done = ReadPage(&page, source) && FindEncoding(&page) && RewritePage(&page, source);
    FreeHtmlTree(&page.tree);
    FreeParagraph(&page.paragraph);
    FreeBytes(&page.output);
    FreeBytes(&page.work);
    return done;
}

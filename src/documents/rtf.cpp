// The road of RTF. The first reading takes the list of fonts, the second one writes the document
// anew. Groups keep the font; destinations say whether what stands in them is text that a reader
// sees.
#include "documents/rtf.h"

#include <cstdlib>
#include <iterator>

#include "documents/paragraph.h"
#include "documents/rtf_text.h"

constexpr size_t kMostDepth = 10000;  // groups in one another
constexpr size_t kWriteSize = 64 * 1024;
constexpr int kMostFontNumber = 65535;

// What a group's text is.
enum RtfPlace : unsigned char {
    kShown,      // text of the document
    kHidden,     // names, pictures, instructions
    kFontTable,  // the list of fonts
    kFontEntry,  // one of its entries
    kInEntry     // a group in one, with another name of the font
};

enum RtfClass : unsigned char { kNoClass, kLowClass, kHighClass };

struct RtfGroup {
    int low, high;  // numbers of the fonts of the document
    int fallback;   // characters behind each \uN
    RtfPlace place;
    RtfClass fontClass;  // whose font an associated one is
    bool isStarred;      // \* has come: who doesn't know the next word passes the group over
    bool isNew;          // no word has come yet
};

struct Rtf {
    Document *document;
    FILE *target;  // null: nothing is written
    RtfScanner scanner;
    RtfGroup *groups;  // owned
    size_t depth, room;
    int *fonts;  // owned: by the document's number, of FontNames
    size_t fontCount, fontRoom;
    int standard;  // the document's number of the standard font
    Paragraph paragraph;
    Bytes text;   // text tokens that stand together
    Bytes entry;  // an entry of the list of fonts
    Bytes name;   // the name in it
    int entryNumber;
    Bytes output;
};

static bool FailRtf(Rtf *rtf, ConversionFailure failure)
{
    return FailDocument(rtf->document, failure);
}

static RtfGroup *Group(Rtf *rtf)
{
    return &rtf->groups[rtf->depth - 1];
}

// ---- fonts ----

static int FontOfNumber(const Rtf *rtf, int number)
{
    return number >= 0 && size_t(number) < rtf->fontCount ? rtf->fonts[number] : kNoFont;
}

static void KeepFont(Rtf *rtf, int number, int font)
{
    void *fonts = rtf->fonts;
    if (number < 0 || number > kMostFontNumber)
        return;
    if (!GrowArray(&fonts, &rtf->fontRoom, size_t(number) + 1, sizeof(int))) {
        rtf->output.failed = true;
        return;
    }
    rtf->fonts = static_cast<int *>(fonts);
    while (rtf->fontCount <= size_t(number))
        rtf->fonts[rtf->fontCount++] = kNoFont;
    rtf->fonts[number] = font;
}

static std::string_view NameOfEntry(const Rtf *rtf)
{
    std::string_view name = TextOf(rtf->name);
    name = name.substr(0, name.find(';'));
    size_t start = name.find_first_not_of(' ');
    return start == name.npos ? std::string_view()
                              : name.substr(start, name.find_last_not_of(' ') + 1 - start);
}

// The entry with the Unicode font in place of a legacy one. A symbol font's text would be read
// otherwise than text, so that word goes too.
static void PutEntry(Rtf *rtf, const FontMapEntry *entry, std::string_view name)
{
    constexpr std::string_view kSymbolCharset = "\\fcharset2";
    std::string_view text = TextOf(rtf->entry);
    size_t at = text.rfind(name), charset = text.find(kSymbolCharset);
    if (!entry || at == text.npos) {
        PutMarkup(&rtf->paragraph, text, &rtf->output);
        return;
    }
    size_t behind = charset + kSymbolCharset.size();
    bool isSymbol = charset < at && !(text[behind] >= '0' && text[behind] <= '9');
    PutMarkup(&rtf->paragraph, text.substr(0, isSymbol ? charset : at), &rtf->output);
    if (isSymbol) {
        PutMarkup(&rtf->paragraph, "\\fcharset0", &rtf->output);
        PutMarkup(&rtf->paragraph, text.substr(behind, at - behind), &rtf->output);
    }
    PutMarkup(&rtf->paragraph, entry->unicodeName, &rtf->output);
    PutMarkup(&rtf->paragraph, text.substr(at + name.size()), &rtf->output);
    rtf->paragraph.hasChanged = true;
}

static void EndEntry(Rtf *rtf)
{
    std::string_view name = NameOfEntry(rtf);
    int font = FontNumber(&rtf->document->fonts, name);
    KeepFont(rtf, rtf->entryNumber, font);
    if (rtf->document->isRewriting)
        PutEntry(rtf, LegacyFont(rtf->document->fonts, font), name);
    rtf->entry.length = rtf->name.length = 0;
}

// ---- output ----

// Text that stands together goes out as one, in front of whatever comes next.
static void PutPending(Rtf *rtf)
{
    const RtfGroup *group = Group(rtf);
    std::string_view text = TextOf(rtf->text);
    if (text.empty())
        return;
    FontPair fonts = {FontOfNumber(rtf, group->low), FontOfNumber(rtf, group->high)};
    if (rtf->document->isRewriting)
        PutText(rtf->document, &rtf->paragraph, &kRtfText[group->fallback], text, fonts,
                &rtf->output);
    rtf->text.length = 0;
}

static void PutToken(Rtf *rtf, const RtfToken &token)
{
    PutPending(rtf);
    if (Group(rtf)->place == kFontEntry || Group(rtf)->place == kInEntry)
        AppendBytes(&rtf->entry, token.raw);
    else if (rtf->document->isRewriting)
        PutMarkup(&rtf->paragraph, token.raw, &rtf->output);
}

static bool EndLine(Rtf *rtf)
{
    PutPending(rtf);
    return !rtf->document->isRewriting ||
           EndParagraph(rtf->document, &rtf->paragraph, &rtf->output);
}

// ---- words ----

struct Destination {
    std::string_view word;
    RtfPlace place;
};
// What begins no text that is seen; and, behind it, what begins some though it may be passed over.
constexpr Destination kDestinations[] = {
    {"fonttbl", kFontTable},   {"colortbl", kHidden},  {"stylesheet", kHidden},
    {"info", kHidden},         {"pict", kHidden},      {"objdata", kHidden},
    {"fldinst", kHidden},      {"filetbl", kHidden},   {"listtable", kHidden},
    {"sp", kHidden},           {"bkmkstart", kHidden}, {"bkmkend", kHidden},
    {"atnid", kHidden},        {"atnauthor", kHidden}, {"leveltext", kHidden},
    {"levelnumbers", kHidden}, {"falt", kInEntry},     {"panose", kInEntry},
    {"shptxt", kShown},        {"annotation", kShown}, {"footnote", kShown},
    {"header", kShown},        {"footer", kShown},     {"headerl", kShown},
    {"headerr", kShown},       {"headerf", kShown},    {"footerl", kShown},
    {"footerr", kShown},       {"footerf", kShown},    {"ftnsep", kShown},
    {"ftnsepc", kShown},
};

// Ends of paragraphs, and what parts words inside of them.
constexpr std::string_view kLineEnds[] = {"par", "sect",     "page",    "cell",
                                          "row", "nestcell", "nestrow", "column"};
constexpr std::string_view kParting[] = {"tab", "line", "chftn", "chpgn", "field"};

static bool IsAmong(const std::string_view *words, size_t count, std::string_view word)
{
    for (size_t i = 0; i < count; ++i)
        if (words[i] == word)
            return true;
    return false;
}

static void TakeDestination(Rtf *rtf, std::string_view word)
{
    RtfGroup *group = Group(rtf);
    bool wasStarred = group->isStarred, wasEntry = group->place >= kFontEntry;
    group->isStarred = false;
    for (const Destination &row : kDestinations) {
        if (row.word != word)
            continue;
        if ((row.place == kInEntry) == wasEntry)
            group->place = row.place;
        return;
    }
    if (wasStarred)
        group->place = wasEntry ? kInEntry : kHidden;
}

static void SetFont(Rtf *rtf, int number)
{
    RtfGroup *group = Group(rtf);
    if (group->place == kFontEntry) {
        rtf->entryNumber = number;
        return;
    }
    group->low = group->high = number;
}

// Associated fonts are those of letters of another class, where one of its words stands in front.
static void SetAssociated(RtfGroup *group, int number)
{
    if (group->fontClass == kLowClass)
        group->low = number;
    if (group->fontClass == kHighClass)
        group->high = number;
}

struct ClassWord {
    std::string_view word;
    RtfClass fontClass;
};
constexpr ClassWord kClassWords[] = {{"loch", kLowClass},
                                     {"hich", kHighClass},
                                     {"dbch", kNoClass},
                                     {"ltrch", kNoClass},
                                     {"rtlch", kNoClass}};

static void TakeState(Rtf *rtf, const RtfToken &token)
{
    RtfGroup *group = Group(rtf);
    for (const ClassWord &row : kClassWords)
        if (row.word == token.word)
            group->fontClass = row.fontClass;
    if (token.word == "f" && token.hasNumber)
        SetFont(rtf, token.number);
    if (token.word == "af" && token.hasNumber)
        SetAssociated(group, token.number);
    if (token.word == "deff" && token.hasNumber)
        rtf->standard = group->low = group->high = token.number;
    if (token.word == "plain") {
        group->low = group->high = rtf->standard;
        group->fontClass = kNoClass;
    }
    if (token.word == "uc")
        group->fallback = token.number < 0               ? 0
                          : token.number > kMostFallback ? kMostFallback
                                                         : token.number;
}

static bool TakeWordOfRtf(Rtf *rtf, const RtfToken &token)
{
    RtfGroup *group = Group(rtf);
    bool isDestination = group->isStarred || group->isNew, wasShown = group->place == kShown;
    PutPending(rtf);
    if (IsAmong(kLineEnds, std::size(kLineEnds), token.word) && !EndLine(rtf))
        return false;
    if (IsAmong(kParting, std::size(kParting), token.word))
        SetApart(&rtf->paragraph);
    if (isDestination)
        TakeDestination(rtf, token.word);
    group->isNew = false;
    if (group->place == kShown && !wasShown && !EndLine(rtf))
        return false;
    TakeState(rtf, token);
    PutToken(rtf, token);
    return true;
}

// ---- groups and text ----

static bool OpenGroup(Rtf *rtf, const RtfToken &token)
{
    void *groups = rtf->groups;
    PutPending(rtf);
    RtfGroup group = *Group(rtf);
    if (rtf->depth > kMostDepth)
        return FailRtf(rtf, kFailDepth);
    if (!GrowArray(&groups, &rtf->room, rtf->depth + 1, sizeof group))
        return FailRtf(rtf, kFailMemory);
    rtf->groups = static_cast<RtfGroup *>(groups);
    group.isStarred = false;
    group.isNew = true;
    if (group.place == kFontTable || group.place == kFontEntry)
        group.place = group.place == kFontTable ? kFontEntry : kInEntry;
    rtf->groups[rtf->depth++] = group;
    PutToken(rtf, token);
    return true;
}

static bool CloseGroup(Rtf *rtf, const RtfToken &token)
{
    PutPending(rtf);
    RtfPlace place = Group(rtf)->place;
    PutToken(rtf, token);
    if (rtf->depth > 1)
        --rtf->depth;
    if (place == kFontEntry && Group(rtf)->place == kFontTable)
        EndEntry(rtf);
    bool isBorder = place == kShown && Group(rtf)->place != kShown;
    return !isBorder || EndLine(rtf);
}

// An entry without a group of its own ends at its semicolon.
static void TakeLettersOfTable(Rtf *rtf, const RtfToken &token)
{
    if (Group(rtf)->place == kFontEntry)
        AppendBytes(&rtf->name, token.raw);
    PutToken(rtf, token);
}

// What stands for a \uN belongs to it, and so do the line ends in between.
static void TakeTextOfRtf(Rtf *rtf, const RtfToken &token)
{
    Group(rtf)->isNew = false;
    if (Group(rtf)->place == kShown)
        AppendBytes(&rtf->text, token.raw);
    else
        TakeLettersOfTable(rtf, token);
}

static bool TakeTokenOfRtf(Rtf *rtf, const RtfToken &token)
{
    switch (token.kind) {
    case kRtfEnd: return EndLine(rtf);
    case kRtfOpen: return OpenGroup(rtf, token);
    case kRtfClose: return CloseGroup(rtf, token);
    case kRtfLine:
        if (rtf->text.length)
            AppendBytes(&rtf->text, token.raw);
        else
            PutToken(rtf, token);
        return true;
    case kRtfBinary: PutToken(rtf, token); return true;
    default: break;
    }
    if (IsTextToken(token)) {
        TakeTextOfRtf(rtf, token);
        return true;
    }
    if (token.kind == kRtfWord)
        return TakeWordOfRtf(rtf, token);
    Group(rtf)->isStarred = token.word == "*";
    PutToken(rtf, token);
    return true;
}

// ---- a document ----

static bool HasMemory(const Rtf *rtf)
{
    return !rtf->output.failed && !rtf->text.failed && !rtf->entry.failed && !rtf->name.failed &&
           !rtf->paragraph.held.failed && !rtf->document->fonts.failed;
}

// A long text or paragraph is put in stretches; the lists of fonts are short.
static bool BoundPending(Rtf *rtf)
{
    constexpr size_t kMostPending = 1024 * 1024;
    if (rtf->text.length > kMostPending)
        PutPending(rtf);
    if (!BoundParagraph(rtf->document, &rtf->paragraph, &rtf->output))
        return false;
    return rtf->entry.length <= kMostPending || FailRtf(rtf, kFailTooLarge);
}

static bool StartGroups(Rtf *rtf)
{
    void *groups = rtf->groups;
    if (!GrowArray(&groups, &rtf->room, 1, sizeof(RtfGroup)))
        return FailRtf(rtf, kFailMemory);
    rtf->groups = static_cast<RtfGroup *>(groups);
    rtf->groups[0] = {rtf->standard, rtf->standard, 1, kShown, kNoClass, false, false};
    rtf->depth = 1;
    return true;
}

static bool ReadRtfWhole(Rtf *rtf, FILE *file, const DocumentSource &source)
{
    RtfToken token = {};
    rewind(file);
    StartRtf(&rtf->scanner, source);
    bool done = StartGroups(rtf);
    while (done) {
        done = NextToken(&rtf->scanner, &token) || FailRtf(rtf, rtf->scanner.failure);
        done = done && TakeTokenOfRtf(rtf, token) && BoundPending(rtf) &&
               WriteReady(rtf->document, &rtf->output, rtf->target, kWriteSize) &&
               (HasMemory(rtf) || FailRtf(rtf, kFailMemory));
        if (token.kind == kRtfEnd)
            break;
    }
    done = done && (rtf->depth == 1 || FailRtf(rtf, kFailCutTag)) &&
           WriteReady(rtf->document, &rtf->output, rtf->target, 1);
    StopRtf(&rtf->scanner);
    return done && !rtf->document->report.error;
}

bool RewriteRtf(Document *document, const DocumentFiles &files)
{
    Rtf rtf = {};
    FileReader reader = {document, files.input, 0, 2 * files.length};
    DocumentSource source = {ReadInput, &reader, 0};
    rtf.document = document;
    rtf.target = files.output;
    bool done = ReadRtfWhole(&rtf, files.input, source);
    document->isRewriting = true;
    done = done && ReadRtfWhole(&rtf, files.input, source);
    document->changedParts = rtf.paragraph.hasChanged;
    FreeParagraph(&rtf.paragraph);
    for (Bytes *bytes : {&rtf.text, &rtf.entry, &rtf.name, &rtf.output})
        FreeBytes(bytes);
    free(rtf.groups);
    free(rtf.fonts);
    return done;
}

// The road of plain text: line by line, all in the font that the job names. In CSV each field is a
// text of its own, since the fonts that draw Lao at the letters draw one at the comma too. What
// isn't UTF-8 is taken for the bytes of the font themselves.
#include "documents/plain_text.h"

#include <cstring>

#include "documents/code_page.h"
#include "documents/html_text.h"
#include "documents/paragraph.h"
#include "documents/text_font.h"
#include "frame/strings.h"

constexpr size_t kReadSize = 256 * 1024;  // bytes at a time; a longer line is done in stretches
constexpr size_t kWriteSize = 64 * 1024;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

struct PlainText {
    Document *document;
    FILE *target;  // null: nothing is written
    FontPair fonts;
    bool isUtf8, isCsv;
    char separator;  // of CSV
    Paragraph paragraph;
    Bytes window;  // what was read and isn't done yet
    Bytes output;
};

// ---- the forms of text ----

static void ReadBytes(std::string_view raw, Units *units)
{
    for (char byte : raw)
        AppendUnit(units, CharacterOf1252(static_cast<unsigned char>(byte)));
}

static void WriteUtf8Text(const WCHAR *units, size_t count, Bytes *bytes)
{
    kPlainUtf8.write(units, count, bytes);
}

static constexpr TextForm kByteText = {ReadBytes, WriteUtf8Text};

static bool IsQuoted(std::string_view field)
{
    return field.size() >= 2 && field.front() == '"' && field.back() == '"';
}

// A quote in a quoted field stands there twice.
static void ReadField(const TextForm &form, std::string_view raw, Units *units)
{
    if (!IsQuoted(raw)) {
        form.read(raw, units);
        return;
    }
    raw = raw.substr(1, raw.size() - 2);
    while (!raw.empty()) {
        size_t quote = raw.find("\"\"");
        size_t end = quote == raw.npos ? raw.size() : quote + 1;
        form.read(raw.substr(0, end), units);
        raw.remove_prefix(quote == raw.npos ? end : end + 1);
    }
}

static void ReadUtf8Field(std::string_view raw, Units *units)
{
    ReadField(kPlainUtf8, raw, units);
}

static void ReadByteField(std::string_view raw, Units *units)
{
    ReadField(kByteText, raw, units);
}

static bool NeedsQuotes(const WCHAR *units, size_t count)
{
    constexpr std::string_view kSigns = "\",;\t\r\n";
    for (size_t i = 0; i < count; ++i)
        if (units[i] < 0x80 && kSigns.find(char(units[i])) != kSigns.npos)
            return true;
    return false;
}

static void WriteField(const WCHAR *units, size_t count, Bytes *bytes)
{
    std::string_view quote = NeedsQuotes(units, count) ? "\"" : "";
    AppendBytes(bytes, quote);
    for (size_t i = 0; i < count;) {
        if (units[i] == '"')
            AppendBytes(bytes, quote);
        i += WriteUtf8(units + i, count - i, bytes);
    }
    AppendBytes(bytes, quote);
}

static constexpr TextForm kUtf8Field = {ReadUtf8Field, WriteField};
static constexpr TextForm kByteField = {ReadByteField, WriteField};

// ---- lines and fields ----

static void PutField(PlainText *text, std::string_view field)
{
    const TextForm *form = text->isCsv ? (text->isUtf8 ? &kUtf8Field : &kByteField)
                                       : (text->isUtf8 ? &kPlainUtf8 : &kByteText);
    SetApart(&text->paragraph);
    PutText(text->document, &text->paragraph, form, field, text->fonts, &text->output);
}

// Where a field of CSV ends: at a separator or a line end outside of quotes. False where that can't
// be seen yet.
static bool FindFieldEnd(const PlainText *text, std::string_view line, bool isLast, size_t *end)
{
    bool isQuoted = line.starts_with('"');
    size_t at = 0;
    for (at = isQuoted; at < line.size(); ++at) {
        if (isQuoted && line[at] == '"') {
            bool isTwice = at + 1 < line.size() && line[at + 1] == '"';
            isQuoted = isTwice;
            at += isTwice;
        } else if (!isQuoted &&
                   (line[at] == text->separator || line[at] == '\n' || line[at] == '\r')) {
            break;
        }
    }
    *end = at;
    return at < line.size() || isLast;
}

static size_t EndOfStretch(const PlainText *text, std::string_view window)
{
    size_t cut = window.size();
    for (int i = 0; text->isUtf8 && i < 3 && cut > 1 && (window[cut - 1] & 0xC0) == 0x80; ++i)
        --cut;
    return cut > 1 && text->isUtf8 && (window[cut - 1] & 0x80) ? cut - 1 : cut;
}

// One line, field or stretch and what ends it: how many bytes of the window; 0: more has to be
// read.
static size_t TakeStretch(PlainText *text, std::string_view window, bool isLast)
{
    size_t end = window.find_first_of("\r\n");
    bool isSeen = end != window.npos || isLast;
    if (text->isCsv)
        isSeen = FindFieldEnd(text, window, isLast, &end);
    if (!isSeen && window.size() < kReadSize)
        return 0;
    if (!isSeen)
        end = EndOfStretch(text, window);
    end = end < window.size() ? end : window.size();
    PutField(text, window.substr(0, end));
    size_t behind = isSeen && end < window.size() ? end + 1 : end;
    PutMarkup(&text->paragraph, window.substr(end, behind - end), &text->output);
    if (isSeen && end < window.size() && window[end] != text->separator)
        EndParagraph(text->document, &text->paragraph, &text->output);
    return behind;
}

// Does all of the window that can be done, and keeps the rest.
static bool TakeWindow(PlainText *text, bool isLast)
{
    size_t used = 0;
    std::string_view window = TextOf(text->window);
    while (used < window.size()) {
        size_t taken = TakeStretch(text, window.substr(used), isLast);
        if (taken == 0)
            break;
        used += taken;
        if (!WriteReady(text->document, &text->output, text->target, kWriteSize))
            return false;
    }
    memmove(text->window.data, text->window.data + used, window.size() - used);
    text->window.length = window.size() - used;
    bool failed = text->output.failed || text->window.failed || text->paragraph.held.failed;
    return !failed || FailDocument(text->document, kFailMemory);
}

// ---- a document ----

static void TellCsv(PlainText *text, const char *path)
{
    std::string_view name = path, head = TextOf(text->window);
    bool hasTabs = name.size() > 4 && EqualNoCase(name.substr(name.size() - 4), ".tsv");
    text->isCsv = hasTabs || (name.size() > 4 && EqualNoCase(name.substr(name.size() - 4), ".csv"));
    std::string_view line = head.substr(0, head.find('\n'));
    bool hasSemicolons = line.find(';') != line.npos && line.find(',') == line.npos;
    text->separator = hasTabs ? '\t' : hasSemicolons ? ';' : ',';
}

static bool IsUtf8(std::string_view head)
{
    bool isAscii = true;
    for (char byte : head)
        isAscii = isAscii && !(byte & 0x80);
    return isAscii || LooksLikeUtf8(head);
}

// A mark in front of the text isn't text.
static void TakeMark(PlainText *text)
{
    Bytes *window = &text->window;
    size_t length = kByteOrderMark.size();
    if (!TextOf(*window).starts_with(kByteOrderMark))
        return;
    PutMarkup(&text->paragraph, kByteOrderMark, &text->output);
    memmove(window->data, window->data + length, window->length - length);
    window->length -= length;
}

static bool ReadAll(PlainText *text, const DocumentFiles &files)
{
    FileReader reader = {text->document, files.input, 0, files.length};
    bool isFirst = true;
    rewind(files.input);
    for (;;) {
        char *place = MakeRoom(&text->window, kReadSize);
        if (!place)
            return FailDocument(text->document, kFailMemory);
        size_t count = ReadInput(&reader, place, kReadSize);
        text->window.length += count;
        if (isFirst) {
            text->isUtf8 = IsUtf8(TextOf(text->window));
            TellCsv(text, files.path);
            TakeMark(text);
        }
        isFirst = false;
        if (text->document->report.error || !TakeWindow(text, count == 0))
            return false;
        if (count == 0)
            return EndParagraph(text->document, &text->paragraph, &text->output) &&
                   WriteReady(text->document, &text->output, text->target, 1);
    }
}

// UTF-16 has no letter without a zero byte.
static bool IsRead(const DocumentFiles &files)
{
    char head[512];
    rewind(files.input);
    size_t length = fread(head, 1, sizeof head, files.input);
    return !memchr(head, 0, length);
}

bool RewritePlainText(Document *document, const DocumentFiles &files)
{
    PlainText text = {};
    const char *name = document->job->textFont;
    int font = FontNumber(&document->fonts, name ? name : "");
    text.document = document;
    text.target = files.output;
    text.fonts = {font, font};
    bool keepsFonts = document->job->flags & kKeepFonts;
    if (!keepsFonts &&
        (font == kNoFont || !FindTextFont(&document->map, name, &document->textFont)))
        return FailDocument(document, kFailTextFont);
    if (!keepsFonts)
        document->fonts.items[font].entry = &document->textFont;
    if (!IsRead(files))
        return FailDocument(document, kFailEncoding);
    document->isRewriting = true;
    bool done = ReadAll(&text, files);
    document->changedParts = text.paragraph.hasChanged;
    FreeParagraph(&text.paragraph);
    FreeBytes(&text.window);
    FreeBytes(&text.output);
    return done && !document->report.error;
}

// The end of a paragraph, step by step: the texts become characters, those of legacy fonts are
// converted, a syllable that was cut is put together, breaks are written or taken out, and what has
// changed is written in the form in which it came. Each step makes the paragraph's units anew from
// those of the step before; a text is a stretch of them.
#include "documents/paragraph.h"

#include <cassert>
#include <cstdlib>
#include <string_view>

#include "documents/breaks.h"
#include "documents/detect.h"
#include "documents/document.h"
#include "documents/legacy_text.h"

constexpr size_t kMostHeld = 1024 * 1024;  // bytes; a longer paragraph is done in stretches
constexpr size_t kMostTexts = 64 * 1024;
constexpr WCHAR kApart = ' ';  // between texts that stand apart

void FreeParagraph(Paragraph *paragraph)
{
    FreeBytes(&paragraph->held);
    FreeUnits(&paragraph->units);
    FreeUnits(&paragraph->spare);
    free(paragraph->texts);
    *paragraph = {};
}

// ---- taking text and markup ----

bool NeedsWork(const Document *document, FontPair fonts)
{
    constexpr DWORD kForAllText = kWriteBreaks | kTakeBreaks | kDetectText;
    return (document->job->flags & kForAllText) || LegacyFont(document->fonts, fonts.low) ||
           LegacyFont(document->fonts, fonts.high);
}

// All bytes of a UTF-8 character but the first have 10 as their highest bits.
static void CountText(Document *document, std::string_view raw, FontPair fonts)
{
    size_t low = 0, high = 0;
    for (char byte : raw) {
        low += (byte & 0x80) == 0;
        high += (byte & 0xC0) == 0xC0;
    }
    CountCharacters(&document->fonts, fonts.low, low);
    CountCharacters(&document->fonts, fonts.high, high);
}

static int HoldText(Paragraph *paragraph, const TextForm *form, std::string_view raw)
{
    void *texts = paragraph->texts;
    bool hasRoom =
        GrowArray(&texts, &paragraph->room, paragraph->count + 1, sizeof *paragraph->texts);
    paragraph->texts = static_cast<HeldText *>(texts);
    if (!hasRoom) {
        paragraph->held.failed = true;
        return kNotHeld;
    }
    HeldText text = {};
    text.start = paragraph->held.length;
    text.length = raw.size();
    text.form = form;
    text.isApart = paragraph->isApart;
    text.isVerbatim = paragraph->isVerbatim;
    text.space = paragraph->space;
    paragraph->space = 0;
    paragraph->isApart = false;
    paragraph->isHolding = true;
    AppendBytes(&paragraph->held, raw);
    paragraph->texts[paragraph->count] = text;
    return paragraph->firstNumber + int(paragraph->count++);
}

int PutText(Document *document, Paragraph *paragraph, const TextForm *form, std::string_view raw,
            FontPair fonts, Bytes *output)
{
    BoundParagraph(document, paragraph, output);
    if (NeedsWork(document, fonts)) {
        int text = HoldText(paragraph, form, raw);
        if (text != kNotHeld)
            SetFonts(document, paragraph, text, fonts);
        return text;
    }
    CountText(document, raw, fonts);
    PutMarkup(paragraph, raw, output);
    SetApart(paragraph);
    return kNotHeld;
}

int PutTextOfUnknownFont(Paragraph *paragraph, const TextForm *form, std::string_view raw)
{
    return HoldText(paragraph, form, raw);
}

void SetFonts(Document *document, Paragraph *paragraph, int number, FontPair fonts)
{
    size_t place = size_t(number - paragraph->firstNumber);
    if (number < paragraph->firstNumber || place >= paragraph->count)
        return;
    HeldText *text = &paragraph->texts[place];
    text->fonts = fonts;
    CountText(document, TextOf(paragraph->held).substr(text->start, text->length), fonts);
}

void PutMarkup(Paragraph *paragraph, std::string_view raw, Bytes *output)
{
    AppendBytes(paragraph->isHolding ? &paragraph->held : output, raw);
}

// ---- the end of a paragraph ----

static void ReadTexts(Document *document, Paragraph *paragraph)
{
    paragraph->units.length = 0;
    for (size_t i = 0; i < paragraph->count; ++i) {
        HeldText *text = &paragraph->texts[i];
        std::string_view raw = TextOf(paragraph->held).substr(text->start, text->length);
        if (text->isApart)
            AppendUnit(&paragraph->units, kApart);
        text->first = paragraph->units.length;
        text->form->read(raw, &paragraph->units);
        text->count = paragraph->units.length - text->first;
        text->low = LegacyFont(document->fonts, text->fonts.low);
        text->high = LegacyFont(document->fonts, text->fonts.high);
    }
}

// The units of a step are done: those of the next one are made from them.
static void SwapUnits(Paragraph *paragraph)
{
    Units units = paragraph->units;
    paragraph->units = paragraph->spare;
    paragraph->spare = units;
}

// Room for two units for each one; legacy text is nearly all below U+0100.
static size_t ConvertUnits(Document *document, const HeldText &text, const WCHAR *units,
                           WCHAR *result)
{
    const LegacyTable *low = text.low ? TableOfFont(document->tables, *text.low) : nullptr;
    const LegacyTable *high = text.high ? TableOfFont(document->tables, *text.high) : nullptr;
    WCHAR *next = result;
    for (size_t i = 0; i < text.count; ++i) {
        WCHAR unit = units[i];
        LegacySign sign = {};
        const LegacyTable *table = unit < 0x80 ? low : high;
        if (table)
            sign = unit < 0x100 ? table->signs[unit] : SignOfFont(unit, *text.high);
        next[0] = sign.count ? sign.units[0] : unit;
        next[1] = sign.units[1];
        next += sign.count == 2 ? 2 : 1;
    }
    return size_t(next - result);
}

static bool IsSame(const WCHAR *left, const WCHAR *right, size_t count)
{
    return std::char_traits<WCHAR>::compare(left, right, count) == 0;
}

static void ConvertText(Document *document, HeldText *text, const Units &source, Units *result)
{
    size_t first = result->length, highCount = 0;
    const WCHAR *units = source.data + text->first;
    WCHAR *place = MakeUnits(result, 2 * text->count + 1);
    if (!place)
        return;
    for (size_t i = 0; i < text->count; ++i)
        highCount += units[i] >= 0x80;
    size_t count = ConvertUnits(document, *text, units, place), lowCount = text->count - highCount;
    result->length += count;
    document->pendingCharacters += (text->low ? lowCount : 0) + (text->high ? highCount : 0);
    text->hasChanged = count != text->count || !IsSame(units, place, count);
    text->first = first;
    text->count = count;
}

static void ConvertTexts(Document *document, Paragraph *paragraph)
{
    Units *result = &paragraph->spare;
    result->length = 0;
    for (size_t i = 0; i < paragraph->count; ++i) {
        if (paragraph->texts[i].isApart)
            AppendUnit(result, kApart);
        ConvertText(document, &paragraph->texts[i], paragraph->units, result);
    }
    SwapUnits(paragraph);
}

// ---- a syllable that was cut across two runs ----

// Signs that stand above, below or behind a letter and are drawn with it.
static bool GoesOnSyllable(WCHAR unit)
{
    return unit == 0x0EB1 || (unit >= 0x0EB3 && unit <= 0x0EBC) ||
           (unit >= 0x0EC8 && unit <= 0x0ECD);
}

static bool IsOfOneFont(const HeldText &left, const HeldText &right)
{
    return (left.low || left.high) && left.low == right.low && left.high == right.high;
}

// A text's first signs go to the text in front of it, whose end they stand behind already.
static void JoinTexts(Paragraph *paragraph)
{
    HeldText *last = nullptr;  // the last text that isn't empty and may go on
    for (size_t i = 0; i < paragraph->count; ++i) {
        HeldText *text = &paragraph->texts[i];
        const WCHAR *units = paragraph->units.data + text->first;
        size_t taken = 0;
        if (text->isApart || (last && !IsOfOneFont(*last, *text)))
            last = nullptr;
        while (last && taken < text->count && GoesOnSyllable(units[taken]))
            ++taken;
        if (taken) {
            assert(last->first + last->count == text->first);
            last->count += taken;
            text->first += taken;
            text->count -= taken;
            last->hasChanged = text->hasChanged = true;
        }
        if (text->count)
            last = text;
    }
}

// ---- writing ----

static bool HasBlankEnd(std::string_view text)
{
    return !text.empty() && (text.front() == ' ' || text.back() == ' ');
}

// The element of a text that has got a blank at an end says that it counts.
static void WriteTexts(Paragraph *paragraph, Bytes *output)
{
    std::string_view held = TextOf(paragraph->held);
    size_t written = 0;
    for (size_t i = 0; i < paragraph->count; ++i) {
        const HeldText &text = paragraph->texts[i];
        if (!text.hasChanged)
            continue;
        const WCHAR *units = paragraph->units.data + text.first;
        std::string_view raw = held.substr(text.start, text.length);
        bool hasBlank = text.count && (units[0] == ' ' || units[text.count - 1] == ' ');
        if (text.space && hasBlank && !HasBlankEnd(raw)) {
            AppendBytes(output, held.substr(written, text.space - written));
            AppendBytes(output, " xml:space=\"preserve\"");
            written = text.space;
        }
        AppendBytes(output, held.substr(written, text.start - written));
        size_t start = output->length;
        text.form->write(units, text.count, output);
        written = text.start + text.length;
        paragraph->hasChanged |= TextOf(*output).substr(start) != raw;
    }
    AppendBytes(output, held.substr(written));
}

bool EndParagraph(Document *document, Paragraph *paragraph, Bytes *output)
{
    paragraph->isApart = false;
    if (!paragraph->isHolding)
        return true;
    ReadTexts(document, paragraph);
    bool isRead = !(document->job->flags & kDetectText) || DetectTexts(document, paragraph);
    ConvertTexts(document, paragraph);
    bool done =
        isRead && !paragraph->units.failed && !paragraph->spare.failed && !paragraph->held.failed;
    if (done) {
        JoinTexts(paragraph);
        done = DivideTexts(document, paragraph);
    }
    if (done)
        WriteTexts(paragraph, output);
    constexpr int kMostNumber = 1 << 30;
    paragraph->firstNumber += int(paragraph->count);
    if (paragraph->firstNumber > kMostNumber)
        paragraph->firstNumber = 0;
    paragraph->held.length = 0;
    paragraph->count = 0;
    paragraph->isHolding = false;
    return done || FailDocument(document, kFailMemory);
}

// Not between a text and its element, whose place in the held bytes the text knows.
bool BoundParagraph(Document *document, Paragraph *paragraph, Bytes *output)
{
    bool isLong = paragraph->held.length > kMostHeld || paragraph->count >= kMostTexts;
    return !isLong || paragraph->space || EndParagraph(document, paragraph, output);
}

// Texts in one font that follow one another are judged as one. Each code that a legacy font may
// have is tried; Lao is what divides into words and syllables nearly without a rest. The limits
// come from texts of known languages, which are given with them.
#include "documents/detect.h"

#include <cstdlib>

#include "documents/document.h"
#include "documents/latin_weights.h"
#include "documents/legacy_text.h"

constexpr size_t kShortest = 20;     // characters, without blanks; less can't be told for sure
constexpr size_t kMostUnits = 4000;  // that are looked at

// In percent. Of 6,000 stretches of text in 405 languages with Latin letters none has more than 33%
// of its "Lao" in words; of Lao text of the web 5% has less than 48% in words.
constexpr size_t kLeastLao = 60;      // of letters
constexpr size_t kLeastDivided = 50;  // of Lao
constexpr size_t kLeastInWords = 35;  // of Lao: in words of a dictionary, of more than two signs
constexpr size_t kMostLaoOfLatin = 30;

constexpr size_t kLeastLatin = 10;     // ASCII letters; fewer than that tell nothing
constexpr long kLeastLatinWeight = 2;  // of a sign on average: 50 to 1 for 20 of them

// The codes of legacy fonts; the first two differ in the hyphen alone.
enum { kTypeAtLetters = 3 };
constexpr FontMapEntry kCodes[] = {{"", 1, ""}, {"", 2, ""}, {"", kTypeAtLetters, ""}};

// How a text reads in a code. Counts are of units without blanks.
struct LaoReading {
    size_t all, lao, divided, inWords;
};

static bool IsLao(WCHAR unit)
{
    return unit >= 0x0E80 && unit <= 0x0EFF;
}

// Digits and punctuation say nothing of a language.
static bool IsMute(WCHAR unit)
{
    return unit <= '@' || (unit >= '[' && unit <= '`') || (unit >= '{' && unit <= 0xA0) ||
           (unit >= 0x2000 && unit <= 0x206F) || (unit >= 0x0ED0 && unit <= 0x0ED9);
}

static void ReadAs(const FontMapEntry *entry, const WCHAR *units, size_t count, Units *text)
{
    text->length = 0;
    for (size_t i = 0; i < count; ++i) {
        LegacySign sign = {};
        if (entry)
            sign = SignOfFont(units[i], *entry);
        if (sign.count == 0)
            AppendUnit(text, units[i]);
        for (int j = 0; j < sign.count; ++j)
            if (sign.units[j] != 0x200B)
                AppendUnit(text, sign.units[j]);
    }
}

static void CountChunk(const Units &text, const LaoChunk &chunk, LaoReading *reading)
{
    for (DWORD i = chunk.start; i < chunk.end; ++i) {
        bool counts = IsLao(text.data[i]);
        reading->divided += counts && chunk.kind != kBadStretch;
        reading->inWords += counts && chunk.kind != kBadStretch && chunk.kind != kSyllable &&
                            chunk.kind != kInside && chunk.end - chunk.start > 2;
    }
}

static bool MeasureReading(const Units &text, LaoReading *reading)
{
    LaoChunk *chunks = static_cast<LaoChunk *>(calloc(text.length + 1, sizeof(LaoChunk)));
    if (!chunks || text.failed) {
        free(chunks);
        return false;
    }
    DWORD length = DWORD(text.length);
    int count = DivideText(text.data, length, chunks, length, kInsertBreaks | kBothBreaks);
    *reading = {};
    for (size_t i = 0; i < text.length; ++i) {
        reading->all += !IsMute(text.data[i]);
        reading->lao += IsLao(text.data[i]) && !IsMute(text.data[i]);
    }
    for (int i = 0; i < count; ++i)
        CountChunk(text, chunks[i], reading);
    free(chunks);
    return count >= 0;
}

// ---- what a text is ----

static bool ReadsAsLao(const LaoReading &reading)
{
    return reading.lao * 100 >= reading.all * kLeastLao &&
           reading.divided * 100 >= reading.lao * kLeastDivided &&
           reading.inWords * 100 >= reading.lao * kLeastInWords;
}

// The code in which a text reads best as Lao; null: it reads so in none. False without memory.
static bool FindCode(const WCHAR *units, size_t count, Units *work, const FontMapEntry **code)
{
    size_t best = 0;
    *code = nullptr;
    for (const FontMapEntry &entry : kCodes) {
        LaoReading reading;
        ReadAs(&entry, units, count, work);
        if (!MeasureReading(*work, &reading))
            return false;
        if (ReadsAsLao(reading) && reading.inWords > best) {
            best = reading.inWords;
            *code = &entry;
        }
    }
    return true;
}

static bool IsAsciiLetter(WCHAR unit)
{
    return (unit >= 'A' && unit <= 'Z') || (unit >= 'a' && unit <= 'z');
}

// Fonts at the letters have Lao at nearly all of ASCII, so that any Latin text is "Lao" in them.
// But the signs are others: many of the keys with a frequent letter have rare Lao, and Lao needs
// digits,
// ";", "[" and "]". Characters beyond ASCII count for neither.
static bool WeighsAsLatin(const WCHAR *units, size_t count)
{
    long weight = 0, signs = 0;
    for (size_t i = 0; i < count; ++i) {
        bool isSign = units[i] > ' ' && units[i] < 0x7F;
        weight += isSign ? kLatinWeights[units[i] - ' '] : 0;
        signs += isSign;
    }
    return weight >= signs * kLeastLatinWeight;
}

static bool IsLatin(const WCHAR *units, size_t count, const FontMapEntry *entry, Units *work,
                    bool *isLatin)
{
    LaoReading reading;
    size_t letters = 0;
    for (size_t i = 0; i < count; ++i)
        letters += IsAsciiLetter(units[i]);
    *isLatin = false;
    if (letters < kLeastLatin)
        return true;
    if (entry->conversionType == kTypeAtLetters) {
        *isLatin = WeighsAsLatin(units, count);
        return true;
    }
    ReadAs(entry, units, count, work);
    if (!MeasureReading(*work, &reading))
        return false;
    *isLatin = reading.lao * 100 < reading.all * kMostLaoOfLatin &&
               reading.inWords * 100 <= reading.lao * kLeastInWords;
    return true;
}

// ---- a paragraph ----

// The beginning of a text for a note.
struct Sample {
    char text[160];
};
static Sample SampleOf(const WCHAR *units, size_t count)
{
    Sample sample = {};
    Bytes bytes = {};
    size_t most = count < 40 ? count : 40;
    kPlainUtf8.write(units, most, &bytes);
    AppendBytes(&bytes, most < count ? "…" : "");
    TextOf(bytes).copy(sample.text, sizeof sample.text - 1);
    FreeBytes(&bytes);
    return sample;
}

// Texts of a paragraph that are in one font and follow one another.
struct TextGroup {
    HeldText *texts;
    size_t count;
    const WCHAR *units;  // from the first text to the last
    size_t unitCount;
};

static void Tell(Document *document, const TextGroup &group, const FontMapEntry *code, Units *work)
{
    if (document->isRepeating)
        return;
    std::string_view name = NameOfFont(document->fonts, group.texts->fonts.low);
    Sample source = SampleOf(group.units, group.unitCount);
    ReadAs(code, group.units, group.unitCount, work);
    Sample read = SampleOf(work->data, work->length);
    const char *done = document->job->flags & kApplyDetected ? "was" : "would be";
    if (code)
        NoteOfDocument(document, "legacy Lao in the font \"%.*s\" %s converted: %s -> %s",
                       int(name.size()), name.data(), done, source.text, read.text);
    else
        NoteOfDocument(document, "text in the font \"%.*s\" that isn't Lao %s left as it is: %s",
                       int(name.size()), name.data(), done, source.text);
}

static void SetReading(const TextGroup &group, const FontMapEntry *code)
{
    for (size_t i = 0; i < group.count; ++i)
        group.texts[i].low = group.texts[i].high = code;
}

static bool DetectGroup(Document *document, const TextGroup &group, Units *work)
{
    const FontMapEntry *legacy = group.texts->low ? group.texts->low : group.texts->high;
    const FontMapEntry *code = nullptr;
    size_t count = 0, looked = group.unitCount < kMostUnits ? group.unitCount : kMostUnits;
    bool isLatin = false;
    for (size_t i = 0; i < group.unitCount && count < kShortest; ++i)
        count += group.units[i] != ' ';
    if (count < kShortest)
        return true;
    if (legacy ? !IsLatin(group.units, looked, legacy, work, &isLatin)
               : !FindCode(group.units, looked, work, &code))
        return false;
    if (!isLatin && !code)
        return true;
    Tell(document, group, code, work);
    if (document->job->flags & kApplyDetected)
        SetReading(group, code);
    return true;
}

static bool IsInOneFont(const HeldText &left, const HeldText &right)
{
    return left.fonts.low == right.fonts.low && left.fonts.high == right.fonts.high;
}

bool DetectTexts(Document *document, Paragraph *paragraph)
{
    Units work = {};
    bool done = !paragraph->units.failed;
    for (size_t i = 0, end = 0; done && i < paragraph->count; i = end) {
        HeldText *first = &paragraph->texts[i];
        for (end = i + 1; end < paragraph->count && IsInOneFont(*first, paragraph->texts[end]);)
            ++end;
        const HeldText &last = paragraph->texts[end - 1];
        TextGroup group = {first, end - i, paragraph->units.data + first->first,
                           last.first + last.count - first->first};
        done = DetectGroup(document, group, &work);
    }
    FreeUnits(&work);
    return done;
}

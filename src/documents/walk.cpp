// The walk over a part. A piece goes out as it came, unless an element's row or the font of a text
// says otherwise; so a part in which nothing is legacy comes out byte for byte.
#include "documents/walk.h"

#include <cassert>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "frame/strings.h"

constexpr size_t kMostDepth = 20000;  // elements in one another; documents have some dozens

// ---- elements by name ----

static size_t HashText(size_t hash, std::string_view text)
{
    for (char c : text)
        hash = (hash ^ uint8_t(c)) * 16777619u;
    return hash;
}

static size_t HashName(const KnownName &name)
{
    size_t hash = 2166136261u;
    if (!name.prefix.empty())
        hash = HashText(HashText(hash, name.prefix), ":");
    return HashText(hash, name.local);
}

bool MakeElementIndex(ElementIndex *index, const Vocabulary *vocabularies, size_t count)
{
    size_t rows = 0;
    for (size_t i = 0; i < count; ++i)
        rows += vocabularies[i].count;
    index->size = 4 * rows + 1;
    index->slots = static_cast<const ElementRow **>(calloc(index->size, sizeof *index->slots));
    for (size_t i = 0; index->slots && i < count; ++i) {
        for (size_t j = 0; j < vocabularies[i].count; ++j) {
            const ElementRow *row = &vocabularies[i].rows[j];
            size_t slot = HashText(2166136261u, row->name) % index->size;
            while (index->slots[slot])
                slot = (slot + 1) % index->size;
            index->slots[slot] = row;
        }
    }
    return index->slots != nullptr;
}

void FreeElementIndex(ElementIndex *index)
{
    free(index->slots);
    *index = {};
}

static const ElementRow *FindRow(const ElementIndex *index, const KnownName &name)
{
    size_t slot = HashName(name) % index->size;
    while (index->slots[slot] && !IsName(name, index->slots[slot]->name))
        slot = (slot + 1) % index->size;
    return index->slots[slot];
}

// ---- open elements ----

static bool PushElement(Walk *walk, const ElementRow *row, const TextState &state)
{
    void *open = walk->open;
    if (walk->depth > kMostDepth)
        return FailDocument(walk->document, kFailDepth);
    bool hasRoom = GrowArray(&open, &walk->room, walk->depth + 1, sizeof *walk->open);
    walk->open = static_cast<OpenElement *>(open);
    if (!hasRoom)
        return FailDocument(walk->document, kFailMemory);
    walk->open[walk->depth++] = {row, state};
    return true;
}

OpenElement *ElementAbove(Walk *walk, size_t above)
{
    assert(walk->depth > 0);
    return &walk->open[above < walk->depth ? walk->depth - 1 - above : 0];
}

bool IsInside(Walk *walk, size_t above, std::string_view name)
{
    const ElementRow *row = ElementAbove(walk, above)->row;
    return row && row->name == name;
}

bool StartWalk(Walk *walk, Document *document, const ElementIndex *elements,
               const DocumentSource &source)
{
    TextState state = {};
    *walk = {};
    walk->document = document;
    walk->elements = elements;
    StartScanning(&walk->scanner, source, false);
    state.runStyle = state.paragraphStyle = state.tableStyle = kNoFontStyle;
    state.style = kNoFontStyle;
    for (int &text : state.texts)
        text = kNotHeld;
    return PushElement(walk, nullptr, state);
}

void StopWalk(Walk *walk)
{
    StopScanning(&walk->scanner);
    FreePrefixes(&walk->prefixes);
    FreeParagraph(&walk->paragraph);
    FreeBytes(&walk->output);
    FreeBytes(&walk->editTexts);
    free(walk->open);
    *walk = {};
}

bool HasChanged(const Walk *walk)
{
    return walk->hasChanged || walk->paragraph.hasChanged;
}

// ---- attributes and changes ----

bool FindAttribute(Walk *walk, const Tag *tag, std::string_view name, Attribute *attribute)
{
    for (size_t place = 0; NextAttribute(tag->raw, &place, attribute);)
        if (IsName(NameOfAttribute(&walk->prefixes, attribute->name), name))
            return true;
    return false;
}

std::string_view ValueOf(Walk *walk, const Tag *tag, std::string_view name)
{
    Attribute attribute;
    return FindAttribute(walk, tag, name, &attribute) ? attribute.value : std::string_view();
}

int NumberOf(Walk *walk, const Tag *tag, std::string_view name, int standard)
{
    std::string_view digits = ValueOf(walk, tag, name);
    int number = 0;
    for (char c : digits) {
        if (c < '0' || c > '9' || number > (INT_MAX - 9) / 10)
            return standard;
        number = 10 * number + (c - '0');
    }
    return digits.empty() ? standard : number;
}

// Edits come in the order of the tag's bytes, but for those at its end, which vocabularies may note
// first.
static TagEdit *AddEdit(Walk *walk, size_t start, size_t end)
{
    assert(walk->editCount < kMostEdits);
    int at = walk->editCount++;
    for (; at > 0 && walk->edits[at - 1].start > start; --at)
        walk->edits[at] = walk->edits[at - 1];
    walk->edits[at] = {start, end, walk->editTexts.length, 0, nullptr, {}, false, nullptr};
    return &walk->edits[at];
}

static bool HasRoomForEdit(const Walk *walk)
{
    return walk->document->isRewriting && walk->editCount < kMostEdits;
}

// Nearly every value is written as it is; so the others may cost a block.
static bool IsPlainValue(std::string_view text)
{
    for (char c : text)
        if (c < ' ' || c > '~' || c == '&' || c == '<' || c == '>' || c == '"' || c == '\'')
            return false;
    return true;
}

// What stands as a reference in the font map already stays one.
static void AppendValue(Bytes *bytes, std::string_view text)
{
    if (IsPlainValue(text)) {
        AppendBytes(bytes, text);
        return;
    }
    Units units = {};
    kXmlValue.read(text, &units);
    kXmlValue.write(units.data, units.length, bytes);
    bytes->failed = bytes->failed || units.failed;
    FreeUnits(&units);
}

void ReplaceValue(Walk *walk, const Attribute &attribute, std::string_view text)
{
    if (!HasRoomForEdit(walk) || attribute.value == text)
        return;
    size_t start = attribute.valueStart, end = start + attribute.value.size();
    TagEdit *edit = AddEdit(walk, start, end);
    AppendValue(&walk->editTexts, text);
    edit->textLength = walk->editTexts.length - edit->text;
}

void RemoveAttribute(Walk *walk, const Attribute &attribute)
{
    if (HasRoomForEdit(walk))
        AddEdit(walk, attribute.start - 1, attribute.end);  // with the blank in front of it
}

void AddAttribute(Walk *walk, const Tag *tag, std::string_view local, std::string_view text)
{
    if (!HasRoomForEdit(walk))
        return;
    size_t end = tag->raw.size() - (tag->isEmpty ? 2 : 1);
    size_t nameEnd = tag->raw.find_first_of(" \t\r\n/>"), colon = tag->raw.find(':');
    TagEdit *edit = AddEdit(walk, end, end);
    Bytes *bytes = &walk->editTexts;
    AppendBytes(bytes, " ");
    if (colon < nameEnd)
        AppendBytes(bytes, tag->raw.substr(1, colon));
    AppendBytes(bytes, local);
    AppendBytes(bytes, "=\"");
    AppendValue(bytes, text);
    AppendBytes(bytes, "\"");
    edit->textLength = bytes->length - edit->text;
}

void MarkSpace(Walk *walk, const Tag *tag)
{
    Attribute attribute;
    size_t end = tag->raw.size() - 1;
    if (!tag->isEmpty && HasRoomForEdit(walk) && !FindAttribute(walk, tag, "xml:space", &attribute))
        AddEdit(walk, end, end)->isSpace = true;
}

static void AddTextEdit(Walk *walk, const Attribute &attribute, const TextForm *form,
                        FontPair fonts, int *held)
{
    if (!HasRoomForEdit(walk))
        return;
    size_t start = attribute.valueStart;
    TagEdit *edit = AddEdit(walk, start, start + attribute.value.size());
    edit->form = form;
    edit->fonts = fonts;
    edit->held = held;
}

void TakeValueAsText(Walk *walk, const Attribute &attribute, const TextForm *form, FontPair fonts)
{
    AddTextEdit(walk, attribute, form, fonts, nullptr);
}

void TakeValueLater(Walk *walk, const Attribute &attribute, const TextForm *form, int *held)
{
    *held = kNotHeld;
    AddTextEdit(walk, attribute, form, {}, held);
}

void SetFontsOfTexts(Walk *walk, FontPair fonts)
{
    for (int &text : StateOf(walk)->texts) {
        if (text != kNotHeld)
            SetFonts(walk->document, &walk->paragraph, text, fonts);
        text = kNotHeld;
    }
}

const FontMapEntry *RenameFont(Walk *walk, const Attribute &attribute)
{
    FontNames *fonts = &walk->document->fonts;
    const FontMapEntry *entry = LegacyFont(*fonts, FontNumber(fonts, attribute.value));
    if (entry)
        ReplaceValue(walk, attribute, entry->unicodeName);
    return entry;
}

// ---- output ----

void PutRaw(Walk *walk, std::string_view raw)
{
    if (!walk->document->isRewriting)
        return;
    if (StateOf(walk)->isDropped)
        walk->hasChanged = true;
    else
        PutMarkup(&walk->paragraph, raw, &walk->output);
}

void PutChanged(Walk *walk, std::string_view bytes)
{
    if (walk->document->isRewriting)
        walk->hasChanged = true;
    PutRaw(walk, bytes);
}

void PutChangedValue(Walk *walk, std::string_view text)
{
    Bytes value = {};
    AppendValue(&value, text);
    PutChanged(walk, TextOf(value));
    FreeBytes(&value);
}

void PutTextHere(Walk *walk, const TextForm *form, std::string_view raw, FontPair fonts)
{
    if (!walk->document->isRewriting || StateOf(walk)->isDropped)
        PutRaw(walk, raw);
    else
        PutText(walk->document, &walk->paragraph, form, raw, fonts, &walk->output);
}

static void PutEdit(Walk *walk, const Tag &tag, const TagEdit &edit)
{
    if (edit.isSpace) {
        walk->paragraph.space = walk->paragraph.held.length;
        return;
    }
    if (edit.form) {
        std::string_view value = tag.raw.substr(edit.start, edit.end - edit.start);
        if (edit.held)
            *edit.held = PutTextOfUnknownFont(&walk->paragraph, edit.form, value);
        else
            PutText(walk->document, &walk->paragraph, edit.form, value, edit.fonts, &walk->output);
        return;
    }
    walk->hasChanged = true;
    PutRaw(walk, TextOf(walk->editTexts).substr(edit.text, edit.textLength));
}

static void PutTag(Walk *walk, const Tag &tag)
{
    size_t written = 0;
    for (int i = 0; i < walk->editCount; ++i) {
        const TagEdit &edit = walk->edits[i];
        if (edit.start < written)
            continue;  // inside of what went already
        if (edit.isSpace)
            HoldAll(&walk->paragraph);
        PutRaw(walk, tag.raw.substr(written, edit.start - written));
        PutEdit(walk, tag, edit);
        written = edit.end;
    }
    PutRaw(walk, tag.raw.substr(written));
    walk->editCount = 0;
    walk->editTexts.length = 0;
}

// ---- pieces ----

// At both ends of an element.
static bool PassBorder(Walk *walk, const ElementRow *row)
{
    if (row && row->kind != kPlain)
        SetApart(&walk->paragraph);
    return !row || row->kind != kParagraph || !walk->document->isRewriting ||
           EndParagraph(walk->document, &walk->paragraph, &walk->output);
}

static bool CloseElement(Walk *walk)
{
    const ElementRow *row = ElementAbove(walk, 0)->row;
    bool done = (!row || !row->close || row->close(walk)) && PassBorder(walk, row);
    ForgetPrefixes(&walk->prefixes, walk->depth);
    return done;
}

static bool OpenTag(Walk *walk, const Piece &piece)
{
    Tag tag = {piece.raw, piece.kind == kEmptyPiece};
    if (!DeclarePrefixes(&walk->prefixes, piece.raw, walk->depth + 1))
        return FailDocument(walk->document, kFailMemory);
    const ElementRow *row = FindRow(walk->elements, NameOfTag(&walk->prefixes, piece.name));
    TextState state = StateOf(walk)[0];
    if (const ElementRow *around = ElementAbove(walk, 0)->row; around && around->child)
        around->child(walk, row);
    if (row && row->fonts)
        state.textRow = row;
    if (!PushElement(walk, row, state) || !PassBorder(walk, row) ||
        (row && row->open && !row->open(walk, &tag)))
        return false;
    PutTag(walk, tag);
    if (!tag.isEmpty)
        return true;
    bool done = CloseElement(walk);
    --walk->depth;
    return done;
}

// A tag that closes what isn't open closes nothing.
static bool CloseTag(Walk *walk, const Piece &piece)
{
    bool closes = walk->depth > 1;
    bool done = !closes || CloseElement(walk);
    PutRaw(walk, piece.raw);
    if (closes)
        --walk->depth;
    return done;
}

static void TakeText(Walk *walk, const TextForm *form, std::string_view text)
{
    const ElementRow *row = StateOf(walk)->textRow;
    if (!row)
        PutRaw(walk, text);
    else if (row->text)
        row->text(walk, form, text);
    else
        PutTextHere(walk, form, text, row->fonts(walk));
}

static void TakeCdata(Walk *walk, std::string_view raw)
{
    constexpr size_t kBeginning = 9, kEnd = 3;  // bytes of "<![CDATA[" and "]]>"
    PutRaw(walk, raw.substr(0, kBeginning));
    TakeText(walk, &kCdataText, raw.substr(kBeginning, raw.size() - kBeginning - kEnd));
    PutRaw(walk, raw.substr(raw.size() - kEnd));
}

// What is open now has lost its end, and perhaps much more.
static bool EndPart(Walk *walk)
{
    walk->isDone = true;
    if (walk->depth > 1)
        return FailDocument(walk->document, kFailCutTag);
    return EndParagraph(walk->document, &walk->paragraph, &walk->output);
}

// All that is read is UTF-8, of which ASCII is a part.
static bool TakeDeclaration(Walk *walk, const Piece &piece)
{
    Attribute attribute;
    PutRaw(walk, piece.raw);
    if (!piece.raw.starts_with("<?xml "))
        return true;
    for (size_t place = 0; NextAttribute(piece.raw, &place, &attribute);)
        if (attribute.name == "encoding" && !EqualNoCase(attribute.value, "utf-8") &&
            !EqualNoCase(attribute.value, "us-ascii"))
            return FailDocument(walk->document, kFailEncoding);
    return true;
}

static bool TakePiece(Walk *walk, const Piece &piece)
{
    switch (piece.kind) {
    case kEndPiece: return EndPart(walk);
    case kTextPiece: TakeText(walk, &kXmlText, piece.raw); return true;
    case kCdataPiece: TakeCdata(walk, piece.raw); return true;
    case kOpeningPiece:
    case kEmptyPiece: return OpenTag(walk, piece);
    case kClosingPiece: return CloseTag(walk, piece);
    case kOtherPiece: return TakeDeclaration(walk, piece);
    }
    return true;
}

// Goes on by one piece. False at the end and at a failure, which is reported.
static bool StepWalk(Walk *walk)
{
    Piece piece;
    if (walk->isDone)
        return false;
    if (!NextPiece(&walk->scanner, &piece))
        return FailDocument(walk->document, walk->scanner.failure);
    if (!TakePiece(walk, piece) || !BoundParagraph(walk->document, &walk->paragraph, &walk->output))
        return false;
    walk->isDone = walk->isDone || (walk->stopsAtChange && HasChanged(walk));
    bool failed = walk->output.failed || walk->editTexts.failed || walk->paragraph.held.failed ||
                  walk->document->fonts.failed || walk->document->styles.failed ||
                  walk->document->strings.failed;
    return !failed || FailDocument(walk->document, kFailMemory);
}

// What was given out makes room for what comes.
static void DropGiven(Walk *walk)
{
    Bytes *output = &walk->output;
    size_t left = output->length - walk->given;
    if (left && walk->given)
        memmove(output->data, output->data + walk->given, left);
    output->length = left;
    walk->given = 0;
}

size_t ReadWalk(Walk *walk, char *buffer, size_t size)
{
    Bytes *output = &walk->output;
    if (output->length - walk->given < size)
        DropGiven(walk);
    while (output->length - walk->given < size && StepWalk(walk)) {
    }
    if (walk->document->report.error)
        return 0;
    size_t left = output->length - walk->given, count = left < size ? left : size;
    if (count)
        memcpy(buffer, output->data + walk->given, count);
    walk->given += count;
    return count;
}

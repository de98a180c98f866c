// The binary form of dialog templates. Texts are 16-bit characters and come as bytes of the code
// page; a class may be a number.
#include "controls/dialog_template.h"

#include <assert.h>
#include <iterator>
#include <string.h>

constexpr DWORD kExtendedForm = 0xFFFF0001;  // where a plain template has its style
constexpr int kPixelsPerInch = 96;           // of a screen that nobody sees

// 0 behind the end: a reader that went bad stays so, and its user asks once at the end.
static WORD NextWord(TemplateReader *reader)
{
    assert(reader->isBad || reader->at <= reader->bytes.size);
    if (reader->isBad || reader->bytes.size - reader->at < 2) {
        reader->isBad = true;
        return 0;
    }
    const BYTE *at = reader->bytes.bytes + reader->at;
    reader->at += 2;
    return WORD(at[0] | at[1] << 8);
}

static DWORD NextLong(TemplateReader *reader)
{
    DWORD low = NextWord(reader);
    return low | DWORD(NextWord(reader)) << 16;
}

// What the code page doesn't have is a question mark.
static char ByteOf(WCHAR character)
{
    char byte = '?';
    WideCharToMultiByte(1252, 0, &character, 1, &byte, 1, nullptr, nullptr);
    return byte;
}

// Reads on from the first character to the terminator and keeps what fits.
static void ReadCharacters(TemplateReader *reader, WORD first, char *text)
{
    size_t length = 0;
    for (WORD character = first; character && !reader->isBad; character = NextWord(reader)) {
        if (length + 1 < kTemplateText)
            text[length++] = ByteOf(character);
    }
    text[length] = '\0';
}

// Classes, menus and captions: 0xFFFF and a number, or characters. What isn't there is 0 or empty.
static void ReadNumberOrText(TemplateReader *reader, WORD *number, char *text)
{
    *number = 0;
    text[0] = '\0';
    WORD first = NextWord(reader);
    if (first == 0xffff)
        *number = NextWord(reader);
    else
        ReadCharacters(reader, first, text);
}

// A class by its number or its name; the numbers are those of the system's own six.
static void ReadClass(TemplateReader *reader, TemplateItem *item)
{
    static constexpr const char *kClasses[] = {
        // from 0x80
        "BUTTON", "EDIT", "STATIC", "LISTBOX", "SCROLLBAR", "COMBOBOX",
    };
    WORD number;
    ReadNumberOrText(reader, &number, item->className);
    if (!number)
        return;
    size_t index = size_t(number) - 0x80;
    if (index >= std::size(kClasses))
        reader->isBad = true;
    else
        strcpy(item->className, kClasses[index]);
}

// Signed: a control may begin outside of its dialog.
static void ReadPlace(TemplateReader *reader, TemplateItem *item)
{
    item->x = SHORT(NextWord(reader));
    item->y = SHORT(NextWord(reader));
    item->width = SHORT(NextWord(reader));
    item->height = SHORT(NextWord(reader));
}

// The extended form has a help number in front, which nobody asks for, and the two styles the other
// way round.
static void ReadStyles(TemplateReader *reader, TemplateItem *item)
{
    if (reader->isExtended) {
        NextLong(reader);
        item->exStyle = NextLong(reader);
        item->style = NextLong(reader);
    } else {
        item->style = NextLong(reader);
        item->exStyle = NextLong(reader);
    }
}

// The plain form says no more than size and name. A name that is too long for a font is cut.
static void ReadFont(TemplateReader *reader, TemplateHead *head)
{
    WORD number;
    char face[kTemplateText];
    head->pointSize = NextWord(reader);
    head->font.lfWeight = reader->isExtended ? NextWord(reader) : FW_NORMAL;
    WORD kind = reader->isExtended ? NextWord(reader) : MAKEWORD(FALSE, DEFAULT_CHARSET);
    ReadNumberOrText(reader, &number, face);
    head->font.lfItalic = LOBYTE(kind);
    head->font.lfCharSet = HIBYTE(kind);
    head->font.lfHeight = -((head->pointSize * kPixelsPerInch + 36) / 72);  // 72 points an inch
    memcpy(head->font.lfFaceName, face, strnlen(face, LF_FACESIZE - 1));
}

// The extended form begins with a mark where the plain one has its style.
bool ReadTemplateHead(TemplateReader *reader, TemplateHead *head)
{
    WORD number;
    char menu[kTemplateText];  // there are none
    memset(head, 0, sizeof *head);
    reader->isExtended = NextLong(reader) == kExtendedForm;
    if (!reader->isExtended)
        reader->at = 0;
    ReadStyles(reader, &head->dialog);
    head->controls = NextWord(reader);
    ReadPlace(reader, &head->dialog);
    ReadNumberOrText(reader, &number, menu);
    ReadNumberOrText(reader, &number, head->dialog.className);
    ReadNumberOrText(reader, &number, head->dialog.text);
    if (head->dialog.style & DS_SETFONT)
        ReadFont(reader, head);
    if (!head->dialog.className[0])
        strcpy(head->dialog.className, "#32770");
    return !reader->isBad;
}

// Each control begins at a multiple of four bytes.
bool ReadTemplateControl(TemplateReader *reader, TemplateItem *item)
{
    WORD number;
    reader->at = (reader->at + 3) & ~size_t(3);
    if (reader->at > reader->bytes.size)
        reader->isBad = true;
    memset(item, 0, sizeof *item);
    ReadStyles(reader, item);
    ReadPlace(reader, item);
    item->id = reader->isExtended ? NextLong(reader) : NextWord(reader);
    ReadClass(reader, item);
    ReadNumberOrText(reader, &number, item->text);
    WORD extra = NextWord(reader);  // creation data: nothing here looks at it
    if (extra > reader->bytes.size - reader->at)
        reader->isBad = true;
    reader->at += reader->isBad ? 0 : extra;
    return !reader->isBad;
}

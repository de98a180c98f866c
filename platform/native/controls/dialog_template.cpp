// The binary form of dialog templates. Texts are 16-bit characters and come as bytes of the code
// page; a class may be a number.
#include "controls/dialog_template.h"

#include <assert.h>
#include <iterator>
#include <string.h>

constexpr DWORD kExtendedForm = 0xFFFF0001;  // where a plain template has its style

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

// The extended form begins with a mark where the plain one has its style; it isn't read, since no
// template here has it.
bool ReadTemplateHead(TemplateReader *reader, TemplateHead *head)
{
    WORD number;
    memset(head, 0, sizeof *head);
    head->dialog.style = NextLong(reader);
    if (head->dialog.style == kExtendedForm)
        return false;
    head->dialog.exStyle = NextLong(reader);
    head->controls = NextWord(reader);
    ReadPlace(reader, &head->dialog);
    ReadNumberOrText(reader, &number, head->face);  // the menu: there are none
    ReadNumberOrText(reader, &number, head->dialog.className);
    ReadNumberOrText(reader, &number, head->dialog.text);
    head->face[0] = '\0';
    if (head->dialog.style & DS_SETFONT) {
        head->pointSize = NextWord(reader);
        ReadNumberOrText(reader, &number, head->face);
    }
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
    item->style = NextLong(reader);
    item->exStyle = NextLong(reader);
    ReadPlace(reader, item);
    item->id = NextWord(reader);
    ReadClass(reader, item);
    ReadNumberOrText(reader, &number, item->text);
    WORD extra = NextWord(reader);  // creation data: nothing here looks at it
    if (extra > reader->bytes.size - reader->at)
        reader->isBad = true;
    reader->at += reader->isBad ? 0 : extra;
    return !reader->isBad;
}

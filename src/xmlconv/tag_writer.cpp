// The tag writer and the stack of open tags. Written tags are in normal form: one blank before each
// attribute, no blank before the ending, values in double quotes. A closing tag alone keeps its
// text, and takes the top of the stack away whatever its name says.
#include "xmlconv/tag_writer.h"

#include <cassert>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "xmlconv/byte_set.h"

// A cursor that counts the room down; once something did not fit it takes nothing more.
struct TagCursor {
    char *next;   // where the next byte goes, on which the terminator stands
    size_t left;  // bytes from there on
    bool isFull;
};

static void Put(TagCursor *cursor, std::string_view text)
{
    cursor->isFull = cursor->isFull || text.size() >= cursor->left;
    if (cursor->isFull)
        return;
    memcpy(cursor->next, text.data(), text.size());
    cursor->next += text.size();
    cursor->left -= text.size();
    *cursor->next = 0;
}

// What ends a value or a tag, and the references that stand for it; those behind may be in a name
// too.
constexpr char kMarkup[] = "&<>\"";
constexpr ByteSet kNameStops = SetOf(kMarkup);
constexpr std::string_view kReferences[] = {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;"};

// What goes out for the markup at the beginning of a text: the reference that stands there, as
// `taken` bytes of it, or the one that stands for the character.
static std::string_view ReferenceFor(const char *text, size_t *taken)
{
    for (std::string_view reference : kReferences) {
        *taken = reference.size();
        if (strncmp(text, reference.data(), reference.size()) == 0)
            return reference;
    }
    *taken = 1;
    return kReferences[strchr(kMarkup, *text) - kMarkup];
}

// A font's name as the font map has it, in which markup goes out as a reference. One that the map's
// writer has put there already stays what it is.
static void PutFontName(TagCursor *cursor, const char *name)
{
    for (;;) {
        size_t plain = LengthUpTo(name, kNameStops), taken;
        Put(cursor, {name, plain});
        name += plain;
        if (!*name)
            return;
        Put(cursor, ReferenceFor(name, &taken));
        name += taken;
    }
}

static void PutAttribute(TagCursor *cursor, const TagAttribute *attribute,
                         const FontMapEntry *renamed)
{
    Put(cursor, " ");
    Put(cursor, {attribute->name, attribute->nameLength});
    if (!attribute->value)
        return;
    Put(cursor, "=\"");
    if (renamed)
        PutFontName(cursor, renamed->unicodeName);
    else
        Put(cursor, attribute->value);
    Put(cursor, "\"");
}

// False when the room was too small.
static bool PutTag(Conversion *conversion, const TagRecord *tag)
{
    TagCursor cursor = {conversion->tagText, conversion->sizes.tag, false};
    bool namesFonts = IsFontTag({tag->name, tag->nameLength});
    Put(&cursor, "<");
    Put(&cursor, {tag->name, tag->nameLength});
    for (int i = 0; i < tag->attributeCount; ++i) {
        const TagAttribute *attribute = &tag->attributes[i];
        PutAttribute(&cursor, attribute,
                     namesFonts ? FindRenamedFont(&conversion->fonts, attribute) : nullptr);
    }
    if (tag->isSelfClosing)
        Put(&cursor, tag->name[0] == '?' ? "?" : "/");
    Put(&cursor, ">");
    return !cursor.isFull;
}

// To track a tag twice would add a style twice, so it is tracked in front of the loop. The tracker
// may add an attribute, so the written tag can be longer than what was read.
int WriteTag(Conversion *conversion, TagRecord *tag)
{
    assert(!tag->isClosing);
    if (!TrackTag(conversion, tag))
        return 0;
    while (!PutTag(conversion, tag))
        if (!GrowTagBuffers(conversion))
            return 0;
    return 1;
}

TagRecord *PushTag(Conversion *conversion, TagRecord *current, std::string_view name)
{
    TagRecord *tag = conversion->spare;
    if (tag)
        conversion->spare = tag->parent;
    else
        tag = static_cast<TagRecord *>(calloc(1, sizeof(TagRecord)));
    if (!tag)
        return nullptr;
    assert(name.size() < sizeof tag->name);
    memcpy(tag->name, name.data(), name.size());
    tag->name[name.size()] = 0;
    tag->nameLength = name.size();
    tag->parent = current;
    return tag;
}

// A record without attributes is as good as a new one.
TagRecord *PopTag(Conversion *conversion, TagRecord *current)
{
    TagRecord *parent = current ? current->parent : nullptr;
    if (!current || current->attributes) {
        FreeTag(current);
        return parent;
    }
    current->parent = conversion->spare;
    conversion->spare = current;
    return parent;
}

const char *ProcessTag(Conversion *conversion, TagRecord **current)
{
    TagRecord *tag = ParseTag(&conversion->report, conversion->tagSource);
    if (!tag)
        return nullptr;
    tag->parent = *current;
    bool done = tag->isClosing || WriteTag(conversion, tag);
    const char *text = tag->isClosing ? conversion->tagSource : conversion->tagText;
    if (done && !tag->isClosing && !tag->isSelfClosing) {
        *current = tag;
        return text;
    }
    if (tag->isClosing && !tag->isSelfClosing)  // a tag that is both takes nothing away
        *current = PopTag(conversion, *current);
    FreeTag(tag);
    return done ? text : nullptr;
}

void FreeTagStack(TagRecord *current)
{
    while (current) {
        TagRecord *parent = current->parent;
        FreeTag(current);
        current = parent;
    }
}

// The tag writer and the stack of open tags.
#include "xmlconv/tag_writer.h"

#include <cstring>

#include "xmlconv/font_map.h"
#include "xmlconv/report.h"
#include "xmlconv/styles.h"

// A cursor that counts the room down; once something did not fit it takes nothing more.
struct TagCursor {
    char *next;
    size_t left;
    bool isFull;
};

static void Put(TagCursor *cursor, const char *text)
{
    size_t length = strlen(text);
    cursor->isFull = cursor->isFull || length >= cursor->left;
    if (cursor->isFull)
        return;
    memcpy(cursor->next, text, length + 1);
    cursor->next += length;
    cursor->left -= length;
}

// value may be none.
static void PutAttribute(TagCursor *cursor, const char *name, const char *value)
{
    Put(cursor, " ");
    Put(cursor, name);
    if (!value)
        return;
    Put(cursor, "=\"");
    Put(cursor, value);
    Put(cursor, "\"");
}

static void PutAttributes(TagCursor *cursor, const TagRecord *tag)
{
    bool namesFonts = IsFontTag(tag->name);
    for (int i = 0; i < tag->attributeCount; ++i) {
        const TagAttribute *attribute = &tag->attributes[i];
        const char *value = attribute->value;
        if (namesFonts && value)
            value = RenameFontAttribute(tag, attribute, value);
        PutAttribute(cursor, attribute->name, value);
    }
}

static int AskForLargerBuffer()
{
    gReport.restart = kTagBufferFull;
    return 0;
}

int WriteTag(TagRecord *tag, const TagRoom &room)
{
    if (!TrackTag(tag))
        return 0;
    TagCursor cursor = {room.text, room.size, false};
    Put(&cursor, "<");
    Put(&cursor, tag->name);
    PutAttributes(&cursor, tag);
    if (tag->isSelfClosing)
        Put(&cursor, tag->name[0] == '?' ? "?" : "/");
    Put(&cursor, ">");
    return cursor.isFull ? AskForLargerBuffer() : 1;
}

static int CopyTag(const char *source, const TagRoom &room)
{
    TagCursor cursor = {room.text, room.size, false};
    Put(&cursor, source);
    return cursor.isFull ? AskForLargerBuffer() : 1;
}

// A closing tag takes the top away whatever its name says.
TagRecord *PopTag(TagRecord *current)
{
    TagRecord *parent = current ? current->parent : nullptr;
    FreeTag(current);
    return parent;
}

TagRecord *ProcessTag(TagRecord *current, const char *source, const TagRoom &room)
{
    TagRecord *tag = ParseTag(source);
    if (!tag)
        return current;
    tag->parent = current;
    bool isOpening = !tag->isClosing && !tag->isSelfClosing;
    int written = tag->isClosing ? CopyTag(source, room) : WriteTag(tag, room);
    if (written && isOpening)
        return tag;
    bool pops = written && tag->isClosing && !tag->isSelfClosing;
    FreeTag(tag);
    return pops ? PopTag(current) : current;
}

void FreeTagStack(TagRecord *current)
{
    while (current)
        current = PopTag(current);
}

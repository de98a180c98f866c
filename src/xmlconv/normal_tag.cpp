// The fast road of tags. It takes what the parser would accept and the writer give back byte for
// byte; whatever is doubtful goes to them. Nothing bounds the walks over a tag but the sets of
// bytes: the closing bracket, which is the tag's last byte, is in each of them.
#include "xmlconv/normal_tag.h"

#include <cassert>
#include <cstring>

#include "xmlconv/byte_set.h"
#include "xmlconv/tag_writer.h"

// Bytes that end a name, or make a tag one for the parser. The bracket has to be among them.
constexpr ByteSet kNameEnds = SetOf(" \t\n\v\f\r/=?>");

constexpr ByteSet kValueEnds = SetOf("\">");

// A tag in normal form: one blank before each attribute, a value in double quotes for each, nothing
// behind.
struct NormalTagShape {
    const char *text;
    size_t length, nameLength;  // brackets included; 0: it isn't in normal form
    bool isSelfClosing;
};

// The place behind an attribute with its value; null where it isn't in normal form.
static const char *SkipAttribute(const char *text)
{
    size_t nameLength = LengthUpTo(text, kNameEnds);
    text += nameLength;
    if (!IsNameLength(nameLength) || *text != '=' || text[1] != '"')
        return nullptr;
    text += 2;
    text += LengthUpTo(text, kValueEnds);
    return *text == '"' ? text + 1 : nullptr;
}

// One walk, which finds the closing bracket too: a value that holds one isn't in normal form.
static NormalTagShape ShapeOfTag(const char *source)
{
    const char *name = source + 1;
    size_t mark = *name == '?';
    size_t nameLength = mark + LengthUpTo(name + mark, kNameEnds);
    const char *text = name + nameLength;
    if (!IsNameLength(nameLength) || nameLength == mark)  // the mark of "<?>" doesn't close it
        return {};
    while (text && *text == ' ')
        text = SkipAttribute(text + 1);
    if (!text)
        return {};
    bool hasAttributes = text != name + nameLength;
    const char ending = mark ? '?' : '/';
    bool isSelfClosing = *text == ending && (ending == '/' || hasAttributes);  // "<?a?>" is a name
    text += isSelfClosing;                                                     // with two marks
    if (*text != '>')
        return {};
    return {source, size_t(text + 1 - source), nameLength, text[-1] == '/' || text[-1] == '?'};
}

// A tag as the parser would leave it, in place.
enum { kMostAttributes = 8, kValuesSize = 512 };
struct NormalRecord {
    TagRecord tag;
    TagAttribute attributes[kMostAttributes + 1];  // one is for the tracker to add
    char values[kValuesSize];                      // the texts, each with its terminator
};

static char *CopyText(char *target, const char *text, size_t length)
{
    memcpy(target, text, length);
    target[length] = 0;
    return target + length + 1;
}

// Fills the record from a tag in normal form; false when it has no room for all of it.
static bool FillRecord(NormalRecord *record, const NormalTagShape &shape)
{
    if (shape.length > kValuesSize)
        return false;
    const char *text = shape.text + 1 + shape.nameLength;
    char *value = record->values;
    int count = 0;
    for (; *text == ' '; ++count) {
        if (count == kMostAttributes)
            return false;
        TagAttribute *attribute = &record->attributes[count];
        attribute->nameLength = LengthUpTo(++text, kNameEnds);
        CopyText(attribute->name, text, attribute->nameLength);
        text += attribute->nameLength + 2;
        size_t size = LengthUpTo(text, kValueEnds);
        attribute->value = value;
        value = CopyText(value, text, size);
        text += size + 1;
    }
    CopyText(record->tag.name, shape.text + 1, shape.nameLength);
    record->tag.nameLength = shape.nameLength;
    record->tag.isClosing = false;
    record->tag.isSelfClosing = shape.isSelfClosing;
    record->tag.attributes = record->attributes;
    record->tag.attributeCount = count;
    record->tag.lentRoom = 1;
    return true;
}

// Tags with fonts are written, the others only tell of styles.
static NormalTag FollowAttributes(Conversion *conversion, TagRecord *parent,
                                  const NormalTagShape &shape)
{
    NormalRecord record;
    if (!FillRecord(&record, shape))
        return kTagLeft;
    record.tag.parent = parent;
    if (IsFontTag({record.tag.name, record.tag.nameLength}))
        return WriteTag(conversion, &record.tag) ? kTagChanged : kTagFailed;
    return TrackTag(conversion, &record.tag) ? kTagStays : kTagFailed;
}

// The record of an open tag is taken first, so that a tag that is left has done nothing.
static NormalTag FollowOpeningTag(Conversion *conversion, TagRecord **current,
                                  const NormalTagShape &shape)
{
    std::string_view name = {shape.text + 1, shape.nameLength};
    TagRecord *opened = nullptr;
    if (!shape.isSelfClosing && !(opened = PushTag(conversion, *current, name)))
        return kTagLeft;  // ProcessTag tells of it
    NormalTag followed = kTagStays;
    if (IsFontTag(name) || !TrackTagName(conversion, name))
        followed = FollowAttributes(conversion, *current, shape);
    if (opened && followed >= kTagStays)
        *current = opened;
    else if (opened)
        PopTag(conversion, opened);
    return followed;
}

// Length of a closing tag with the name of the tag that is open; 0 for others. The parser has read
// that name, or would have, so it reads it here.
static size_t LengthOfClosing(const TagRecord *current, const char *text)
{
    size_t length = current ? current->nameLength : 0;
    bool closes =
        length && strncmp(text + 2, current->name, length) == 0 && text[2 + length] == '>';
    return closes ? length + 3 : 0;
}

NormalTag FollowNormalTag(Conversion *conversion, TagRecord **current, const char *text,
                          size_t *length)
{
    assert(*text == '<');
    const size_t most = conversion->sizes.tag - kSpareBytes + 1;
    if (text[1] == '/') {
        *length = LengthOfClosing(*current, text);
        if (*length == 0 || *length > most)
            return kTagLeft;
        *current = PopTag(conversion, *current);
        return kTagStays;
    }
    NormalTagShape shape = ShapeOfTag(text);
    *length = shape.length;
    if (shape.length == 0 || shape.length > most)
        return kTagLeft;
    return FollowOpeningTag(conversion, current, shape);
}

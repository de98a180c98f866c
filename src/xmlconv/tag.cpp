// The tag parser walks over a tag twice: once to count its attributes and to prove that the quotes
// are whole, once to store them. So the array has its size at once, and the second walk may trust
// the quotes. Where both walks differ, a document fails: a slash behind a bare name passes the
// first one and is an empty name for the second.
#include "xmlconv/tag.h"

#include <cassert>
#include <cstdlib>
#include <cstring>

#include "frame/strings.h"
#include "xmlconv/byte_set.h"

// Of white space only the blank ends a name: a line break in a tag belongs to a name.
constexpr ByteSet kTagNameEnds = SetOf(" /=>");  // "?xml" is a plain name
constexpr ByteSet kAttributeNameEnds = SetOf(" =/?>");
constexpr ByteSet kSpace = SetOf(" \t\n\v\f\r");

static const char *SkipSpace(const char *text)
{
    while (*text && kSpace.has[uint8_t(*text)])
        ++text;
    return text;
}

static bool IsTagEnd(char c)
{
    return c == '/' || c == '?';
}

// The list ends at the first place that begins no name; whatever stands behind it is dropped from
// the tag. "a = b" is the bare name "a", with which the list ends.
int CountTagAttributes(ConversionReport *report, const char *text)
{
    int count = 0;
    while (size_t length = LengthUpTo(text, kAttributeNameEnds)) {
        text += length;
        if (*text == '=') {
            const char *end = text[1] == '"' ? strchr(text + 2, '"') : nullptr;
            if (!end)
                return SetConversionError(report, -1, kFailValueQuotes);
            text = end + 1;
        } else if (IsTagEnd(*text)) {
            ++text;
        }
        text = SkipSpace(text);
        ++count;
    }
    return count;
}

static const char *StopAt(ConversionReport *report, ConversionFailure number)
{
    SetConversionError(report, 0, number);
    return nullptr;
}

// Stores one attribute: the place behind it, null on a failure.
static const char *ReadAttribute(ConversionReport *report, const char *text,
                                 TagAttribute *attribute)
{
    size_t length = LengthUpTo(text, kAttributeNameEnds);
    if (!IsNameLength(length))
        return StopAt(report, kFailAttributeName);
    memcpy(attribute->name, text, length);
    attribute->nameLength = length;
    text += length;
    if (*text != '=')
        return SkipSpace(text);
    assert(text[1] == '"');
    text += 2;
    const char *end = strchr(text, '"');
    assert(end);  // the first walk has found it
    length = size_t(end - text);
    attribute->value = static_cast<char *>(calloc(length + 1, 1));
    if (!attribute->value)
        return StopAt(report, kFailValueMemory);
    memcpy(attribute->value, text, length);
    return SkipSpace(end + 1);
}

// Reads the list of attributes: the place behind it, null on a failure.
static const char *ReadAttributes(ConversionReport *report, const char *text, TagRecord *tag)
{
    int count = CountTagAttributes(report, text);
    if (count < 0)
        return StopAt(report, kFailAttributes);
    if (count == 0)
        return text;
    tag->attributes = static_cast<TagAttribute *>(calloc(size_t(count), sizeof(TagAttribute)));
    if (!tag->attributes)
        return StopAt(report, kFailAttributeMemory);
    tag->attributeCount = count;  // zeroed entries can be freed like others
    for (int i = 0; text && i < count; ++i)
        text = ReadAttribute(report, text, &tag->attributes[i]);
    return text;
}

// Fills a zeroed record: 1, or 0 on a failure, and what it owns then is still to be freed.
static int ReadTag(ConversionReport *report, const char *text, TagRecord *tag)
{
    assert(*text == '<');
    ++text;  // the opening bracket
    tag->isClosing = *text == '/';
    text = SkipSpace(text + tag->isClosing);
    text += *text == '/';  // this one says nothing
    size_t length = LengthUpTo(text, kTagNameEnds);
    if (!IsNameLength(length))
        return SetConversionError(report, 0, kFailTagName);
    memcpy(tag->name, text, length);
    tag->nameLength = length;
    text = ReadAttributes(report, SkipSpace(text + length), tag);
    tag->isSelfClosing = text && IsTagEnd(*text);
    return text != nullptr;
}

TagRecord *ParseTag(ConversionReport *report, const char *source)
{
    TagRecord *tag = static_cast<TagRecord *>(calloc(1, sizeof(TagRecord)));
    if (!tag) {
        SetConversionError(report, 0, kFailTagMemory);
        return nullptr;
    }
    if (ReadTag(report, source, tag))
        return tag;
    FreeTag(tag);
    return nullptr;
}

void FreeTag(TagRecord *tag)
{
    if (!tag)
        return;
    assert(tag->lentRoom == 0);
    for (int i = 0; i < tag->attributeCount; ++i)
        free(tag->attributes[i].value);
    free(tag->attributes);
    free(tag);
}

static void AddLentAttribute(TagRecord *tag, const char *name, const char *value)
{
    --tag->lentRoom;
    TagAttribute *added = &tag->attributes[tag->attributeCount++];
    CopyCut(added->name, sizeof added->name, name);
    added->nameLength = strlen(added->name);
    added->value = const_cast<char *>(value);  // nobody writes into one
}

// The larger array belongs to the tag before anything else can fail.
int AddTagAttribute(ConversionReport *report, TagRecord *tag, const char *name, const char *value)
{
    if (tag->lentRoom > 0) {
        AddLentAttribute(tag, name, value);
        return 1;
    }
    size_t count = size_t(tag->attributeCount) + 1;
    void *grown = realloc(tag->attributes, count * sizeof(TagAttribute));
    if (!grown)
        return SetConversionError(report, 0, kFailAddedAttribute);
    tag->attributes = static_cast<TagAttribute *>(grown);
    TagAttribute added = {};
    CopyCut(added.name, sizeof added.name, name);
    added.nameLength = strlen(added.name);
    added.value = strdup(value);
    if (!added.value)
        return SetConversionError(report, 0, kFailAddedValue);
    tag->attributes[tag->attributeCount++] = added;
    return 1;
}

TagAttribute *FindTagAttribute(TagRecord *tag, std::string_view name)
{
    for (int i = 0; i < tag->attributeCount; ++i)
        if (AttributeNameIs(&tag->attributes[i], name))
            return &tag->attributes[i];
    return nullptr;
}

bool TagNameIs(const TagRecord *tag, const char *text)
{
    return strcmp(tag->name, text) == 0;
}

bool AttributeValueIs(const TagAttribute *attribute, const char *text)
{
    return attribute->value && EqualNoCase(attribute->value, text);
}

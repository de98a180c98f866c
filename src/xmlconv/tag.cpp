// The tag parser walks over a tag twice: once to count its attributes and to prove that the quotes
// are whole, once to store them.
#include "xmlconv/tag.h"

#include <cstdlib>
#include <cstring>

#include "frame/strings.h"
#include "xmlconv/byte_set.h"
#include "xmlconv/report.h"

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

int CountTagAttributes(const char *text)
{
    int count = 0;
    while (size_t length = LengthUpTo(text, kAttributeNameEnds)) {
        text += length;
        if (*text == '=') {
            const char *end = text[1] == '"' ? strchr(text + 2, '"') : nullptr;
            if (!end)
                return SetConversionError(-1, 232);
            text = end + 1;
        } else if (IsTagEnd(*text)) {
            ++text;
        }
        text = SkipSpace(text);
        ++count;
    }
    return count;
}

// Stores one attribute: the place behind it, none on a failure. The first walk has proved the
// quotes.
static const char *ReadAttribute(const char *text, TagAttribute *attribute)
{
    size_t length = LengthUpTo(text, kAttributeNameEnds);
    if (!IsNameLength(length)) {
        SetConversionError(0, 279);
        return nullptr;
    }
    memcpy(attribute->name, text, length);
    attribute->nameLength = length;
    text += length;
    if (*text != '=')
        return SkipSpace(text);
    text += 2;
    length = size_t(strchr(text, '"') - text);
    attribute->value = static_cast<char *>(calloc(length + 2, 1));
    if (!attribute->value) {
        SetConversionError(0, 288);
        return nullptr;
    }
    memcpy(attribute->value, text, length);
    return SkipSpace(text + length + 1);
}

// Reads the list of attributes: the place behind it, none on a failure.
static const char *ReadAttributes(const char *text, TagRecord *tag)
{
    int count = CountTagAttributes(text);
    if (count < 0) {
        SetConversionError(0, 269);
        return nullptr;
    }
    if (count == 0)
        return text;
    tag->attributes = static_cast<TagAttribute *>(calloc(size_t(count), sizeof(TagAttribute)));
    if (!tag->attributes) {
        SetConversionError(0, 274);
        return nullptr;
    }
    tag->attributeCount = count;
    for (int i = 0; text && i < count; ++i)
        text = ReadAttribute(text, &tag->attributes[i]);
    return text;
}

static int ReadTag(const char *text, TagRecord *tag)
{
    ++text;  // the opening bracket
    tag->isClosing = *text == '/';
    text = SkipSpace(text + tag->isClosing);
    text += *text == '/';  // this one says nothing
    size_t length = LengthUpTo(text, kTagNameEnds);
    if (!IsNameLength(length))
        return SetConversionError(0, 259);
    memcpy(tag->name, text, length);
    text = ReadAttributes(SkipSpace(text + length), tag);
    tag->isSelfClosing = text && IsTagEnd(*text);
    return text != nullptr;
}

TagRecord *ParseTag(const char *source)
{
    TagRecord *tag = static_cast<TagRecord *>(calloc(1, sizeof(TagRecord)));
    if (!tag) {
        SetConversionError(0, 250);
        return nullptr;
    }
    if (ReadTag(source, tag))
        return tag;
    FreeTag(tag);
    return nullptr;
}

void FreeTag(TagRecord *tag)
{
    if (!tag)
        return;
    for (int i = 0; i < tag->attributeCount; ++i)
        free(tag->attributes[i].value);
    free(tag->attributes);
    free(tag);
}

int AddTagAttribute(TagRecord *tag, const char *name, const char *value)
{
    size_t count = size_t(tag->attributeCount) + 1;
    void *grown = realloc(tag->attributes, count * sizeof(TagAttribute));
    if (!grown)
        return SetConversionError(0, 473);
    tag->attributes = static_cast<TagAttribute *>(grown);
    TagAttribute added = {};
    CopyCut(added.name, sizeof added.name, name);
    added.nameLength = strlen(added.name);
    added.value = strdup(value);
    if (!added.value)
        return SetConversionError(0, 478);
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

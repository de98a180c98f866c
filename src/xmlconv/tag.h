// One tag of a document as a record: the forms that word processors write, not all of XML.
#pragma once

#include <cstddef>
#include <string_view>

#include "frame/strings.h"

enum { kTagNameSize = 64 };  // of tags and attributes, terminator included

inline bool IsNameLength(size_t length)
{
    return length >= 1 && length < kTagNameSize;
}

struct TagAttribute {
    char name[kTagNameSize];
    char *value;  // the text between the quotes as it stands, none for a bare name
    size_t nameLength;
};

struct TagRecord {
    char name[kTagNameSize];  // prefix included
    bool isClosing, isSelfClosing;
    TagAttribute *attributes;  // none when there are 0
    int attributeCount;
    TagRecord *parent;  // the tag that was open when this one was read
};

// Reads a tag's text, from its opening to its closing bracket. None on a failure, whose number is
// reported.
TagRecord *ParseTag(const char *source);

// Number of attributes from text on; -1 on a failure.
int CountTagAttributes(const char *text);

void FreeTag(TagRecord *tag);

// Adds an attribute behind the last one: 1, or 0 without memory (failure 473 for the array, 478 for
// the value).
int AddTagAttribute(TagRecord *tag, const char *name, const char *value);

// The first attribute of a name, without regard to case, or none.
TagAttribute *FindTagAttribute(TagRecord *tag, std::string_view name);

// Tags are compared exactly, attributes without regard to case. No value equals none.
bool TagNameIs(const TagRecord *tag, const char *text);
inline bool AttributeNameIs(const TagAttribute *attribute, std::string_view text)
{
    return EqualNoCase({attribute->name, attribute->nameLength}, text);
}
bool AttributeValueIs(const TagAttribute *attribute, const char *text);

// One tag of a document as a record: the forms that word processors write, not all of XML. The tag
// writer parses with it what the fast road of tags leaves over, the style tracker asks the record.
// The open tags of a document are a chain of such records, each with its parent.
#pragma once

#include <cstddef>
#include <string_view>

#include "frame/strings.h"
#include "xmlconv/report.h"

enum { kTagNameSize = 64 };  // of tags and attributes, terminator included

inline bool IsNameLength(size_t length)
{
    return length >= 1 && length < kTagNameSize;
}

struct TagAttribute {
    char name[kTagNameSize];  // prefix included, as it stands in the document
    char *value;              // owned: the text between the quotes as it stands; null: a bare name
    size_t nameLength;        // of the name, in bytes
};

struct TagRecord {
    char name[kTagNameSize];        // prefix included, as it stands in the document
    size_t nameLength;              // in bytes
    bool isClosing, isSelfClosing;  // "</a>", "<a/>"; broken documents have both in one
    TagAttribute *attributes;       // owned, null when there are 0
    int attributeCount;
    int lentRoom;       // places behind the last attribute that may be filled. They, the other ones
                        // and the values belong to who lent them; 0: the record owns all
    TagRecord *parent;  // the tag that was open when this one was read; null: none. Not owned
};

// Reads a tag's text, from its opening to its closing bracket. The caller frees the record. Null on
// a failure, whose number is reported.
TagRecord *ParseTag(ConversionReport *report, const char *source);

// Number of attributes from text on; -1 on a failure.
int CountTagAttributes(ConversionReport *report, const char *text);

// Frees a record with all that it owns; null is taken. None that was lent its attributes.
void FreeTag(TagRecord *tag);

// Adds an attribute behind the last one, with copies of both texts: 1, or 0 without memory.
// A lent one points to the value, which has to stay.
int AddTagAttribute(ConversionReport *report, TagRecord *tag, const char *name, const char *value);

// The first attribute of a name, without regard to case, or null.
TagAttribute *FindTagAttribute(TagRecord *tag, std::string_view name);

// Tags are compared exactly, attributes without regard to case. A bare name's value equals nothing,
// an empty text neither.
bool TagNameIs(const TagRecord *tag, const char *text);
inline bool AttributeNameIs(const TagAttribute *attribute, std::string_view text)
{
    return EqualNoCase({attribute->name, attribute->nameLength}, text);
}
bool AttributeValueIs(const TagAttribute *attribute, const char *text);

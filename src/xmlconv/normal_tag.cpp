// The fast road of tags. It takes what the parser would accept and the writer give back byte for
// byte; whatever is doubtful goes to them. Nothing bounds the walks over a tag but the sets of
// bytes: the closing bracket, which is the tag's last byte, is in each of them.
#include "xmlconv/normal_tag.h"

#include <cassert>
#include <cstdlib>
#include <cstring>

#include "xmlconv/byte_set.h"
#include "xmlconv/tag_writer.h"

// Bytes that end a name, or make a tag one for the parser. The bracket has to be among them.
constexpr ByteSet kNameEnds = SetOf(" \t\n\v\f\r/=?>");

// The place behind an attribute with its value; null where it isn't in normal form. A zero byte in
// the value would end the tag for the parser.
static const char *SkipAttribute(const char *text, const char *end)
{
    size_t nameLength = LengthUpTo(text, kNameEnds);
    text += nameLength;
    if (!IsNameLength(nameLength) || *text != '=' || text[1] != '"')
        return nullptr;
    text += 2;
    size_t left = size_t(end - text);
    const void *quote = memchr(text, '"', left);
    if (!quote || memchr(text, 0, size_t(static_cast<const char *>(quote) - text)))
        return nullptr;
    return static_cast<const char *>(quote) + 1;
}

size_t NormalTagName(const char *source, size_t length)
{
    const char *end = source + length - 1;
    assert(length >= 2 && *source == '<' && *end == '>');
    const char *name = source + 1 + (source[1] == '/');
    size_t mark = *name == '?';
    size_t nameLength = mark + LengthUpTo(name + mark, kNameEnds);
    const char *text = name + nameLength;
    if (!IsNameLength(nameLength) || nameLength == mark)  // the mark of "<?>" doesn't close it
        return 0;
    while (text && *text == ' ')
        text = SkipAttribute(text + 1, end);
    if (!text)
        return 0;
    bool hasAttributes = text != name + nameLength;
    const char ending = mark ? '?' : '/';
    if (*text == ending && (ending == '/' || hasAttributes))  // "<?a?>" is a name with two marks
        ++text;
    return text == end ? nameLength : 0;
}

// As the parser leaves it, without the attributes: of open tags only names are asked. Null without
// memory.
static TagRecord *OpenTag(std::string_view name, TagRecord *parent)
{
    TagRecord *tag = static_cast<TagRecord *>(calloc(1, sizeof(TagRecord)));
    if (!tag)
        return nullptr;
    assert(name.size() < sizeof tag->name);
    memcpy(tag->name, name.data(), name.size());
    tag->parent = parent;
    return tag;
}

static bool FollowOpeningTag(Conversion *conversion, TagRecord **current, std::string_view name,
                             bool isSelfClosing)
{
    if (IsFontTag(name) || !TrackTagName(conversion, name))
        return false;
    if (isSelfClosing)
        return true;
    TagRecord *opened = OpenTag(name, *current);
    if (!opened)
        return false;  // ProcessTag tells of it; to track a name once more changes nothing
    *current = opened;
    return true;
}

bool FollowNormalTag(Conversion *conversion, TagRecord **current, const char *source, size_t length)
{
    size_t nameLength = NormalTagName(source, length);
    bool isClosing = source[1] == '/';
    bool isSelfClosing = source[length - 2] == '/' || source[length - 2] == '?';
    if (!nameLength || (isClosing && isSelfClosing))
        return false;
    if (!isClosing)
        return FollowOpeningTag(conversion, current, {source + 1, nameLength}, isSelfClosing);
    *current = PopTag(*current);
    return true;
}

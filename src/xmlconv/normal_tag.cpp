// The fast road of tags. It takes what the parser would accept and the writer give back byte for
// byte; whatever is doubtful goes to them.
#include "xmlconv/normal_tag.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "xmlconv/font_map.h"
#include "xmlconv/styles.h"
#include "xmlconv/tag_writer.h"

// Bytes that end a name, or that a name in normal form can't have.
constexpr bool EndsName(uint8_t byte)
{
    return byte <= ' ' || byte == '/' || byte == '=' || byte == '?' || byte == '>' || byte == '"';
}

struct ByteSet {
    bool has[256];
};
constexpr ByteSet MakeNameEnds()
{
    ByteSet set = {};
    for (int byte = 0; byte < 256; ++byte)
        set.has[byte] = EndsName(uint8_t(byte));
    return set;
}
constexpr ByteSet kNameEnds = MakeNameEnds();

// The end of a name; the bracket behind the tag ends it at the latest.
static const char *SkipName(const char *text)
{
    while (!kNameEnds.has[uint8_t(*text)])
        ++text;
    return text;
}

static bool IsNameLength(ptrdiff_t length)
{
    return length >= 1 && length < kTagNameSize;
}

// Behind an attribute with its value, none where it isn't in normal form.
static const char *SkipAttribute(const char *text, const char *end)
{
    const char *name = text;
    text = SkipName(text);
    if (!IsNameLength(text - name) || *text != '=' || text[1] != '"')
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
    const char *end = source + length - 1;  // the closing bracket
    const char *name = source + 1 + (source[1] == '/');
    const char *text = SkipName(name + (*name == '?'));
    ptrdiff_t nameLength = text - name;
    if (!IsNameLength(nameLength))
        return 0;
    while (text && *text == ' ')
        text = SkipAttribute(text + 1, end);
    if (!text)
        return 0;
    bool hasAttributes = text != name + nameLength;
    const char ending = *name == '?' ? '?' : '/';
    if (*text == ending && (ending == '/' || hasAttributes))  // "<?a?>" is a name with two marks
        ++text;
    return text == end ? size_t(nameLength) : 0;
}

static TagRecord *OpenTag(const char *name, size_t length, TagRecord *parent)
{
    TagRecord *tag = static_cast<TagRecord *>(calloc(1, sizeof(TagRecord)));
    if (!tag)
        return nullptr;
    memcpy(tag->name, name, length);
    tag->parent = parent;
    return tag;
}

static bool FollowOpeningTag(TagRecord **current, std::string_view name, bool isSelfClosing)
{
    if (IsFontTag(name) || NeedsAttributes(name))
        return false;
    TagRecord *opened = isSelfClosing ? *current : OpenTag(name.data(), name.size(), *current);
    if (!opened && !isSelfClosing)
        return false;
    TrackTagName(name);
    *current = opened;
    return true;
}

bool FollowNormalTag(TagRecord **current, const char *source, size_t length)
{
    size_t nameLength = NormalTagName(source, length);
    bool isClosing = source[1] == '/';
    bool isSelfClosing = source[length - 2] == '/' || source[length - 2] == '?';
    if (!nameLength || (isClosing && isSelfClosing))
        return false;
    if (!isClosing)
        return FollowOpeningTag(current, {source + 1, nameLength}, isSelfClosing);
    *current = PopTag(*current);
    return true;
}

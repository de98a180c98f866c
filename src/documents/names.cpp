// Prefixes are looked up from the last declaration back, so that an inner one hides an outer one.
#include "documents/names.h"

#include <cstdlib>

struct Namespace {
    std::string_view known, address;
};

// The two addresses of each Office namespace are those of the two editions of the standard.
#define OFFICE "http://schemas.openxmlformats.org/"
#define STRICT_OFFICE "http://purl.oclc.org/ooxml/"
#define OPEN "urn:oasis:names:tc:opendocument:xmlns:"
constexpr Namespace kNamespaces[] = {
    {"w", OFFICE "wordprocessingml/2006/main"},
    {"w", STRICT_OFFICE "wordprocessingml/main"},
    {"w", "http://schemas.microsoft.com/office/word/2003/wordml"},
    {"wx", "http://schemas.microsoft.com/office/word/2003/auxHint"},
    {"a", OFFICE "drawingml/2006/main"},
    {"a", STRICT_OFFICE "drawingml/main"},
    {"p", OFFICE "presentationml/2006/main"},
    {"p", STRICT_OFFICE "presentationml/main"},
    {"x", OFFICE "spreadsheetml/2006/main"},
    {"x", STRICT_OFFICE "spreadsheetml/main"},
    {"r", OFFICE "officeDocument/2006/relationships"},
    {"r", STRICT_OFFICE "officeDocument/relationships"},
    {"m", OFFICE "officeDocument/2006/math"},
    {"m", STRICT_OFFICE "officeDocument/math"},
    {"rel", OFFICE "package/2006/relationships"},
    {"ct", OFFICE "package/2006/content-types"},
    {"pkg", "http://schemas.microsoft.com/office/2006/xmlPackage"},
    {"v", "urn:schemas-microsoft-com:vml"},
    {"office", OPEN "office:1.0"},
    {"style", OPEN "style:1.0"},
    {"text", OPEN "text:1.0"},
    {"table", OPEN "table:1.0"},
    {"draw", OPEN "drawing:1.0"},
    {"presentation", OPEN "presentation:1.0"},
    {"number", OPEN "datastyle:1.0"},
    {"fo", OPEN "xsl-fo-compatible:1.0"},
    {"svg", OPEN "svg-compatible:1.0"},
    {"manifest", OPEN "manifest:1.0"},
    {"dc", "http://purl.org/dc/elements/1.1/"},
};
#undef OFFICE
#undef STRICT_OFFICE
#undef OPEN

void FreePrefixes(Prefixes *prefixes)
{
    free(prefixes->bindings);
    *prefixes = {};
}

static void ForgetFound(Prefixes *prefixes)
{
    for (FoundPrefix &found : prefixes->found)
        found.isSet = false;
}

static std::string_view KnownPrefixOf(std::string_view address)
{
    for (const Namespace &row : kNamespaces)
        if (row.address == address)
            return row.known;
    return {};
}

static bool Declare(Prefixes *prefixes, const Attribute &attribute, size_t depth)
{
    std::string_view prefix = attribute.name.substr(5);  // behind "xmlns"
    prefix.remove_prefix(prefix.empty() ? 0 : 1);
    PrefixBinding binding = {{}, KnownPrefixOf(attribute.value), depth};
    if (prefix.size() >= sizeof binding.prefix)
        return true;
    void *bindings = prefixes->bindings;
    if (!GrowArray(&bindings, &prefixes->room, prefixes->count + 1, sizeof binding))
        return false;
    prefixes->bindings = static_cast<PrefixBinding *>(bindings);
    prefix.copy(binding.prefix, prefix.size());
    prefixes->bindings[prefixes->count++] = binding;
    ForgetFound(prefixes);
    return true;
}

bool DeclarePrefixes(Prefixes *prefixes, std::string_view tag, size_t depth)
{
    Attribute attribute;
    if (tag.find("xmlns") == tag.npos)
        return true;
    for (size_t place = 0; NextAttribute(tag, &place, &attribute);) {
        bool isDeclaration = attribute.name == "xmlns" || attribute.name.starts_with("xmlns:");
        if (isDeclaration && !Declare(prefixes, attribute, depth))
            return false;
    }
    return true;
}

void ForgetPrefixes(Prefixes *prefixes, size_t depth)
{
    size_t count = prefixes->count;
    while (prefixes->count > 0 && prefixes->bindings[prefixes->count - 1].depth >= depth)
        --prefixes->count;
    if (prefixes->count < count)
        ForgetFound(prefixes);
}

// Null when the document hasn't declared it.
static const PrefixBinding *FindBinding(const Prefixes *prefixes, std::string_view prefix)
{
    for (size_t i = prefixes->count; i > 0; --i)
        if (prefix == prefixes->bindings[i - 1].prefix)
            return &prefixes->bindings[i - 1];
    return nullptr;
}

// The slot in which what was found for a prefix is remembered, chosen by its ends.
static FoundPrefix *SlotOf(Prefixes *prefixes, std::string_view prefix)
{
    size_t hash = prefix.empty() ? 0 : size_t(prefix.front()) * 5 + size_t(prefix.back());
    return &prefixes->found[(hash + prefix.size()) % kFoundPrefixes];
}

static KnownName Resolve(Prefixes *prefixes, std::string_view prefix, std::string_view local)
{
    FoundPrefix *found = SlotOf(prefixes, prefix);
    if (found->isSet && prefix == found->prefix)
        return {found->known.empty() ? prefix : found->known, local};
    if (prefix.size() >= sizeof found->prefix)
        return {prefix, local};
    const PrefixBinding *binding = FindBinding(prefixes, prefix);
    *found = {{}, {}, true};
    prefix.copy(found->prefix, prefix.size());
    if (binding)
        found->known = binding->known.empty() ? std::string_view("?") : binding->known;
    return {found->known.empty() ? prefix : found->known, local};
}

KnownName NameOfTag(Prefixes *prefixes, std::string_view name)
{
    size_t colon = name.find(':');
    if (colon == name.npos)
        return Resolve(prefixes, {}, name);
    return Resolve(prefixes, name.substr(0, colon), name.substr(colon + 1));
}

KnownName NameOfAttribute(Prefixes *prefixes, std::string_view name)
{
    return name.find(':') == name.npos ? KnownName{{}, name} : NameOfTag(prefixes, name);
}

bool IsName(const KnownName &name, std::string_view written)
{
    size_t length = name.prefix.size();
    if (length == 0)
        return name.local == written;
    return written.size() == length + 1 + name.local.size() && written[length] == ':' &&
           written.ends_with(name.local) && written.starts_with(name.prefix);
}

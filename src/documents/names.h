// Names of elements and attributes, whatever prefixes a document has chosen. Each namespace that
// the library knows has one prefix here, the one that nearly all documents use, and names are
// written with it: "w:rFonts". The walk asks for each tag, the vocabularies for attributes.
#pragma once

#include "documents/scanner.h"

// A prefix that a document has declared, from an element at `depth` on.
struct PrefixBinding {
    char prefix[16];         // terminated; longer ones are known by nobody
    std::string_view known;  // the prefix that is written here, empty for a namespace unknown here
    size_t depth;
};

// What was found for a prefix; a document asks for few of them over and over.
struct FoundPrefix {
    char prefix[16];
    std::string_view known;
    bool isSet;
};
enum { kFoundPrefixes = 16 };

struct Prefixes {
    PrefixBinding *bindings;  // owned
    size_t count, room;
    FoundPrefix found[kFoundPrefixes];
};

void FreePrefixes(Prefixes *prefixes);

// Takes the declarations of a tag that opens at `depth`: false without memory.
bool DeclarePrefixes(Prefixes *prefixes, std::string_view tag, size_t depth);

// Forgets what elements at `depth` and deeper ones have declared.
void ForgetPrefixes(Prefixes *prefixes, size_t depth);

struct KnownName {
    std::string_view prefix;  // the one that is written here; empty for a name without a namespace
    std::string_view local;
};

// The name of a tag, or of an attribute, to which the namespace of no prefix doesn't apply. A
// prefix that a document hasn't declared counts as the one that is written here.
KnownName NameOfTag(Prefixes *prefixes, std::string_view name);
KnownName NameOfAttribute(Prefixes *prefixes, std::string_view name);

// Whether it is the name that is written here as "w:val", or "val" where there is no namespace.
bool IsName(const KnownName &name, std::string_view written);

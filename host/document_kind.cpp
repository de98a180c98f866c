// Kinds of files are a table of what they begin with. Nothing is parsed: XML and HTML are what
// begins with a bracket, and of an XML declaration only the encoding is looked at. What begins like
// nothing that is known is plain text, or nothing at all where it has bytes that no text has.
#include "document_kind.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>

#include "old_document.h"
#include "runtime.h"

using namespace std::literals;

constexpr size_t kHeadSize = 1024;  // bytes that are looked at

struct Kind {
    std::string_view beginning;  // in small letters
    const char *why;             // empty: the library looks at it
    bool isOther;
};

constexpr char kUtf16[] = "is UTF-16; save it in UTF-8";
constexpr char kPicture[] = "is a picture";

// Of two beginnings the longer one comes first.
constexpr Kind kKinds[] = {
    {"pk\3\4"sv, "", false},
    {"pk\5\6"sv, "is an empty package", true},
    {"{\\rtf"sv, "", false},
    {"%pdf"sv, "is PDF; the document that it was made from may help", true},
    {"\xFF\xFE<\0"sv, kUtf16, false},
    {"\xFE\xFF\0<"sv, kUtf16, false},
    {"<\0"sv, kUtf16, false},
    {"\0<"sv, kUtf16, false},
    {"\xFF\xFE"sv, kUtf16, true},
    {"\xFE\xFF"sv, kUtf16, true},
    {"\x89png"sv, kPicture, true},
    {"\xFF\xD8\xFF"sv, kPicture, true},
    {"gif8"sv, kPicture, true},
};

static std::string InSmallLetters(std::string_view text)
{
    std::string small(text);
    for (char &c : small)
        c = c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c;
    return small;
}

// The encoding that an XML declaration names, in small letters; empty where none is named.
static std::string EncodingOf(std::string_view small)
{
    size_t end = small.starts_with("<?xml") ? small.find("?>") : 0;
    size_t name = small.substr(0, end).find("encoding");
    size_t open = name == small.npos ? name : small.find_first_of("\"'", name);
    size_t close = open == small.npos ? open : small.find(small[open], open + 1);
    return close == small.npos ? "" : std::string(small.substr(open + 1, close - open - 1));
}

static KindRefusal LookAtText(std::string_view text, bool hasTextFont)
{
    if (text.find('\0') != text.npos)
        return {"is no document and no text", true};
    if (!hasTextFont)
        return {"is plain text; say its font: --font NAME", true};
    return {"", false};
}

KindRefusal LookAtHead(std::string_view head, bool hasTextFont)
{
    std::string whole = InSmallLetters(head);
    std::string_view small = whole;
    if (small.starts_with("\xEF\xBB\xBF"))
        small.remove_prefix(3);
    small.remove_prefix(std::min(small.find_first_not_of(" \t\r\n"), small.size()));
    for (const Kind &row : kKinds)
        if (small.starts_with(row.beginning))
            return {row.why, row.isOther};
    if (small.empty())
        return {"is empty", true};
    if (small[0] != '<')
        return LookAtText(small, hasTextFont);
    std::string encoding = EncodingOf(small);
    bool isUtf8 = encoding.empty() || encoding == "utf-8" || encoding == "us-ascii";
    return {isUtf8 ? "" : "is XML in " + encoding + "; save it in UTF-8", false};
}

static KindRefusal LookAtFile(FILE *file, bool hasTextFont)
{
    struct stat status;
    char bytes[kHeadSize];
    if (fstat(fileno(file), &status) != 0 || !S_ISREG(status.st_mode))
        return {"is a pipe or a device; save it as a file first", false};
    std::string_view head(bytes, fread(bytes, 1, sizeof bytes, file));
    if (ferror(file))
        return {"it can't be read", false};
    return head.starts_with(kOldDocumentHead) ? LookAtOldDocument(file)
                                              : LookAtHead(head, hasTextFont);
}

KindRefusal LookAtDocument(const std::string &path, bool hasTextFont)
{
    errno = 0;
    FILE *file = OpenDocument(path.c_str());
    if (!file)
        return {errno ? strerror(errno) : "it can't be opened as a file", false};
    KindRefusal refusal = LookAtFile(file, hasTextFont);
    fclose(file);
    return refusal;
}

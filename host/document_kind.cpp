// Kinds of files are a table of what they begin with. Nothing is parsed: XML is what begins with a
// bracket, and of its declaration only the encoding is looked at, since the converter reads UTF-8
// whatever it says.
#include "document_kind.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>

#include "runtime.h"

using namespace std::literals;

constexpr size_t kHeadSize = 1024;  // bytes that are looked at

struct Kind {
    std::string_view beginning;  // in small letters
    const char *what, *advice;
};

constexpr char kSaveAsXml[] = "; open it in a word processor and save it as \"Word 2003 XML\"";
constexpr char kSaveAsUtf8[] = "; save it in UTF-8";

constexpr Kind kKinds[] = {
    {"pk\5\6"sv, "is an empty package", ""},
    {"\xD0\xCF\x11\xE0"sv, "is a document of an older kind (.doc)", kSaveAsXml},
    {"{\\rtf"sv, "is RTF", kSaveAsXml},
    {"%pdf"sv, "is PDF", "; the document that it was made from may help"},
    {"\xFF\xFE"sv, "is UTF-16", kSaveAsUtf8},
    {"\xFE\xFF"sv, "is UTF-16", kSaveAsUtf8},
    {"<\0"sv, "is UTF-16", kSaveAsUtf8},
    {"\0<"sv, "is UTF-16", kSaveAsUtf8},
    {"<!doctype html"sv, "is HTML", kSaveAsXml},
    {"<html"sv, "is HTML", kSaveAsXml},
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

std::string WhyNoDocument(std::string_view head)
{
    std::string whole = InSmallLetters(head);
    std::string_view small = whole;
    if (small.starts_with("\xEF\xBB\xBF"))
        small.remove_prefix(3);
    small.remove_prefix(std::min(small.find_first_not_of(" \t\r\n"), small.size()));
    for (const Kind &row : kKinds)
        if (small.starts_with(row.beginning))
            return std::string(row.what) + row.advice;
    if (small.empty())
        return "is empty";
    if (small.starts_with("pk\3\4"))
        return "";
    if (small[0] != '<')
        return "isn't XML; documents are \"Word 2003 XML\", and text is for \"orvel recode\"";
    std::string encoding = EncodingOf(small);
    bool isUtf8 = encoding.empty() || encoding == "utf-8" || encoding == "us-ascii";
    return isUtf8 ? "" : "is XML in " + encoding + kSaveAsUtf8;
}

std::string WhyNoDocumentIn(const std::string &path)
{
    errno = 0;
    FILE *file = OpenDocument(path.c_str());
    if (!file)
        return errno ? strerror(errno) : "it can't be opened as a file";
    struct stat status;
    char head[kHeadSize];
    bool isPlain = fstat(fileno(file), &status) == 0 && S_ISREG(status.st_mode);
    size_t length = isPlain ? fread(head, 1, sizeof head, file) : 0;
    bool failed = ferror(file);
    fclose(file);
    if (failed)
        return "it can't be read";
    return isPlain ? WhyNoDocument({head, length}) : "";
}

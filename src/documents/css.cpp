// Style sheets are read by their brackets, without their comments.
#include "documents/css.h"

#include <cstring>

#include "frame/strings.h"

constexpr std::string_view kBlanks = " \t\r\n\f";

static std::string_view Trim(std::string_view text)
{
    size_t start = text.find_first_not_of(kBlanks);
    if (start == text.npos)
        return {};
    return text.substr(start, text.find_last_not_of(kBlanks) + 1 - start);
}

static bool HasDigit(std::string_view text)
{
    return text.find_first_of("0123456789") != text.npos;
}

// Where the families of a "font" value begin: behind its size, the last word with a digit or the
// word behind it.
static size_t FamiliesOfFont(std::string_view value)
{
    size_t at = 0, families = value.npos;
    while (at < value.size() && value[at] != ',' && value[at] != '"' && value[at] != '\'') {
        size_t start = value.find_first_not_of(kBlanks, at);
        size_t end =
            start == value.npos ? value.size() : value.find_first_of(" \t\r\n\f,\"'", start);
        end = end == value.npos ? value.size() : end;
        if (start != value.npos && HasDigit(value.substr(start, end - start)) &&
            families == value.npos)
            families = end;
        at = end > at ? end : at + 1;
    }
    return families;
}

static bool PlaceOfName(std::string_view all, std::string_view value, FamilyPlace *place)
{
    std::string_view name = Trim(value.substr(0, value.find(',')));
    bool isQuoted = !name.empty() && (name[0] == '"' || name[0] == '\'');
    if (isQuoted) {
        size_t end = value.find(name[0], size_t(name.data() - value.data()) + 1);
        name = {name.data() + 1,
                end == value.npos ? 0 : size_t(value.data() + end - name.data()) - 1};
    }
    if (name.empty())
        return false;  // a name in front of it stays
    *place = {size_t(name.data() - all.data()), name.size()};
    return true;
}

bool FindFamily(std::string_view declarations, FamilyPlace *place)
{
    bool isFound = false;
    for (size_t at = 0; at < declarations.size();) {
        size_t end = declarations.find(';', at);
        std::string_view one = declarations.substr(at, end == declarations.npos ? end : end - at);
        size_t colon = one.find(':');
        std::string_view property = Trim(one.substr(0, colon));
        std::string_view value = colon == one.npos ? std::string_view() : one.substr(colon + 1);
        if (EqualNoCase(property, "font")) {
            size_t families = FamiliesOfFont(value);
            value = families == value.npos ? std::string_view() : value.substr(families);
        } else if (!EqualNoCase(property, "font-family")) {
            value = {};
        }
        isFound = (!value.empty() && PlaceOfName(declarations, value, place)) || isFound;
        at = end == declarations.npos ? declarations.size() : end + 1;
    }
    return isFound;
}

void BlankComments(char *sheet, size_t length)
{
    std::string_view text(sheet, length);
    for (size_t at = text.find("/*"); at != text.npos; at = text.find("/*", at)) {
        size_t end = text.find("*/", at + 2);
        end = end == text.npos ? length : end + 2;
        memset(sheet + at, ' ', end - at);
    }
}

bool NextRule(std::string_view sheet, size_t *at, CssRule *rule)
{
    for (;;) {
        size_t start = sheet.find_first_not_of(" \t\r\n\f};", *at);
        size_t open = start == sheet.npos ? start : sheet.find('{', start);
        if (open == sheet.npos)
            return false;
        size_t close = sheet.find('}', open);
        std::string_view selectors = Trim(sheet.substr(start, open - start));
        bool isGroup = selectors.starts_with("@media");
        *at = isGroup ? open + 1 : close == sheet.npos ? sheet.size() : close + 1;
        if (selectors.starts_with('@'))
            continue;
        *rule = {selectors, sheet.substr(open + 1, close == sheet.npos ? close : close - open - 1)};
        return true;
    }
}

bool NextSelector(std::string_view *selectors, std::string_view *selector)
{
    while (!selectors->empty()) {
        size_t comma = selectors->find(',');
        std::string_view one = Trim(selectors->substr(0, comma));
        *selectors = comma == selectors->npos ? std::string_view() : selectors->substr(comma + 1);
        size_t blank = one.find_last_of(" \t\r\n\f>+~");
        if (blank != one.npos)
            one = one.substr(blank + 1);
        one = one.substr(0, one.find(':'));  // states and the like
        size_t open = one.rfind("<!--");     // the first selector stands behind it
        if (open != one.npos)
            one = one.substr(open + 4);
        if (!one.empty()) {
            *selector = one;
            return true;
        }
    }
    return false;
}

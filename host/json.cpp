// What stands in a JSON text as it is: all characters but control characters, the quotation mark
// and the backslash.
#include "json.h"

#include <cstdio>

#include "utf8.h"

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

static void AppendEscaped(std::string *json, char byte)
{
    char escape[8];
    snprintf(escape, sizeof escape, "\\u%04x", unsigned(byte));
    *json += escape;
}

void AppendJsonText(std::string *json, std::string_view text)
{
    *json += '"';
    for (size_t size = 0; !text.empty(); text.remove_prefix(size)) {
        size = CharacterSize(text);
        char first = text[0];
        if (size == 1 && (first & '\x80'))
            *json += kReplacement;
        else if (size == 1 && (first == '"' || first == '\\'))
            *json += {'\\', first};
        else if (size == 1 && first < ' ')
            AppendEscaped(json, first);
        else
            *json += text.substr(0, size);
    }
    *json += '"';
}

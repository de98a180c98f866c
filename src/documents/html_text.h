// The text of HTML pages: references by name, and the encodings that pages are in.
#pragma once

#include "documents/text_form.h"

// Pages in code page 1252 are read byte by byte; both forms write UTF-8.
extern const TextForm kHtmlUtf8, kHtml1252;

// The same, with <wbr> for a break that can't be seen.
extern const TextForm kHtmlUtf8Wbr, kHtml1252Wbr;

// For breaks alone, in UTF-8: all that isn't Lao comes out as it came, references too.
extern const TextForm kHtmlKept, kHtmlKeptWbr;

enum HtmlEncoding { kHtmlUnknown, kHtmlIsUtf8, kHtmlIs1252, kHtmlOther };

// The encoding of a name, as pages declare it, in whatever capitals.
HtmlEncoding EncodingOfName(std::string_view name);

// Whether bytes are UTF-8 with at least one character that isn't ASCII.
bool LooksLikeUtf8(std::string_view bytes);

// Appends bytes of a page in code page 1252 as UTF-8, references as they are.
void AppendAsUtf8(std::string_view bytes, Bytes *output);

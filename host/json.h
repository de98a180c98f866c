// JSON, as far as the command writes it: texts whatever bytes they have, and lines of members.
#pragma once

#include <string>
#include <string_view>

// Appends a text with its quotation marks. Bytes that are no UTF-8, as names of files may have
// them, come out as U+FFFD.
void AppendJsonText(std::string *json, std::string_view text);

// Tags on their way to the output: tracked, written in normal form with Unicode font names, and
// kept on a stack while they are open. The part converter gives each tag to it that the fast road
// (normal_tag.h) doesn't take.
#pragma once

#include <string_view>

#include "xmlconv/conversion.h"
#include "xmlconv/tag.h"

// Tracks an opening or self-closing tag and writes it to the conversion's tagText, which grows
// where it has to: 1, or 0 with a failure that is reported.
int WriteTag(Conversion *conversion, TagRecord *tag);

// Handles a tag that stands NUL-terminated in the conversion's tagSource, with `*current` the top
// of the stack, null when nothing is open; it becomes the new top. The text to write, which lasts
// until the next tag; null on a failure, which is reported, and the stack is as it was.
const char *ProcessTag(Conversion *conversion, TagRecord **current);

// Puts an open tag of that name on the stack: the new top, without attributes, since of open tags
// only names are asked. Null without memory.
TagRecord *PushTag(Conversion *conversion, TagRecord *current, std::string_view name);

// Takes the top away: the new one. Where nothing is open nothing is taken.
TagRecord *PopTag(Conversion *conversion, TagRecord *current);

void FreeTagStack(TagRecord *current);

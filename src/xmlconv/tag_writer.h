// Tags on their way to the output: tracked, written in normal form with Unicode font names, and
// kept on a stack while they are open.
#pragma once

#include <cstddef>

#include "xmlconv/tag.h"

// Room for the text to write.
struct TagRoom {
    char *text;
    size_t size;
};

// Writes an opening or self-closing tag: 1, or 0 when it failed, the style table is full or the
// room is too small (RestartReason says so).
int WriteTag(TagRecord *tag, const TagRoom &room);

// Handles a tag's text. The new top of the stack, none when it is empty; on a failure or for a
// restart, which the report tells, the old one.
TagRecord *ProcessTag(TagRecord *current, const char *source, const TagRoom &room);

// Takes the top away: the new one. Where nothing is open nothing is taken.
TagRecord *PopTag(TagRecord *current);

void FreeTagStack(TagRecord *current);

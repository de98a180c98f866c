// The fast road of tags. Nearly all tags of a document stand already as they would be written, and
// say nothing of fonts and styles but by their name: they can be copied from the input. The part
// converter tries this road first for each tag that lies whole in a block.
#pragma once

#include <cstddef>

#include "xmlconv/conversion.h"
#include "xmlconv/tag.h"

// Follows a tag of length bytes, brackets included, as ProcessTag would: true when its text is to
// be copied as it is. False when ProcessTag must take it: the stack is as it was then.
bool FollowNormalTag(Conversion *conversion, TagRecord **current, const char *source,
                     size_t length);

// Length of the name of a tag in normal form: one blank before each attribute, a value in double
// quotes for each, nothing behind. 0 for every other tag.
size_t NormalTagName(const char *source, size_t length);

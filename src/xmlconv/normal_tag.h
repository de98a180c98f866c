// The fast road of tags. Nearly all tags of a document stand already as they would be written, and
// say nothing of fonts and styles but by their name: they can be copied from the input. Those that
// do are tracked and written like others, out of a record that costs no allocation. The part
// converter tries this road first for each tag that lies whole in a block.
#pragma once

#include <cstddef>

#include "xmlconv/conversion.h"
#include "xmlconv/tag.h"

enum NormalTag {
    kTagFailed,   // which is reported
    kTagLeft,     // ProcessTag must take it: nothing has been done
    kTagStays,    // its text is to be copied as it is
    kTagChanged,  // what is to be written stands in the conversion's tagText
};

// Follows the tag that begins a text, as ProcessTag would. Of the text more may follow, up to a
// zero byte; a tag that this cuts is left, and so is one that the buffer for tags could not hold.
// `*length` is the tag's, brackets included, unless it is left.
NormalTag FollowNormalTag(Conversion *conversion, TagRecord **current, const char *text,
                          size_t *length);

// One part of a document, from its first byte to its last: a file of the old format is one part, a
// packed document has several. The driver calls this for each.
#pragma once

#include <cstddef>

#include "xmlconv/conversion.h"
#include "xmlconv/reader.h"

// Where the converted part goes.
struct DocumentSink {
    // Takes all bytes, or gives false: they can't be written.
    bool (*write)(void *context, const char *bytes, size_t length);
    void *context;  // the first argument of `write`; it has to live as long as the conversion
};

// Converts a part: 1, or 0 with a failure that is reported; what the sink has got then is no whole
// document. Without a sink (null) the fonts alone are counted. Paragraph and run are forgotten
// first, the styles of earlier parts stay. Behind a failure no other part may follow.
int ConvertPart(Conversion *conversion, const DocumentSource &source, const DocumentSink *sink);

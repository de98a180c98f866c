// A peer for documents: libxml2's push parser, every tag written again. SAX1 hands names and values
// over as they stand, SAX2 resolves namespaces.
#pragma once

enum Libxml2Interface { kSax1, kSax2 };
void CopyByLibxml2(const char *source, const char *destination, Libxml2Interface version);

// Packages: documents that are a zip archive of parts.
#pragma once

#include "documents/xml_file.h"

// Rewrites the parts of a package that have to change. All others stay as they are, byte for byte,
// in their order; where nothing changes the new package is the old one.
bool RewritePackage(Document *document, const DocumentFiles &files);

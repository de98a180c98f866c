// The rewriting of documents of all formats. The driver (convert.cpp) opens the files and calls
// this.
#pragma once

#include "documents/document_files.h"

// Tells the format and does the whole work: false with a failure that is reported. What the output
// has got then is no document.
bool RewriteDocument(Document *document, const DocumentFiles &files);

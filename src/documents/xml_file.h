// Parts of XML, and documents that are one part.
#pragma once

#include "documents/document_files.h"
#include "documents/walk.h"

// The elements of a format; the caller frees them. False without memory, which is reported.
bool MakeElementsOf(Document *document, DocumentFormat format, ElementIndex *elements);

// Goes through a part to its end, with its new bytes to the file, where there is one.
bool WalkThrough(Walk *walk, FILE *output);

// Rewrites a document that is one part.
bool RewriteXmlFile(Document *document, const DocumentFiles &files);

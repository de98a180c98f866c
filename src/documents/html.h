// HTML pages, above all those of the years in which fonts were named by <font>.
#pragma once

#include "documents/document_files.h"

bool RewriteHtml(Document *document, const DocumentFiles &files);

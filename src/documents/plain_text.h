// Plain text in the code of one font, and CSV.
#pragma once

#include "documents/document_files.h"

bool RewritePlainText(Document *document, const DocumentFiles &files);

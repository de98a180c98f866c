// RTF, as word processors write it.
#pragma once

#include "documents/document_files.h"

bool RewriteRtf(Document *document, const DocumentFiles &files);

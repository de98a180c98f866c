// RTF, as word processors write it.
#pragma once

#include "documents/rewrite.h"

bool RewriteRtf(Document *document, const RewriteFiles &files);

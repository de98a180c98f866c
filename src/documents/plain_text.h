// Plain text in the code of one font, and CSV.
#pragma once

#include "documents/rewrite.h"

bool RewritePlainText(Document *document, const RewriteFiles &files);

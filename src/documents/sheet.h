// SpreadsheetML: cells, shared strings, comments, headers and footers of workbooks.
#pragma once

#include "documents/walk.h"

extern const Vocabulary kSheetElements;

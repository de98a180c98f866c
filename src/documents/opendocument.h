// OpenDocument: texts, sheets and slides, packed or in one file.
#pragma once

#include "documents/walk.h"

extern const Vocabulary kOpenDocumentElements;

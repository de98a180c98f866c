// Break marks in the text of a document. A paragraph is divided as a whole, whatever runs its words
// stand in.
#pragma once

#include "documents/paragraph.h"

// Writes or takes out U+200B as the job says, in all Lao of the paragraph's units. False without
// memory.
bool DivideTexts(Document *document, Paragraph *paragraph);

// Text that isn't what its font says: legacy Lao in a font that isn't a legacy one, and Latin text
// in one that is. It is told by how much of it the library can divide when it is read as Lao; at
// the letters of fonts that have Lao there, by how often signs stand in texts of either kind.
#pragma once

#include "documents/paragraph.h"

// Looks through the texts of a paragraph, whose units are as they came: tells the host what it
// finds, and where the job says so lets the texts be read accordingly. False without memory.
bool DetectTexts(Document *document, Paragraph *paragraph);

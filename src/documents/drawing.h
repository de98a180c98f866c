// DrawingML: slides and their text, text in drawings of all documents, and the fonts of themes.
#pragma once

#include "documents/walk.h"

extern const Vocabulary kDrawingElements;

// Which part says what another one doesn't say itself: the layout of a slide, the master of a
// layout, the theme of a master, the presentation.
#pragma once

#include "documents/package_parts.h"

// Finds them for all parts of a presentation; other packages have none. False with a failure that
// is reported.
bool FindPartsAbove(Package *package);
